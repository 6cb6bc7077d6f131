#pragma once

#include "platform/ado/Support.h"
#include "support/PostgresCluster.h"

#include <libpq-fe.h>

#include <atomic>
#include <memory>
#include <thread>

/// What the tests of the PostgreSQL provider share.
namespace ado::test {

/// An open connection to a database on the server.
class Client : public Opened
{
public:
    using Opened::Opened;
    explicit Client(const PostgresDatabase &database) : Client(database.connectionString()) {}
};

/// Another user of the database, who speaks the server's own language and keeps his connection.
class OtherUser
{
public:
    explicit OtherUser(const PostgresDatabase &database)
        : m_connection(PQconnectdb(database.connectionString().sliced(4).toUtf8().constData()),
                       PQfinish)
    {
    }
    /// The first value of the first row.
    QString run(const QString &sql) { return all(sql).section(u'\n', 0, 0); }
    /// The first value of each row, a line each.
    QString all(const QString &sql)
    {
        const std::unique_ptr<PGresult, void (*)(PGresult *)> result(
            PQexec(m_connection.get(), sql.toUtf8().constData()), PQclear);
        const ExecStatusType status = PQresultStatus(result.get());
        EXPECT_TRUE(status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK)
            << sql.toStdString() << ": " << PQerrorMessage(m_connection.get());
        QStringList lines;
        for (int row = 0; row < PQntuples(result.get()); ++row)
            lines += QString::fromUtf8(PQgetvalue(result.get(), row, 0));
        return lines.join(u'\n');
    }

private:
    std::unique_ptr<PGconn, void (*)(PGconn *)> m_connection;
};

/// Does something on a thread of its own as soon as a client of the database waits for a lock.
class WhenSomeoneWaits
{
public:
    WhenSomeoneWaits(const PostgresDatabase &database, std::function<void()> action)
        : m_thread([this, &database, action = std::move(action)] {
              OtherUser watcher(database);
              const QString waiting = u"SELECT COUNT(*) FROM pg_stat_activity WHERE datname = "
                                      "current_database() AND wait_event_type = 'Lock'"_s;
              while (!m_given && watcher.run(waiting) == u"0"_s)
                  std::this_thread::yield();
              action();
          })
    {
    }
    ~WhenSomeoneWaits()
    {
        m_given = true; // nobody is waiting any more, if anybody ever was
        m_thread.join();
    }
    WhenSomeoneWaits(const WhenSomeoneWaits &) = delete;
    WhenSomeoneWaits &operator=(const WhenSomeoneWaits &) = delete;

private:
    std::atomic<bool> m_given = false;
    std::thread m_thread;
};

/// Ends all connections of the database but the one that asks.
inline const QString kEndConnections =
    u"SELECT pg_terminate_backend(pid, 10000) FROM pg_stat_activity WHERE datname = "
    "current_database() AND pid <> pg_backend_pid()"_s;

/// A test with an empty database of its own.
class PostgresTest : public testing::Test
{
protected:
    void endConnections() const { m_database.run(kEndConnections); }
    std::string stored(const QString &sql) const { return m_database.run(sql).toStdString(); }

    PostgresDatabase m_database;
};

} // namespace ado::test
