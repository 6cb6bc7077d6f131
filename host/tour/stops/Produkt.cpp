#include "host/guide/ScreenGuide.h"
#include "host/tour/stops/Stops.h"
#include "platform/forms/Forms.h"
#include "registers/products/frmKalkyle.h"

using namespace Qt::StringLiterals;

void screentour::visitProducts(Guide &guide)
{
    guide.click(guide.control(guide.window(u"frmRegningsdel"_s), u"Command2"_s));
    QWidget &screen = guide.window(u"frmProdukt"_s);
    QWidget &grid = guide.control(screen, u"vaSpread1"_s);
    const int row = guide.rowOf(grid, 1, u"T110"_s);
    guide.clickCell(grid, row, 2);
    guide.picture(screen, u"produkt-oversikt"_s, u"Produktregisteret med alle produktene"_s);

    guide.doubleClickCell(grid, row, 2);
    guide.click(guide.control(screen, u"btnChange"_s));
    guide.picture(screen, u"produkt-detaljer"_s, u"Ett produkt, klart til å endres"_s);
    guide.click(guide.control(screen, u"btnCancel"_s));
    guide.close(screen);
}

void screentour::visitPriceForm(Guide &guide)
{
    SharedForm<frmKalkyle>::get().show();
    QWidget &form = guide.window(u"frmKalkyle"_s);
    guide.picture(form, u"kalkyle"_s, u"Prisskjemaet, som ingen knapp åpner ennå"_s);
    guide.close(form);
}
