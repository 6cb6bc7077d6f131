#include "platform/ado/Support.h"
#include "support/SqliteSteps.h"

#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace ado::test {

/// How statements of the desktop dialect fare on a SQLite file.
class SqliteSessionTest : public testing::Test
{
protected:
    SqliteSessionTest() { m_connection.open(m_file.dsn()); }
    void run(const QString &statement) { m_connection.execute(statement); }
    int errorOfRun(const QString &statement)
    {
        return errorOf([&] { m_connection.execute(statement); });
    }
    Recordset rows(const QString &statement)
    {
        Recordset set;
        set.setActiveConnection(m_connection);
        set.setSource(statement);
        set.open();
        return set;
    }

    const SqliteSteps m_scans;
    Database m_file;
    Connection m_connection;
    Tool m_tool{m_file.path()};
};

TEST_F(SqliteSessionTest, StatementsOfTheDatabaseItselfAreOutOfReach)
{
    for (const auto &statement :
         {u"PRAGMA user_version=7"_s, u"ATTACH 'x.db' AS x"_s, u"VACUUM"_s, u"BEGIN"_s,
          u"SELECT load_extension('x')"_s, u"SELECT name FROM sqlite_schema"_s})
        EXPECT_NE(errorOfRun(statement), 0) << statement.toStdString();
    EXPECT_EQ(m_tool.text("PRAGMA user_version"), "0");
}

TEST_F(SqliteSessionTest, SchemaChangeOfAnotherConnectionIsSeenAtOnce)
{
    run(u"CREATE TABLE T (Nr LONG)"_s);
    EXPECT_EQ(rows(u"SELECT * FROM T"_s).fieldCount(), 1);
    m_tool.run("ALTER TABLE T ADD COLUMN Navn TEXT(5)");
    EXPECT_EQ(rows(u"SELECT * FROM T"_s).fieldCount(), 2);
    m_tool.run("DROP TABLE T; CREATE TABLE T (Nr TEXT(9))");
    EXPECT_EQ(rows(u"SELECT * FROM T"_s).field(0).type, DataType::VarWChar);
    m_tool.run("CREATE TABLE Ny (Nr LONG)");
    run(u"INSERT INTO Ny (Nr) VALUES (1)"_s);
}

TEST_F(SqliteSessionTest, SchemaTakenBackIsForgotten)
{
    run(u"CREATE TABLE Fast (Nr LONG)"_s);
    m_connection.beginTrans();
    run(u"CREATE TABLE T (Gammel LONG)"_s);
    EXPECT_EQ(rows(u"SELECT * FROM T"_s).field(0).name, u"Gammel"_s);
    m_connection.rollbackTrans();
    // The file's schema takes the same version once more.
    m_tool.run("CREATE TABLE T (Ny LONG)");
    EXPECT_EQ(rows(u"SELECT * FROM T"_s).field(0).name, u"Ny"_s);
}

TEST_F(SqliteSessionTest, TableAndItsIndexesAreMadeTogetherOrNotAtAll)
{
    run(u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY)"_s);
    const QString linjer =
        u"CREATE TABLE OrdreLinjer (ID COUNTER CONSTRAINT ID PRIMARY KEY, OrdreID "
        "LONG CONSTRAINT OrdreID REFERENCES Ordre (ID))"_s;
    run(linjer);
    const std::string index = m_tool.text(
        "SELECT name FROM sqlite_schema WHERE type = 'index' AND tbl_name = 'OrdreLinjer'");
    ASSERT_NE(index, "NULL");
    run(u"DROP TABLE OrdreLinjer"_s);
    // The index's name is taken, so the second half of the statement fails.
    Tool(m_file.path()).run(("CREATE INDEX \"" + index + "\" ON Ordre (ID)").c_str());
    EXPECT_NE(errorOfRun(linjer), 0);
    EXPECT_EQ(m_tool.text("SELECT COUNT(*) FROM sqlite_schema WHERE name = 'OrdreLinjer'"), "0");
    m_connection.beginTrans();
    run(u"INSERT INTO Ordre (ID) VALUES (5)"_s);
    EXPECT_NE(errorOfRun(linjer), 0);
    m_connection.commitTrans();
    EXPECT_EQ(m_tool.text("SELECT COUNT(*) FROM sqlite_schema WHERE name = 'OrdreLinjer'"), "0");
    EXPECT_EQ(m_tool.text("SELECT ID FROM Ordre"), "5");
}

TEST_F(SqliteSessionTest, BrokenConstraintsNameWhatTheyAreAbout)
{
    run(u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, OrdreNr LONG, "
        "CONSTRAINT KlientOrdre UNIQUE (KlientNr, OrdreNr))"_s);
    run(u"CREATE TABLE OrdreLinjer (OrdreID LONG CONSTRAINT OrdreID REFERENCES Ordre (ID))"_s);
    run(u"INSERT INTO Ordre (KlientNr, OrdreNr) VALUES (1, 7)"_s);
    const QString again = u"INSERT INTO Ordre (KlientNr, OrdreNr) VALUES (1, 7)"_s;
    EXPECT_EQ(errorOfRun(again), errors::kIntegrity);
    EXPECT_TRUE(textOf([&] { run(again); }).contains(u"Ordre.KlientNr, Ordre.OrdreNr"));
    EXPECT_EQ(errorOfRun(u"INSERT INTO OrdreLinjer (OrdreID) VALUES (99)"_s), errors::kIntegrity);
    run(u"INSERT INTO OrdreLinjer (OrdreID) VALUES (1)"_s);
    EXPECT_EQ(errorOfRun(u"DELETE FROM Ordre WHERE ID=1"_s), errors::kIntegrity);
    EXPECT_EQ(m_tool.text("SELECT COUNT(*) FROM Ordre"), "1");
}

TEST_F(SqliteSessionTest, FileStaysReadableByAnyTool)
{
    run(u"CREATE TABLE Kunde (Navn TEXT(40) CONSTRAINT N UNIQUE)"_s);
    run(u"INSERT INTO Kunde (Navn) VALUES ('Ås')"_s);
    run(u"INSERT INTO Kunde (Navn) VALUES ('berg')"_s);
    EXPECT_EQ(rows(u"SELECT Navn FROM Kunde ORDER BY Navn"_s).text(0), u"berg"_s);
    EXPECT_EQ(rows(u"SELECT Navn FROM Kunde WHERE Navn='BERG'"_s).recordCount(), 1);
    // This connection knows nothing of our collation.
    EXPECT_EQ(m_tool.text("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(m_tool.text("SELECT Navn FROM Kunde WHERE Navn = 'berg'"), "berg");
}

TEST_F(SqliteSessionTest, IndexOfAYearIsUsedAndEveryToolCanWriteBesideIt)
{
    run(u"CREATE TABLE Bilag (KlientNr SHORT, BilagNr LONG, BilagDato DATE)"_s);
    for (int number = 1; number <= 50; ++number)
        run(u"INSERT INTO Bilag VALUES (5,%1,#03/09/2014#)"_s.arg(number));
    const auto largest = [this] {
        SqliteSteps::taken();
        return rows(u"SELECT Max(BilagNr) AS MaxNr FROM Bilag WHERE KlientNr= 5 AND "
                    u"Year(Bilag.BilagDato)= 2014"_s)
            .integer(0);
    };
    EXPECT_EQ(largest(), 50);
    EXPECT_GE(SqliteSteps::taken(), 49);
    m_connection.provideIndex(u"Bilag"_s, u"KlientAarNr"_s,
                              {u"KlientNr"_s, u"Year(BilagDato)"_s, u"BilagNr"_s});
    EXPECT_EQ(largest(), 50);
    EXPECT_EQ(SqliteSteps::taken(), 0);
    m_tool.run("INSERT INTO Bilag VALUES (5, 70, '2014-12-31'), (5, 80, 'i fjor'), (5, 90, NULL)");
    EXPECT_EQ(m_tool.text("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(largest(), 70);
}

TEST_F(SqliteSessionTest, AnIndexThatBeginsWithATextIsNotMade)
{
    run(u"CREATE TABLE Vare (Nr TEXT(20), Gruppe LONG)"_s);
    m_connection.provideIndex(u"Vare"_s, u"Nr"_s, {u"Nr"_s});
    m_connection.provideIndex(u"Vare"_s, u"GruppeNr"_s, {u"Gruppe"_s, u"Nr"_s});
    EXPECT_EQ(m_tool.text("SELECT group_concat(name) FROM sqlite_schema WHERE type = 'index'"),
              "Vare.GruppeNr");
}

TEST_F(SqliteSessionTest, ProtectedFileIsReadAndRefusesWriting)
{
    run(u"CREATE TABLE T (Nr LONG)"_s);
    run(u"INSERT INTO T (Nr) VALUES (1)"_s);
    m_connection.close();
    SessionPool::shared().clear();
    ASSERT_TRUE(QFile::setPermissions(m_file.path(), QFile::Permissions::fromInt(0x4444)));
    const PlainUser user;
    Opened connection(m_file);
    EXPECT_EQ(connection.value(u"SELECT Nr FROM T"_s), Value(qint32{1}));
    EXPECT_EQ(errorOf([&] { connection.run(u"INSERT INTO T (Nr) VALUES (2)"_s); }),
              errors::kNoPermission);
    connection.beginTrans();
    EXPECT_EQ(errorOf([&] { connection.run(u"DELETE FROM T"_s); }), errors::kNoPermission);
    EXPECT_EQ(errorOf([&] { connection.run(u"CREATE TABLE U (Nr LONG)"_s); }),
              errors::kNoPermission);
    connection.rollbackTrans();
    EXPECT_EQ(connection.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{1}));
}

TEST_F(SqliteSessionTest, TheLockBesideTheFileBelongsToTheFilesOwner)
{
    // Another user's file, where the tests run as the superuser.
    const QByteArray path = QFile::encodeName(m_file.path());
    const bool given = ::chown(path.constData(), 65534, static_cast<gid_t>(-1)) == 0;
    EXPECT_EQ(given, ::geteuid() == 0);
    ::chmod(path.constData(), 0600);
    EXPECT_TRUE(m_connection.takeTurn());
    EXPECT_EQ(QFileInfo(m_file.path() + u"-tur"_s).ownerId(), QFileInfo(m_file.path()).ownerId());
}

TEST_F(SqliteSessionTest, ViewOfAProtectedFolderIsNotKept)
{
    run(u"CREATE TABLE T (Nr LONG)"_s);
    m_connection.close();
    SessionPool::shared().clear();
    QFile::setPermissions(m_file.folder(), QFile::Permissions::fromInt(0x5555));
    {
        const PlainUser user;
        EXPECT_EQ(Opened(m_file).value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{0}));
        EXPECT_EQ(SessionPool::shared().idleCount(resolve(ConnectionString(m_file.dsn()))), 0U);
    }
    QFile::setPermissions(m_file.folder(), QFile::Permissions::fromInt(0x7777));
}

} // namespace ado::test
