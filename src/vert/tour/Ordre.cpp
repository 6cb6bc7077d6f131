#include "vert/ScreenGuide.h"
#include "vert/tour/Stops.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kProduct = 1;
constexpr int kQuantity = 3;

QWidget &openOrders(screentour::Guide &guide)
{
    guide.click(guide.control(guide.window(u"frmRegningsdel"_s), u"Command3"_s));
    return guide.window(u"frmOrdre"_s);
}

void enterLine(screentour::Guide &guide, QWidget &grid, int row, const QString &product,
               const QString &quantity)
{
    guide.chooseInCell(grid, row, kProduct, product);
    guide.typeInCell(grid, row, kQuantity, quantity);
}

} // namespace

void screentour::visitOrders(Guide &guide)
{
    QWidget &screen = openOrders(guide);
    guide.picture(screen, u"ordre-visning"_s, u"Ordrebildet, med den siste ordren framme"_s);

    guide.click(guide.control(screen, u"btnNew"_s));
    guide.modal(
        u"frmKunder"_s, [&] { guide.click(guide.control(screen, u"cmdKunder"_s)); },
        [&](QWidget &customers) {
            guide.picture(customers, u"kunder"_s,
                          u"Kundelisten, som en ny ordre henter kunden fra"_s);
            guide.doubleClickCell(guide.control(customers, u"fpSpread1"_s), 2, 2);
        });
    QWidget &grid = guide.control(screen, u"vaSpread1"_s);
    enterLine(guide, grid, 1, u"T100"_s, u"8"_s);
    enterLine(guide, grid, 2, u"T110"_s, u"2,5"_s);
    guide.picture(screen, u"ordre-ny"_s, u"En ny ordre med kunde og to linjer"_s);

    guide.click(guide.control(screen, u"btnSave"_s));
    guide.click(guide.control(guide.window(u"frmTMsgBox"_s), u"Command1"_s));
    guide.expectClosed(u"frmTMsgBox"_s);
    guide.picture(screen, u"ordre-lagret"_s, u"Ordren er lagret og kan skrives ut"_s);
    guide.close(screen);

    QWidget &again = openOrders(guide);
    guide.click(guide.control(again, u"btnCopy"_s));
    QWidget &lines = guide.control(again, u"vaSpread1"_s);
    guide.typeInCell(lines, 1, kQuantity, u"-8"_s);
    guide.typeInCell(lines, 2, kQuantity, u"-2,5"_s);
    guide.picture(again, u"kreditnota"_s, u"En kopi med negativt antall er en kreditnota"_s);
    guide.close(again);
}
