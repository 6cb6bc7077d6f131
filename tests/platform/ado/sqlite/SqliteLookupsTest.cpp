#include "platform/ado/Support.h"
#include "support/Child.h"
#include "support/SqliteSteps.h"

#include <array>
#include <random>

namespace ado::test {

/// Joins on text, which go through lookups of the session. A lookup that missed a change would lose
/// or invent places behind the postal codes.
class SqliteLookupsTest : public testing::Test
{
protected:
    SqliteLookupsTest()
    {
        m_connection.run(
            u"CREATE TABLE Kunde (Nr LONG CONSTRAINT N PRIMARY KEY, PostNr TEXT(10))"_s);
        m_connection.run(u"CREATE TABLE Sted (PostNr TEXT(10) CONSTRAINT P PRIMARY KEY, "
                         u"Navn TEXT(20))"_s);
        m_connection.run(u"INSERT INTO Kunde VALUES (1,'0010')"_s);
        m_connection.run(u"INSERT INTO Kunde VALUES (2,'2317')"_s);
        m_connection.run(u"INSERT INTO Sted VALUES ('0010','Oslo')"_s);
        m_connection.run(u"INSERT INTO Sted VALUES ('2317','Hamar')"_s);
    }
    /// The places behind the customers, read by a session that has read them before.
    QString places() { return m_connection.column(kPlaces); }
    void expectPlaces(const QString &wanted)
    {
        EXPECT_EQ(places(), wanted);
        EXPECT_EQ(m_connection.column(kPlacesByScan), wanted);
    }

    // What is joined by an alternative too is no lookup.
    const QString kPlaces =
        u"SELECT S.Navn FROM Kunde AS K LEFT JOIN Sted AS S ON K.PostNr=S.PostNr"_s;
    const QString kPlacesByScan = kPlaces + u" OR K.Nr<0"_s;

    const SqliteSteps m_scans;
    Database m_file;
    Opened m_connection{m_file};
    Tool m_tool{m_file.path()};
};

// --- What it is for

TEST_F(SqliteLookupsTest, TheJoinedTableIsNotReadThrough)
{
    m_connection.beginTrans();
    for (int i = 0; i < 500; ++i)
        m_connection.run(u"INSERT INTO Sted VALUES ('5%1','Sted')"_s.arg(100 + i));
    m_connection.commitTrans();
    const QString one = u" WHERE K.Nr=2"_s;
    const QString two =
        u"SELECT S.Navn,L.Navn FROM (Kunde K LEFT JOIN Sted S ON K.PostNr=S.PostNr) "
        u"LEFT JOIN Sted L ON L.PostNr=K.PostNr"_s;
    const QString inner = u"SELECT S.Navn FROM Kunde K INNER JOIN Sted S ON K.PostNr=S.PostNr"_s;
    const QString both = inner + u" INNER JOIN Sted L ON L.PostNr=S.PostNr AND K.PostNr=L.PostNr"_s;
    const QString narrowed = kPlaces + u" AND S.Navn<>'Oslo'"_s;
    for (const QString &statement : {kPlaces, two, inner, both, narrowed}) {
        EXPECT_EQ(m_connection.column(statement + one), u"Hamar"_s);
        SqliteSteps::taken();
        EXPECT_EQ(m_connection.column(statement + one), u"Hamar"_s);
        EXPECT_EQ(SqliteSteps::taken(), 0) << statement.toStdString();
    }
    static_cast<void>(m_connection.column(kPlacesByScan + one));
    EXPECT_GE(SqliteSteps::taken(), 501);
}

TEST_F(SqliteLookupsTest, ReadingAllCustomersReadsThePlacesOnce)
{
    EXPECT_EQ(places(), u"Oslo Hamar"_s);
    SqliteSteps::taken();
    EXPECT_EQ(places(), u"Oslo Hamar"_s);
    EXPECT_LE(SqliteSteps::taken(), 2); // the customers
}

TEST_F(SqliteLookupsTest, OwnChangesOfOtherTablesLeaveTheLookup)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.run(u"UPDATE Kunde SET PostNr='2317' WHERE Nr=1"_s);
    EXPECT_EQ(places(), u"Hamar Hamar"_s); // the lookup's own change may not count either
    SqliteSteps::taken();
    EXPECT_EQ(places(), u"Hamar Hamar"_s);
    m_connection.run(u"UPDATE Kunde SET PostNr='0010' WHERE Nr=2"_s);
    SqliteSteps::taken();
    EXPECT_EQ(places(), u"Hamar Oslo"_s);
    EXPECT_LE(SqliteSteps::taken(), 2); // the customers
}

// --- What changes the table

TEST_F(SqliteLookupsTest, OwnChangesAreSeen)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.run(u"UPDATE Sted SET PostNr='2318' WHERE PostNr='2317'"_s);
    expectPlaces(u"Oslo Null"_s);
    m_connection.run(u"INSERT INTO Sted VALUES ('2317','Stange')"_s);
    expectPlaces(u"Oslo Stange"_s);
    m_connection.run(u"DELETE FROM Sted WHERE Navn='Oslo'"_s);
    expectPlaces(u"Null Stange"_s);
}

TEST_F(SqliteLookupsTest, EmptiedAndFilledAgainItHasTheNewRows)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.run(u"DELETE FROM Sted"_s);
    expectPlaces(u"Null Null"_s);
    // The rows take the old rows' numbers.
    m_connection.run(u"INSERT INTO Sted VALUES ('2317','Stange')"_s);
    m_connection.run(u"INSERT INTO Sted VALUES ('0010','Kristiania')"_s);
    expectPlaces(u"Kristiania Stange"_s);
}

TEST_F(SqliteLookupsTest, ChangesOfAnotherConnectionAreSeen)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_tool.run("UPDATE Sted SET PostNr='x' WHERE PostNr='2317'");
    expectPlaces(u"Oslo Null"_s);
    m_tool.run("INSERT INTO Sted VALUES ('2317', 'Stange')");
    expectPlaces(u"Oslo Stange"_s);
    Opened second(m_file);
    second.run(u"UPDATE Sted SET PostNr='y' WHERE PostNr='x'"_s);
    second.run(u"UPDATE Kunde SET PostNr='y' WHERE Nr=1"_s);
    expectPlaces(u"Hamar Stange"_s);
}

TEST_F(SqliteLookupsTest, ChangesOfAnotherProcessAreSeen)
{
    expectPlaces(u"Oslo Hamar"_s);
    Child other([path = QFile::encodeName(m_file.path())] {
        sqlite3 *database = nullptr;
        sqlite3_open(path.constData(), &database);
        const int code = sqlite3_exec(
            database, "UPDATE Sted SET PostNr='2318', Navn='Stange' WHERE PostNr='2317'", nullptr,
            nullptr, nullptr);
        sqlite3_close(database);
        return code;
    });
    EXPECT_EQ(other.wait(), SQLITE_OK);
    expectPlaces(u"Oslo Null"_s);
    m_connection.run(u"UPDATE Kunde SET PostNr='2318' WHERE Nr=2"_s);
    expectPlaces(u"Oslo Stange"_s);
}

TEST_F(SqliteLookupsTest, WithinATransactionTheSnapshotHolds)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.beginTrans();
    expectPlaces(u"Oslo Hamar"_s);
    m_tool.run("UPDATE Sted SET PostNr='2318' WHERE PostNr='2317'");
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.commitTrans();
    expectPlaces(u"Oslo Null"_s);
}

TEST_F(SqliteLookupsTest, ChangesThatOthersChangesBringAreSeen)
{
    m_tool.run("CREATE TRIGGER Flytt AFTER UPDATE ON Kunde BEGIN"
               " UPDATE Sted SET PostNr = new.PostNr WHERE PostNr = old.PostNr; END");
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.run(u"UPDATE Kunde SET PostNr='9999' WHERE Nr=2"_s);
    expectPlaces(u"Oslo Hamar"_s);
}

TEST_F(SqliteLookupsTest, RowsNumberedAnewAreFound)
{
    m_connection.run(u"INSERT INTO Sted VALUES ('9999','Nord')"_s);
    m_connection.run(u"DELETE FROM Sted WHERE PostNr='0010'"_s);
    expectPlaces(u"Null Hamar"_s);
    m_tool.run("VACUUM");
    m_tool.run("UPDATE Kunde SET PostNr='9999' WHERE Nr=1");
    expectPlaces(u"Nord Hamar"_s);
}

// --- Transactions

TEST_F(SqliteLookupsTest, ChangeTakenBackIsForgotten)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.beginTrans();
    m_connection.run(u"UPDATE Sted SET PostNr='2318' WHERE PostNr='2317'"_s);
    expectPlaces(u"Oslo Null"_s);
    m_connection.rollbackTrans();
    expectPlaces(u"Oslo Hamar"_s);
}

TEST_F(SqliteLookupsTest, ChangeBeforeATransactionOutlivesIt)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.run(u"UPDATE Sted SET PostNr='2318' WHERE PostNr='2317'"_s);
    m_connection.run(u"UPDATE Kunde SET PostNr='2318' WHERE PostNr='2317'"_s);
    m_connection.beginTrans();
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.rollbackTrans();
    expectPlaces(u"Oslo Hamar"_s);
}

TEST_F(SqliteLookupsTest, FirstAskedForInATransactionThatIsTakenBack)
{
    m_connection.beginTrans();
    EXPECT_EQ(m_connection.column(u"SELECT Nr FROM Kunde"_s), u"1 2"_s);
    EXPECT_EQ(places(), u"Oslo Hamar"_s);
    m_connection.rollbackTrans();
    expectPlaces(u"Oslo Hamar"_s);
}

TEST_F(SqliteLookupsTest, TransactionOfTheOwnerBeforeIsForgotten)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.beginTrans();
    m_connection.run(u"DELETE FROM Sted"_s);
    m_connection.run(u"INSERT INTO Sted VALUES ('2317','Stange')"_s);
    expectPlaces(u"Null Stange"_s);
    m_connection.close(); // its session goes to the next one
    m_connection.open();
    expectPlaces(u"Oslo Hamar"_s);
}

TEST_F(SqliteLookupsTest, NumberOfTheLastInsertStays)
{
    m_connection.run(u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT I PRIMARY KEY, Nr LONG)"_s);
    m_connection.run(u"INSERT INTO Ordre (ID,Nr) VALUES (77,1)"_s);
    expectPlaces(u"Oslo Hamar"_s);
    EXPECT_EQ(m_connection.value(u"SELECT @@IDENTITY"_s), Value(qint32{77}));
}

// --- The schema

TEST_F(SqliteLookupsTest, TableMadeAnewHasItsOwnRows)
{
    const QString make = u"CREATE TABLE Sted (PostNr TEXT(10), Navn TEXT(20))"_s;
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.run(u"DROP TABLE Sted"_s);
    m_connection.run(make);
    m_connection.run(u"INSERT INTO Sted VALUES ('2317','Stange')"_s);
    expectPlaces(u"Null Stange"_s);
    m_tool.run("DROP TABLE Sted; CREATE TABLE Sted (Navn TEXT(20), PostNr TEXT(10));"
               "INSERT INTO Sted VALUES ('Kristiania', '0010')");
    expectPlaces(u"Kristiania Null"_s);
    m_tool.run("ALTER TABLE Sted DROP COLUMN PostNr");
    EXPECT_EQ(errorOf([&] { places(); }), errors::kNoSuchColumn);
    m_connection.run(u"INSERT INTO Sted (Navn) VALUES ('Nord')"_s);
    m_connection.run(u"ALTER TABLE Sted ADD COLUMN PostNr TEXT(10)"_s);
    m_connection.run(u"UPDATE Sted SET PostNr='2317' WHERE Navn='Nord'"_s);
    expectPlaces(u"Null Nord"_s);
}

TEST_F(SqliteLookupsTest, NewColumnHasTheTextThatItBeginsWith)
{
    m_connection.run(u"CREATE TABLE Vare (ID COUNTER CONSTRAINT I PRIMARY KEY, Nr TEXT(10))"_s);
    m_connection.run(u"INSERT INTO Vare (Nr) VALUES ('0010')"_s);
    const QString all = u"SELECT V.ID FROM Kunde K LEFT JOIN Vare V ON K.PostNr=V.Nr"_s;
    EXPECT_EQ(m_connection.column(all), u"1 Null"_s);
    m_connection.run(u"UPDATE Kunde SET PostNr='' WHERE Nr=2"_s);
    m_connection.run(u"ALTER TABLE Vare DROP COLUMN Nr"_s);
    m_connection.run(u"ALTER TABLE Vare ADD COLUMN Nr TEXT(10) NOT NULL"_s); // ''
    EXPECT_EQ(m_connection.column(all), u"Null 1"_s);
}

TEST_F(SqliteLookupsTest, SchemaTakenBackHasTheOldRows)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.beginTrans();
    m_connection.run(u"DROP TABLE Sted"_s);
    m_connection.run(u"CREATE TABLE Sted (PostNr TEXT(10), Navn TEXT(20))"_s);
    m_connection.run(u"INSERT INTO Sted VALUES ('2317','Stange')"_s);
    expectPlaces(u"Null Stange"_s);
    m_connection.rollbackTrans();
    expectPlaces(u"Oslo Hamar"_s);
}

TEST_F(SqliteLookupsTest, ReplacedFileHasItsOwnRows)
{
    expectPlaces(u"Oslo Hamar"_s);
    m_connection.close();
    const QString copy = m_file.folder() + u"/kopi.db"_s;
    m_tool.run("PRAGMA wal_checkpoint(TRUNCATE)");
    ASSERT_TRUE(QFile::copy(m_file.path(), copy));
    Tool(copy).run("UPDATE Sted SET Navn='Stange' WHERE PostNr='2317';"
                   "UPDATE Sted SET PostNr='0011' WHERE PostNr='0010'");
    ASSERT_TRUE(QFile::remove(m_file.path()));
    ASSERT_TRUE(QFile::rename(copy, m_file.path()));
    m_connection.open();
    expectPlaces(u"Null Stange"_s);
}

TEST_F(SqliteLookupsTest, FileStaysAsItIs)
{
    const std::string before = m_tool.run("SELECT sql FROM sqlite_schema");
    expectPlaces(u"Oslo Hamar"_s);
    EXPECT_EQ(m_tool.run("SELECT sql FROM sqlite_schema"), before);
    EXPECT_EQ(m_tool.text("PRAGMA integrity_check"), "ok");
}

TEST_F(SqliteLookupsTest, ProtectedFileIsJoinedToo)
{
    m_connection.close();
    SessionPool::shared().clear();
    ASSERT_TRUE(QFile::setPermissions(m_file.path(), QFile::Permissions::fromInt(0x4444)));
    const PlainUser user;
    m_connection.open();
    expectPlaces(u"Oslo Hamar"_s);
}

// --- What is equal

TEST_F(SqliteLookupsTest, EqualTextsAreThoseOfTheLanguage)
{
    m_connection.run(u"DELETE FROM Kunde"_s);
    m_connection.run(u"DELETE FROM Sted"_s);
    int number = 0;
    for (const auto &text : {u"Ås"_s, u"aa"_s, u"å"_s, u"E"_s, u"é"_s, u"b "_s, u"b"_s, u""_s})
        m_connection.run(u"INSERT INTO Kunde VALUES (%1,'%2')"_s.arg(++number).arg(text));
    m_connection.run(u"INSERT INTO Kunde VALUES (9,Null)"_s);
    for (const auto &text : {u"ÅS"_s, u"AA"_s, u"Å"_s, u"e"_s, u"É"_s, u"B "_s, u"B"_s, u""_s})
        m_connection.run(u"INSERT INTO Sted VALUES ('%1','%1')"_s.arg(text));
    expectPlaces(m_connection.column(kPlacesByScan));
    EXPECT_EQ(places().section(u' ', 0, 0), u"ÅS"_s);
    EXPECT_EQ(places().section(u' ', -1), u"Null"_s);
}

TEST_F(SqliteLookupsTest, EqualRowsComeInTheTablesOrder)
{
    m_connection.run(u"CREATE TABLE Vare (ID COUNTER CONSTRAINT I PRIMARY KEY, Nr TEXT(10), "
                     u"Navn TEXT(10))"_s);
    for (const auto &row :
         {u"'p1','z'"_s, u"'P1','y'"_s, u"'p2','x'"_s, u"'P1','a'"_s, u"'p1','m'"_s})
        m_connection.run(u"INSERT INTO Vare (Nr,Navn) VALUES (%1)"_s.arg(row));
    m_connection.run(u"UPDATE Kunde SET PostNr='P1'"_s);
    m_connection.run(u"UPDATE Vare SET Nr='p1' WHERE ID=3"_s);
    const QString all = u"SELECT V.Navn FROM Kunde K INNER JOIN Vare V ON K.PostNr=V.Nr"_s;
    EXPECT_EQ(m_connection.column(all), u"z y x a m z y x a m"_s);
}

TEST_F(SqliteLookupsTest, WhereRowsWithoutAMatchAreLeftOutTheOthersAreTheSame)
{
    const auto read = [this](const QString &column, const QString &joined) {
        return m_connection.column(u"SELECT "_s + column + u" FROM Kunde K "_s + joined)
            .toStdString();
    };
    const QString on = u"JOIN Sted S ON K.PostNr=S.PostNr"_s;
    const std::array joins{std::pair{u"INNER "_s + on, QString()},
                           std::pair{u"LEFT "_s + on, u" WHERE S.Navn<>'Oslo'"_s},
                           std::pair{u"LEFT "_s + on, u" WHERE K.Nr>1 AND S.Navn>='a'"_s}};
    std::mt19937 chance(11); // a fixed start value
    const auto text = [&] { return QString(QStringView(u"aAåbBxyz")[chance() % 8]); };
    m_connection.run(u"DROP TABLE Sted"_s);
    m_connection.run(u"CREATE TABLE Sted (PostNr TEXT(10), Navn TEXT(20))"_s); // equal ones too
    const std::array<std::function<void()>, 6> changes{
        [&] { m_connection.run(u"INSERT INTO Sted VALUES ('%1','%2')"_s.arg(text(), text())); },
        [&] {
            m_connection.run(
                u"UPDATE Sted SET PostNr='%1' WHERE PostNr='%2'"_s.arg(text(), text()));
        },
        [&] { m_connection.run(u"UPDATE Sted SET PostNr=Null WHERE Navn='%1'"_s.arg(text())); },
        [&] { m_connection.run(u"DELETE FROM Sted WHERE Navn='%1'"_s.arg(text())); },
        [&] { m_tool.run("DELETE FROM Sted WHERE rowid % 3 = 1"); },
        [&] {
            m_connection.run(
                u"UPDATE Kunde SET PostNr='%1' WHERE Nr=%2"_s.arg(text()).arg(1 + chance() % 2));
        },
    };
    for (int step = 0; step < 200; ++step) {
        changes[chance() % 9 % changes.size()]();
        for (const auto &[join, where] : joins) {
            for (const QString &column : {u"K.Nr"_s, u"S.Navn"_s, u"S.PostNr"_s})
                ASSERT_EQ(read(column, join + where), read(column, join + u" OR K.Nr<0"_s + where))
                    << step;
        }
    }
}

TEST_F(SqliteLookupsTest, NullMeetsNothing)
{
    m_connection.run(u"CREATE TABLE Vare (ID COUNTER CONSTRAINT I PRIMARY KEY, Nr TEXT(10))"_s);
    m_connection.run(u"INSERT INTO Vare (Nr) VALUES (Null)"_s);
    m_connection.run(u"INSERT INTO Vare (Nr) VALUES ('0010')"_s);
    m_connection.run(u"UPDATE Kunde SET PostNr=Null WHERE Nr=2"_s);
    const QString all = u"SELECT V.ID FROM Kunde K LEFT JOIN Vare V ON K.PostNr=V.Nr"_s;
    EXPECT_EQ(m_connection.column(all), u"2 Null"_s);
    m_connection.run(u"UPDATE Vare SET Nr=Null WHERE ID=2"_s);
    m_connection.run(u"UPDATE Vare SET Nr='0010' WHERE ID=1"_s);
    EXPECT_EQ(m_connection.column(all), u"1 Null"_s);
}

// --- What cannot be looked up

TEST_F(SqliteLookupsTest, TableWithoutRowNumbersIsReadThrough)
{
    m_tool.run("DROP TABLE Sted;"
               "CREATE TABLE Sted (PostNr TEXT(10) PRIMARY KEY, Navn TEXT(20)) WITHOUT ROWID;"
               "INSERT INTO Sted VALUES ('2317', 'Hamar'), ('0010', 'Oslo')");
    expectPlaces(u"Oslo Hamar"_s);
    m_tool.run("UPDATE Sted SET Navn='Stange' WHERE PostNr='2317'");
    expectPlaces(u"Oslo Stange"_s);
}

TEST_F(SqliteLookupsTest, TableWhoseColumnHasTheRowNumbersNameIsReadThrough)
{
    m_tool.run("ALTER TABLE Sted ADD COLUMN _RowID_ LONG; UPDATE Sted SET _rowid_=7");
    expectPlaces(u"Oslo Hamar"_s);
    m_tool.run("DROP TABLE Sted; CREATE TABLE Sted (PostNr TEXT(10), Navn TEXT(20),"
               " _rowid_ LONG GENERATED ALWAYS AS (7) VIRTUAL);"
               "INSERT INTO Sted VALUES ('2317', 'Hamar'), ('0010', 'Oslo')");
    expectPlaces(u"Oslo Hamar"_s);
}

TEST_F(SqliteLookupsTest, ColumnWithoutATypeIsReadThrough)
{
    m_tool.run("DROP TABLE Sted; CREATE TABLE Sted (PostNr, Navn TEXT(20));"
               "INSERT INTO Sted VALUES (10, 'tall'), ('10', 'tekst')");
    m_connection.run(u"UPDATE Kunde SET PostNr='10' WHERE Nr=1"_s);
    expectPlaces(u"tekst Null"_s);
    m_tool.run("DROP TABLE Kunde; CREATE TABLE Kunde (Nr LONG PRIMARY KEY, PostNr);"
               "INSERT INTO Kunde VALUES (1, 10), (2, '10')");
    expectPlaces(u"tall tekst"_s);
}

TEST_F(SqliteLookupsTest, TableThatCannotBeNamedWithoutQuotesIsJoined)
{
    m_tool.run("CREATE TABLE \"Sted.PostNr\" (\"Post \"\"Nr\" TEXT(10), Navn TEXT(20));"
               "INSERT INTO \"Sted.PostNr\" VALUES ('2317', 'Stange')");
    const QString all = u"SELECT S.Navn FROM Kunde K LEFT JOIN [Sted.PostNr] S "
                        u"ON K.PostNr=S.[Post \"Nr]"_s;
    EXPECT_EQ(m_connection.column(all), u"Null Stange"_s);
    m_connection.run(u"UPDATE [Sted.PostNr] SET [Post \"Nr]='0010'"_s);
    EXPECT_EQ(m_connection.column(all), u"Stange Null"_s);
    expectPlaces(u"Oslo Hamar"_s);
}

TEST_F(SqliteLookupsTest, RightJoinReadsThrough)
{
    const QString all = u"SELECT S.Navn FROM Kunde K RIGHT JOIN Sted S ON K.PostNr=S.PostNr "
                        u"ORDER BY S.Navn"_s;
    m_connection.run(u"UPDATE Kunde SET PostNr='x' WHERE Nr=2"_s);
    EXPECT_EQ(m_connection.column(all), u"Hamar Oslo"_s);
}

} // namespace ado::test
