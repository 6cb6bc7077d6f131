#include "presentation/spread/Fakturaliste.h"

#include "platform/grid/fpSpread.h"
#include "presentation/spread/mVASpread.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kNavn = 3;
constexpr int kOrdreId = 8;
constexpr double kNavnebredde = 20.12; // column units

} // namespace

void LagFakturaliste(fpSpread &grid, const QString &egenKolonne)
{
    // Smaller text, and with it narrower columns: they leave the name room at the default width.
    SpreadLitenSkrift(grid);
    grid.setColHeaders({u"Faktura nr."_s, u"Kunde nr."_s, u"Navn"_s, u"Fak. dato"_s, u"Forfall"_s,
                        u"Beløp"_s, egenKolonne});
    grid.setColWidth(kNavn, kNavnebredde);
    grid.setColHidden(kOrdreId, true);
    SpreadLockAll(grid, true);
    grid.setBlockMode(false);
}
