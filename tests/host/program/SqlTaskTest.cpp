#include "host/program/HostTest.h"

using namespace Qt::StringLiterals;

namespace {

class SqlTaskTest : public HostTest
{
protected:
    SqlTaskTest() { write(u"demo.db"_s, {}); } // an empty file is an empty database

    [[nodiscard]] Outcome sql(const QString &statement, const QString &locale = {}) const
    {
        return host({u"--dsn"_s, u"demo.db"_s, u"--sql"_s, statement}, locale);
    }
    [[nodiscard]] QByteArray text(const QString &statement) const
    {
        const Outcome outcome = sql(statement);
        EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
        EXPECT_EQ(outcome.err, QString());
        return outcome.out;
    }
};

TEST_F(SqlTaskTest, PrintsNamesTypesAndValues)
{
    change(u"CREATE TABLE T (ID COUNTER CONSTRAINT ID PRIMARY KEY, S SHORT, L LONG, F SINGLE, "
           u"D DOUBLE, K CURRENCY, Dt DATE, B BIT, Tx TEXT(40), Bl LONGBINARY)"_s);
    change(u"INSERT INTO T (S,L,F,D,K,Dt,B,Tx) VALUES (-7,123456,2.5,0.125,1234.5,#03/09/2014#,"
           u"True,'Blåbær')"_s);
    change(u"INSERT INTO T (S,K,B,Dt) VALUES (0,-0.0501,0,#2014-03-09 13:05:00#)"_s);
    const QByteArray expected =
        "ID:3\tS:2\tL:3\tF:4\tD:5\tK:6\tDt:7\tB:11\tTx:202\tBl:205\n"
        "1\t-7\t123456\t2.5\t0.125\t1234.50\t2014-03-09\tTrue\tBlåbær\t\\N\n"
        "2\t0\t\\N\t\\N\t\\N\t-0.0501\t2014-03-09 13:05:00\tFalse\t\\N\t\\N\n";
    EXPECT_EQ(text(u"SELECT * FROM T ORDER BY ID"_s), expected);
    // The machine's locale changes nothing.
    EXPECT_EQ(sql(u"SELECT * FROM T ORDER BY ID"_s, u"en_US.UTF-8"_s).out, expected);
    EXPECT_EQ(sql(u"SELECT * FROM T ORDER BY ID"_s, u"C"_s).out, expected);
}

TEST_F(SqlTaskTest, EscapesWhatWouldBreakALine)
{
    change(u"CREATE TABLE T (A TEXT(40), B TEXT(40))"_s);
    change(u"INSERT INTO T (A,B) VALUES ('a\tb\nc\rd\\e','\\N')"_s);
    EXPECT_EQ(text(u"SELECT A,B FROM T"_s),
              QByteArray("A:202\tB:202\na\\tb\\nc\\rd\\\\e\t\\\\N\n"));
}

TEST_F(SqlTaskTest, NoRowsGiveTheHeaderAlone)
{
    change(u"CREATE TABLE T (A SHORT, B TEXT(10))"_s);
    EXPECT_EQ(text(u"SELECT A,B FROM T"_s), QByteArray("A:2\tB:202\n"));
}

TEST_F(SqlTaskTest, QueryMayBeginInAnyCaseBehindBlanks)
{
    change(u"CREATE TABLE T (A SHORT)"_s);
    change(u"insert into T (A) values (4);"_s);
    EXPECT_EQ(text(u"  \n select A from T;"_s), QByteArray("A:2\n4\n"));
}

TEST_F(SqlTaskTest, ChangeIsStored)
{
    change(u"CREATE TABLE T (A SHORT)"_s);
    change(u"INSERT INTO T (A) VALUES (1)"_s);
    change(u"UPDATE T SET A=2"_s);
    EXPECT_EQ(single(u"SELECT A FROM T"_s), u"2"_s);
}

TEST_F(SqlTaskTest, RefusalIsTheLastError)
{
    expectRefusal(sql(u"SELECT A FROM Mangler"_s), 1, u"-2147217865 - "_s);
    expectRefusal(sql(u"SELEKT 1"_s), 1, u"-2147217900 - "_s);
    expectRefusal(sql(u"DELETE FROM Mangler"_s), 1, u"-2147217865 - "_s);
    expectRefusal(sql(u"   "_s), 1, u"-2147217900 - "_s);
}

TEST_F(SqlTaskTest, SecondStatementRunsNothing)
{
    change(u"CREATE TABLE T (A TEXT(10))"_s);
    expectRefusal(sql(u"INSERT INTO T (A) VALUES ('');DROP TABLE T"_s), 1, u"-2147217900 - "_s);
    EXPECT_EQ(text(u"SELECT A FROM T"_s), QByteArray("A:202\n"));
}

TEST_F(SqlTaskTest, UnreachableDatabaseIsTold)
{
    expectRefusal(host({u"--dsn"_s, u"mangler.db"_s, u"--sql"_s, u"SELECT 1 FROM T"_s}), 1,
                  u"mangler.db"_s);
    expectRefusal(host({u"--dsn"_s, u"mangler.db"_s, u"--sql"_s, u"DROP TABLE T"_s}), 1,
                  u"mangler.db"_s);
    EXPECT_EQ(files(), QStringList{u"demo.db"_s});
}

TEST_F(SqlTaskTest, LettersOfTheStatementPassUnderAPlainLocale)
{
    change(u"CREATE TABLE T (A TEXT(10))"_s);
    EXPECT_EQ(sql(u"INSERT INTO T (A) VALUES ('Åse')"_s, u"C"_s).status, 0);
    const Outcome found = sql(u"SELECT A FROM T WHERE A='åse'"_s, u"POSIX"_s);
    EXPECT_EQ(found.out, QByteArray("A:202\nÅse\n"));
    EXPECT_EQ(found.err, QString());
}

TEST_F(SqlTaskTest, FullDeviceFailsTheRun)
{
    change(u"CREATE TABLE T (A SHORT)"_s);
    const Outcome outcome = start(
        u"/bin/sh"_s, {u"-c"_s, u"exec \"$0\" --dsn demo.db --sql 'SELECT A FROM T' >/dev/full"_s,
                       programFile()});
    expectRefusal(outcome, 1, u"utskriften lot seg ikke skrive"_s);
}

TEST_F(SqlTaskTest, DoesNotStartTheModule)
{
    change(u"CREATE TABLE T (A SHORT)"_s);
    expectRefusal(sql(u"SELECT * FROM Ordre"_s), 1, u"-2147217865 - "_s);
}

} // namespace
