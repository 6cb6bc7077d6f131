#include "platform/ado/AnyDatabase.h"
#include "support/PostgresCluster.h"

namespace ado::test {

namespace {

class AnyPostgresDatabase final : public AnyDatabase
{
public:
    [[nodiscard]] QString connectionString() const override
    {
        return m_database.connectionString();
    }
    std::string stored(const QString &sql) override { return m_database.run(sql).toStdString(); }
    void check() override
    {
        EXPECT_EQ(stored(u"SELECT COUNT(*) FROM pg_stat_activity WHERE datname = "
                         "current_database() AND state LIKE '%transaction%'"_s),
                  "0");
    }

private:
    PostgresDatabase m_database;
};

} // namespace

std::unique_ptr<AnyDatabase> makeDatabase()
{
    return std::make_unique<AnyPostgresDatabase>();
}

} // namespace ado::test
