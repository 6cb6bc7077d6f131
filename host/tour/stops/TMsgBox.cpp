#include "host/guide/ScreenGuide.h"
#include "host/tour/stops/Stops.h"
#include "presentation/screens/VisMelding.h"

using namespace Qt::StringLiterals;

void screentour::visitNote(Guide &guide)
{
    VisMelding(u"Posten er lagret."_s, 64, u"Lagre"_s, 0, false);
    QWidget &note = guide.window(u"frmTMsgBox"_s);
    guide.picture(note, u"melding"_s, u"Meldingen etter en lagring, som lukker seg selv"_s);
    guide.click(guide.control(note, u"Command1"_s));
    guide.expectClosed(u"frmTMsgBox"_s);
}
