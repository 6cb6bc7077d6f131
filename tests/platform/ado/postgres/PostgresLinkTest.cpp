#include "platform/ado/postgres/PostgresLink.h"

#include "platform/ado/postgres/Postgres.h"
#include "platform/ado/postgres/Support.h"
#include "runtime/Moment.h"

#include <limits>

namespace ado::test {

class PostgresLinkTest : public PostgresTest
{
protected:
    QString answer(const char *sql)
    {
        return QString::fromUtf8(PQgetvalue(m_link.run(sql).get(), 0, 0));
    }

    PostgresLink m_link{postgresKeywords(m_database.connectionString().sliced(4))};
};

TEST_F(PostgresLinkTest, SettingsAreThoseThatTheSessionReliesOn)
{
    EXPECT_EQ(answer("SHOW client_encoding"), u"UTF8"_s);
    EXPECT_EQ(answer("SHOW lock_timeout"), u"8s"_s);
    EXPECT_EQ(answer("SHOW standard_conforming_strings"), u"on"_s);
    EXPECT_EQ(answer("SHOW default_transaction_isolation"), u"read committed"_s);
    EXPECT_EQ(answer("SHOW application_name"), u"Strekkbok Regningsdel"_s);
}

TEST_F(PostgresLinkTest, DroppedStatementsAreGoneBeforeTheNextIsPrepared)
{
    const QByteArray first = m_link.prepare("SELECT 1");
    m_link.drop(m_link.prepare("SELECT 2"));
    m_link.drop(first);
    EXPECT_EQ(answer("SELECT COUNT(*) FROM pg_prepared_statements"), u"2"_s);
    const QByteArray last = m_link.prepare("SELECT 3");
    EXPECT_EQ(answer("SELECT COUNT(*) FROM pg_prepared_statements"), u"1"_s);
    EXPECT_NE(last, first);
}

TEST_F(PostgresLinkTest, NoticesGoNowhere)
{
    testing::internal::CaptureStderr();
    m_link.run("DO $$ BEGIN RAISE WARNING 'hallo'; END $$");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(PostgresLinkTest, RowsAreStreamedAndAFailedReaderLeavesTheLinkClean)
{
    const QByteArray name = m_link.prepare("SELECT generate_series(1, 1000)");
    int rows = 0;
    m_link.stream(name, PostgresParameters({}), [&](const PGresult *) { ++rows; });
    EXPECT_EQ(rows, 1000);
    EXPECT_EQ(errorOf([&] {
                  m_link.stream(name, PostgresParameters({}),
                                [](const PGresult *) { throw RunTimeError(errors::kUnspecified); });
              }),
              errors::kUnspecified);
    EXPECT_EQ(answer("SELECT 7"), u"7"_s);
    EXPECT_TRUE(m_link.isIdle());
}

TEST_F(PostgresLinkTest, EndOfTheConnectionIsSeenWhileIdle)
{
    EXPECT_TRUE(m_link.isAlive());
    endConnections();
    EXPECT_FALSE(m_link.isAlive());
    EXPECT_TRUE(m_link.isLost());
    m_link.reopen();
    EXPECT_TRUE(m_link.isAlive());
    EXPECT_EQ(answer("SELECT 7"), u"7"_s);
}

TEST_F(PostgresLinkTest, ParametersKeepTheirValues)
{
    const std::vector<Value> values{Value(qint16{-5}),
                                    Value(0.1F),
                                    Value(-1e300),
                                    Value(Currency::fromTenThousandths(-1)),
                                    Value(Currency::fromTenThousandths(9223372036854775807)),
                                    Value(utcMoment(QDate(850, 2, 3), QTime(4, 5, 6))),
                                    Value(true),
                                    Value(u"O'Brien \\ ærlig"_s),
                                    Value(QByteArray("\0'\\", 3)),
                                    Value()};
    const PostgresResult result = m_link.execute(
        "SELECT $1::int2, $2::float4, $3::float8, $4::numeric, $5::numeric, $6::timestamp(0), "
        "$7::bool, $8::text, $9::bytea, $10::int4",
        PostgresParameters(values));
    QStringList texts;
    for (int column = 0; column < 10; ++column)
        texts += QString::fromUtf8(PQgetvalue(result.get(), 0, column));
    EXPECT_EQ(texts.join(u'|'),
              u"-5|0.1|-1e+300|-0.0001|922337203685477.5807|0850-02-03 04:05:06|t|"
              "O'Brien \\ ærlig|\\x00275c|"_s);
    EXPECT_EQ(PQgetisnull(result.get(), 0, 9), 1);
}

TEST_F(PostgresLinkTest, AmountsHaveFourDecimals)
{
    const std::pair<qint64, const char *> amounts[] = {
        {0, "0.0000"},
        {20'500, "2.0500"},
        {-12'345, "-1.2345"},
        {-9'999, "-0.9999"},
        {std::numeric_limits<qint64>::min(), "-922337203685477.5808"},
    };
    for (const auto &[count, text] : amounts)
        EXPECT_EQ(postgresText(Value(Currency::fromTenThousandths(count))), text);
}

} // namespace ado::test
