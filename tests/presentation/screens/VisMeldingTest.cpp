#include "presentation/screens/VisMelding.h"

#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "presentation/screens/frmTMsgBox.h"
#include "runtime/RunTimeError.h"
#include "support/StandingClock.h"
#include "support/TestApplication.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

class VisMeldingTest : public FormsFixture
{
protected:
    static frmTMsgBox *note() { return SharedForm<frmTMsgBox>::existing(); }
    static QString text() { return note()->findChild<QLabel *>(u"Label1"_s)->text(); }
    /// Takes the note off the screen as soon as events run.
    static void takeNoteAway()
    {
        const auto take = [] {
            note()->hide();
            // The window system tells of it in its own time.
            ASSERT_TRUE(QTest::qWaitFor([] { return !note()->windowHandle()->isExposed(); }));
        };
        QMetaObject::invokeMethod(qApp, take, Qt::QueuedConnection);
    }
    static QPushButton *button() { return note()->findChild<QPushButton *>(u"Command1"_s); }

    StandingClock clock;
};

using Sleeps = std::vector<int>;

} // namespace

TEST_F(VisMeldingTest, ShowsTheNoteAndStandsStill)
{
    VisMelding(u"Posten er lagret."_s, 64, u"Lagre"_s, 1, false);
    ASSERT_NE(note(), nullptr);
    EXPECT_TRUE(note()->isVisible());
    EXPECT_FALSE(note()->isModal());
    EXPECT_EQ(note()->objectName(), u"frmTMsgBox"_s);
    EXPECT_EQ(note()->windowTitle(), u"Lagre"_s);
    EXPECT_EQ(text(), u"Posten er lagret."_s);
    EXPECT_EQ(note()->IconID(), 64);
    EXPECT_TRUE(button()->isVisible());
    EXPECT_EQ(button()->text(), u"&OK"_s);
    EXPECT_EQ(clock.sleeps, Sleeps({1000}));
}

TEST_F(VisMeldingTest, TheNoteIsOnTheScreenWhileTheCallerStandsStill)
{
    bool seen = false;
    QTimer::singleShot(0, qApp, [&] { seen = note() && note()->isVisible(); });
    VisMelding(u"a"_s, 64, u"b"_s, 1, false);
    EXPECT_TRUE(seen);
}

TEST_F(VisMeldingTest, ANoteThatIsSlowToComeUpIsWaitedFor)
{
    /// Looks at the note before it sleeps.
    class Observer : public StandingClock
    {
    public:
        void sleep(int milliseconds) override
        {
            exposed = note() && note()->windowHandle()->isExposed();
            StandingClock::sleep(milliseconds);
        }
        bool exposed = false;
    } observer;
    takeNoteAway();
    QTimer::singleShot(30, qApp, [] { note()->show(); });
    VisMelding(u"a"_s, 64, u"b"_s, 1, false);
    EXPECT_TRUE(observer.exposed);
    EXPECT_EQ(observer.sleeps, Sleeps({1000}));
}

TEST_F(VisMeldingTest, ANoteThatStaysAwayIsNotWaitedForLong)
{
    takeNoteAway();
    VisMelding(u"a"_s, 64, u"b"_s, 1, false);
    EXPECT_NE(note(), nullptr) << "its own timer has not closed it yet";
    EXPECT_EQ(clock.sleeps, Sleeps({1000}));
}

TEST_F(VisMeldingTest, ANoteThatIsClosedMeanwhileIsNotWaitedFor)
{
    const auto close = [] { note()->unload(); };
    QMetaObject::invokeMethod(qApp, close, Qt::QueuedConnection);
    VisMelding(u"a"_s, 64, u"b"_s, 1, false);
    EXPECT_EQ(note(), nullptr);
    EXPECT_EQ(clock.sleeps, Sleeps({1000}));
}

TEST_F(VisMeldingTest, TheComponentMayGoWhileTheNoteStands)
{
    const QPointer<frmTMsgBox> gone = [] {
        SharedForm<frmTMsgBox>::get().load();
        return note();
    }();
    const auto unload = [] { Forms::deleteAll(); };
    QMetaObject::invokeMethod(qApp, unload, Qt::QueuedConnection);
    VisMelding(u"a"_s, 64, u"b"_s, 1, false);
    EXPECT_FALSE(gone);
    EXPECT_TRUE(Forms::loaded().empty());
}

TEST_F(VisMeldingTest, NegativeSecondsWaitForNothing)
{
    VisMelding(u"a"_s, 64, u"b"_s, -32768, false);
    EXPECT_TRUE(clock.sleeps.empty());
    EXPECT_TRUE(note()->isVisible());
}

TEST_F(VisMeldingTest, TheMostSecondsAreOneSleep)
{
    VisMelding(u"a"_s, 64, u"b"_s, 32767, false);
    EXPECT_EQ(clock.sleeps, Sleeps({32767000}));
}

TEST_F(VisMeldingTest, ANoteWithinANoteHasTheLastWord)
{
    QTimer::singleShot(0, qApp, [] { VisMelding(u"Den andre"_s, 16, u"To"_s, 2, false); });
    VisMelding(u"Den første"_s, 64, u"En"_s, 1, false);
    EXPECT_EQ(Forms::loaded().size(), 1u);
    EXPECT_EQ(text(), u"Den andre"_s);
    EXPECT_EQ(note()->windowTitle(), u"To"_s);
    EXPECT_EQ(clock.sleeps, Sleeps({2000, 1000}));
}

TEST_F(VisMeldingTest, NoSecondsWaitForNothing)
{
    VisMelding(u"a"_s, 64, u"b"_s, 0, false);
    EXPECT_TRUE(clock.sleeps.empty());
    EXPECT_TRUE(note()->isVisible());
}

TEST_F(VisMeldingTest, ATitleOfBlanksGivesTheApplicationTitle)
{
    VisMelding(u"a"_s, 64, u""_s, 0, false);
    EXPECT_EQ(note()->windowTitle(), applicationTitle());
    VisMelding(u"a"_s, 64, u"Lagre"_s, 0, false);
    VisMelding(u"a"_s, 64, u"   "_s, 0, false);
    EXPECT_EQ(note()->windowTitle(), applicationTitle());
}

TEST_F(VisMeldingTest, ATitleStandsUntrimmed)
{
    VisMelding(u"a"_s, 64, u" Lagre  "_s, 0, false);
    EXPECT_EQ(note()->windowTitle(), u" Lagre  "_s);
}

TEST_F(VisMeldingTest, TheButtonCanBeHidden)
{
    VisMelding(u"a"_s, 64, u"b"_s, 0, true);
    EXPECT_FALSE(button()->isVisible());
}

TEST_F(VisMeldingTest, AHiddenButtonStaysHiddenWhileTheNoteIsUp)
{
    VisMelding(u"a"_s, 64, u"b"_s, 0, true);
    VisMelding(u"c"_s, 64, u"d"_s, 0, false);
    EXPECT_FALSE(button()->isVisible());
}

TEST_F(VisMeldingTest, ASecondNoteUsesTheSameWindow)
{
    VisMelding(u"Posten er lagret."_s, 16, u"Lagre"_s, 0, false);
    const frmTMsgBox *first = note();
    VisMelding(u"Data er lagret."_s, 48, u"Feil"_s, 0, false);
    EXPECT_EQ(note(), first);
    EXPECT_EQ(Forms::loaded().size(), 1u);
    EXPECT_EQ(text(), u"Data er lagret."_s);
    EXPECT_EQ(note()->windowTitle(), u"Feil"_s);
    EXPECT_EQ(note()->IconID(), 48);
}

TEST_F(VisMeldingTest, IconZeroLeavesTheEarlierOne)
{
    VisMelding(u"a"_s, 16, u"b"_s, 0, false);
    VisMelding(u"a"_s, 0, u"b"_s, 0, false);
    EXPECT_EQ(note()->IconID(), 16);
}

TEST_F(VisMeldingTest, ANewNoteComesAfterAClosedOne)
{
    VisMelding(u"a"_s, 16, u"b"_s, 0, true);
    button()->click();
    EXPECT_EQ(note(), nullptr);
    VisMelding(u"c"_s, 0, u"d"_s, 0, false);
    ASSERT_NE(note(), nullptr);
    EXPECT_EQ(note()->IconID(), 0);
    EXPECT_TRUE(button()->isVisible());
}

TEST_F(VisMeldingTest, VentSleepsTheWholeTimeInOnePiece)
{
    Vent(3);
    EXPECT_EQ(clock.sleeps, Sleeps({3000}));
}

TEST_F(VisMeldingTest, VentOfHalfASecondIsStillOnePiece)
{
    Vent(0.5);
    EXPECT_EQ(clock.sleeps, Sleeps({500}));
}

TEST_F(VisMeldingTest, VentOfAFractionSleepsThatFraction)
{
    Vent(0.55);
    EXPECT_EQ(clock.sleeps, Sleeps({550}));
}

TEST_F(VisMeldingTest, AShortWaitLastsLongerThanAsked)
{
    Vent(0.1);
    EXPECT_EQ(clock.sleeps, Sleeps({500}));
}

TEST_F(VisMeldingTest, VentOfNothingReturnsAtOnce)
{
    Vent(0);
    Vent(-1);
    EXPECT_TRUE(clock.sleeps.empty());
}

TEST_F(VisMeldingTest, VentLetsPendingEventsRunBeforeItSleeps)
{
    std::vector<size_t> sleepsThen;
    QMetaObject::invokeMethod(
        qApp, [&] { sleepsThen.push_back(clock.sleeps.size()); }, Qt::QueuedConnection);
    Vent(2);
    EXPECT_EQ(sleepsThen, std::vector<size_t>({0}));
}

TEST_F(VisMeldingTest, VentGoesOnWhenASleepEndsTooEarly)
{
    /// A sleep that passes only half of its time.
    class HalfClock : public StandingClock
    {
    public:
        void sleep(int milliseconds) override { StandingClock::sleep(milliseconds / 2); }
    } half;
    Vent(1);
    EXPECT_EQ(half.sleeps, Sleeps({500, 500}));
}

TEST_F(VisMeldingTest, VentAcrossMidnightNeverComesToItsEnd)
{
    /// Loses patience at the tenth sleep.
    class Impatient : public StandingClock
    {
    public:
        Impatient() : StandingClock(QTime(23, 59, 58)) {}
        void sleep(int milliseconds) override
        {
            StandingClock::sleep(milliseconds);
            if (sleeps.size() == 10)
                throw RunTimeError(errors::kInvalidCall);
        }
    } late;
    EXPECT_EQ(passOver([] { Vent(3); }), errors::kInvalidCall);
    EXPECT_EQ(late.sleeps, Sleeps(10, 3000));
}

TEST_F(VisMeldingTest, VentOfMoreThanASleepHoldsIsAnOverflow)
{
    EXPECT_EQ(passOver([] { Vent(3e9); }), errors::kOverflow);
}
