#include "platform/ado/postgres/PostgresLink.h"

#include "platform/ado/postgres/Libpq.h"
#include "platform/ado/postgres/PostgresConnect.h"
#include "platform/ado/postgres/PostgresError.h"

#include <poll.h>
#include <utility>

namespace ado {

namespace {

constexpr qint64 kSilenceToTrust = 60'000; // milliseconds

/// Takes in all that is left of an answer.
void takeRest(PGconn *connection)
{
    while (PGresult *result = PQgetResult(connection))
        PQclear(result);
}

} // namespace

void PostgresResultClearer::operator()(pg_result *result) const noexcept
{
    PQclear(result);
}

void PostgresLink::Closer::operator()(pg_conn *connection) const noexcept
{
    PQfinish(connection);
}

PostgresLink::PostgresLink(Keywords keywords) : m_keywords(std::move(keywords))
{
    reopen();
}

void PostgresLink::reopen()
{
    // What has been waited for in vain is not waited for again.
    const bool known = std::exchange(m_reached, false);
    m_connection.reset(connectPostgres(m_keywords, known));
    m_reached = true;
    m_dropped.clear();
    m_silence.start();
}

int PostgresLink::patience() const
{
    return 1000 * connectPatience(m_keywords);
}

bool PostgresLink::isLost() const noexcept
{
    return PQstatus(m_connection.get()) != CONNECTION_OK;
}

bool PostgresLink::isIdle() const noexcept
{
    return PQtransactionStatus(m_connection.get()) == PQTRANS_IDLE;
}

bool PostgresLink::isAlive() noexcept
{
    // Nothing is due from an idle server; what has come may be its farewell.
    pollfd socket{PQsocket(m_connection.get()), POLLIN, 0};
    const bool suspect = ::poll(&socket, 1, 0) != 0 || m_silence.hasExpired(kSilenceToTrust);
    if (!isLost() && suspect) {
        PQclear(PQexec(m_connection.get(), "")); // reads what has come
        m_silence.start();
    }
    return !isLost();
}

PostgresResult PostgresLink::checked(pg_result *result)
{
    PostgresResult owned(result);
    if (isLost())
        throw postgresLost();
    m_silence.start();
    switch (PQresultStatus(result)) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
    case PGRES_SINGLE_TUPLE:
        return owned;
    default:
        throw postgresError(PostgresFailure(result));
    }
}

PostgresResult PostgresLink::run(const char *sql)
{
    return checked(PQexec(m_connection.get(), sql));
}

void PostgresLink::dropStatements()
{
    QByteArray sql;
    for (const QByteArray &name : std::exchange(m_dropped, {}))
        sql += "DEALLOCATE " + name + ';';
    if (!sql.isEmpty())
        run(sql.constData());
}

bool PostgresLink::takeNotifications() noexcept
{
    bool any = false;
    while (PGnotify *const notification = PQnotifies(m_connection.get())) {
        PQfreemem(notification);
        any = true;
    }
    return any;
}

QByteArray PostgresLink::prepare(const QByteArray &sql)
{
    dropStatements();
    const QByteArray name = 's' + QByteArray::number(++m_prepared);
    checked(PQprepare(m_connection.get(), name.constData(), sql.constData(), 0, nullptr));
    return name;
}

PostgresResult PostgresLink::execute(const QByteArray &sql, const PostgresParameters &parameters)
{
    return checked(PQexecParams(m_connection.get(), sql.constData(), parameters.count(), nullptr,
                                parameters.values(), parameters.lengths(), parameters.formats(),
                                0));
}

PostgresResult PostgresLink::executePrepared(const QByteArray &name,
                                             const PostgresParameters &parameters)
{
    return checked(PQexecPrepared(m_connection.get(), name.constData(), parameters.count(),
                                  parameters.values(), parameters.lengths(), parameters.formats(),
                                  0));
}

void PostgresLink::stream(const QByteArray &name, const PostgresParameters &parameters,
                          const std::function<void(const pg_result *)> &onRow)
{
    constexpr int kBinary = 1;
    PGconn *connection = m_connection.get();
    if (PQsendQueryPrepared(connection, name.constData(), parameters.count(), parameters.values(),
                            parameters.lengths(), parameters.formats(), kBinary) == 0)
        throw postgresLost();
    PQsetSingleRowMode(connection);
    // Whatever ends the reading, the answer is taken in whole, so that the next statement gets its
    // own.
    const std::unique_ptr<PGconn, void (*)(PGconn *)> rest(connection, takeRest);
    while (PGresult *result = PQgetResult(connection)) {
        const PostgresResult owned = checked(result);
        if (PQresultStatus(result) == PGRES_SINGLE_TUPLE)
            onRow(result);
    }
}

void PostgresLink::copyIn(const QByteArray &sql, const std::function<QByteArray()> &next)
{
    constexpr qsizetype kPiece = 65'536; // bytes; one line each would be many small messages
    PGconn *connection = m_connection.get();
    const PostgresResult opened(PQexec(connection, sql.constData()));
    if (PQresultStatus(opened.get()) != PGRES_COPY_IN)
        throw isLost() ? postgresLost() : postgresError(PostgresFailure(opened.get()));
    const auto end = [connection](const char *why) {
        if (PQputCopyEnd(connection, why) != 1)
            throw postgresLost();
    };
    const auto put = [connection](const QByteArray &piece) {
        if (PQputCopyData(connection, piece.constData(), int(piece.size())) != 1)
            throw postgresLost();
    };
    try {
        QByteArray piece;
        for (QByteArray line = next(); !line.isEmpty(); line = next()) {
            piece += line;
            if (piece.size() >= kPiece)
                put(std::exchange(piece, {}));
        }
        if (!piece.isEmpty())
            put(piece);
    } catch (...) {
        passOver([&] { end("avbrutt"); });
        takeRest(connection);
        throw;
    }
    end(nullptr);
    const std::unique_ptr<PGconn, void (*)(PGconn *)> rest(connection, takeRest);
    checked(PQgetResult(connection));
}

} // namespace ado
