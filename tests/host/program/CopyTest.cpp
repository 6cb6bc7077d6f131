#include "host/program/HostTest.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

class CopyTest : public HostTest
{
protected:
    [[nodiscard]] Outcome copy(const QString &from, const QString &to) const
    {
        return host({u"--kopier"_s, from, to});
    }
    [[nodiscard]] QByteArray rowsOf(const QString &file, const QString &table) const
    {
        return answer(path(file), u"SELECT * FROM "_s + table);
    }
    /// A refusal behind a few lines of progress.
    static void expectStopped(const Outcome &outcome, const QString &fragment)
    {
        EXPECT_EQ(outcome.status, 1) << ::testing::PrintToString(outcome);
        EXPECT_FALSE(outcome.out.contains("Kopiert")) << outcome.out.toStdString();
        EXPECT_EQ(outcome.err.count(u'\n'), 1) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains(fragment)) << outcome.err.toStdString();
    }
};

TEST_F(CopyTest, TakesAllTablesAndTellsOfEach)
{
    makeDemo();
    const Outcome outcome = copy(u"demo.db"_s, u"ny/kopi.db"_s);
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.err, QString());
    for (const char *line : {"Klient: 1 rad\n", "Ordre: 60 rader\n", "Produkt: 25 rader\n",
                             "Kontrollert: antall og summer er like i kilden og kopien\n"})
        EXPECT_TRUE(outcome.out.contains(line)) << outcome.out.toStdString();
    // A line needs the order that it belongs to.
    EXPECT_LT(outcome.out.indexOf("\nOrdre: "), outcome.out.indexOf("\nOrdreLinjer: "));
    EXPECT_EQ(dump(path(u"ny/kopi.db"_s)), dump(path(u"demo.db"_s)));
}

TEST_F(CopyTest, ModuleStartsOnTheCopy)
{
    makeDemo();
    ASSERT_EQ(copy(u"demo.db"_s, u"kopi.db"_s).status, 0);
    EXPECT_EQ(host({u"--dsn"_s, path(u"kopi.db"_s), u"--aar"_s, u"2014"_s}).status, 0);
    EXPECT_EQ(dump(path(u"kopi.db"_s)), dump(path(u"demo.db"_s)));
}

TEST_F(CopyTest, CountersGoOnAndConstraintsHold)
{
    makeDemo();
    change(u"DELETE FROM OrdreLinjer WHERE OrdreID=30"_s);
    change(u"DELETE FROM Ordre WHERE ID=30"_s);
    ASSERT_EQ(copy(u"demo.db"_s, u"kopi.db"_s).status, 0);
    const auto execute = [this](const QString &statement) {
        return host({u"--dsn"_s, path(u"kopi.db"_s), u"--sql"_s, statement});
    };
    EXPECT_EQ(execute(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (1,9999)"_s).status, 0);
    EXPECT_EQ(answer(path(u"kopi.db"_s), u"SELECT ID FROM Ordre WHERE OrdreNr=9999"_s),
              QByteArray("ID:3\n61\n"));
    expectRefusal(execute(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (1,9999)"_s), 1,
                  u"avvist"_s);
    expectRefusal(execute(u"INSERT INTO OrdreLinjer (OrdreID,PosNr) VALUES (30,1)"_s), 1,
                  u"avvist"_s);
    expectRefusal(execute(u"INSERT INTO Klient (KlientNr) VALUES (1)"_s), 1, u"avvist"_s);
}

TEST_F(CopyTest, CountersGoOnWhereTheSourcesStood)
{
    makeDemo();
    // The rows with the last numbers are gone; a table that is empty has had numbers, too.
    change(u"DELETE FROM OrdreLinjer"_s);
    change(u"DELETE FROM Ordre WHERE ID>40"_s);
    ASSERT_EQ(copy(u"demo.db"_s, u"kopi.db"_s).status, 0);
    ASSERT_EQ(copy(u"kopi.db"_s, u"kopi2.db"_s).status, 0);
    for (const QString &file : {path(u"demo.db"_s), path(u"kopi2.db"_s)}) {
        const auto execute = [&](const QString &statement) {
            EXPECT_EQ(host({u"--dsn"_s, file, u"--sql"_s, statement}).status, 0);
        };
        execute(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (1,9999)"_s);
        execute(u"INSERT INTO OrdreLinjer (OrdreID,PosNr) VALUES (1,10)"_s);
        EXPECT_EQ(answer(file, u"SELECT ID FROM Ordre WHERE OrdreNr=9999"_s),
                  QByteArray("ID:3\n61\n"));
    }
    EXPECT_EQ(answer(path(u"kopi2.db"_s), u"SELECT ID FROM OrdreLinjer"_s),
              answer(path(u"demo.db"_s), u"SELECT ID FROM OrdreLinjer"_s));
}

TEST_F(CopyTest, TakesUnknownTablesWithAllTypes)
{
    runInFile(u"fra.db"_s,
              "CREATE TABLE \"Min tabell\" (Kort SHORT, Lang LONG, Enkel SINGLE, Dobbel DOUBLE, "
              "Kroner CURRENCY, Dag DATE, Ja BIT, Tekst TEXT(10), Bilde LONGBINARY);"
              "INSERT INTO \"Min tabell\" VALUES (-32768, 2147483647, 0.1, 1e-300, "
              "-9223372036854775808, '2014-05-17 23:59:59', 1, 'Blåbær\t\\N', x'000A5CFF');"
              "INSERT INTO \"Min tabell\" VALUES (NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL);"
              "INSERT INTO \"Min tabell\" VALUES (NULL,NULL,NULL,NULL,NULL,NULL,NULL,'',x'');"
              "CREATE TABLE tom (\"Nr\" INTEGER PRIMARY KEY)");
    const Outcome outcome = copy(u"fra.db"_s, u"til.db"_s);
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_TRUE(outcome.out.contains("tom: 0 rader\n")) << outcome.out.toStdString();
    EXPECT_EQ(rowsOf(u"til.db"_s, u"[Min tabell]"_s), rowsOf(u"fra.db"_s, u"[Min tabell]"_s));
    EXPECT_EQ(rowsOf(u"til.db"_s, u"tom"_s), QByteArray("Nr:3\n"));
}

TEST_F(CopyTest, TextBeyondItsWidthIsKeptInFull)
{
    makeDemo();
    runInFile(u"demo.db"_s, "UPDATE Ordre SET EgenRef='lengre enn de tjue tegnene' WHERE ID=1");
    ASSERT_EQ(copy(u"demo.db"_s, u"kopi.db"_s).status, 0);
    EXPECT_EQ(dump(path(u"kopi.db"_s)), dump(path(u"demo.db"_s)));
}

TEST_F(CopyTest, OlderSchemaStaysAsItIs)
{
    makeDemo();
    change(u"ALTER TABLE Ordre DROP COLUMN KundeOrgNr"_s);
    change(u"DROP TABLE OrdreLinjer"_s);
    ASSERT_EQ(copy(u"demo.db"_s, u"kopi.db"_s).status, 0);
    EXPECT_EQ(rowsOf(u"kopi.db"_s, u"Ordre"_s), rowsOf(u"demo.db"_s, u"Ordre"_s));
}

TEST_F(CopyTest, TargetWithTablesIsRefusedAndKept)
{
    makeDemo();
    ASSERT_EQ(copy(u"demo.db"_s, u"kopi.db"_s).status, 0);
    EXPECT_EQ(answer(path(u"kopi.db"_s), u"DELETE FROM Bil"_s), QByteArray());
    const QByteArray before = dump(path(u"kopi.db"_s));
    expectRefusal(copy(u"demo.db"_s, u"kopi.db"_s), 1, u"kopi.db finnes og har innhold"_s);
    EXPECT_EQ(dump(path(u"kopi.db"_s)), before);

    write(u"brev.txt"_s, "Kjære kunde");
    expectRefusal(copy(u"demo.db"_s, u"brev.txt"_s), 1, u"brev.txt finnes og har innhold"_s);
    EXPECT_EQ(content(u"brev.txt"_s), QByteArray("Kjære kunde"));
}

TEST_F(CopyTest, EmptyTargetsAreUsed)
{
    makeDemo();
    write(u"tom.db"_s, {});
    EXPECT_EQ(copy(u"demo.db"_s, u"tom.db"_s).status, 0);
    runInFile(u"uten tabeller.db"_s, "CREATE TABLE Bort (Nr LONG); DROP TABLE Bort");
    EXPECT_EQ(copy(u"demo.db"_s, u"uten tabeller.db"_s).status, 0);
    EXPECT_EQ(dump(path(u"uten tabeller.db"_s)), dump(path(u"tom.db"_s)));
}

TEST_F(CopyTest, SameFileIsRefusedUnderAnyName)
{
    makeDemo();
    const QByteArray before = dump(path(u"demo.db"_s));
    expectRefusal(copy(u"demo.db"_s, u"./demo.db"_s), 1, u"samme database"_s);
    ASSERT_TRUE(QFile::link(path(u"demo.db"_s), path(u"lenke.db"_s)));
    expectRefusal(copy(u"demo.db"_s, u"lenke.db"_s), 1, u"samme database"_s);
    EXPECT_EQ(dump(path(u"demo.db"_s)), before);
}

TEST_F(CopyTest, SourceThatCannotBeReadLeavesNoTarget)
{
    expectRefusal(copy(u"finnes-ikke.db"_s, u"kopi.db"_s), 1, u"finnes-ikke.db"_s);
    EXPECT_EQ(files(), QStringList());
    write(u"brev.txt"_s, QByteArray("Dette er ingen database.\n").repeated(100));
    expectRefusal(copy(u"brev.txt"_s, u"kopi.db"_s), 1, u"kilden lot seg ikke lese"_s);
    write(u"tom.db"_s, {});
    expectRefusal(copy(u"tom.db"_s, u"kopi.db"_s), 1, u"har ingen tabeller å kopiere"_s);
    EXPECT_FALSE(files().contains(u"kopi.db"_s));
}

TEST_F(CopyTest, FailureMidwayLeavesTheTargetAsItWas)
{
    makeDemo();
    runInFile(u"demo.db"_s, "UPDATE OrdreLinjer SET OrdreID=7777 WHERE ID=100");
    expectStopped(copy(u"demo.db"_s, u"kopi.db"_s), u"tabellen OrdreLinjer"_s);
    EXPECT_EQ(files(), QStringList{u"demo.db"_s});

    write(u"kopi.db"_s, {});
    expectStopped(copy(u"demo.db"_s, u"kopi.db"_s), u"avbrutt"_s);
    EXPECT_EQ(content(u"kopi.db"_s), QByteArray());
    EXPECT_EQ(files(), (QStringList{u"demo.db"_s, u"kopi.db"_s}));
}

TEST_F(CopyTest, ValueThatCannotBeReadStopsAndNamesItsTable)
{
    makeDemo();
    runInFile(u"demo.db"_s, "UPDATE Produkt SET UtPris='gratis' WHERE ID=3");
    expectStopped(copy(u"demo.db"_s, u"kopi.db"_s), u"tabellen Produkt"_s);
    EXPECT_EQ(files(), QStringList{u"demo.db"_s});
}

} // namespace
