#include "host/program/ServerTest.h"

#include "data/clsAdoUtils.h"
#include "platform/ado/SessionPool.h"
#include "rules/Ordre.h"
#include "state/SharedState.h"

#include <QProcess>

#include <libpq-fe.h>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// Another user of a database, who keeps his connection and with it his transaction.
class OtherUser
{
public:
    explicit OtherUser(const QString &uri)
        : m_connection(PQconnectdb(uri.toUtf8().constData()), PQfinish)
    {
    }
    void run(const char *sql)
    {
        const std::unique_ptr<PGresult, void (*)(PGresult *)> result(
            PQexec(m_connection.get(), sql), PQclear);
        EXPECT_EQ(PQresultStatus(result.get()), PGRES_COMMAND_OK)
            << sql << ": " << PQerrorMessage(m_connection.get());
    }

private:
    std::unique_ptr<PGconn, void (*)(PGconn *)> m_connection;
};

class ServerCopyTest : public ServerTest
{
protected:
    [[nodiscard]] Outcome copy(const QString &from, const QString &to) const
    {
        return host({u"--kopier"_s, from, to});
    }
    void expectStopped(const Outcome &outcome, const QString &fragment) const
    {
        EXPECT_EQ(outcome.status, 1) << ::testing::PrintToString(outcome);
        EXPECT_FALSE(outcome.out.contains("Kopiert")) << outcome.out.toStdString();
        EXPECT_EQ(outcome.err.count(u'\n'), 1) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains(fragment)) << outcome.err.toStdString();
        EXPECT_EQ(tableCount(), u"0"_s);
    }
    /// The address of a database in which the copy waits for a lock however long it takes.
    static QString patient(const QString &uri) { return uri + u"&options=-c%20lock_timeout%3D0"_s; }
    /// Holds a copy up behind the table before "Produkt": a table of the same name that is not
    /// there yet, nor sure to come.
    static void holdCopyUp(OtherUser &other)
    {
        other.run("BEGIN");
        other.run("CREATE TABLE \"Produkt\" (nr int)");
    }
    /// Starts a copy and returns when it has told of the table.
    void startCopy(QProcess &process, const QString &from, const QString &to,
                   const QByteArray &table) const
    {
        process.setWorkingDirectory(path(QString()));
        process.start(programFile(), {u"--kopier"_s, from, to});
        QByteArray seen;
        while (!seen.contains('\n' + table + ": ") && process.waitForReadyRead(-1))
            seen += process.readAllStandardOutput();
        EXPECT_TRUE(seen.contains('\n' + table + ": ")) << seen.toStdString();
    }
    /// A demo file with everything in it that could be lost on the way.
    QString makeHardFile()
    {
        const QString file = makeDemo();
        runInFile(
            u"demo.db"_s,
            "UPDATE Klient SET Logo=x'00FF0A5C2E0D', FakTekst1='Linje 1\r\nLinje 2\t\\N \\. "
            "''æøå''';"
            "UPDATE KundeLev SET LevAdr1=NULL, SammeLevAdr=NULL WHERE KundeNr=10001;"
            "UPDATE Ordre SET OrdreDato='2014-02-28 23:59:59', FakDato='0100-01-01', "
            "LevDato='9999-12-31', SumBrutto=9223372036854775807, "
            "SumNetto=-9223372036854775808, MvaKr=1, RabattPst=0.1, Avrunding=NULL, Betalt=1, "
            "EgenRef='', DeresRef='  blanke  ', BetBet=-32768 WHERE ID=1;"
            "UPDATE Ordre SET RabattPst=3.4e38, MvaKr=-1 WHERE ID=2;"
            "CREATE TABLE \"Notat bok\" (Nr DOUBLE, Tekst TEXT(5), Bilde LONGBINARY);"
            "INSERT INTO \"Notat bok\" VALUES (1e-300,'Ås',x''),(0.1,NULL,NULL),(-1e300,'','')"
            // Text where bytes belong would stop the copy.
            ";UPDATE \"Notat bok\" SET Bilde=NULL WHERE Tekst=''");
        return file;
    }
};

TEST_F(ServerCopyTest, ThereAndBackIsTheSame)
{
    const QString file = makeHardFile();
    const Outcome there = copy(file, uri());
    EXPECT_EQ(there.status, 0) << ::testing::PrintToString(there);
    const Outcome back = copy(uri(), u"tilbake.db"_s);
    EXPECT_EQ(back.status, 0) << ::testing::PrintToString(back);
    EXPECT_TRUE(back.out.contains("13 tabeller")) << back.out.toStdString();

    const QByteArray original = dump(file);
    EXPECT_EQ(dump(uri()), original);
    EXPECT_EQ(dump(path(u"tilbake.db"_s)), original);
    const QString others = u"SELECT * FROM [Notat bok] ORDER BY Nr"_s;
    EXPECT_EQ(answer(uri(), others), answer(file, others));
    EXPECT_EQ(answer(path(u"tilbake.db"_s), others), answer(file, others));
}

TEST_F(ServerCopyTest, CountersGoOnWhereTheSourcesStood)
{
    const QString file = makeDemo();
    change(u"DELETE FROM OrdreLinjer"_s);
    change(u"DELETE FROM Ordre WHERE ID>40"_s);
    ASSERT_EQ(copy(file, uri()).status, 0);
    ASSERT_EQ(copy(uri(), u"tilbake.db"_s).status, 0);
    const QString insert = u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (1,9999)"_s;
    const QString question = u"SELECT ID FROM Ordre WHERE OrdreNr=9999"_s;
    for (const QString &copied : {uri(), path(u"tilbake.db"_s)}) {
        EXPECT_EQ(host({u"--dsn"_s, copied, u"--sql"_s, insert}).status, 0);
        EXPECT_EQ(answer(copied, question), QByteArray("ID:3\n61\n"));
    }
}

TEST_F(ServerCopyTest, ModuleGoesOnInTheCopy)
{
    ASSERT_EQ(copy(makeDemo(), uri()).status, 0);
    const Outcome started = host({u"--dsn"_s, uri(), u"--aar"_s, u"2014"_s});
    EXPECT_EQ(started.status, 0) << ::testing::PrintToString(started);
    EXPECT_EQ(dump(uri()), dump(path(u"demo.db"_s)));

    gDB->setConnectionString(m_database.connectionString());
    gKlient = 1;
    const qint32 next = NyttOrdreNr();
    EXPECT_EQ(next, 1061);
    EXPECT_TRUE(gDB->Execute(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES ( 1, %1)"_s.arg(next)));
    EXPECT_EQ(NyttOrdreNr(), 1062);
    EXPECT_EQ(m_database.run(u"SELECT MAX(\"ID\") FROM \"Ordre\""_s), u"61"_s);
    // The constraints came along.
    EXPECT_FALSE(gDB->Execute(u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES ( 1, %1)"_s.arg(next)));
    EXPECT_FALSE(gDB->Execute(u"INSERT INTO OrdreLinjer (OrdreID,PosNr) VALUES (777,1)"_s));
    EXPECT_FALSE(gDB->Execute(u"INSERT INTO Klient (KlientNr) VALUES (1)"_s));
}

TEST_F(ServerCopyTest, TargetWithATableIsRefused)
{
    const QString file = makeDemo();
    m_database.run(u"CREATE TABLE annet (nr int)"_s);
    expectRefusal(copy(file, uri()), 1, u"har tabeller fra før"_s);
    EXPECT_EQ(tableCount(), u"1"_s);
}

TEST_F(ServerCopyTest, SameDatabaseIsRefused)
{
    ASSERT_EQ(demo(uri()).status, 0);
    const QByteArray before = dump(uri());
    expectRefusal(copy(uri(), u"dsn="_s + uri()), 1, u"samme database"_s);
    // By another road it is at least seen to hold tables.
    expectRefusal(copy(uri(), u"dsn="_s + tcpUri(u"postgres"_s) + u";pwd="_s +
                                  QString::fromLatin1(PostgresCluster::kPassword)),
                  1, u"har tabeller fra før"_s);
    EXPECT_EQ(dump(uri()), before);
}

TEST_F(ServerCopyTest, EmptySourceLeavesNoFile)
{
    expectRefusal(copy(uri(), u"kopi.db"_s), 1, u"har ingen tabeller å kopiere"_s);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ServerCopyTest, TextThatTheServerDoesNotTakeStopsTheCopy)
{
    const QString file = makeDemo();
    runInFile(u"demo.db"_s, "UPDATE Ordre SET OrdreStatus='Uforglemmelig' WHERE ID=60");
    const Outcome outcome = copy(file, uri());
    expectStopped(outcome, u"for lang"_s);
    EXPECT_TRUE(outcome.err.contains(u"tabellen Ordre"_s)) << outcome.err.toStdString();
}

TEST_F(ServerCopyTest, NameThatTheServerWouldCutStopsTheCopy)
{
    const QString file = makeDemo();
    runInFile(u"demo.db"_s, "ALTER TABLE Bil ADD COLUMN " + QByteArray(64, 'x') + " LONG");
    const Outcome outcome = copy(file, uri());
    expectStopped(outcome, u"tabellen Bil: Navnet «xxx"_s);
    EXPECT_TRUE(outcome.err.contains(u"er for langt"_s)) << outcome.err.toStdString();
}

TEST_F(ServerCopyTest, CopyThatDiffersIsNotKept)
{
    const QString file = makeDemo();
    // A server that alters what it is given as soon as there is a table to put it in.
    m_database.run(
        u"CREATE FUNCTION endre() RETURNS trigger LANGUAGE plpgsql AS $$BEGIN "
        "IF TG_TABLE_NAME = 'Bil' THEN RETURN NULL; END IF; "
        "IF NEW.\"ID\" = 7 THEN NEW.\"SumBrutto\" := NEW.\"SumBrutto\" + 0.0001; END IF; "
        "RETURN NEW; END$$"_s);
    const auto alter = [this](const QString &table) {
        m_database.run(
            u"CREATE FUNCTION ved_ny() RETURNS event_trigger LANGUAGE plpgsql AS $$BEGIN "
            "IF to_regclass('\"%1\"') IS NOT NULL THEN CREATE OR REPLACE TRIGGER e BEFORE INSERT "
            "ON \"%1\" FOR EACH ROW EXECUTE FUNCTION endre(); END IF; END$$"_s.arg(table));
        m_database.run(u"CREATE EVENT TRIGGER ny ON ddl_command_end WHEN TAG IN ('CREATE TABLE') "
                       "EXECUTE FUNCTION ved_ny()"_s);
    };
    alter(u"Ordre"_s);
    expectStopped(copy(file, uri()), u"tabellen Ordre: summen av feltet SumBrutto"_s);
    m_database.run(u"DROP EVENT TRIGGER ny"_s);
    m_database.run(u"DROP FUNCTION ved_ny()"_s);
    alter(u"Bil"_s);
    expectStopped(copy(file, uri()), u"tabellen Bil: 9 rader er blitt til 0"_s);
}

TEST_F(ServerCopyTest, WhatSomebodyElseMakesMeanwhileIsKept)
{
    const QString file = makeDemo();
    OtherUser other(uri());
    holdCopyUp(other);
    QProcess process;
    startCopy(process, file, patient(uri()), "Ordre");
    other.run("COMMIT");
    ASSERT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(process.exitCode(), 1);
    const QByteArray error = process.readAllStandardError();
    EXPECT_TRUE(error.contains("tabellen Produkt")) << error.toStdString();
    EXPECT_EQ(m_database.run(u"SELECT tablename FROM pg_tables WHERE schemaname = 'public'"_s),
              u"Produkt"_s);
}

TEST_F(ServerCopyTest, EndedMidwayLeavesTheTargetEmpty)
{
    const QString file = makeDemo();
    OtherUser other(uri());
    holdCopyUp(other);
    QProcess process;
    startCopy(process, file, patient(uri()), "Ordre");
    ::kill(pid_t(process.processId()), SIGINT);
    other.run("ROLLBACK");
    ASSERT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 130);
    const QByteArray error = process.readAllStandardError();
    EXPECT_TRUE(error.startsWith("strekkbok-vert: avbrutt: ")) << error.toStdString();
    EXPECT_TRUE(error.endsWith(" er kopiert, men ingenting er lagret\n")) << error.toStdString();
    EXPECT_EQ(tableCount(), u"0"_s);
    EXPECT_EQ(copy(file, uri()).status, 0);
}

TEST_F(ServerCopyTest, KilledMidwayLeavesTheTargetEmpty)
{
    const QString file = makeDemo();
    OtherUser other(uri());
    holdCopyUp(other);
    QProcess process;
    startCopy(process, file, patient(uri()), "Ordre");
    process.kill();
    ASSERT_TRUE(process.waitForFinished(-1));
    other.run("ROLLBACK");
    // The server notices the loss when it is allowed to go on.
    m_database.run(u"SELECT pg_terminate_backend(pid, 30000) FROM pg_stat_activity WHERE datname = "
                   "current_database() AND application_name LIKE 'Strekkbok%'"_s);
    EXPECT_EQ(tableCount(), u"0"_s);
    EXPECT_EQ(copy(file, uri()).status, 0);
}

TEST_F(ServerCopyTest, KilledMidwayLeavesAFileThatCanBeTakenAgain)
{
    ASSERT_EQ(demo(uri()).status, 0);
    // A reader of the products who is not their owner waits for a lock at the first of them.
    const QString user = m_database.name() + u"_leser"_s;
    m_database.run(u"CREATE ROLE %1 LOGIN"_s.arg(user));
    m_database.run(u"GRANT SELECT ON ALL TABLES IN SCHEMA public TO "_s + user);
    m_database.run(u"CREATE FUNCTION vent() RETURNS boolean LANGUAGE plpgsql AS $$BEGIN PERFORM "
                   "pg_advisory_xact_lock(1); RETURN TRUE; END$$"_s);
    m_database.run(u"CREATE POLICY vent ON \"Produkt\" USING (vent())"_s);
    m_database.run(u"ALTER TABLE \"Produkt\" ENABLE ROW LEVEL SECURITY"_s);
    OtherUser other(uri());
    other.run("BEGIN");
    other.run("DO $$BEGIN PERFORM pg_advisory_xact_lock(1); END$$");
    QProcess process;
    startCopy(process, patient(uri(user)), u"kopi.db"_s, "Ordre");
    process.kill();
    ASSERT_TRUE(process.waitForFinished(-1));
    other.run("ROLLBACK");

    expectRefusal(host({u"--dsn"_s, path(u"kopi.db"_s), u"--sql"_s, u"SELECT Navn FROM Klient"_s}),
                  1, u"Klient"_s);
    const Outcome again = copy(uri(user), u"kopi.db"_s);
    EXPECT_EQ(again.status, 0) << ::testing::PrintToString(again);
    EXPECT_EQ(dump(path(u"kopi.db"_s)), dump(uri()));
    m_database.run(u"DROP OWNED BY "_s + user);
    m_database.run(u"DROP ROLE "_s + user);
}

TEST_F(ServerCopyTest, SeesAFileAsItWasAtOneMoment)
{
    const QString file = makeDemo();
    const QByteArray before = dump(file);
    OtherUser other(uri());
    holdCopyUp(other);
    QProcess process;
    startCopy(process, file, patient(uri()), "Ordre");
    change(u"DELETE FROM OrdreLinjer"_s);
    other.run("ROLLBACK");
    ASSERT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    EXPECT_EQ(dump(uri()), before);
}

TEST_F(ServerCopyTest, SeesAServerAsItWasAtOneMoment)
{
    ASSERT_EQ(demo(uri()).status, 0);
    const QByteArray before = dump(uri());
    const PostgresDatabase target;
    const QString targetUri = target.connectionString().sliced(4); // behind "dsn="
    OtherUser other(targetUri);
    holdCopyUp(other);
    QProcess process;
    startCopy(process, uri(), patient(targetUri), "Ordre");
    m_database.run(u"DELETE FROM \"OrdreLinjer\""_s);
    other.run("ROLLBACK");
    ASSERT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    EXPECT_EQ(dump(targetUri), before);
}

} // namespace
