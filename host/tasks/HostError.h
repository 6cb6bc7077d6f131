#pragma once

#include <QString>

#include <exception>
#include <utility>

/// What ends the host with a non-zero status: one Norwegian line for the user and the status.
class HostError : public std::exception
{
public:
    /// Status 1: what was asked for could not be done.
    static constexpr int kFailed = 1;
    /// Status 2: the options make no sense.
    static constexpr int kUsage = 2;
    /// Status 3: no display answers, where windows are to be shown.
    static constexpr int kNoDisplay = 3;
    /// And the number of the signal by which the user ended the task, as shells have it.
    static constexpr int kEndedBySignal = 128;

    explicit HostError(QString line, int status = kFailed)
        : m_line(std::move(line)), m_status(status)
    {
    }

    [[nodiscard]] const QString &line() const noexcept { return m_line; }
    [[nodiscard]] int status() const noexcept { return m_status; }

private:
    QString m_line;
    int m_status;
};
