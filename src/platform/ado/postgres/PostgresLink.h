#pragma once

#include "platform/ado/postgres/PostgresParameters.h"

#include <QElapsedTimer>
#include <QMap>
#include <QString>

#include <functional>
#include <memory>

struct pg_conn;
struct pg_result;

namespace ado {

struct PostgresResultClearer
{
    void operator()(pg_result *result) const noexcept;
};
using PostgresResult = std::unique_ptr<pg_result, PostgresResultClearer>;

/// The connection with a server: UTF-8, standard texts, no notices on the standard error. A lock is
/// waited for eight seconds at most, a server that does not answer at opening for less than ten.
/// All operations raise by postgresError; isLost() tells afterwards whether the connection ended.
class PostgresLink
{
public:
    using Keywords = QMap<QString, QString>;

    /// libpq's own keywords ("host", "user" …); what is missing comes from libpq's usual places.
    /// Raises kUnspecified when there is no such server, user or database; never shows the
    /// password.
    explicit PostgresLink(Keywords keywords);

    /// Opens anew, and waits for a server that is being restarted (connectPostgres). What stood
    /// prepared is gone.
    void reopen();
    /// How long an answer to that is worth waiting for, in milliseconds.
    [[nodiscard]] int patience() const;
    /// False when the other end is known to be gone. Asks the server only after a minute of
    /// silence.
    [[nodiscard]] bool isAlive() noexcept;
    [[nodiscard]] bool isLost() const noexcept;
    /// True when the connection stands outside any transaction.
    [[nodiscard]] bool isIdle() const noexcept;

    /// Runs a statement of our own, without parameters; its rows come as text.
    PostgresResult run(const char *sql);
    /// True when notifications, for which the session listens, came with the answers so far; they
    /// are told once.
    [[nodiscard]] bool takeNotifications() noexcept;
    /// The name of the statement, which stands prepared until it is dropped or the link reopened.
    [[nodiscard]] QByteArray prepare(const QByteArray &sql);
    /// Drops it before the next prepare().
    void drop(const QByteArray &name) { m_dropped.push_back(name); }
    /// Runs a prepared statement; what it returns comes as text.
    PostgresResult executePrepared(const QByteArray &name, const PostgresParameters &parameters);
    /// The same with a statement that is not worth preparing.
    PostgresResult execute(const QByteArray &sql, const PostgresParameters &parameters);
    /// Calls `onRow` with each row as it arrives, values in their binary form.
    void stream(const QByteArray &name, const PostgresParameters &parameters,
                const std::function<void(const pg_result *)> &onRow);
    /// Feeds a COPY … FROM STDIN with the pieces that `next` gives; an empty one is the end. Raises
    /// what `next` raises, too; nothing is copied then.
    void copyIn(const QByteArray &sql, const std::function<QByteArray()> &next);

private:
    struct Closer
    {
        void operator()(pg_conn *connection) const noexcept;
    };
    PostgresResult checked(pg_result *result);
    void dropStatements();

    const Keywords m_keywords;
    bool m_reached = false; // the server, at the last attempt
    std::unique_ptr<pg_conn, Closer> m_connection;
    QElapsedTimer m_silence; // since the last answer
    quint64 m_prepared = 0;
    std::vector<QByteArray> m_dropped;
};

} // namespace ado
