#include "host/program/ServerTest.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <libpq-fe.h>

#include <arpa/inet.h>
#include <memory>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

QString ServerTest::uri(const QString &user) const
{
    const PostgresCluster &cluster = PostgresCluster::shared();
    return u"postgresql://%1@/%2?host=%3&port=%4"_s
        .arg(user, m_database.name(), cluster.socketFolder())
        .arg(cluster.port());
}

QString ServerTest::tcpUri(const QString &userAndPassword) const
{
    return u"postgresql://%1@127.0.0.1:%2/%3"_s.arg(userAndPassword)
        .arg(PostgresCluster::shared().port())
        .arg(m_database.name());
}

QString ServerTest::tableCount() const
{
    return m_database.run(u"SELECT COUNT(*) FROM pg_tables WHERE schemaname = 'public'"_s);
}

Outcome ServerTest::demo(const QString &dsn) const
{
    return host({u"--demo"_s, u"--dsn"_s, dsn, u"--aar"_s, u"2014"_s});
}

namespace {

TEST_F(ServerTest, DemoIsTheSameAsInAFile)
{
    const Outcome outcome = demo(uri());
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.err, QString());
    EXPECT_TRUE(outcome.out.contains("ModuleInit 1"));
    EXPECT_TRUE(outcome.out.contains("databasen «" + m_database.name().toUtf8() + "» på /"))
        << outcome.out.toStdString();
    const QByteArray stored = dump(uri());
    EXPECT_GT(stored.size(), 10'000);
    EXPECT_EQ(stored, dump(makeDemo()));
}

TEST_F(ServerTest, AnswersAndDocumentsAreTheSameAsFromAFile)
{
    const QString file = makeDemo();
    ASSERT_EQ(demo(uri()).status, 0);
    for (const QString &query :
         {u"SELECT OrdreNr,KundeNavn,OrdreStatus,SumBrutto FROM Ordre ORDER BY KundeNavn,OrdreNr"_s,
          u"SELECT OrdreStatus,COUNT (*) AS Antall,Sum(SumBrutto) AS Sum FROM Ordre GROUP BY "
          u"OrdreStatus"_s,
          u"SELECT Max(OrdreNr) FROM Ordre WHERE FakDato>#01/01/2099#"_s})
        EXPECT_EQ(answer(uri(), query), answer(file, query)) << query.toStdString();
    const Outcome refused = host({u"--dsn"_s, uri(), u"--sql"_s, u"SELECT Finnes FROM Ordre"_s});
    expectRefusal(refused, 1, u"Finnes"_s);
    for (const QString &format : {u"--ehf"_s, u"--ehf3"_s}) {
        for (const QString &number : {u"1052"_s, u"1045"_s}) {
            ASSERT_EQ(host({u"--dsn"_s, file, format, number, u"--ut"_s, u"fil.xml"_s}).status, 0);
            ASSERT_EQ(host({u"--dsn"_s, uri(), format, number, u"--ut"_s, u"tjener.xml"_s}).status,
                      0);
            EXPECT_GT(content(u"fil.xml"_s).size(), 1000);
            EXPECT_EQ(content(u"tjener.xml"_s), content(u"fil.xml"_s));
            QFile::remove(path(u"fil.xml"_s));
            QFile::remove(path(u"tjener.xml"_s));
        }
    }
    for (const auto &[dsn, folder] : {std::pair(file, u"fil"_s), std::pair(uri(), u"tjener"_s)}) {
        QDir(path(QString())).mkdir(folder);
        ASSERT_EQ(host({u"--dsn"_s, dsn, u"--ehf3-alle"_s, folder}).status, 0);
    }
    const QStringList documents = QDir(path(u"fil"_s)).entryList(QDir::Files);
    EXPECT_GT(documents.size(), 50);
    for (const QString &name : documents)
        EXPECT_EQ(content(u"tjener/"_s + name), content(u"fil/"_s + name)) << name.toStdString();
}

TEST_F(ServerTest, ModuleStartsByUriNameAndConnectionString)
{
    ASSERT_EQ(demo(uri()).status, 0);
    write(u"odbc.ini"_s,
          u"[Firma]\nDriver=PostgreSQL Unicode\nServername=%1\nPort=%2\nDatabase=%3\n"
          u"UserName=postgres\n"_s.arg(PostgresCluster::shared().socketFolder())
              .arg(PostgresCluster::shared().port())
              .arg(m_database.name())
              .toUtf8());
    environment.insert(u"ODBCINI"_s, path(u"odbc.ini"_s));
    for (const QString &dsn : {uri(), u"Firma"_s, u"dsn=firma"_s, u"uid=postgres;dsn=Firma"_s,
                               u"dsn="_s + tcpUri(u"x"_s) + u";uid=postgres;pwd="_s +
                                   QString::fromLatin1(PostgresCluster::kPassword)}) {
        const Outcome outcome = host({u"--dsn"_s, dsn, u"--aar"_s, u"2014"_s});
        EXPECT_EQ(outcome.status, 0) << dsn.toStdString() << ::testing::PrintToString(outcome);
        EXPECT_TRUE(outcome.out.contains("ModuleInit 1"));
    }
    expectRefusal(host({u"--dsn"_s, u"dsn=Ukjent"_s}), 1, u"«Ukjent»"_s);
}

TEST_F(ServerTest, StartGivesAnOlderDatabaseTheIndexOfItsVouchers)
{
    const QString drop = u"DROP INDEX \"Bilag.KlientAarNr\""_s; // fails where there is none
    ASSERT_EQ(demo(uri()).status, 0);
    m_database.run(drop);
    EXPECT_EQ(host({u"--dsn"_s, uri(), u"--aar"_s, u"2014"_s}).status, 0);
    m_database.run(drop);
}

TEST_F(ServerTest, DemoRefusesADatabaseWithTables)
{
    m_database.run(u"CREATE TABLE annet (nr int)"_s);
    expectRefusal(demo(uri()), 1, u"har tabeller fra før"_s);
    EXPECT_EQ(tableCount(), u"1"_s);
}

TEST_F(ServerTest, FailedDemoLeavesTheDatabaseEmpty)
{
    QDir(path(QString())).mkdir(u"alene"_s);
    const QString alone = path(u"alene/strekkbok-vert"_s);
    ASSERT_TRUE(QFile::copy(programFile(), alone));
    const Outcome outcome = start(alone, {u"--demo"_s, u"--dsn"_s, uri()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains(u"komponenten"_s)) << outcome.err.toStdString();
    EXPECT_EQ(tableCount(), u"0"_s);
}

TEST_F(ServerTest, DemoKeepsWhatSomebodyElseMakesMeanwhile)
{
    const std::unique_ptr<PGconn, void (*)(PGconn *)> other(PQconnectdb(uri().toUtf8().constData()),
                                                            PQfinish);
    PQclear(PQexec(other.get(), "BEGIN; CREATE TABLE \"Klient\" (nr int)"));
    QProcess process;
    prepare(process);
    process.start(programFile(),
                  {u"--demo"_s, u"--dsn"_s, uri() + u"&options=-c%20lock_timeout%3D0"_s, u"--aar"_s,
                   u"2014"_s});
    while (m_database.run(u"SELECT COUNT(*) FROM pg_stat_activity WHERE datname = "
                          "current_database() AND wait_event_type = 'Lock'"_s) == u"0"_s &&
           !process.waitForFinished(1)) {
    }
    PQclear(PQexec(other.get(), "COMMIT"));
    ASSERT_TRUE(process.state() == QProcess::NotRunning || process.waitForFinished(-1));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(m_database.run(u"SELECT tablename FROM pg_tables WHERE schemaname = 'public'"_s),
              u"Klient"_s);
}

TEST_F(ServerTest, MissingParentTableIsNamed)
{
    ASSERT_EQ(demo(uri()).status, 0);
    m_database.run(u"DROP TABLE \"Klient\""_s);
    const Outcome outcome = host({u"--dsn"_s, uri()});
    expectRefusal(outcome, 1, u"ModuleInit 0"_s);
    EXPECT_TRUE(outcome.err.contains(u"Klient"_s)) << outcome.err.toStdString();
}

TEST_F(ServerTest, MissingRightIsToldWhenATableCannotBeMade)
{
    ASSERT_EQ(demo(uri()).status, 0);
    const QString user = m_database.name() + u"_bruker"_s;
    m_database.run(u"DROP TABLE \"OrdreLinjer\""_s);
    m_database.run(u"CREATE ROLE %1 LOGIN"_s.arg(user));
    m_database.run(u"GRANT ALL ON ALL TABLES IN SCHEMA public TO "_s + user);
    const Outcome outcome = host({u"--dsn"_s, uri(user), u"--aar"_s, u"2014"_s});
    expectRefusal(outcome, 1, u"ModuleInit 0"_s);
    EXPECT_TRUE(outcome.err.contains(u"ikke rett"_s)) << outcome.err.toStdString();
    EXPECT_EQ(tableCount(), u"11"_s);

    m_database.run(u"DROP OWNED BY "_s + user);
    m_database.run(u"DROP ROLE "_s + user);
}

TEST_F(ServerTest, MissingDatabaseIsNamed)
{
    const QString dsn = u"dsn="_s + uri().replace(m_database.name(), u"finnes_ikke"_s);
    for (const QStringList &task : {QStringList{},
                                    {u"--sql"_s, u"SELECT Navn FROM Klient"_s},
                                    {u"--demo"_s},
                                    {u"--ehf"_s, u"1"_s, u"--ut"_s, u"x.xml"_s}})
        expectRefusal(host(QStringList{u"--dsn"_s, dsn} + task), 1, u"«finnes_ikke»"_s);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ServerTest, SilentServerIsGivenUp)
{
    // Connections come about, since the system accepts them, but nobody ever answers.
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr *>(&address), size), 0);
    ASSERT_EQ(::listen(listener, 8), 0);
    ASSERT_EQ(::getsockname(listener, reinterpret_cast<sockaddr *>(&address), &size), 0);
    const QString dsn =
        u"postgresql://kari@127.0.0.1:%1/firma?sslmode=disable"_s.arg(ntohs(address.sin_port));
    expectRefusal(host({u"--dsn"_s, dsn}), 1, u"svarer ikke"_s);
    ::close(listener);
}

} // namespace
