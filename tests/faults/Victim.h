#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QStringList>

#include <optional>
#include <sys/types.h>

namespace faults {

/// The test's side of a victim's process, which is killed at the latest with this object.
class Victim
{
public:
    /// Starts a task (see VictimMain.cpp) on a database; `stepping` lets it wait after each report.
    Victim(const QString &task, const QString &connectionString, bool stepping = false);
    ~Victim();
    Victim(const Victim &) = delete;
    Victim &operator=(const Victim &) = delete;

    /// The next line that it reports, waited for; none when the process has ended.
    std::optional<QString> next();
    /// Takes what it reports until the deadline or its end.
    void watchUntil(QDeadlineTimer deadline);
    /// Sends it a line, or just the sign to go on. False when it has ended.
    bool send(const QString &line = {});
    /// SIGKILL, now. What it had reported by then is in reports().
    void kill();
    /// Lets it go to its own end; its exit status, or -1 when a signal ended it.
    int finish();

    /// All that was taken so far.
    [[nodiscard]] const QStringList &reports() const { return m_reports; }
    /// What stands behind `word` in the reports that begin with it.
    [[nodiscard]] QStringList told(const QString &word) const;
    /// Where the reports come from, for poll().
    [[nodiscard]] int descriptor() const { return m_reportsEnd; }
    /// Takes what lies ready or comes next; false at the end of the process.
    bool take();

private:
    int reap();

    pid_t m_id = -1;
    int m_commandsEnd = -1; // a socket
    int m_reportsEnd = -1;  // a pipe
    int m_status = -1;
    QByteArray m_unfinished; // line
    QStringList m_reports;
    qsizetype m_taken = 0; // by next()
};

} // namespace faults
