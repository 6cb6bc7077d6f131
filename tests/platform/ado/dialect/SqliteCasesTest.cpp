#include "platform/ado/SessionPool.h"
#include "platform/ado/dialect/CaseRunner.h"
#include "platform/ado/dialect/Fixture.h"

#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>

namespace ado::dialect::test {

namespace {

class SqliteFile final : public CaseDatabase
{
public:
    SqliteFile()
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    ~SqliteFile() override { SessionPool::shared().clear(); }

    [[nodiscard]] QString connectionString() const override { return u"dsn="_s + path(); }

    /// Any tool, without a collation or function of ours, can check the file.
    void check() override
    {
        sqlite3 *database = nullptr;
        ASSERT_EQ(sqlite3_open(QFile::encodeName(path()).constData(), &database), SQLITE_OK);
        sqlite3_stmt *statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(database, "PRAGMA integrity_check", -1, &statement, nullptr),
                  SQLITE_OK)
            << sqlite3_errmsg(database);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
        EXPECT_STREQ(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)), "ok");
        sqlite3_finalize(statement);
        sqlite3_close(database);
    }

private:
    QString path() const { return m_folder.filePath(u"firma.db"_s); }

    QTemporaryDir m_folder;
};

class SqliteCases : public testing::TestWithParam<std::string>
{
};

} // namespace

TEST(SqliteCaseFolder, HoldsCases)
{
    EXPECT_FALSE(caseNames().empty());
}

TEST_P(SqliteCases, Holds)
{
    runCase(GetParam(), [] { return std::make_unique<SqliteFile>(); });
}

INSTANTIATE_TEST_SUITE_P(Files, SqliteCases, testing::ValuesIn(caseNames()),
                         [](const auto &tested) { return tested.param; });

} // namespace ado::dialect::test
