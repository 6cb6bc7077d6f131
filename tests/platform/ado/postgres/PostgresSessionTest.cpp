#include "platform/ado/postgres/Support.h"
#include "runtime/Moment.h"

namespace ado::test {

class PostgresSessionTest : public PostgresTest
{
};

TEST_F(PostgresSessionTest, TypesComeBackExactlyForFullAndEmptyResults)
{
    Client client(m_database);
    const QString columns = u"(A SHORT, B LONG, C SINGLE, D DOUBLE, E CURRENCY, F DATE, G BIT, H "
                            "TEXT(7), I LONGBINARY, J COUNTER CONSTRAINT J PRIMARY KEY)"_s;
    client.run(u"CREATE TABLE Alt "_s + columns);
    client.run(u"CREATE TABLE Tom "_s + columns);
    client.run(u"INSERT INTO Alt (A,B,C,D,E,F,G,H) VALUES (-1,2,0.1,0.25,3.1,#12/31/2020#,True,"
               "'blåbær')"_s);
    const DataType expected[] = {DataType::SmallInt, DataType::Integer,  DataType::Single,
                                 DataType::Double,   DataType::Currency, DataType::Date,
                                 DataType::Boolean,  DataType::VarWChar, DataType::LongVarBinary,
                                 DataType::Integer};
    for (const QString &table : {u"Alt"_s, u"Tom"_s}) {
        const Recordset rows = client.rows(u"SELECT * FROM "_s + table);
        ASSERT_EQ(rows.fieldCount(), 10);
        for (int i = 0; i < 10; ++i)
            EXPECT_EQ(rows.field(i).type, expected[i]) << i;
        EXPECT_EQ(rows.field(u"H").definedSize, 7);
        EXPECT_EQ(rows.recordCount(), table == u"Alt"_s ? 1 : 0);
    }
    const Recordset rows = client.rows(u"SELECT * FROM Alt"_s);
    EXPECT_EQ(rows.value(0), Value(qint16{-1}));
    EXPECT_EQ(rows.value(1), Value(qint32{2}));
    EXPECT_EQ(rows.value(2), Value(0.1F));
    EXPECT_EQ(rows.value(3), Value(0.25));
    EXPECT_EQ(rows.value(4), Value(Currency::fromTenThousandths(31000)));
    EXPECT_EQ(rows.value(5), Value(utcMoment(QDate(2020, 12, 31))));
    EXPECT_EQ(rows.value(6), Value(true));
    EXPECT_EQ(rows.value(7), Value(u"blåbær"_s));
    EXPECT_TRUE(rows.value(8).isNull());
}

TEST_F(PostgresSessionTest, AggregatesHaveTheirTypesWithAndWithoutRows)
{
    Client client(m_database);
    client.run(
        u"CREATE TABLE T (Nr SHORT, Antall SINGLE, Belop CURRENCY, Navn TEXT(9), Dag DATE)"_s);
    const DataType expected[] = {DataType::Integer,  DataType::SmallInt, DataType::Double,
                                 DataType::Double,   DataType::Currency, DataType::Currency,
                                 DataType::VarWChar, DataType::Date,     DataType::SmallInt};
    for (const int count : {0, 2}) {
        for (int i = 0; i < count; ++i)
            client.run(u"INSERT INTO T VALUES (2,0.1,0.05,'x',#03/09/2014#)"_s);
        const Recordset rows =
            client.rows(u"SELECT COUNT "
                        u"(*),Max(Nr),Sum(Nr),Sum(Antall),Sum(Belop),Avg(Belop),Max(Navn),Min(Dag),"
                        "Year(Max(Dag)) FROM T"_s);
        for (int i = 0; i < rows.fieldCount(); ++i)
            EXPECT_EQ(rows.field(i).type, expected[i]) << i;
        EXPECT_EQ(rows.value(0), Value(qint32{count}));
        if (count == 0) {
            EXPECT_TRUE(rows.isNull(4));
            continue;
        }
        EXPECT_EQ(rows.value(2), Value(4.0));
        EXPECT_EQ(rows.value(3), Value(0.2)); // a single is the number that it shows
        EXPECT_EQ(rows.value(4), Value(Currency::fromTenThousandths(1000)));
        EXPECT_EQ(rows.value(5), Value(Currency::fromTenThousandths(500)));
        EXPECT_EQ(rows.value(8), Value(qint16{2014}));
    }
}

TEST_F(PostgresSessionTest, MoneyIsExactToTheEndsOfItsRange)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (ID COUNTER PRIMARY KEY, Gruppe SHORT, Belop CURRENCY)"_s);
    for (const QString &amount : {u"922337203685477.5807"_s, u"-922337203685477.5807"_s,
                                  u"0.0001"_s, u"-0.05"_s, u"0"_s, u"10000"_s, u"99999999.9999"_s})
        client.run(u"INSERT INTO T (Gruppe,Belop) VALUES (1,%1)"_s.arg(amount));
    Recordset walked = client.rows(u"SELECT Belop FROM T ORDER BY ID"_s);
    std::vector<qint64> amounts;
    for (; !walked.eof(); walked.moveNext())
        amounts.push_back(walked.currency(0).tenThousandths());
    EXPECT_EQ(amounts, (std::vector<qint64>{9223372036854775807, -9223372036854775807, 1, -500, 0,
                                            100000000, 999999999999}));
    client.run(u"DELETE FROM T"_s);
    for (const QString &amount : {u"0.10"_s, u"0.20"_s, u"-0.30"_s})
        client.run(u"INSERT INTO T (Gruppe,Belop) VALUES (1,%1)"_s.arg(amount));
    client.run(u"INSERT INTO T (Gruppe,Belop) VALUES (2,0.10)"_s);
    EXPECT_EQ(client.column(u"SELECT Gruppe FROM T GROUP BY Gruppe HAVING Sum(Belop)<>0;"_s),
              u"2"_s);
}

TEST_F(PostgresSessionTest, NumbersOutsideTheColumnAreRefusedAndTextIsCut)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (Nr SHORT, Stor LONG, Navn TEXT(3))"_s);
    client.run(u"INSERT INTO T VALUES (32767,2147483647,'Årdal')"_s);
    EXPECT_EQ(client.value(u"SELECT Navn FROM T"_s), Value(u"Ård"_s));
    EXPECT_EQ(errorOf([&] { client.run(u"INSERT INTO T (Nr) VALUES (32768)"_s); }),
              errors::kOutOfRange);
    EXPECT_EQ(errorOf([&] { client.run(u"UPDATE T SET Nr=Stor"_s); }), errors::kOutOfRange);
    EXPECT_EQ(errorOf([&] { client.run(u"UPDATE T SET Stor=Stor+1"_s); }), errors::kOutOfRange);
    EXPECT_EQ(errorOf([&] {
                  client.run(u"INSERT INTO T (Navn) VALUES ('a"_s + QChar(u'\0') + u"b')"_s);
              }),
              errors::kTypeMismatch);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"T\""_s), "1");
}

TEST_F(PostgresSessionTest, TextComparesAndSortsAsNorwegian)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (Navn TEXT(20))"_s);
    for (const QString &name : {u"Ås"_s, u"zebra"_s, u"Ørland"_s, u"ærlig"_s, u"Bodø"_s, u"alta"_s,
                                u"Aasen"_s, u"ALTA"_s})
        client.run(u"INSERT INTO T (Navn) VALUES ('%1')"_s.arg(name));
    EXPECT_EQ(client.column(u"SELECT Navn FROM T WHERE Navn<>'ALTA' ORDER BY Navn"_s),
              u"Bodø zebra ærlig Ørland Ås Aasen"_s);
    EXPECT_EQ(client.value(u"SELECT COUNT(*) FROM T WHERE Navn='ØRLAND'"_s), Value(qint32{1}));
    EXPECT_EQ(client.value(u"SELECT COUNT(*) FROM T WHERE Navn IN ('alta','bodø')"_s),
              Value(qint32{3}));
    EXPECT_EQ(client.rows(u"SELECT DISTINCT Navn FROM T"_s).recordCount(), 7);
    EXPECT_EQ(
        client.rows(u"SELECT Navn FROM T GROUP BY Navn HAVING Navn IS NOT NULL"_s).recordCount(),
        7);
    EXPECT_EQ(client.value(u"SELECT Max(Navn) FROM T"_s), Value(u"Aasen"_s));
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

TEST_F(PostgresSessionTest, RowsWithoutOrderComeByTheKey)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (ID COUNTER PRIMARY KEY, Sats SINGLE)"_s);
    for (const int rate : {25, 15, 0, 15})
        client.run(u"INSERT INTO T (Sats) VALUES (%1)"_s.arg(rate));
    client.run(u"UPDATE T SET Sats=10 WHERE ID=1"_s); // the server moves the row to the end
    EXPECT_EQ(client.column(u"SELECT ID FROM T"_s), u"1 2 3 4"_s);
    EXPECT_EQ(client.column(u"SELECT Sats FROM T GROUP BY Sats"_s), u"0 10 15"_s);
    EXPECT_EQ(client.column(u"SELECT DISTINCT Sats FROM T"_s), u"0 10 15"_s);
    client.run(u"INSERT INTO T (Sats) VALUES (Null)"_s);
    EXPECT_EQ(client.column(u"SELECT Sats FROM T ORDER BY Sats"_s), u"Null 0 10 15 15"_s);
    EXPECT_EQ(client.column(u"SELECT Sats FROM T ORDER BY Sats DESC"_s), u"15 15 10 0 Null"_s);
}

TEST_F(PostgresSessionTest, IdentityIsThatOfTheSessionsOwnInsert)
{
    Client first(m_database);
    Client second(m_database);
    first.run(u"CREATE TABLE T (ID COUNTER CONSTRAINT ID PRIMARY KEY, Nr LONG)"_s);
    first.run(u"CREATE TABLE Uten (Nr LONG)"_s);
    EXPECT_EQ(first.value(u"SELECT @@IDENTITY"_s), Value(qint32{0}));
    first.beginTrans();
    first.execute(u"INSERT INTO T (Nr) VALUES (10)"_s);
    second.run(u"INSERT INTO T (Nr) VALUES (20)"_s);
    first.run(u"INSERT INTO Uten (Nr) VALUES (1)"_s);
    EXPECT_EQ(first.value(u"SELECT @@IDENTITY"_s), Value(qint32{1}));
    EXPECT_EQ(second.value(u"SELECT @@IDENTITY"_s), Value(qint32{2}));
    first.commitTrans();
    EXPECT_EQ(first.rows(u"SELECT @@IDENTITY"_s).field(0).type, DataType::Integer);
    first.close();
    second.close();
    EXPECT_EQ(Client(m_database).value(u"SELECT @@IDENTITY"_s), Value(qint32{0}));
}

TEST_F(PostgresSessionTest, NumberGivenByTheStatementIsNotHandedOutAgain)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (ID COUNTER CONSTRAINT ID PRIMARY KEY, Nr LONG)"_s);
    client.run(u"INSERT INTO T (ID,Nr) VALUES (7,1)"_s);
    EXPECT_EQ(client.value(u"SELECT @@IDENTITY"_s), Value(qint32{7}));
    client.run(u"INSERT INTO T (ID,Nr) VALUES (3,2)"_s);
    client.run(u"INSERT INTO T (Nr) VALUES (3)"_s);
    EXPECT_EQ(client.value(u"SELECT @@IDENTITY"_s), Value(qint32{8}));
    client.run(u"INSERT INTO T VALUES (9,4)"_s);
    client.run(u"INSERT INTO T (Nr) VALUES (5)"_s);
    EXPECT_EQ(client.column(u"SELECT ID FROM T"_s), u"3 7 8 9 10"_s);
}

TEST_F(PostgresSessionTest, StackedStatementRunsNothing)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (Navn TEXT(40))"_s);
    EXPECT_EQ(
        errorOf([&] { client.run(u"INSERT INTO T (Navn) VALUES ('a'); DROP TABLE T;--')"_s); }),
        errors::kSyntax);
    EXPECT_EQ(errorOf([&] { (void)client.rows(u"SELECT Navn FROM T; SELECT 1"_s); }),
              errors::kSyntax);
    EXPECT_EQ(errorOf([&] { client.run(u"COPY T TO PROGRAM 'id'"_s); }), errors::kSyntax);
    client.run(u"INSERT INTO T (Navn) VALUES ('''); DROP TABLE T;--')"_s);
    client.run(u"INSERT INTO T (Navn) VALUES ('\\''); DROP TABLE T;--')"_s);
    EXPECT_EQ(client.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{2}));
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

TEST_F(PostgresSessionTest, MoreStatementsThanAreKeptPreparedWork)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (Nr LONG)"_s);
    for (int i = 1; i <= 150; ++i) {
        QString sum = u"Nr"_s;
        for (int j = 0; j < i % 100; ++j)
            sum += u"+Nr"_s;
        client.run(u"INSERT INTO T (Nr) VALUES (%1)"_s.arg(i));
        EXPECT_EQ(client.rows(u"SELECT "_s + sum + u" FROM T"_s).recordCount(), i);
    }
}

} // namespace ado::test
