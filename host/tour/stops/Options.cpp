#include "host/guide/ScreenGuide.h"
#include "host/tour/stops/Stops.h"

using namespace Qt::StringLiterals;

void screentour::visitOptions(Guide &guide)
{
    guide.click(guide.control(guide.window(u"frmRegningsdel"_s), u"Command7"_s));
    QWidget &screen = guide.window(u"frmOptions"_s);
    guide.picture(screen, u"innstillinger-kid"_s, u"Innstillingene for KID"_s);

    QWidget &tabs = guide.control(screen, u"tbsOptions"_s);
    guide.chooseTab(tabs, u"Logo"_s);
    guide.click(guide.control(screen, u"optLogo_1"_s));
    guide.picture(screen, u"innstillinger-logo"_s, u"Fakturablanketten og logoen"_s);

    guide.chooseTab(tabs, u"Faktura"_s);
    guide.picture(screen, u"innstillinger-faktura"_s,
                  u"Fakturatekster, første fakturanummer og øreavrunding"_s);
    guide.click(guide.control(screen, u"cmdCancel"_s));
    guide.expectClosed(u"frmOptions"_s);
}
