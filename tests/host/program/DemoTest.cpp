#include "host/program/HostTest.h"

#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

class DemoTest : public HostTest
{
protected:
    [[nodiscard]] Outcome demo(const QString &name, const QStringList &more = {},
                               const QString &locale = {}) const
    {
        return host(QStringList{u"--demo"_s, u"--dsn"_s, path(name)} + more, locale);
    }
};

TEST_F(DemoTest, MakesFolderAndDatabaseAndStartsTheModule)
{
    const Outcome outcome = demo(u"ny mappe/firma.db"_s, {u"--aar"_s, u"2014"_s});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.err, QString());
    EXPECT_TRUE(outcome.out.contains("ModuleInit 1"));
    EXPECT_TRUE(outcome.out.contains(path(u"ny mappe/firma.db"_s).toUtf8()));
    // Nothing is left beside a database that is closed properly.
    EXPECT_EQ(QDir(path(u"ny mappe"_s)).entryList(QDir::Files), QStringList{u"firma.db"_s});
}

TEST_F(DemoTest, SameDataEachTimeWhateverTheLocale)
{
    ASSERT_EQ(demo(u"a.db"_s, {u"--aar"_s, u"2014"_s}, u"nb_NO.UTF-8"_s).status, 0);
    ASSERT_EQ(demo(u"b.db"_s, {u"--aar"_s, u"2014"_s}, u"en_US.UTF-8"_s).status, 0);
    const QByteArray first = dump(path(u"a.db"_s));
    EXPECT_GT(first.size(), 10'000);
    EXPECT_EQ(first, dump(path(u"b.db"_s)));
}

TEST_F(DemoTest, FollowsClientAndYear)
{
    const QStringList options{u"--klient"_s, u"7"_s, u"--aar"_s, u"1999"_s};
    ASSERT_EQ(demo(u"demo.db"_s, options).status, 0);
    for (const QLatin1StringView table : {"Klient"_L1, "KundeLev"_L1, "Kontoplan"_L1, "Hovedbok"_L1,
                                          "Bilag"_L1, "Bil"_L1, "Produkt"_L1, "Ordre"_L1}) {
        const auto found = rows(u"SELECT DISTINCT KlientNr FROM "_s + table);
        ASSERT_EQ(found.size(), 1U) << table.data();
        EXPECT_EQ(found[0][u"KlientNr"_s], u"7"_s) << table.data();
    }
    EXPECT_EQ(single(u"SELECT COUNT (*) FROM Ordre WHERE Year(OrdreDato)=1998"_s), u"24"_s);
    EXPECT_EQ(single(u"SELECT COUNT (*) FROM Ordre WHERE Year(OrdreDato)=1999"_s), u"36"_s);
}

TEST_F(DemoTest, FileWithContentIsRefusedAndKept)
{
    write(u"brev.txt"_s, "Kjære kunde");
    expectRefusal(demo(u"brev.txt"_s), 1, u"finnes og har innhold"_s);
    EXPECT_EQ(content(u"brev.txt"_s), QByteArray("Kjære kunde"));
    EXPECT_EQ(files(), QStringList{u"brev.txt"_s});
}

TEST_F(DemoTest, DemoDatabaseIsNotMadeTwice)
{
    makeDemo();
    const QByteArray before = dump(path(u"demo.db"_s));
    expectRefusal(demo(u"demo.db"_s), 1, u"finnes og har innhold"_s);
    EXPECT_EQ(dump(path(u"demo.db"_s)), before);
}

TEST_F(DemoTest, EmptyFileIsUsed)
{
    write(u"demo.db"_s, {});
    EXPECT_EQ(demo(u"demo.db"_s).status, 0);
    EXPECT_EQ(single(u"SELECT COUNT (*) FROM Ordre"_s), u"60"_s);
}

TEST_F(DemoTest, DatabaseWithoutTablesIsUsed)
{
    runInFile(u"demo.db"_s, "CREATE TABLE Bort (Nr LONG); DROP TABLE Bort");
    EXPECT_GT(content(u"demo.db"_s).size(), 0);
    EXPECT_EQ(demo(u"demo.db"_s).status, 0);
    EXPECT_EQ(single(u"SELECT COUNT (*) FROM Ordre"_s), u"60"_s);
}

TEST_F(DemoTest, FolderIsRefused)
{
    expectRefusal(demo(QString()), 1, u"er ingen vanlig fil"_s);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(DemoTest, PlaceThatCannotBeMadeIsTold)
{
    write(u"fil"_s, "x");
    expectRefusal(demo(u"fil/under/demo.db"_s), 1, u"lot seg ikke lage"_s);
    EXPECT_EQ(files(), QStringList{u"fil"_s});
}

TEST_F(DemoTest, FailedStartLeavesNoDatabase)
{
    QDir(path(QString())).mkdir(u"alene"_s);
    const QString alone = path(u"alene/strekkbok-vert"_s);
    ASSERT_TRUE(QFile::copy(programFile(), alone));
    const Outcome outcome = start(alone, {u"--demo"_s, u"--dsn"_s, u"demo.db"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains(u"komponenten"_s)) << outcome.err.toStdString();
    EXPECT_EQ(files(), QStringList{u"alene"_s});

    write(u"demo.db"_s, {});
    EXPECT_EQ(start(alone, {u"--demo"_s, u"--dsn"_s, u"demo.db"_s}).status, 1);
    EXPECT_EQ(content(u"demo.db"_s), QByteArray());
    EXPECT_EQ(files(), (QStringList{u"alene"_s, u"demo.db"_s}));

    // What was in the file is not taken away with the tables.
    runInFile(u"demo.db"_s, "CREATE TABLE Bort (Nr LONG); DROP TABLE Bort; PRAGMA user_version=7");
    EXPECT_EQ(start(alone, {u"--demo"_s, u"--dsn"_s, u"demo.db"_s}).status, 1);
    EXPECT_EQ(demo(u"demo.db"_s).status, 0);
}

TEST_F(DemoTest, PipeIsRefusedAndKept)
{
    ASSERT_EQ(::mkfifo(path(u"rør"_s).toUtf8().constData(), 0600), 0);
    expectRefusal(demo(u"rør"_s), 1, u"rør er ingen vanlig fil"_s);
    EXPECT_TRUE(QFileInfo::exists(path(u"rør"_s)));
}

} // namespace
