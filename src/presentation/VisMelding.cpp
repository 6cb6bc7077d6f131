#include "presentation/VisMelding.h"

#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "presentation/frmTMsgBox.h"
#include "runtime/Clock.h"
#include "runtime/Conversions.h"

#include <QCoreApplication>

namespace {

constexpr double kShortestSleep = 0.5; // seconds
constexpr int kShortSleep = 500;       // milliseconds
constexpr float kMillisecondsPerSecond = 1000;

/// Seconds since midnight.
float timer()
{
    return float(Clock::current().now().time().msecsSinceStartOfDay()) / kMillisecondsPerSecond;
}

frmTMsgBox &note()
{
    return SharedForm<frmTMsgBox>::get();
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
        QCoreApplication::processEvents();
        Clock::current().sleep(seconds >= kShortestSleep ? toLong(seconds * kMillisecondsPerSecond)
                                                         : kShortSleep);
    }
}
