#pragma once

#include <QDateTime>
#include <QString>

#include <array>
#include <csignal>
#include <functional>

/// How far a long task has come, for who sits at a terminal, and his way to end it.
///
/// Twice a second a line on the standard error tells it, "1 250 av 10 000 fakturaer …", written
/// over the one before and gone at the end; nothing where that is no terminal. While this lives,
/// Ctrl+C (SIGINT) and SIGTERM do not end the program where it stands but the task at its next
/// step, by a HostError; a second one ends the program as it always did. A signal that is ignored
/// stays so. One at a time.
class Progress
{
public:
    /// The task's lines on the standard output go through `say`.
    explicit Progress(std::function<void(const QString &line)> say);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// What is done next: `total` of `unit`. When it is ended early, `outcome` tells what has
    /// become of those that were done: "avbrutt: 1 250 av 10 000 fakturaer er skrevet".
    void begin(qint64 total, const QString &unit, const QString &outcome);
    /// So many are done. Raises HostError, with status 128 and the signal's number, when the end
    /// has been asked for.
    void at(qint64 done);
    /// A line of the task's own. On the same terminal it takes the place of this one's.
    void say(const QString &line);

private:
    static constexpr std::array kSignals{SIGINT, SIGTERM};

    [[nodiscard]] QString text(qint64 done) const;
    void show(const QString &line);

    const std::function<void(const QString &line)> m_say;
    const bool m_isSeen;       // the standard error is a terminal
    const bool m_linesAreSeen; // and so is the standard output
    qint64 m_total = 0;
    QString m_unit;
    QString m_outcome;
    QDateTime m_told; // when something was last seen to happen
    qsizetype m_shown = 0;
    std::array<struct sigaction, kSignals.size()> m_before{}; // what the signals did
};
