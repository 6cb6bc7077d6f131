#include "platform/ado/dialect/Parser.h"

#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

namespace {

Failure parseFailureOf(const QString &statement)
{
    try {
        static_cast<void>(parse(lex(statement)));
    } catch (const RunTimeError &error) {
        return {error.number(), error.description()};
    }
    return {};
}

} // namespace

TEST(Parser, AStatementMayNotBeEmpty)
{
    const Failure failure = parseFailureOf(QString());
    EXPECT_EQ(failure.number, errors::kSyntax);
    EXPECT_TRUE(failure.text.contains(u"ved tegn 1:"));
}

TEST(Parser, ShowsOnlyTheStartOfALongToken)
{
    const Failure failure =
        parseFailureOf(u"SELECT ID FROM Ordre '"_s + QString(500, u'x') + u'\'');
    EXPECT_LT(failure.text.size(), 120);
    EXPECT_TRUE(failure.text.contains(u"xxx…»"));
}

TEST(Parser, TakesOneClosingSemicolon)
{
    EXPECT_EQ(parseFailureOf(u"DROP TABLE Ordre ; "_s).number, 0);
}

TEST(Parser, BindsOperatorsByTheirStrength)
{
    const auto sameSql = [](const QString &a, const QString &b) {
        EXPECT_EQ(whereOf(a), whereOf(b));
    };
    sameSql(u"ID=1 OR ID=2 AND ID=3"_s, u"ID=1 OR (ID=2 AND ID=3)"_s);
    sameSql(u"NOT ID=1 AND ID=2"_s, u"(NOT ID=1) AND ID=2"_s);
    sameSql(u"ID=1+2*3"_s, u"ID=1+(2*3)"_s);
    sameSql(u"ID=1-2-3"_s, u"ID=(1-2)-3"_s);
    sameSql(u"ID BETWEEN 1 AND 2 AND ID=3"_s, u"(ID BETWEEN 1 AND 2) AND ID=3"_s);
    EXPECT_NE(whereOf(u"(ID=1 OR ID=2) AND ID=3"_s), whereOf(u"ID=1 OR ID=2 AND ID=3"_s));
    EXPECT_NE(whereOf(u"ID=1-(2-3)"_s), whereOf(u"ID=1-2-3"_s));
}

TEST(Parser, LimitsNesting)
{
    const auto nested = [](const QString &open, const QString &close, int times) {
        return u"SELECT ID FROM Ordre WHERE "_s + open.repeated(times) + u"ID=1"_s +
               close.repeated(times);
    };
    EXPECT_EQ(parseFailureOf(nested(u"("_s, u")"_s, 25)).number, 0);
    for (const QString &open : {u"("_s, u"NOT "_s, u"- "_s, u"NOT ("_s, u"Year("_s}) {
        const Failure failure = parseFailureOf(nested(open, u")"_s, 100'000));
        EXPECT_EQ(failure.number, errors::kSyntax);
        EXPECT_TRUE(failure.text.endsWith(u"uttrykket er for innviklet."));
    }
    // Only what is open at one time counts.
    EXPECT_EQ(parseFailureOf(u"SELECT ID FROM Ordre WHERE (ID=1)"_s +
                             u" AND NOT (ID=-(1))"_s.repeated(100))
                  .number,
              0);
    const auto chain = [](int links) {
        return u"SELECT ID FROM Ordre WHERE ID=1"_s + u" AND ID=1"_s.repeated(links);
    };
    EXPECT_EQ(parseFailureOf(chain(398)).number, 0); // 400 levels
    EXPECT_EQ(parseFailureOf(chain(399)).number, errors::kSyntax);
    EXPECT_EQ(parseFailureOf(chain(100'000)).number, errors::kSyntax);
    EXPECT_EQ(parseFailureOf(u"SELECT ID FROM "_s + u"("_s.repeated(100'000)).number,
              errors::kSyntax);
    EXPECT_EQ(
        parseFailureOf(u"SELECT ID FROM a"_s + u" LEFT JOIN a ON a=1"_s.repeated(10'000)).number,
        errors::kSyntax);
}

} // namespace ado::dialect::test
