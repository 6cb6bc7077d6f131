#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "host/guide/ScreenGuide.h"
#include "host/tour/stops/Stops.h"
#include "runtime/Format.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kName = 3;

/// The list dialog's report, in the window that it is read in.
void pictureReport(screentour::Guide &guide, QWidget &dialog, const QString &name,
                   const QString &told, const QString &file)
{
    guide.click(guide.control(dialog, u"OKButton"_s));
    QWidget &preview = guide.window(u"Forhandsvisning"_s);
    guide.picture(preview, name, told);
    guide.saveAs(guide.control(preview, u"cmdPdf"_s), file);
    guide.close(preview);
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
    guide.doubleClickCell(grid, 2, kName);
    guide.close(guide.window(u"frmOrdre"_s));

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
