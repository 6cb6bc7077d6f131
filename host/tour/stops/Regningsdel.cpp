#include "host/guide/ScreenGuide.h"
#include "host/tour/stops/Stops.h"

using namespace Qt::StringLiterals;

void screentour::visitMenu(Guide &guide)
{
    QWidget &menu = guide.window(u"frmRegningsdel"_s);
    guide.picture(menu, u"hovedmeny"_s, u"Hovedmenyen, med fem knapper til de andre bildene"_s);
}

void screentour::visitHelp(Guide &guide)
{
    QWidget &menu = guide.window(u"frmRegningsdel"_s);
    guide.key(guide.control(menu, u"Command2"_s), Qt::Key_F1);
    QWidget &help = guide.window(u"HtmlHelp"_s);
    guide.picture(help, u"hjelp"_s, u"F1 viser hjelpen for bildet som er framme"_s);
    guide.click(guide.control(help, u"finn"_s));
    QWidget &words = guide.control(help, u"sokFelt"_s);
    guide.type(words, u"kontrollsiffer modulus"_s);
    guide.key(words, Qt::Key_Return);
    guide.picture(help, u"hjelp-sok"_s, u"Søket finner sidene og merker ordene"_s);
    guide.key(guide.control(help, u"sider"_s), Qt::Key_Escape);
    guide.expectClosed(u"HtmlHelp"_s);

    guide.click(guide.control(menu, u"imgF1"_s));
    guide.close(guide.window(u"HtmlHelp"_s));
}
