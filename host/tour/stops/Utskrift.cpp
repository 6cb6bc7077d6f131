#include "host/guide/ScreenGuide.h"
#include "host/tour/stops/Stops.h"

using namespace Qt::StringLiterals;

void screentour::visitPrinting(Guide &guide)
{
    guide.click(guide.control(guide.window(u"frmRegningsdel"_s), u"Command3"_s));
    QWidget &orders = guide.window(u"frmOrdre"_s);
    guide.click(guide.control(orders, u"btnPrint"_s));
    QWidget &dialog = guide.window(u"frmUtskrift"_s);
    guide.picture(dialog, u"utskrift"_s, u"Utskrift av ordren, på papir eller som EHF-fil"_s);
    guide.click(guide.control(dialog, u"OKButton"_s));
    guide.expectClosed(u"frmUtskrift"_s);

    QWidget &preview = guide.window(u"Forhandsvisning"_s);
    guide.picture(preview, u"forhandsvisning"_s, u"Fakturaen i forhåndsvisning"_s);
    guide.choose(guide.control(preview, u"cmbZoom"_s), u"Hel side"_s);
    preview.resize(preview.width(), 1250);
    guide.picture(preview, u"faktura"_s, u"Hele fakturaen, med KID på giroen"_s);
    guide.saveAs(guide.control(preview, u"cmdPdf"_s), u"Faktura.pdf"_s);
    guide.close(preview);

    guide.click(guide.control(orders, u"btnPrint"_s));
    QWidget &again = guide.window(u"frmUtskrift"_s);
    guide.click(guide.control(again, u"chkEHF"_s));
    guide.picture(again, u"utskrift-ehf"_s, u"Den samme fakturaen som EHF-fil"_s);
    guide.saveAs(guide.control(again, u"OKButton"_s), u"Faktura.xml"_s);
    guide.expectClosed(u"frmUtskrift"_s);
    guide.close(orders);
}
