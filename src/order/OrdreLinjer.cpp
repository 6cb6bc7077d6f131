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

using namespace Qt::StringLiterals;
using namespace linjekolonne;

namespace {

constexpr int kColumns = kPos;
constexpr int kDesignedRows = 50;
// Grid units.
constexpr double kProduktNrWidth = 11.0;
constexpr double kProduktNavnWidth = 16.25;

constexpr SheetColor kMarkColor = sheetColor(255, 255, 192);

enum { kFloatType = 2, kComboType = 8 }; // types of cells

/// The grid's cells as the calculation wants them.
class Celler : public OrdreCeller
{
public:
    explicit Celler(fpSpread &grid) : m_grid(grid) {}

    [[nodiscard]] int antallRader() const override { return m_grid.dataRowCnt(); }
    [[nodiscard]] QString text(int col, int row) const override
    {
        return SpreadGetText(m_grid, col, row);
    }
    void setText(int col, int row, const QString &text) override
    {
        SpreadSetText(m_grid, col, row, text, false);
    }

private:
    fpSpread &m_grid;
};

/// The header's sums.
class Summer : public OrdreSummer
{
public:
    explicit Summer(const OrdreFelter &felter) : m_felter(felter) {}

    void setText(SumFelt felt, const QString &text) override
    {
        m_felter.setText(feltNr(felt), text);
    }

private:
    static int feltNr(SumFelt felt)
    {
        switch (felt) {
        case SumFelt::SumNetto:
            return ordrefelt::kSumNetto;
        case SumFelt::MvaKr:
            return ordrefelt::kMvaKr;
        case SumFelt::SumBrutto:
            return ordrefelt::kSumBrutto;
        case SumFelt::Kontrollsiffer:
            return ordrefelt::kKontrollsiffer;
        case SumFelt::Avrunding:
            return ordrefelt::kAvrunding;
        }
        throw RunTimeError(errors::kInvalidCall);
    }

    const OrdreFelter &m_felter;
};

void setFloat(fpSpread &grid, int col)
{
    SpreadSetCellType(grid, col, kAll, kFloatType, false, {}, {});
}

/// A quantity shows the one decimal with which it is stored; the sums are made of all of it.
void setAntall(fpSpread &grid)
{
    setFloat(grid, kAntall);
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
    grid.setMaxCols(kColumns);
    grid.setMaxRows(kDesignedRows);
    grid.setColHeaders({u"Produkt nr."_s, u"Produkt navn"_s, u"Antall"_s, u"Pris"_s, u"Rabatt"_s,
                        u"Sum netto"_s, u"MVA"_s, u"Sum brutto"_s, u"ID"_s, u"Pos"_s});
    grid.setColWidth(kProduktNr, kProduktNrWidth);
    grid.setColWidth(kProduktNavn, kProduktNavnWidth);
    for (const int col : {kRabatt, kID, kPos})
        grid.setColHidden(col, true);
    setAntall(grid);
    SpreadSetColAlign(grid, kMvaPst, int(CellAlign::Right));
    onEvent(&grid, &fpSpread::LeaveCell, this, [this](int col, int row, int newCol, int, bool *) {
        vaSpread1_LeaveCell(col, row, newCol == kAll);
    });
}

void OrdreLinjer::brukPlass(int twips)
{
    m_grid.setColWidth(kProduktNavn,
                       kProduktNavnWidth + m_grid.twipsToColWidth(std::max(0, twips)));
}

void OrdreLinjer::InitLinjer()
{
    m_grid.setRedraw(false);
    passOver([this] { SpreadClear(m_grid); }); // which leaves room for ten lines, and no more
    m_grid.setCurrent(kProduktNr, 1); // not where the user stood in the lines that are gone
    m_grid.setAction(fpSpread::ActiveCellAction);
    for (const int col : {kPris, kRabatt, kSumNetto, kSumBrutto})
        setFloat(m_grid, col);
    if (!m_felles || !m_liste)
        m_liste = ProduktListe();
    SpreadSetCellType(m_grid, kProduktNr, kAll, kComboType, false, *m_liste, {});
    const QString satser = QStringList{gMva0, gMva10, gMva15, gMva25}.join(u'\t');
    SpreadSetCellType(m_grid, kMvaPst, kAll, kComboType, true, satser, {});
    m_grid.setRedraw(true);
}

QString OrdreLinjer::ProduktListe() const
{
    const Ref<ado::Recordset> rs =
        gDB->GetRS(u"SELECT * FROM Produkt WHERE "_s + klientVilkar(), true);
    QString liste;
    passOver([&] {
        const int produktNr = rs->fieldIndex(u"ProduktNr");
        for (; !rs->eof(); rs->moveNext()) {
            if (rs->absolutePosition() > 1)
                liste += u'\t';
            if (!rs->isNull(produktNr))
                liste += rs->text(produktNr);
        }
    });
    return liste;
}

void OrdreLinjer::vaSpread1_LeaveCell(int col, int row, bool gridIsLeft)
{
    Celler celler(m_grid);
    if (col == kProduktNr) {
        slaOppProdukt(row);
        gaTilAntall(row, gridIsLeft);
    }
    if (col == kAntall || col == kPris || col == kMvaPst)
        LinjeSum(celler, row);
    Summer summer(m_felter);
    BeregnSummer(celler, LesInnstilling, summer);
}

void OrdreLinjer::slaOppProdukt(int row)
{
    Ref<ado::Recordset> produkt;
    passOver([&] {
        produkt = gDB->GetRS(
            u"SELECT ID,ProduktNavn,UtPris,Enhet,MvaSats,BruttoPris FROM Produkt WHERE "_s +
                klientVilkar() + u" AND ProduktNr='"_s + SpreadGetText(m_grid, kProduktNr, row) +
                u"'"_s,
            true);
    });
    if (gDB->EmptyRS(produkt))
        return;
    const auto write = [&](int col, const QString &text) {
        SpreadSetText(m_grid, col, row, text, false);
    };
    passOver([&] { write(kProduktNavn, produkt->text(u"ProduktNavn")); });
    Currency pris;
    passOver([&] { pris = linjepris(*produkt); });
    passOver([&] { write(kPris, Format(pris, u"# ##0.00")); });
    passOver([&] { write(kMvaPst, Format(produkt->single(u"MvaSats"), u"#0.0")); });
}

/// Whatever the user was heading for, the quantity comes next.
void OrdreLinjer::gaTilAntall(int row, bool gridIsLeft)
{
    if (!gridIsLeft) {
        SpreadMarkCell(m_grid, row, kAntall);
        return;
    }
    // Another control has the focus by now; opening the cell would take it away from there.
    SpreadSetBackColor(m_grid, kAll, kAll, kWindowBackground);
    m_grid.setCurrent(kAntall, row);
    m_grid.setAction(fpSpread::ActiveCellAction);
    SpreadSetBackColor(m_grid, kAntall, row, kMarkColor);
}
