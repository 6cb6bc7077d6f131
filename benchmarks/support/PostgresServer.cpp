#include "benchmarks/support/Database.h"
#include "tests/support/PostgresCluster.h"

#include <QTemporaryDir>

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
    void send(const QByteArray &sql) override
    {
        const std::unique_ptr<PGresult, void (*)(PGresult *)> result(
            PQexec(m_connection.get(), sql.constData()), PQclear);
        if (PQresultStatus(result.get()) != PGRES_COMMAND_OK)
            qFatal("%s: %s", sql.constData(), PQerrorMessage(m_connection.get()));
    }
    void settle() override { send("VACUUM ANALYZE"); }

private:
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
