#pragma once

#include "platform/ado/SessionPool.h"

#include <QString>
#include <QStringList>

#include <functional>

/// Stands between the module and its database sessions while it lives: it notes every call that
/// reaches a session, and can make one kind of call fail.
class SessionTap
{
public:
    SessionTap();
    ~SessionTap();
    SessionTap(const SessionTap &) = delete;
    SessionTap &operator=(const SessionTap &) = delete;

    /// The calls so far, in order: "open", "begin", "commit", "rollback", "writeBack", "release",
    /// "append " with the table, "provideIndex " with the table, a point and the index, and
    /// "execute " or "query " with the statement as it came.
    [[nodiscard]] QStringList calls() const { return m_log->calls; }
    /// The statements among them.
    [[nodiscard]] QStringList statements() const;
    void forget() { m_log->calls.clear(); }

    /// Calls whose name is `call` raise error kUnspecified with the text "Nektet: " + name.
    void fail(const QString &call) { m_log->failing += call; }
    /// The database gets what `rewrite` makes of each statement, after it has been noted. It may
    /// raise a RunTimeError to have the statement fail.
    void rewriteStatements(std::function<QString(const QString &statement)> rewrite)
    {
        m_log->rewrite = std::move(rewrite);
    }

    /// Is told the name of each call that has come back with success.
    void afterEach(std::function<void(const QString &call)> after)
    {
        m_log->after = std::move(after);
    }

    struct Log
    {
        QStringList calls;
        QStringList failing;
        std::function<QString(const QString &)> rewrite;
        std::function<void(const QString &)> after = [](const QString &) {};
    };

private:
    std::shared_ptr<Log> m_log; // shared with the sessions, which may outlive the tap
    ado::SessionPool::Opener m_previous;
};
