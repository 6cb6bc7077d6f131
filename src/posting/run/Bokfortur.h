#pragma once

#include "platform/ado/Connection.h"

#include <functional>

/// This process's turn at posting in the database, while it lives. Runs at several workstations
/// would post the same invoices, draw the same voucher numbers and drop each other's work table. A
/// run within a run, which pending events may start, stands within the turn of the outer one.
class Bokfortur
{
public:
    /// Waits for another's run to end, a minute at most; `venter` is called again and again
    /// meanwhile, and what it raises ends the wait.
    explicit Bokfortur(std::function<void()> venter);
    Bokfortur(const Bokfortur &) = delete;
    Bokfortur &operator=(const Bokfortur &) = delete;

    /// Takes it back when it was lost with its session; to be called before each change.
    void behold();

private:
    /// Whether no run goes on around this one. What ends the wait early takes it back as well.
    class Ytterst
    {
    public:
        Ytterst();
        ~Ytterst();
        Ytterst(const Ytterst &) = delete;
        Ytterst &operator=(const Ytterst &) = delete;
        explicit operator bool() const { return m_er; }

    private:
        const bool m_er;
    };

    [[nodiscard]] bool apnet();
    void vent();

    const Ytterst m_ytterst;
    const std::function<void()> m_venter;
    ado::Connection m_forbindelse;
    bool m_harTur = false;
};
