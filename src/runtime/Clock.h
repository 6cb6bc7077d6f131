#pragma once

#include <QDateTime>

/// Time as the module sees it: the moment, today, and waiting. Everything that looks at the time or
/// waits goes through the clock in force, so a test can stand in its own and wait for nothing.
class Clock
{
public:
    virtual ~Clock() = default;

    /// The local date and time.
    [[nodiscard]] virtual QDateTime now() const;
    [[nodiscard]] QDate today() const { return now().date(); }
    /// Blocks the thread; 0 and less return at once.
    virtual void sleep(int milliseconds);

    /// The clock in force; the machine's own unless a ScopedClock lives.
    [[nodiscard]] static Clock &current();
};

/// Puts `clock` in force while it lives. The caller keeps ownership of `clock`.
class ScopedClock
{
public:
    explicit ScopedClock(Clock &clock);
    ~ScopedClock();
    ScopedClock(const ScopedClock &) = delete;
    ScopedClock &operator=(const ScopedClock &) = delete;

private:
    Clock *m_previous;
};
