#include "platform/ado/Session.h"
#include "platform/ado/postgres/PostgresWriter.h"
#include "platform/ado/postgres/Support.h"
#include "runtime/Moment.h"

namespace ado::test {

class PostgresSessionTest : public PostgresTest
{
};

TEST_F(PostgresSessionTest, ATextMayNotHoldTheCodeZero)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (Navn TEXT(3))"_s);
    EXPECT_EQ(errorOf([&] {
                  client.run(u"INSERT INTO T (Navn) VALUES ('a"_s + QChar(u'\0') + u"b')"_s);
              }),
              errors::kTypeMismatch);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"T\""_s), "0");
}

TEST_F(PostgresSessionTest, TablesMadeWithOtherTypesWorkAlike)
{
    m_database.run(
        u"CREATE TABLE \"Annet\" (nr bigint PRIMARY KEY, \"Navn\" text COLLATE \"C\", kode "
        "char(5), belop numeric(12,2), dag date, uuid uuid)"_s);
    m_database.run(u"INSERT INTO \"Annet\" VALUES (1, 'ås', 'ab', 1.5, '2014-03-09', "
                   "'00000000-0000-0000-0000-000000000001'), (2, 'Bø', 'b', 2, NULL, NULL)"_s);
    Client client(m_database);
    EXPECT_EQ(client.column(u"SELECT Navn FROM Annet ORDER BY Navn"_s), u"Bø ås"_s);
    EXPECT_EQ(client.value(u"SELECT Nr FROM Annet WHERE Navn='ÅS' AND Kode='AB'"_s), Value(1.0));
    EXPECT_EQ(client.value(u"SELECT Sum(Belop) FROM Annet"_s),
              Value(Currency::fromTenThousandths(35000)));
    EXPECT_EQ(client.value(u"SELECT Year(Dag) FROM Annet WHERE Nr=1"_s), Value(qint16{2014}));
    EXPECT_EQ(client.value(u"SELECT Uuid FROM Annet WHERE Nr=1"_s).toText().right(1), u"1"_s);
    client.run(u"UPDATE Annet SET Navn='Øy', Belop=7.25, Dag=#12/24/2015# WHERE Navn='BØ'"_s);
    EXPECT_EQ(stored(u"SELECT \"Navn\", belop, dag FROM \"Annet\" WHERE nr = 2"_s),
              "Øy|7.25|2015-12-24");
}

TEST_F(PostgresSessionTest, IndexOfAYearIsUsed)
{
    Client client(m_database);
    client.run(u"CREATE TABLE Bilag (KlientNr SHORT, BilagNr LONG, BilagDato DATE)"_s);
    client.provideIndex(u"Bilag"_s, u"KlientAarNr"_s,
                        {u"KlientNr"_s, u"Year(BilagDato)"_s, u"BilagNr"_s});
    const dialect::Lexed asked = dialect::lex(u"SELECT Max(BilagNr) AS MaxNr FROM Bilag WHERE "
                                              u"KlientNr= 5 AND Year(Bilag.BilagDato)= 2014"_s);
    const DataSource source = resolve(ConnectionString(m_database.connectionString()));
    const std::unique_ptr<Session> session = openSession(source);
    QByteArray sql = dialect::translate(asked, session->catalog(), PostgresWriter()).sql;
    sql.replace("$1", "5").replace("$2", "2014");
    OtherUser planner(m_database);
    // A table of few rows would be read through all the same.
    planner.run(u"INSERT INTO \"Bilag\" SELECT 5, number, '2014-03-09' FROM "
                u"generate_series(1, 5000) AS number; ANALYZE \"Bilag\""_s);
    const QString plan = planner.all(u"EXPLAIN "_s + QString::fromUtf8(sql));
    EXPECT_TRUE(plan.contains(u"Index Only Scan Backward") || plan.contains(u"Index Scan Backward"))
        << plan.toStdString();
    EXPECT_EQ(plan.count(u"Filter:"), 0) << plan.toStdString();
}

TEST_F(PostgresSessionTest, IndexOfATextIsUsedByJoins)
{
    Client client(m_database);
    for (const QString &table : {u"Linje"_s, u"Vare"_s})
        client.run(u"CREATE TABLE %1 (Rad LONG, Nr TEXT(20))"_s.arg(table));
    client.provideIndex(u"Vare"_s, u"Nr"_s, {u"Nr"_s});
    OtherUser planner(m_database);
    planner.run(u"INSERT INTO \"Linje\" SELECT number, 'p' || number * 400 FROM "
                u"generate_series(1, 10) AS number; ANALYZE \"Linje\""_s);
    planner.run(u"INSERT INTO \"Vare\" SELECT number, 'P' || number FROM "
                u"generate_series(1, 5000) AS number; ANALYZE \"Vare\""_s);
    const QString join = u"SELECT L.Rad, V.Rad FROM Linje AS L LEFT JOIN Vare AS V ON L.Nr=V.Nr"_s;
    const std::unique_ptr<Session> session =
        openSession(resolve(ConnectionString(m_database.connectionString())));
    const QByteArray sql =
        dialect::translate(dialect::lex(join), session->catalog(), PostgresWriter()).sql;
    const QString plan = planner.all(u"EXPLAIN "_s + QString::fromUtf8(sql));
    EXPECT_TRUE(plan.contains(u"Index Scan using \"Vare.Nr\"")) << plan.toStdString();
    EXPECT_EQ(client.value(u"SELECT Count(V.Rad) FROM Linje AS L LEFT JOIN Vare AS V "
                           u"ON L.Nr=V.Nr"_s),
              Value(qint32{10}));
}

// A start asks for its index each time, also while somebody writes.
TEST_F(PostgresSessionTest, AnIndexThatIsThereWaitsForNobody)
{
    Client client(m_database.connectionString() + u"&options=-c%20lock_timeout%3D50"_s);
    client.run(u"CREATE TABLE Vare (Nr TEXT(20))"_s);
    client.provideIndex(u"vare"_s, u"Nr"_s, {u"Nr"_s});
    OtherUser writer(m_database);
    writer.run(u"BEGIN; INSERT INTO \"Vare\" VALUES ('P1')"_s);
    client.provideIndex(u"vare"_s, u"Nr"_s, {u"Nr"_s});
    EXPECT_EQ(errorOf([&] { client.provideIndex(u"Vare"_s, u"Annen"_s, {u"Nr"_s}); }),
              errors::kTimeout);
}

// A moment that another program keeps with its zone is a day of this machine's calendar, not of the
// server's; the tests run in Norway.
TEST_F(PostgresSessionTest, AMomentWithAZoneIsSeenInTheMachinesOwn)
{
    m_database.run(u"CREATE TABLE Moment (Nr integer, Dag timestamptz)"_s);
    m_database.run(u"INSERT INTO Moment VALUES (1, '2026-01-01 00:00+01'), (2, "
                   "'2026-07-01 00:00+02')"_s);
    m_database.run(u"DO $$ BEGIN EXECUTE format('ALTER DATABASE %I SET timezone TO "
                   "''America/New_York''', current_database()); END $$"_s);
    Client client(m_database);
    EXPECT_EQ(client.column(u"SELECT Dag FROM Moment ORDER BY Nr"_s), u"01.01.2026 01.07.2026"_s);
    EXPECT_EQ(client.column(u"SELECT Nr FROM Moment WHERE Dag=#07/01/2026#"_s), u"2"_s);
    client.run(u"UPDATE Moment SET Dag=#12/24/2026# WHERE Nr=1"_s);
    EXPECT_EQ(stored(u"SELECT to_char(Dag AT TIME ZONE 'UTC', 'YYYY-MM-DD HH24') FROM Moment "
                     "WHERE Nr=1"_s),
              "2026-12-23 23");

    // Who names a zone gets that one.
    Client abroad(m_database.connectionString() + u"&options=-c%20TimeZone%3DAsia/Tokyo"_s);
    EXPECT_EQ(abroad.column(u"SELECT Dag FROM Moment WHERE Nr=2"_s), u"01.07.2026 07:00:00"_s);
}

TEST_F(PostgresSessionTest, WhatIsNoNumberOfTheModulesSpoilsNoMoreThanItsColumn)
{
    m_database.run(u"CREATE TABLE t (a real, b double precision, c numeric(19,4), d timestamp, e "
                   "integer)"_s);
    m_database.run(u"INSERT INTO t VALUES ('Infinity', 'NaN', 'NaN', '-infinity', 7)"_s);
    Client client(m_database);
    for (const QString &column : {u"a"_s, u"b"_s, u"c"_s, u"d"_s}) {
        const auto read = [&] { (void)client.value(u"SELECT %1 FROM t"_s.arg(column)); };
        EXPECT_EQ(errorOf(read), errors::kTypeMismatch);
        EXPECT_TRUE(textOf(read).contains(u"«%1»"_s.arg(column))) << column.toStdString();
    }
    EXPECT_EQ(client.value(u"SELECT e FROM t"_s), Value(qint32{7}));
    // An amount from before its column kept to 64 bits.
    m_database.run(u"UPDATE t SET c = 999999999999999"_s);
    const auto amount = [&] { (void)client.value(u"SELECT c FROM t"_s); };
    EXPECT_EQ(errorOf(amount), errors::kOutOfRange);
    EXPECT_TRUE(textOf(amount).contains(u"«c»"));
}

TEST_F(PostgresSessionTest, BrokenConstraintsNameWhatTheyBroke)
{
    Client client(m_database);
    client.run(u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, OrdreNr "
               "LONG NOT NULL, CONSTRAINT KlientOrdre UNIQUE (KlientNr, OrdreNr))"_s);
    client.run(u"CREATE TABLE OrdreLinjer (ID COUNTER CONSTRAINT ID PRIMARY KEY, OrdreID LONG "
               "CONSTRAINT OrdreID REFERENCES Ordre (ID))"_s);
    client.run(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (5,1)"_s);
    const auto refusal = [&](const QString &statement) {
        EXPECT_EQ(errorOf([&] { client.run(statement); }), errors::kIntegrity);
        return textOf([&] { client.run(statement); });
    };
    const QString twice = refusal(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (5,1)"_s);
    EXPECT_TRUE(twice.contains(u"KlientOrdre") && twice.contains(u"«Ordre»"))
        << twice.toStdString();
    EXPECT_TRUE(refusal(u"INSERT INTO OrdreLinjer (OrdreID) VALUES (99)"_s).contains(u"OrdreID"));
    EXPECT_TRUE(refusal(u"INSERT INTO Ordre (KlientNr) VALUES (5)"_s).contains(u"OrdreNr"));
    EXPECT_EQ(errorOf([&] { client.run(u"DROP TABLE Ordre"_s); }), errors::kIntegrity);
}

TEST_F(PostgresSessionTest, NothingIsWrittenToTheStandardError)
{
    // Names beyond the server's length are cut with a notice.
    testing::internal::CaptureStderr();
    Client client(m_database);
    client.run(u"CREATE TABLE T (Nr LONG)"_s);
    EXPECT_EQ(client.rows(u"SELECT Nr FROM T AS "_s + QString(100, u'x')).recordCount(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace ado::test
