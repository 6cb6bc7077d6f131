#include "order/OrdreLinjer.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "order/OrdreFelter.h"
#include "platform/forms/OuterRim.h"
#include "platform/grid/fpSpread.h"
#include "presentation/spread/mVASpread.h"
#include "rules/Innstilling.h"
#include "runtime/Format.h"
#include "state/SharedState.h"

#include <QLineEdit>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace linjekolonne;

namespace {

constexpr int kKolonner = kPos;
constexpr int kRaderIUtformingen = 50;
// Grid units.
constexpr double kProduktNrBredde = 11.0;
constexpr double kProduktNavnBredde = 16.25;

/// The grid's cells as the calculation wants them.
class Celler : public OrdreCeller
{
public:
    explicit Celler(fpSpread &grid) : m_grid(grid) {}

    [[nodiscard]] int antallRader() const override { return m_grid.dataRowCnt(); }
    [[nodiscard]] QString tekst(int kol, int rad) const override
    {
        return SpreadGetText(m_grid, kol, rad);
    }
    void settTekst(int kol, int rad, const QString &tekst) override
    {
        SpreadSetText(m_grid, kol, rad, tekst);
    }

private:
    fpSpread &m_grid;
};

/// The header's sums.
class Summer : public OrdreSummer
{
public:
    explicit Summer(const OrdreFelter &felter) : m_felter(felter) {}

    void settTekst(SumFelt felt, const QString &tekst) override
    {
        m_felter.settTekst(kFelter.at(size_t(felt)), tekst);
    }

private:
    /// In the order of SumFelt.
    static constexpr std::array kFelter{ordrefelt::kSumNetto, ordrefelt::kMvaKr,
                                        ordrefelt::kSumBrutto, ordrefelt::kKontrollsiffer,
                                        ordrefelt::kAvrunding};

    const OrdreFelter &m_felter;
};

void settBelop(fpSpread &grid, int kol)
{
    SpreadSetCellType(grid, kol, kAll, int(CellKind::Float));
}

/// A quantity shows the one decimal with which it is stored; the sums are made of all of it.
void settAntall(fpSpread &grid)
{
    settBelop(grid, kAntall);
    CellType antall = grid.cellType();
    antall.shownDecimals = 1;
    grid.setCellType(antall);
}

/// The price without VAT. A product whose mark is Null carries a price without VAT.
Currency linjepris(const ado::Recordset &produkt)
{
    const int bruttoPris = produkt.fieldIndex(u"BruttoPris");
    const bool inklMva = !produkt.isNull(bruttoPris) && std::abs(produkt.integer(bruttoPris)) == 1;
    const Currency utPris = produkt.currency(u"UtPris");
    return inklMva ? NettoPris(utPris, produkt.single(u"MvaSats"), 1) : utPris;
}

} // namespace

OrdreLinjer::OrdreLinjer(fpSpread &grid, const OrdreFelter &felter) : m_grid(grid), m_felter(felter)
{
    grid.setMaxCols(kKolonner);
    grid.setMaxRows(kRaderIUtformingen);
    grid.setColHeaders({u"Produkt nr."_s, u"Produkt navn"_s, u"Antall"_s, u"Pris"_s, u"Rabatt"_s,
                        u"Sum netto"_s, u"MVA"_s, u"Sum brutto"_s, u"ID"_s, u"Pos"_s});
    grid.setColWidth(kProduktNr, kProduktNrBredde);
    grid.setColWidth(kProduktNavn, kProduktNavnBredde);
    for (const int kol : {kRabatt, kID, kPos})
        grid.setColHidden(kol, true);
    settAntall(grid);
    SpreadSetColAlign(grid, kMvaPst, int(CellAlign::Right));
    onEvent(&grid, &fpSpread::LeaveCell, this, [this](int kol, int rad, int nyKol, int, bool *) {
        vaSpread1_LeaveCell(kol, rad, nyKol == kAll);
    });
}

void OrdreLinjer::brukPlass(int twips)
{
    m_grid.setColWidth(kProduktNavn,
                       kProduktNavnBredde + m_grid.twipsToColWidth(std::max(0, twips)));
}

void OrdreLinjer::InitLinjer()
{
    m_grid.setRedraw(false);
    passOver([this] { SpreadClear(m_grid); }); // which leaves room for ten lines, and no more
    m_grid.setCurrent(kProduktNr, 1); // not where the user stood in the lines that are gone
    m_grid.setAction(fpSpread::ActiveCellAction);
    for (const int kol : {kPris, kRabatt, kSumNetto, kSumBrutto})
        settBelop(m_grid, kol);
    if (!m_felles || !m_liste)
        m_liste = ProduktListe();
    SpreadSetCellType(m_grid, kProduktNr, kAll, int(CellKind::ComboBox), false, *m_liste);
    SpreadSetCellType(m_grid, kMvaPst, kAll, int(CellKind::ComboBox), true, MvaSatser());
    m_grid.setRedraw(true);
}

QString OrdreLinjer::ProduktListe() const
{
    const Ref<ado::Recordset> rs =
        gDB->GetRS(u"SELECT * FROM Produkt WHERE "_s + klientVilkar(), true);
    QString liste;
    passOver([&] { liste = rs->joined(rs->fieldIndex(u"ProduktNr"), '\t'); });
    return liste;
}

void OrdreLinjer::vaSpread1_LeaveCell(int kol, int rad, bool forlaterGrid)
{
    Celler celler(m_grid);
    if (kol == kProduktNr) {
        slaOppProdukt(rad);
        gaTilAntall(rad, forlaterGrid);
    }
    if (kol == kAntall || kol == kPris || kol == kMvaPst)
        LinjeSum(celler, rad);
    Summer summer(m_felter);
    BeregnSummer(celler, LesInnstilling, summer);
}

void OrdreLinjer::slaOppProdukt(int rad)
{
    Ref<ado::Recordset> produkt;
    passOver([&] {
        produkt = gDB->GetRS(
            u"SELECT ID,ProduktNavn,UtPris,Enhet,MvaSats,BruttoPris FROM Produkt WHERE "_s +
                klientVilkar() + u" AND ProduktNr='"_s + SpreadGetText(m_grid, kProduktNr, rad) +
                u"'"_s,
            true);
    });
    if (gDB->EmptyRS(produkt))
        return;
    const auto skriv = [&](int kol, const QString &tekst) {
        SpreadSetText(m_grid, kol, rad, tekst);
    };
    passOver([&] { skriv(kProduktNavn, produkt->text(u"ProduktNavn")); });
    Currency pris;
    passOver([&] { pris = linjepris(*produkt); });
    passOver([&] { skriv(kPris, Format(pris, u"# ##0.00")); });
    passOver([&] { skriv(kMvaPst, Format(produkt->single(u"MvaSats"), u"#0.0")); });
}

/// Whatever the user was heading for, the quantity comes next.
void OrdreLinjer::gaTilAntall(int rad, bool forlaterGrid)
{
    if (!forlaterGrid) {
        SpreadMarkCell(m_grid, rad, kAntall);
        return;
    }
    // Another control has the focus by now; opening the cell would take it away from there.
    SpreadSetBackColor(m_grid, kAll, kAll, kWindowBackground);
    m_grid.setCurrent(kAntall, rad);
    m_grid.setAction(fpSpread::ActiveCellAction);
    SpreadSetBackColor(m_grid, kAntall, rad, kMerkefarge);
}
