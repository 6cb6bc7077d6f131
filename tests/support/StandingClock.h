#pragma once

#include "runtime/Clock.h"

#include <vector>

/// A clock that moves only when someone sleeps, in force while it lives.
class StandingClock : public Clock
{
public:
    explicit StandingClock(QTime time = QTime(10, 0))
        : m_now(QDate(2014, 3, 9), time), m_scope(*this)
    {
    }

    [[nodiscard]] QDateTime now() const override { return m_now; }
    void sleep(int milliseconds) override
    {
        sleeps.push_back(milliseconds);
        m_now = m_now.addMSecs(milliseconds);
    }

    std::vector<int> sleeps; ///< milliseconds

private:
    QDateTime m_now;
    ScopedClock m_scope;
};
