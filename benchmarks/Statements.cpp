// How many inserts a second go through gDB, each with a connection and a transaction of its own as
// every statement of the module, beside two plain loops on the database's own interface: one that
// does the same literally, and one that keeps its connection and its prepared statements, which is
// the limit. All three wait until each row is safe on the disk.

#include "benchmarks/support/PlainDatabase.h"
#include "benchmarks/support/Report.h"
#include "data/clsAdoUtils.h"
#include "platform/ado/Connection.h"
#include "platform/ado/SessionPool.h"
#include "state/SharedState.h"
#include "tests/support/PostgresCluster.h"

#include <QTemporaryDir>

#include <libpq-fe.h>

#include <optional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// The disk has moods, so many short rounds are better than a few long ones.
constexpr int kRounds = 100;
constexpr int kSettling = 3;
constexpr int kInserts = 30;
constexpr int kNaiveInserts = 4;
// Of the kept connection's time.
constexpr double kSqliteAim = 1.05;
constexpr double kPostgresAim = 1.12;

/// A database file or server that takes inserts in two plain ways.
class Plain
{
public:
    virtual ~Plain() = default;
    virtual const char *name() const = 0;
    virtual QString connectionString() const = 0;
    /// Opens, begins, inserts, commits and closes.
    virtual void insertNaively() = 0;
    /// Begins, inserts and commits.
    virtual void insertKept() = 0;
};

void makeTable(const QString &connectionString)
{
    ado::Connection connection;
    connection.open(connectionString);
    connection.execute(u"CREATE TABLE Linjer (ID COUNTER CONSTRAINT ID PRIMARY KEY, OrdreID LONG, "
                       u"PosNr SHORT, ProduktNavn TEXT(50), Antall SINGLE, Pris CURRENCY)"_s);
}

constexpr const char *kSqliteInsert = "INSERT INTO Linjer (OrdreID,PosNr,ProduktNavn,Antall,Pris) "
                                      "VALUES (17,10,'Kjøring på Østlandet',2.5,4938200)";

/// Each loop has a file of its own: the idle connections of another one would spare the naive loop
/// the worst of its closing.
class PlainSqlite final : public Plain
{
public:
    PlainSqlite()
    {
        for (const QString &name : {u"modul"_s, u"naiv"_s, u"grense"_s}) {
            bench::makeEmptyFile(path(name));
            makeTable(u"dsn="_s + path(name));
        }
        ado::SessionPool::shared().clear();
        m_kept.emplace(path(u"grense"_s));
    }

    const char *name() const override { return "SQLite"; }
    QString connectionString() const override { return u"dsn="_s + path(u"modul"_s); }
    void insertNaively() override
    {
        const bench::PlainDatabase database(path(u"naiv"_s));
        waitForTheDisk(database);
        for (const char *sql : {"BEGIN IMMEDIATE", kSqliteInsert, "COMMIT"})
            database.send(sql);
    }
    void insertKept() override
    {
        for (bench::PlainQuery &statement : m_kept->statements) {
            if (statement.next())
                qFatal("an insert gave a row");
            statement.reset();
        }
    }

private:
    /// The file keeps its write-ahead log; how to wait for the disk is each connection's own
    /// choice.
    static void waitForTheDisk(const bench::PlainDatabase &database)
    {
        database.send("PRAGMA synchronous=FULL");
    }
    struct Kept
    {
        explicit Kept(const QString &path) : database(path) { waitForTheDisk(database); }

        bench::PlainDatabase database;
        bench::PlainQuery statements[3] = {
            {database, "BEGIN IMMEDIATE"}, {database, kSqliteInsert}, {database, "COMMIT"}};
    };
    QString path(const QString &name) const { return m_folder.filePath(name + u".db"_s); }

    QTemporaryDir m_folder;
    std::optional<Kept> m_kept;
};

class PlainPostgres final : public Plain
{
public:
    PlainPostgres()
        : m_cluster(PostgresCluster::Durability::Full), m_database(m_cluster.createDatabase()),
          m_uri(connectionString().sliced(4).toUtf8())
    {
        makeTable(connectionString());
        m_kept = open();
        check(m_kept, PQprepare(m_kept, "linje", kInsert, 0, nullptr));
    }
    ~PlainPostgres() override
    {
        PQfinish(m_kept);
        ado::SessionPool::shared().clear();
    }

    const char *name() const override { return "PostgreSQL"; }
    QString connectionString() const override { return m_cluster.connectionString(m_database); }
    void insertNaively() override
    {
        PGconn *connection = open();
        for (const char *sql : {kBegin, kInsert, "COMMIT"})
            check(connection, PQexec(connection, sql));
        PQfinish(connection);
    }
    void insertKept() override
    {
        check(m_kept, PQexec(m_kept, kBegin));
        check(m_kept, PQexecPrepared(m_kept, "linje", 0, nullptr, nullptr, nullptr, 0));
        check(m_kept, PQexec(m_kept, "COMMIT"));
    }

private:
    // With the transaction's number. Whoever does not know it before he sends COMMIT cannot find
    // out what became of that when the server goes away under it.
    static constexpr const char *kBegin = "BEGIN; SELECT txid_current()";
    static constexpr const char *kInsert =
        "INSERT INTO \"Linjer\" (\"OrdreID\",\"PosNr\",\"ProduktNavn\",\"Antall\",\"Pris\") "
        "VALUES (17,10,'Kjøring på Østlandet',2.5,493.82)";
    static void check(PGconn *connection, PGresult *result)
    {
        const ExecStatusType status = PQresultStatus(result);
        if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
            qFatal("%s", PQerrorMessage(connection));
        PQclear(result);
    }
    PGconn *open() const
    {
        PGconn *connection = PQconnectdb(m_uri.constData());
        if (PQstatus(connection) != CONNECTION_OK)
            qFatal("%s", PQerrorMessage(connection));
        check(connection, PQexec(connection, "SET synchronous_commit=on"));
        return connection;
    }

    PostgresCluster m_cluster;
    const QString m_database;
    const QByteArray m_uri;
    PGconn *m_kept = nullptr;
};

/// Inserts by the module; every statement has a text of its own, as on the screens.
void insertByModule(bool withId, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString sql = u"INSERT INTO Linjer (OrdreID,PosNr,ProduktNavn,Antall,Pris) VALUES "
                            u"(17,%1,'Kjøring på Østlandet',2.5,493.82)"_s.arg(10 * i);
        if (withId ? gDB->ExecuteID(sql) == 0 : !gDB->Execute(sql))
            qFatal("%s", qPrintable(gDB->LastError()));
    }
}

/// The three ways in turn, round after round: seconds for one insert.
class Times
{
public:
    Times(Plain &plain, bool withId) : m_plain(plain), m_withId(withId)
    {
        for (int round = 0; round < kRounds; ++round) {
            // Neither of the two that are close is to pay for what the naive loop left to the disk,
            // nor always to come first.
            static_cast<void>(keptInserts(kSettling));
            static_cast<void>(moduleInserts(kSettling));
            if (round % 2 == 0)
                kept.push_back(keptInserts(kInserts));
            module.push_back(moduleInserts(kInserts));
            if (round % 2 != 0)
                kept.push_back(keptInserts(kInserts));
            naive.push_back(bench::secondsOf([&] {
                                for (int i = 0; i < kNaiveInserts; ++i)
                                    m_plain.insertNaively();
                            }) /
                            kNaiveInserts);
            toLimit.push_back(module.back() / kept.back());
            toNaive.push_back(naive.back() / module.back());
        }
    }

    std::vector<double> module, naive, kept, toLimit, toNaive;

private:
    double keptInserts(int count)
    {
        return bench::secondsOf([&] {
                   for (int i = 0; i < count; ++i)
                       m_plain.insertKept();
               }) /
               count;
    }
    double moduleInserts(int count) const
    {
        return bench::secondsOf([&] { insertByModule(m_withId, count); }) / count;
    }

    Plain &m_plain;
    const bool m_withId;
};

double rate(const std::vector<double> &seconds)
{
    return 1 / bench::median(seconds);
}

void measure(Plain &plain, double mostToLimit)
{
    gDB->setConnectionString(plain.connectionString());
    for (const bool withId : {false, true}) {
        const Times times(plain, withId);
        const std::string what =
            std::string(plain.name()) + ", gDB." + (withId ? "ExecuteID" : "Execute") + ", beside ";
        bench::report(what + "a kept connection", rate(times.module), rate(times.kept), "/s",
                      bench::median(times.toLimit), bench::Aim::ratioAtMost(mostToLimit));
        bench::report(what + "reopening", rate(times.module), rate(times.naive), "/s",
                      bench::median(times.toNaive), bench::Aim::ratioAtLeast(5));
    }
}

/// In a process of its own, since a server that does not start ends it.
void measurePostgres()
{
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0) {
        {
            PlainPostgres plain;
            measure(plain, kPostgresAim);
        }
        std::fflush(stdout);
        ::_exit(0);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    if (status != 0)
        std::puts("PostgreSQL is left out: its server could not be started");
}

} // namespace

int main()
{
    measurePostgres();
    PlainSqlite plain;
    measure(plain, kSqliteAim);
    releaseSharedState();
    return 0;
}
