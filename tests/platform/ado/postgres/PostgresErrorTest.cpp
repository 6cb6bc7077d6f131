#include "platform/ado/postgres/PostgresError.h"

#include "platform/ado/AdoTypes.h"

#include <gtest/gtest.h>

namespace ado::test {

using namespace Qt::StringLiterals;

namespace {

PostgresFailure failure(const char *state, const QString &message = u"the server's words"_s)
{
    PostgresFailure result;
    result.state = state;
    result.message = message;
    return result;
}

} // namespace

TEST(PostgresError, StatesHaveTheirNumbers)
{
    const std::pair<const char *, int> expected[] = {
        {"23505", errors::kIntegrity},        {"23503", errors::kIntegrity},
        {"23502", errors::kIntegrity},        {"23514", errors::kIntegrity},
        {"2BP01", errors::kIntegrity},        {"22003", errors::kOutOfRange},
        {"22012", ::errors::kDivisionByZero}, {"22001", errors::kOutOfRange},
        {"22P02", errors::kTypeMismatch},     {"22021", errors::kTypeMismatch},
        {"42501", errors::kNoPermission},     {"25006", errors::kNoPermission},
        {"42P01", errors::kNoSuchTable},      {"42703", errors::kNoSuchColumn},
        {"42P07", errors::kTableExists},      {"42701", errors::kColumnExists},
        {"42601", errors::kSyntax},           {"40P01", errors::kTimeout},
        {"40001", errors::kTimeout},          {"55P03", errors::kTimeout},
        {"57014", errors::kTimeout},          {"53100", errors::kUnspecified},
        {"57P01", errors::kUnspecified},      {"XX000", errors::kUnspecified},
        {"", errors::kUnspecified},
    };
    for (const auto &[state, number] : expected)
        EXPECT_EQ(postgresError(failure(state)).number(), number) << state;
}

TEST(PostgresError, TextIsNorwegianWithTheServersWordsBehind)
{
    EXPECT_EQ(
        postgresError(failure("53100", u"No space left on device"_s)).description(),
        u"Databasetjenerens disk er full; endringen er ikke lagret (No space left on device)."_s);
    EXPECT_TRUE(postgresError(failure("XX000")).description().contains(u"XX000"));
}

TEST(PostgresError, BrokenRangeIsAnOverflowOfItsColumn)
{
    PostgresFailure broken = failure("23514");
    broken.constraint = u"Sum brutto range"_s;
    EXPECT_EQ(postgresError(broken).number(), errors::kOutOfRange);
    EXPECT_EQ(postgresError(broken).description(),
              u"Tallet er for stort for feltet «Sum brutto»."_s);
}

TEST(PostgresError, CatalogueTouchedByTwoIsAMatterOfNames)
{
    PostgresFailure twice = failure("23505");
    twice.schema = u"pg_catalog"_s;
    twice.table = u"pg_type"_s;
    EXPECT_EQ(postgresError(twice).number(), errors::kTableExists);
}

TEST(PostgresError, ConnectionThatDoesNotComeAboutIsToldByItsReason)
{
    const std::pair<const char *, QStringView> expected[] = {
        {"28P01", u"passordet"},           {"28000", u"brukernavnet"},
        {"3D000", u"«firma» finnes ikke"}, {"42501", u"rett til å åpne"},
        {"53300", u"ikke imot"},           {"57P03", u"starte eller stoppe"},
        {"", u"Får ikke kontakt"},
    };
    for (const auto &[state, text] : expected) {
        const RunTimeError error = postgresConnectError(failure(state), u"«vert:1»"_s, u"firma"_s);
        EXPECT_EQ(error.number(), errors::kUnspecified);
        EXPECT_TRUE(error.description().contains(text)) << error.what();
        EXPECT_TRUE(error.description().contains(u"«vert:1»")) << error.what();
    }
}

} // namespace ado::test
