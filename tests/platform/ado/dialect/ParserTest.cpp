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

struct SyntaxCase
{
    const char16_t *statement;
    int place; ///< counted from 1, as messages do
    const char16_t *said;
};

class SyntaxError : public testing::TestWithParam<SyntaxCase>
{
};

TEST_P(SyntaxError, NamesThePlace)
{
    const QString statement = QString::fromUtf16(GetParam().statement);
    const Failure failure = parseFailureOf(statement);
    EXPECT_EQ(failure.number, errors::kSyntax) << statement.toStdString();
    const QString start = u"Syntaksfeil i setningen ved tegn %1: "_s.arg(GetParam().place);
    EXPECT_EQ(failure.text, start + QString::fromUtf16(GetParam().said) + u'.');
}

INSTANTIATE_TEST_SUITE_P(
    Words, SyntaxError,
    testing::Values(
        SyntaxCase{u"", 1, u"setningen er ikke ferdig"}, SyntaxCase{u"  ;", 3, u"«;»"},
        SyntaxCase{u"SELECT * FRM Ordre", 10, u"«FRM»"},
        SyntaxCase{u"SELECT ID, FROM Ordre", 12, u"«FROM»"},
        SyntaxCase{u"SELECT ID FROM Ordre WHERE", 27, u"setningen er ikke ferdig"},
        SyntaxCase{u"SELECT ID FROM Ordre WHERE KlientNr=", 37, u"setningen er ikke ferdig"},
        SyntaxCase{u"SELECT ID FROM Ordre WHERE Navn='O'Hara'", 36, u"«Hara»"},
        SyntaxCase{u"SELECT ID FROM Ordre WHERE Navn='Aas", 33,
                   u"teksten mangler avsluttende apostrof"},
        SyntaxCase{u"SELECT ID FROM Ordre WHERE Dato=#1/1/2014", 33,
                   u"datoen mangler avsluttende «#»"},
        SyntaxCase{u"SELECT ID FROM Ordre WHERE a=b=c", 31, u"«=»"},
        SyntaxCase{u"SELECT ID FROM Ordre ORDER ID", 28, u"«ID»"},
        SyntaxCase{u"SELECT Left(Navn) FROM Ordre", 8, u"«Left» er ingen kjent funksjon"},
        SyntaxCase{u"SELECT Max() FROM Ordre", 8, u"funksjonen «Max» mangler et argument"},
        SyntaxCase{u"SELECT year( ) FROM Ordre", 8, u"funksjonen «year» mangler et argument"},
        SyntaxCase{u"SELECT COUNT() FROM Ordre", 8, u"funksjonen «COUNT» mangler et argument"},
        SyntaxCase{u"SELECT Sum(*) FROM Ordre", 12, u"«*»"},
        SyntaxCase{u"SELECT ID FROM Ordre JOIN Bil ON a=b", 22, u"«JOIN»"},
        SyntaxCase{u"SELECT ID FROM Ordre LEFT JOIN Bil", 35, u"setningen er ikke ferdig"},
        SyntaxCase{u"INSERT INTO Ordre (ID) VALUES (1", 33, u"setningen er ikke ferdig"},
        SyntaxCase{u"INSERT INTO Ordre (ID) VALUES ()", 32, u"«)»"},
        SyntaxCase{u"UPDATE Ordre SET ID 1", 21, u"«1»"},
        SyntaxCase{u"DELETE Ordre", 8, u"«Ordre»"},
        SyntaxCase{u"CREATE TABLE t (a VARCHAR(10))", 19, u"«VARCHAR»"},
        SyntaxCase{u"CREATE TABLE t ()", 17, u"«)»"},
        SyntaxCase{u"CREATE TABLE t (a TEXT(0))", 24, u"bredden på et tekstfelt er fra 1 til 255"},
        SyntaxCase{u"CREATE TABLE t (a TEXT(256))", 24,
                   u"bredden på et tekstfelt er fra 1 til 255"},
        SyntaxCase{u"CREATE TABLE t (CONSTRAINT a UNIQUE (b), b LONG)", 17, u"«CONSTRAINT»"},
        SyntaxCase{u"CREATE TABLE t (a LONG CONSTRAINT b)", 36, u"«)»"},
        SyntaxCase{u"ALTER TABLE t ADD COLUMN a COUNTER", 26,
                   u"et tellerfelt kan ikke legges til senere"},
        SyntaxCase{u"ALTER TABLE t ADD COLUMN a LONG UNIQUE", 33, u"«UNIQUE»"},
        SyntaxCase{u"ALTER TABLE t RENAME COLUMN a", 15, u"«RENAME»"}));

// What the dialect does not know never reaches a database.
INSTANTIATE_TEST_SUITE_P(
    Refused, SyntaxError,
    testing::Values(SyntaxCase{u"SELECT ID FROM Ordre; DROP TABLE Ordre", 23, u"«DROP»"},
                    SyntaxCase{u"SELECT ID FROM Ordre;;", 22, u"«;»"},
                    SyntaxCase{u"UPDATE Ordre SET Navn=''); DROP TABLE Ordre;--'", 25, u"«)»"},
                    SyntaxCase{u"SELECT ID FROM Ordre -- alt", 22, u"«--»"},
                    SyntaxCase{u"SELECT ID /* alt */ FROM Ordre", 11, u"«/*»"},
                    SyntaxCase{u"SELECT \"ID\" FROM Ordre", 8, u"«\"»"},
                    SyntaxCase{u"SELECT ID FROM Ordre UNION SELECT ID FROM Bil", 22, u"«UNION»"},
                    SyntaxCase{u"SELECT ID FROM (SELECT ID FROM Ordre)", 17, u"«SELECT»"},
                    SyntaxCase{u"SELECT ID FROM Ordre WHERE ID IN (SELECT 1)", 35, u"«SELECT»"},
                    SyntaxCase{u"SELECT ID FROM Ordre WHERE EXISTS (1)", 28,
                               u"«EXISTS» er ingen kjent funksjon"},
                    SyntaxCase{u"SELECT ID FROM Ordre LIMIT 5", 28, u"«5»"},
                    SyntaxCase{u"SELECT ID INTO Kopi FROM Ordre", 11, u"«INTO»"},
                    SyntaxCase{u"SELECT load_extension('x') FROM Ordre", 8,
                               u"«load_extension» er ingen kjent funksjon"},
                    SyntaxCase{u"SELECT 1", 9, u"setningen er ikke ferdig"},
                    SyntaxCase{u"SELECT @@VERSION", 8, u"«@»"},
                    SyntaxCase{u"SELECT @@IDENTITY FROM Ordre", 19, u"«FROM»"},
                    SyntaxCase{u"INSERT INTO Ordre SELECT * FROM Bil", 19, u"«SELECT»"},
                    SyntaxCase{u"INSERT INTO Ordre (ID) VALUES (1),(2)", 34, u"«,»"},
                    SyntaxCase{u"ATTACH DATABASE 'x' AS y", 1, u"«ATTACH»"},
                    SyntaxCase{u"PRAGMA foreign_keys=OFF", 1, u"«PRAGMA»"},
                    SyntaxCase{u"COPY Ordre TO PROGRAM 'x'", 1, u"«COPY»"},
                    SyntaxCase{u"WITH a AS (SELECT 1) SELECT * FROM a", 1, u"«WITH»"},
                    SyntaxCase{u"EXPLAIN SELECT ID FROM Ordre", 1, u"«EXPLAIN»"},
                    SyntaxCase{u"VACUUM", 1, u"«VACUUM»"}, SyntaxCase{u"BEGIN", 1, u"«BEGIN»"},
                    SyntaxCase{u"CREATE INDEX a ON Ordre (ID)", 8, u"«INDEX»"},
                    SyntaxCase{u"CREATE TABLE a AS SELECT * FROM Ordre", 16, u"«AS»"},
                    SyntaxCase{u"DROP INDEX a", 6, u"«INDEX»"}));

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
