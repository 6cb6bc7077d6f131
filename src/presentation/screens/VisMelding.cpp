#include "presentation/screens/VisMelding.h"

#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "presentation/screens/frmTMsgBox.h"
#include "runtime/Clock.h"
#include "runtime/Conversions.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>
#include <QWindow>

namespace {

constexpr double kShortestSleep = 0.5; // seconds
constexpr int kShortSleep = 500;       // milliseconds
constexpr float kMillisecondsPerSecond = 1000;
// Milliseconds.
constexpr int kLongestWayToTheScreen = 500;
constexpr int kGlance = 5;

/// Seconds since midnight.
float timer()
{
    return float(Clock::current().now().time().msecsSinceStartOfDay()) / kMillisecondsPerSecond;
}

frmTMsgBox &note()
{
    return SharedForm<frmTMsgBox>::get();
}

/// Lets pending events run, until a note that has been shown is on the screen: a window manager
/// takes its time to bring it up, and nothing is painted in a sleep. That time is the machine's
/// own, whatever clock is in force. A manager that keeps the note away (another desktop, a locked
/// screen) is not waited for.
void runWindowEvents()
{
    QCoreApplication::processEvents();
    const QDeadlineTimer patience(kLongestWayToTheScreen);
    while (!patience.hasExpired()) {
        const frmTMsgBox *shown = SharedForm<frmTMsgBox>::existing();
        if (!shown || !shown->windowHandle() || shown->windowHandle()->isExposed())
            return;
        QThread::msleep(kGlance);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
}

} // namespace

void VisMelding(const QString &text, qint32 icon, const QString &title, qint16 seconds,
                bool hideButton)
{
    passOver([] { note().load(); });
    passOver(
        [&] { note().setWindowTitle(trimBlanks(title).isEmpty() ? applicationTitle() : title); });
    passOver([&] { note().setText(text); });
    passOver([&] { note().setIconID(icon); });
    if (hideButton)
        passOver([] { note().hideButton(); });
    passOver([] { note().show(); });
    passOver([&] { Vent(seconds); });
}

void Vent(double seconds)
{
    const float noted = timer();
    while (noted + seconds > timer()) {
        runWindowEvents();
        Clock::current().sleep(seconds >= kShortestSleep ? toLong(seconds * kMillisecondsPerSecond)
                                                         : kShortSleep);
    }
}
