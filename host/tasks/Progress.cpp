#include "host/tasks/Progress.h"

#include "host/tasks/HostError.h"
#include "runtime/Clock.h"

#include <cstdio>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kInterval = 500; // milliseconds

volatile std::sig_atomic_t askedToEnd = 0;

void takeNote(int signal)
{
    askedToEnd = signal;
}

QString withBlanks(qint64 number)
{
    QString digits = QString::number(number);
    for (qsizetype place = digits.size() - 3; place > 0; place -= 3)
        digits.insert(place, u' ');
    return digits;
}

} // namespace

Progress::Progress(std::function<void(const QString &line)> say)
    : m_say(std::move(say)), m_isSeen(isatty(STDERR_FILENO) == 1),
      m_linesAreSeen(isatty(STDOUT_FILENO) == 1), m_told(Clock::current().now())
{
    askedToEnd = 0;
    struct sigaction action = {};
    action.sa_handler = takeNote;
    // Waiting for a file or a server goes on; who cannot wait for the next step signals again.
    action.sa_flags = SA_RESTART | int(SA_RESETHAND);
    for (size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], nullptr, &m_before[i]);
        if (m_before[i].sa_handler != SIG_IGN)
            sigaction(kSignals[i], &action, nullptr);
    }
}

Progress::~Progress()
{
    show({});
    for (size_t i = 0; i < kSignals.size(); ++i)
        sigaction(kSignals[i], &m_before[i], nullptr);
}

void Progress::begin(qint64 total, const QString &unit, const QString &outcome)
{
    m_total = total;
    m_unit = unit;
    m_outcome = outcome;
    at(0);
}

void Progress::at(qint64 done)
{
    if (askedToEnd != 0) {
        throw HostError(u"avbrutt: %1 %2"_s.arg(text(done), m_outcome),
                        HostError::kEndedBySignal + askedToEnd);
    }
    if (!m_isSeen)
        return;
    const QDateTime now = Clock::current().now();
    if (qAbs(m_told.msecsTo(now)) < kInterval)
        return;
    m_told = now;
    show(text(done) + u" …"_s);
}

void Progress::say(const QString &line)
{
    show({});
    m_say(line);
    if (m_linesAreSeen)
        m_told = Clock::current().now();
}

QString Progress::text(qint64 done) const
{
    return u"%1 av %2 %3"_s.arg(withBlanks(done), withBlanks(m_total), m_unit);
}

/// Blanks take away what is left of the line before; an empty one leaves nothing.
void Progress::show(const QString &line)
{
    const qsizetype left = m_shown - line.size();
    if (line.isEmpty() && left <= 0)
        return;
    QString written = u'\r' + line;
    if (left > 0)
        written += QString(left, u' ') + u'\r' + line;
    std::fputs(written.toUtf8().constData(), stderr);
    std::fflush(stderr);
    m_shown = line.size();
}
