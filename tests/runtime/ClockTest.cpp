#include "runtime/Clock.h"

#include "runtime/Support.h"

#include <QElapsedTimer>

namespace {

class FixedClock : public Clock
{
public:
    explicit FixedClock(QDateTime moment) : m_moment(std::move(moment)) {}
    [[nodiscard]] QDateTime now() const override { return m_moment; }
    void sleep(int milliseconds) override { m_moment = m_moment.addMSecs(milliseconds); }

private:
    QDateTime m_moment;
};

const QDateTime kMoment(QDate(2014, 3, 9), QTime(23, 59, 59));

} // namespace

TEST(Clock, OfTheMachineShowsTheLocalTime)
{
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime now = Clock::current().now();
    const QDateTime after = QDateTime::currentDateTime();
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
    EXPECT_EQ(now.timeSpec(), Qt::LocalTime);
}

TEST(Clock, OfTheMachineWaitsAtLeastTheTimeAskedFor)
{
    QElapsedTimer timer;
    timer.start();
    Clock::current().sleep(2);
    EXPECT_GE(timer.nsecsElapsed(), 2'000'000);
}

TEST(Clock, OfTheMachineDoesNotWaitForZeroOrLess)
{
    QElapsedTimer timer;
    timer.start();
    Clock::current().sleep(0);
    Clock::current().sleep(-2'000'000'000);
    EXPECT_LT(timer.elapsed(), 60'000);
}

TEST(Clock, ScopedClockIsInForceWhileItLives)
{
    Clock *const machine = &Clock::current();
    FixedClock outer(kMoment);
    FixedClock inner(kMoment.addYears(1));
    {
        const ScopedClock outerScope(outer);
        EXPECT_EQ(Clock::current().now(), kMoment);
        EXPECT_EQ(Clock::current().today(), QDate(2014, 3, 9));
        {
            const ScopedClock innerScope(inner);
            EXPECT_EQ(Clock::current().today(), QDate(2015, 3, 9));
        }
        EXPECT_EQ(&Clock::current(), &outer);
    }
    EXPECT_EQ(&Clock::current(), machine);
}

TEST(Clock, AStoodInClockWaitsWithoutWaiting)
{
    FixedClock clock(kMoment);
    const ScopedClock scope(clock);
    Clock::current().sleep(3'600'000);
    EXPECT_EQ(Clock::current().now(), kMoment.addSecs(3600));
}
