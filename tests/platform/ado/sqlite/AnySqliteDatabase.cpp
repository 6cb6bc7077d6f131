#include "platform/ado/AnyDatabase.h"

namespace ado::test {

namespace {

class AnySqliteDatabase final : public AnyDatabase
{
public:
    [[nodiscard]] QString connectionString() const override { return m_file.dsn(); }
    std::string stored(const QString &sql) override
    {
        return Tool(m_file.path()).run(sql.toUtf8().constData());
    }
    /// Any tool, without a collation or function of ours, can check the file.
    void check() override { EXPECT_EQ(stored(u"PRAGMA integrity_check"_s), "ok"); }

private:
    Database m_file;
};

} // namespace

std::unique_ptr<AnyDatabase> makeDatabase()
{
    return std::make_unique<AnySqliteDatabase>();
}

} // namespace ado::test
