#include "faults/Victim.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace faults {

Victim::Victim(const QString &task, const QString &connectionString, bool stepping)
{
    // A socket takes a line for a dead process without a signal; a pipe keeps what the dead one
    // said.
    int commands[2];
    int reports[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, commands) != 0 ||
        ::pipe2(reports, O_CLOEXEC) != 0) {
        ADD_FAILURE() << "no pipes";
        return;
    }
    const QByteArray taskBytes = task.toUtf8();
    const QByteArray connectionBytes = connectionString.toUtf8();
    std::vector<char *> arguments;
    for (const char *text : {FAULT_VICTIM, taskBytes.constData(), connectionBytes.constData(),
                             stepping ? "step" : "run"})
        arguments.push_back(const_cast<char *>(text));
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, commands[1], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, reports[1], STDOUT_FILENO);
    if (::posix_spawn(&m_id, FAULT_VICTIM, &actions, nullptr, arguments.data(), environ) != 0)
        ADD_FAILURE() << "cannot start " << FAULT_VICTIM;
    posix_spawn_file_actions_destroy(&actions);
    ::close(commands[1]);
    ::close(reports[1]);
    m_commandsEnd = commands[0];
    m_reportsEnd = reports[0];
}

Victim::~Victim()
{
    kill();
    ::close(m_commandsEnd);
    ::close(m_reportsEnd);
}

bool Victim::take()
{
    char bytes[4096];
    const ssize_t count = ::read(m_reportsEnd, bytes, sizeof bytes);
    if (count <= 0)
        return false;
    m_unfinished.append(bytes, count);
    qsizetype end = 0;
    while ((end = m_unfinished.indexOf('\n')) >= 0) {
        m_reports += QString::fromUtf8(m_unfinished.first(end));
        m_unfinished.remove(0, end + 1);
    }
    return true;
}

std::optional<QString> Victim::next()
{
    while (m_taken == m_reports.size()) {
        if (!take())
            return std::nullopt;
    }
    return m_reports.at(m_taken++);
}

void Victim::watchUntil(QDeadlineTimer deadline)
{
    // Without a pause: the deadline is to be met within microseconds.
    while (!deadline.hasExpired()) {
        pollfd report{m_reportsEnd, POLLIN, 0};
        if (::poll(&report, 1, 0) > 0 && !take())
            return;
    }
}

bool Victim::send(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    return ::send(m_commandsEnd, bytes.constData(), static_cast<std::size_t>(bytes.size()),
                  MSG_NOSIGNAL) == bytes.size();
}

void Victim::kill()
{
    if (m_id < 0)
        return;
    ::kill(m_id, SIGKILL);
    reap();
}

int Victim::finish()
{
    while (take()) {
    }
    return m_id < 0 ? m_status : reap();
}

int Victim::reap()
{
    int status = 0;
    while (::waitpid(m_id, &status, 0) < 0 && errno == EINTR) {
    }
    m_id = -1;
    m_status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    while (take()) {
    }
    return m_status;
}

QStringList Victim::told(const QString &word) const
{
    QStringList result;
    for (const QString &report : m_reports) {
        if (report.startsWith(word + u' '))
            result += report.sliced(word.size() + 1);
    }
    return result;
}

} // namespace faults
