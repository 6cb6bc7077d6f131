#include "platform/ado/sqlite/SqliteDatabase.h"

#include "platform/ado/Support.h"
#include "platform/ado/sqlite/SqliteStatement.h"

#include <QDir>

#include <sys/stat.h>

namespace ado::test {

namespace {

qint64 number(SqliteDatabase &database, const char *sql)
{
    SqliteStatement statement(database.handle(), sql);
    EXPECT_TRUE(statement.step());
    return statement.integer(0);
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

void setMode(const QString &path, mode_t mode)
{
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
}

} // namespace

class SqliteDatabaseTest : public testing::Test
{
protected:
    /// Opening fails with the general number and a text that names the file.
    static void expectRefused(const QString &path, const QString &part)
    {
        const auto open = [&] { SqliteDatabase database(path); };
        EXPECT_EQ(errorOf(open), errors::kUnspecified);
        EXPECT_TRUE(textOf(open).contains(path)) << textOf(open).toStdString();
        EXPECT_TRUE(textOf(open).contains(part)) << textOf(open).toStdString();
    }

    Database m_file;
};

TEST_F(SqliteDatabaseTest, EmptyFileIsAnEmptyDatabase)
{
    SqliteDatabase database(m_file.path());
    EXPECT_EQ(number(database, "SELECT COUNT(*) FROM sqlite_schema"), 0);
}

TEST_F(SqliteDatabaseTest, SettingsAreInForce)
{
    SqliteDatabase database(m_file.path());
    SqliteStatement journal(database.handle(), "PRAGMA journal_mode");
    ASSERT_TRUE(journal.step());
    EXPECT_EQ(journal.text(0), u"wal"_s);
    EXPECT_EQ(number(database, "PRAGMA synchronous"), 2);
    EXPECT_EQ(number(database, "PRAGMA foreign_keys"), 1);
    EXPECT_EQ(number(database, "PRAGMA trusted_schema"), 0);
    database.run("CREATE TABLE T (a TEXT)");
    EXPECT_EQ(errorOf([&] { database.run("SELECT \"finnesIkke\" FROM T"); }),
              errors::kNoSuchColumn);
    EXPECT_EQ(errorOf([&] { database.run("CREATE INDEX I ON T (\"finnesIkke\")"); }),
              errors::kNoSuchColumn);
    EXPECT_NE(errorOf([&] { database.run("ATTACH ':memory:' AS annen"); }), 0);
    // Without the defence this pragma would let the schema table be written.
    database.run("PRAGMA writable_schema=ON");
    EXPECT_NE(errorOf([&] { database.run("DELETE FROM sqlite_schema"); }), 0);
}

TEST_F(SqliteDatabaseTest, MissingFileIsNotMade)
{
    const QString path = m_file.folder() + u"/annen.db"_s;
    expectRefused(path, u"finnes ikke"_s);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(SqliteDatabaseTest, FolderAndDeviceAreRefused)
{
    expectRefused(m_file.folder(), u"mappe"_s);
    const QString pipe = m_file.folder() + u"/rør"_s;
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0666), 0);
    expectRefused(pipe, u"vanlig fil"_s);
}

TEST_F(SqliteDatabaseTest, OtherContentIsNoDatabaseAndStaysAsItIs)
{
    const QByteArray content = QByteArray("Dette er et brev til kunden.\n").repeated(100);
    write(m_file.path(), content);
    expectRefused(m_file.path(), u"ingen database"_s);
    QFile file(m_file.path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), content);
}

TEST_F(SqliteDatabaseTest, UnreadableFileIsRefused)
{
    setMode(m_file.path(), 0200);
    const PlainUser user;
    expectRefused(m_file.path(), u"lesetilgang"_s);
}

TEST_F(SqliteDatabaseTest, NamesThatMeanSomethingToSqliteAreFilesHere)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_file.folder()));
    EXPECT_EQ(errorOf([] { Connection().open(u"dsn=:memory:"_s); }), errors::kUnspecified);
    EXPECT_EQ(errorOf([] { Connection().open(u"dsn=file:firma.db"_s); }), errors::kUnspecified);
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(SqliteDatabaseTest, ProtectedFileIsReadAndNotWritten)
{
    SqliteDatabase(m_file.path()).run("CREATE TABLE T (a LONG); INSERT INTO T VALUES (7)");
    setMode(m_file.path(), 0444);
    const PlainUser user;
    SqliteDatabase database(m_file.path());
    EXPECT_FALSE(database.isFrozen());
    EXPECT_EQ(number(database, "SELECT a FROM T"), 7);
    EXPECT_EQ(errorOf([&] { database.run("INSERT INTO T VALUES (8)"); }), errors::kNoPermission);
}

TEST_F(SqliteDatabaseTest, FileInAProtectedFolderIsReadAndNotWritten)
{
    SqliteDatabase(m_file.path()).run("CREATE TABLE T (a LONG); INSERT INTO T VALUES (7)");
    setMode(m_file.path(), 0666);
    setMode(m_file.folder(), 0555);
    {
        const PlainUser user;
        SqliteDatabase database(m_file.path());
        EXPECT_TRUE(database.isFrozen());
        EXPECT_EQ(number(database, "SELECT a FROM T"), 7);
        EXPECT_EQ(errorOf([&] { database.run("INSERT INTO T VALUES (8)"); }),
                  errors::kNoPermission);
    }
    setMode(m_file.folder(), 0777);
}

TEST_F(SqliteDatabaseTest, ProtectedEmptyFileShowsNoTables)
{
    setMode(m_file.path(), 0444);
    const PlainUser user;
    SqliteDatabase database(m_file.path());
    EXPECT_EQ(number(database, "SELECT COUNT(*) FROM sqlite_schema"), 0);
}

TEST_F(SqliteDatabaseTest, NoticesThatTheFileIsAnother)
{
    SqliteDatabase database(m_file.path());
    EXPECT_TRUE(database.isCurrent());
    ASSERT_TRUE(QFile::rename(m_file.path(), m_file.path() + u".gammel"_s));
    EXPECT_FALSE(database.isCurrent());
    write(m_file.path(), {});
    EXPECT_FALSE(database.isCurrent());
}

TEST_F(SqliteDatabaseTest, NoticesThatTheRightToWriteIsGone)
{
    setMode(m_file.path(), 0666);
    std::optional<PlainUser> user;
    user.emplace();
    SqliteDatabase database(m_file.path());
    EXPECT_TRUE(database.isCurrent());
    user.reset(); // the owner takes the right away
    setMode(m_file.path(), 0444);
    user.emplace();
    EXPECT_FALSE(database.isCurrent());
}

TEST_F(SqliteDatabaseTest, WaitsForALockByTheClock)
{
    SqliteDatabase database(m_file.path());
    database.run("CREATE TABLE T (a LONG)");
    Tool tool(m_file.path());
    tool.run("BEGIN IMMEDIATE");
    SteppedClock clock([&](int sleeps) {
        if (sleeps == 3)
            tool.run("COMMIT");
    });
    const ScopedClock scope(clock);
    database.run("INSERT INTO T VALUES (1)");
    EXPECT_EQ(clock.sleeps, 3);
    EXPECT_EQ(tool.text("SELECT COUNT(*) FROM T"), "1");
}

TEST_F(SqliteDatabaseTest, GivesUpAfterTenSeconds)
{
    SqliteDatabase database(m_file.path());
    database.run("CREATE TABLE T (a LONG)");
    Tool tool(m_file.path());
    tool.run("BEGIN IMMEDIATE");
    SteppedClock clock;
    const ScopedClock scope(clock);
    EXPECT_EQ(errorOf([&] { database.run("INSERT INTO T VALUES (1)"); }), errors::kTimeout);
    EXPECT_GE(clock.slept, 10'000);
    EXPECT_LT(clock.slept, 10'500);
}

} // namespace ado::test
