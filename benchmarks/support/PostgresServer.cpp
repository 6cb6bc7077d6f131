#include "benchmarks/support/Database.h"
#include "tests/support/PostgresCluster.h"

#include <QTemporaryDir>

#include <cstdlib>
#include <ctime>
#include <libpq-fe.h>

namespace bench {

namespace {

/// A database on the program's own server, which waits for no disk: it is the growth that counts.
class ServerDatabase final : public Database
{
public:
    ServerDatabase()
    {
        const QByteArray uri = connectionString().sliced(qsizetype(sizeof "dsn=") - 1).toUtf8();
        m_connection.reset(PQconnectdb(uri.constData()));
        if (PQstatus(m_connection.get()) != CONNECTION_OK)
            qFatal("%s", PQerrorMessage(m_connection.get()));
    }

    const char *name() const override { return "PostgreSQL"; }
    bool isServer() const override { return true; }
    QString connectionString() const override { return m_database.connectionString(); }
    QString folder() const override { return m_folder.path(); }
    int krone() const override { return 1; }
    double secondsOutside() const override
    {
        // Each session has a process of its own, which lives as long as the pool keeps the session.
        const Result processes =
            run("SELECT pid FROM pg_stat_activity WHERE datname = current_database() AND "
                "backend_type = 'client backend' AND pid <> pg_backend_pid()",
                PGRES_TUPLES_OK);
        double seconds = 0;
        for (int row = 0; row < PQntuples(processes.get()); ++row) {
            clockid_t clock{};
            timespec spent{};
            if (clock_getcpuclockid(std::atoi(PQgetvalue(processes.get(), row, 0)), &clock) == 0 &&
                clock_gettime(clock, &spent) == 0)
                seconds += double(spent.tv_sec) + double(spent.tv_nsec) * 1e-9;
        }
        return seconds;
    }
    void send(const QByteArray &sql) override { run(sql, PGRES_COMMAND_OK); }
    void settle() override { send("VACUUM ANALYZE"); }

private:
    using Result = std::unique_ptr<PGresult, void (*)(PGresult *)>;
    Result run(const QByteArray &sql, ExecStatusType expected) const
    {
        Result result(PQexec(m_connection.get(), sql.constData()), PQclear);
        if (PQresultStatus(result.get()) != expected)
            qFatal("%s: %s", sql.constData(), PQerrorMessage(m_connection.get()));
        return result;
    }

    PostgresDatabase m_database;
    QTemporaryDir m_folder;
    std::unique_ptr<PGconn, void (*)(PGconn *)> m_connection{nullptr, PQfinish};
};

} // namespace

std::unique_ptr<Database> makeDatabase()
{
    return std::make_unique<ServerDatabase>();
}

} // namespace bench
