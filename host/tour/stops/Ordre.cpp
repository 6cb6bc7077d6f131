#include "host/guide/ScreenGuide.h"
#include "host/tour/stops/Stops.h"

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
            guide.doubleClickCell(guide.control(customers, u"fpSpread1"_s), 1, 2);
        });
    // The KID is made when the customer's number is left, which the picker did before it had one.
    guide.click(guide.control(screen, u"txtFields_18"_s));
    guide.key(guide.control(screen, u"txtFields_18"_s), Qt::Key_Tab);
    QWidget &grid = guide.control(screen, u"vaSpread1"_s);
    enterLine(guide, grid, 1, u"T100"_s, u"8"_s);
    enterLine(guide, grid, 2, u"M200"_s, u"12,5"_s);
    enterLine(guide, grid, 3, u"F510"_s, u"4"_s);
    guide.picture(screen, u"ordre-ny"_s, u"En ny ordre med kunde, KID og tre linjer"_s);

    guide.note(u"frmTMsgBox"_s, [&] { guide.click(guide.control(screen, u"btnSave"_s)); });
    guide.picture(screen, u"ordre-lagret"_s, u"Ordren er lagret og kan skrives ut"_s);
    guide.close(screen);

    QWidget &again = openOrders(guide);
    guide.click(guide.control(again, u"btnCopy"_s));
    QWidget &lines = guide.control(again, u"vaSpread1"_s);
    guide.key(guide.control(again, u"txtFields_18"_s), Qt::Key_Tab);
    guide.typeInCell(lines, 1, kQuantity, u"-8"_s);
    guide.typeInCell(lines, 2, kQuantity, u"-12,5"_s);
    guide.typeInCell(lines, 3, kQuantity, u"-4"_s);
    guide.picture(again, u"kreditnota"_s, u"En kopi med negative antall er en kreditnota"_s);
    guide.close(again);
}
