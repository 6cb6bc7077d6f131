#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "host/guide/ScreenGuide.h"
#include "host/tasks/Tour.h"
#include "host/tour/stops/Stops.h"
#include "runtime/Format.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kNumber = 1;
constexpr int kName = 3;

/// The report of a dialog, in the window that it is read in.
void pictureReport(screentour::Guide &guide, QWidget &dialog, const QString &name,
                   const QString &told, const QString &file)
{
    guide.click(guide.control(dialog, u"OKButton"_s));
    QWidget &preview = guide.window(u"Forhandsvisning"_s);
    guide.picture(preview, name, told);
    guide.saveAs(guide.control(preview, u"cmdPdf"_s), file);
    guide.close(preview);
}

/// From the order screen, which a double click in the overview has opened on the credit note.
void printCreditNote(screentour::Guide &guide)
{
    QWidget &order = guide.window(u"frmOrdre"_s);
    guide.click(guide.control(order, u"btnPrint"_s));
    QWidget &dialog = guide.window(u"frmUtskrift"_s);
    guide.picture(dialog, u"kreditnota-utskrift"_s,
                  u"Kreditnotaen er sendt før, så det som skrives, er en kopi"_s);
    pictureReport(guide, dialog, u"kreditnota-papir"_s, u"Kreditnotaen i forhåndsvisning"_s,
                  u"Kreditnota.pdf"_s);
    guide.expectClosed(u"frmUtskrift"_s);
    guide.close(order);
}

/// Not so for a demo company in a year to come.
bool isAnythingOverdue()
{
    return gDB->GetCount(u"Ordre"_s, klientVilkar() +
                                         u" AND OrdreStatus='Bokført' AND ForfallDato<"_s +
                                         Format(QDate::currentDate(), u"\\#mm\\/dd\\/yyyy\\#")) > 0;
}

} // namespace

void screentour::visitOverview(Guide &guide)
{
    guide.click(guide.control(guide.window(u"frmRegningsdel"_s), u"Command5"_s));
    QWidget &screen = guide.window(u"frmOversikt"_s);
    QWidget &grid = guide.control(screen, u"fpSpread1"_s);
    guide.picture(screen, u"oversikt"_s, u"Alle ordre og fakturaer med status, de nyeste øverst"_s);
    if (const int creditNote = tour::newestOrder(kIssuedCreditNotes); creditNote != 0) {
        const int row = guide.rowOf(grid, kNumber, QString::number(creditNote));
        guide.doubleClickCell(grid, row, kName);
        printCreditNote(guide);
    }

    guide.click(guide.control(screen, u"btnPrint"_s));
    QWidget &dialog = guide.window(u"frmOrdreSkriv"_s);
    guide.picture(dialog, u"ordreskriv"_s, u"Utvalget til ordrelisten og purrelisten"_s);
    // To the end of the year, so that the list has rows on any day of it.
    guide.type(guide.control(dialog, u"dtpTilDato"_s), u"31.12.%1"_s.arg(gAar));
    pictureReport(guide, dialog, u"ordreliste"_s, u"Ordrelisten i forhåndsvisning"_s,
                  u"Ordreliste.pdf"_s);
    guide.click(guide.control(dialog, u"optType_1"_s));
    if (isAnythingOverdue())
        pictureReport(guide, dialog, u"purreliste"_s, u"Purrelisten i forhåndsvisning"_s,
                      u"Purreliste.pdf"_s);
    else
        guide.picture(dialog, u"purreliste"_s, u"Utvalget til purrelisten"_s);
    guide.close(dialog);
    guide.close(screen);
}
