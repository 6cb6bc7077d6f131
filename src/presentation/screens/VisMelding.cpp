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

constexpr double kKortesteSovn = 0.5; // seconds
constexpr int kKortSovn = 500;        // milliseconds
constexpr float kMillisekunderPrSekund = 1000;
// Milliseconds.
constexpr int kLengsteVeiTilSkjermen = 500;
constexpr int kBlikk = 5;

/// Seconds since midnight.
float klokkeslett()
{
    return float(Clock::current().now().time().msecsSinceStartOfDay()) / kMillisekunderPrSekund;
}

frmTMsgBox &notat()
{
    return SharedForm<frmTMsgBox>::get();
}

/// Lets pending events run, until a note that has been shown is on the screen: a window manager
/// takes its time to bring it up, and nothing is painted in a sleep. That time is the machine's
/// own, whatever clock is in force. A manager that keeps the note away (another desktop, a locked
/// screen) is not waited for.
void kjorVindushendelser()
{
    QCoreApplication::processEvents();
    const QDeadlineTimer taalmodighet(kLengsteVeiTilSkjermen);
    while (!taalmodighet.hasExpired()) {
        const frmTMsgBox *synlig = SharedForm<frmTMsgBox>::existing();
        if (!synlig || !synlig->windowHandle() || synlig->windowHandle()->isExposed())
            return;
        QThread::msleep(kBlikk);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
}

} // namespace

void VisMelding(const QString &tekst, qint32 ikon, const QString &tittel, qint16 sekunder,
                bool utenKnapp)
{
    passOver([] { notat().load(); });
    passOver([&] {
        notat().setWindowTitle(trimBlanks(tittel).isEmpty() ? applicationTitle() : tittel);
    });
    passOver([&] { notat().settTekst(tekst); });
    passOver([&] { notat().setIconID(ikon); });
    if (utenKnapp)
        passOver([] { notat().skjulKnapp(); });
    passOver([] { notat().show(); });
    passOver([&] { Vent(sekunder); });
}

void Vent(double sekunder)
{
    const float notert = klokkeslett();
    while (notert + sekunder > klokkeslett()) {
        kjorVindushendelser();
        Clock::current().sleep(sekunder >= kKortesteSovn ? toLong(sekunder * kMillisekunderPrSekund)
                                                         : kKortSovn);
    }
}
