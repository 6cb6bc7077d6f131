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
    /// meanwhile.
    explicit Bokfortur(std::function<void()> venter);
    ~Bokfortur();
    Bokfortur(const Bokfortur &) = delete;
    Bokfortur &operator=(const Bokfortur &) = delete;

    /// Takes it back when it was lost with its session; to be called before each change.
    void behold();

private:
    [[nodiscard]] bool apnet();
    void vent();

    const bool m_ytterst; // no run goes on around this one
    const std::function<void()> m_venter;
    ado::Connection m_forbindelse;
    bool m_harTur = false;
};
