#include "runtime/Clock.h"

#include <QThread>

#include <utility>

namespace {

Clock *&inForce()
{
    static Clock machineClock;
    static Clock *clock = &machineClock;
    return clock;
}

} // namespace

QDateTime Clock::now() const
{
    return QDateTime::currentDateTime();
}

void Clock::sleep(int milliseconds)
{
    if (milliseconds > 0)
        QThread::msleep(static_cast<unsigned long>(milliseconds));
}

Clock &Clock::current()
{
    return *inForce();
}

ScopedClock::ScopedClock(Clock &clock) : m_previous(std::exchange(inForce(), &clock)) {}

ScopedClock::~ScopedClock()
{
    inForce() = m_previous;
}
