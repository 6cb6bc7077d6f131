#pragma once

#include <QByteArray>

#include <sys/types.h>

/// A desk for the tests alone: an X server that nobody sees, on a display that was free, and a
/// window manager on it. Both end with this object, by their ids, and with the program that made
/// them, however that ends.
class Desk
{
public:
    Desk();
    ~Desk();
    Desk(const Desk &) = delete;
    Desk &operator=(const Desk &) = delete;

    /// As the variable DISPLAY names it; empty where no desk could be had.
    [[nodiscard]] const QByteArray &display() const { return m_display; }
    /// Why no desk could be had, in one line.
    [[nodiscard]] const QByteArray &reason() const { return m_reason; }

private:
    pid_t m_server = -1;
    pid_t m_manager = -1;
    QByteArray m_display;
    QByteArray m_reason;
};
