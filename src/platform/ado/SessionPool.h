#pragma once

#include "platform/ado/Provider.h"

#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace ado {

class Session;

/// The open sessions that wait for their next owner. A session is handed out to one owner at a time
/// and comes back when the owner lets go of it, if it could be cleaned; else it is closed. The
/// first one of each source thus stays open for as long as the pool lives, which spares SQLite
/// taking down and building up its write-ahead log at every statement. For one thread.
class SessionPool
{
public:
    using Opener = std::function<std::unique_ptr<Session>(const DataSource &)>;

    /// Sessions kept idle for one source; further ones are closed when they come back.
    static constexpr std::size_t kIdlePerSource = 4;

    /// The pool of the module. It is emptied when the program ends or the module is unloaded;
    /// sessions that are still owned then are closed by their owners.
    static SessionPool &shared();

    /// `opener` makes the sessions; tests stand in their own.
    explicit SessionPool(Opener opener = openSession);
    ~SessionPool();
    SessionPool(const SessionPool &) = delete;
    SessionPool &operator=(const SessionPool &) = delete;

    /// An idle session of the source if there is a usable one, else a new one. The owner must let
    /// go of it to give it back. Raises what the opener raises.
    [[nodiscard]] std::shared_ptr<Session> acquire(const DataSource &source);
    /// The same for the source that a connection string names. Operation after operation comes with
    /// the same text, so what that text alone decides is kept until another one comes; it spares a
    /// third of the work around a short query. Raises what resolve() raises, too.
    [[nodiscard]] std::shared_ptr<Session> acquire(const QString &connectionString);

    /// How many sessions of the source lie idle; for tests.
    [[nodiscard]] std::size_t idleCount(const DataSource &source) const;
    /// Closes all idle sessions.
    void clear();
    /// Closes all idle sessions and has further ones made by `opener`; returns the maker before it.
    /// For tests that watch what reaches the database.
    Opener setOpener(Opener opener);

private:
    using IdleList = std::vector<std::unique_ptr<Session>>;
    Opener m_opener;
    // By the source's key. A session that is out holds its list weakly, for it may outlive the
    // pool.
    QHash<QString, std::shared_ptr<IdleList>> m_idle;
    QString m_lastText;
    DataSource m_lastSource;
};

} // namespace ado
