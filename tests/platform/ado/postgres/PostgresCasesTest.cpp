#include "platform/ado/dialect/CaseRunner.h"
#include "support/PostgresCluster.h"

#include <gtest/gtest.h>

namespace ado::dialect::test {

namespace {

class PostgresCaseDatabase final : public CaseDatabase
{
public:
    [[nodiscard]] QString connectionString() const override
    {
        return m_database.connectionString();
    }
    /// Nothing is left open in the server.
    void check() override
    {
        EXPECT_EQ(m_database
                      .run(QStringLiteral("SELECT COUNT(*) FROM pg_stat_activity WHERE datname "
                                          "= current_database() AND state LIKE '%transaction%'"))
                      .toStdString(),
                  "0");
    }

private:
    PostgresDatabase m_database;
};

class PostgresCases : public testing::TestWithParam<std::string>
{
};

} // namespace

TEST_P(PostgresCases, Holds)
{
    runCase(GetParam(), [] { return std::make_unique<PostgresCaseDatabase>(); });
}

INSTANTIATE_TEST_SUITE_P(Files, PostgresCases, testing::ValuesIn(caseNames()),
                         [](const auto &tested) { return tested.param; });

} // namespace ado::dialect::test
