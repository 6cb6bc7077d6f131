#include "faults/Place.h"
#include "faults/Victim.h"
#include "faults/Work.h"
#include "support/ModuleTest.h"

#include <QElapsedTimer>

#include <chrono>
#include <random>

using namespace Qt::StringLiterals;

namespace faults {

/// The module's process killed by SIGKILL, again and again, each time on the database as prepared.
class KillTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { place = makePlace(); }
    static void TearDownTestSuite() { place.reset(); }

    /// What the database holds after the death of a process, which must be whole.
    static QStringList found(const QStringList &plan)
    {
        EXPECT_EQ(place->integrity(), u"ok"_s);
        const QStringList effects = foundEffects(place->connectionString(), plan);
        unloadModule();
        return effects;
    }

    /// Kills the task at each report of a call or a statement: exactly the statements whose commit
    /// has returned are there.
    static void killAtEachBoundary(const QString &task, const QStringList &plan);
    /// Kills a posting run by `killer` and holds what is found against what was reported; how many
    /// statements that was. `stepping` lets the run wait after each of its reports.
    template<class Killer>
    static int killPosting(bool stepping, Killer killer);

    static inline std::unique_ptr<Place> place;
};

void KillTest::killAtEachBoundary(const QString &task, const QStringList &plan)
{
    bool ended = false;
    int boundary = 0;
    for (; !ended; ++boundary) {
        SCOPED_TRACE(boundary);
        place->restore();
        QStringList committed;
        {
            Victim victim(task, place->connectionString(), true);
            QString effect;
            for (int reports = 0; reports <= boundary && !ended; ++reports) {
                const std::optional<QString> report = victim.next();
                ASSERT_TRUE(report.has_value());
                ASSERT_FALSE(report->startsWith(u"failed")) << report->toStdString();
                if (report->startsWith(u"starts "))
                    effect = report->sliced(7);
                else if (*report == u"call commit" && !effect.isEmpty())
                    committed += std::exchange(effect, QString());
                ended = *report == u"end";
                if (reports < boundary)
                    victim.send();
            }
            victim.kill();
        }
        ASSERT_EQ(found(plan), committed);
        ASSERT_EQ(committed, plan.first(committed.size()));
    }
    // Each statement was cut off at its start, begun, run, committed and reported.
    EXPECT_GT(boundary, 5 * plan.size());
}

TEST_F(KillTest, SaveOfANewOrderAtEachBoundary)
{
    killAtEachBoundary(u"save-new"_s, effectsOfNewOrder());
}

TEST_F(KillTest, SaveOfAnOldOrderAtEachBoundary)
{
    killAtEachBoundary(u"save-again"_s, effectsOfOrderAgain());
}

template<class Killer>
int KillTest::killPosting(bool stepping, Killer killer)
{
    static const QStringList plan = effectsOfPosting();
    place->restore();
    QStringList reported;
    {
        Victim victim(u"post"_s, place->connectionString(), stepping);
        EXPECT_EQ(victim.next(), u"ready"_s);
        killer(victim);
        victim.kill();
        EXPECT_EQ(victim.told(u"failed"_s), QStringList());
        reported = victim.told(u"done"_s);
    }
    const QStringList effects = found(plan);
    // All that was reported, besides at most the one that was under way, and nothing twice.
    EXPECT_EQ(reported, plan.first(reported.size()));
    EXPECT_EQ(effects, plan.first(std::min(effects.size(), plan.size())));
    EXPECT_GE(effects.size(), reported.size());
    EXPECT_LE(effects.size(), reported.size() + 1);
    return static_cast<int>(reported.size());
}

TEST_F(KillTest, PostingRunAtRandomPoints)
{
    const int all = static_cast<int>(effectsOfPosting().size());
    ASSERT_EQ(all, kInvoices * kStatementsPerInvoice);
    QElapsedTimer clock;
    const auto toItsEnd = [&](Victim &victim) {
        clock.start();
        EXPECT_EQ(victim.finish(), 0);
    };
    ASSERT_EQ(killPosting(false, toItsEnd), all);
    const qint64 wholeRun = clock.nsecsElapsed();

    std::mt19937 random(20140309);
    for (int point = 0; point < place->randomPoints() && !HasFailure(); ++point) {
        SCOPED_TRACE(point);
        if (point % 2 == 0) {
            // Right after a statement, the run standing still.
            const int statements = std::uniform_int_distribution(1, all - 1)(random);
            const auto afterThem = [statements](Victim &victim) {
                for (int done = 0; done < statements && victim.send();)
                    done += victim.next().value_or(QString()).startsWith(u"done ") ? 1 : 0;
            };
            EXPECT_EQ(killPosting(true, afterThem), statements);
        } else {
            const std::chrono::nanoseconds moment(
                std::uniform_int_distribution<qint64>(0, wholeRun)(random));
            killPosting(false, [moment](Victim &victim) {
                victim.watchUntil(QDeadlineTimer(moment, Qt::PreciseTimer));
            });
        }
    }
}

} // namespace faults
