#include "presentation/spread/mVASpread.h"

#include "platform/grid/fpSpread.h"
#include "runtime/RunTimeError.h"

namespace {

constexpr int kRaderITomtGrid = 10;
constexpr int kRaderTilOvers = 5;
constexpr int kTwipsVedKolonnene = 330; ///< scroll bar and frame
constexpr double kMellomKolonner = 0.03;
constexpr double kLesbartNavn = 12;

void blokkAlleData(fpSpread &grid)
{
    grid.setCol(1);
    grid.setRow(1);
    grid.setCol2(kAll);
    grid.setRow2(kAll);
    grid.setBlockMode(true);
}

} // namespace

void SpreadLitenSkrift(fpSpread &grid)
{
    QFont skrift = grid.font();
    skrift.setPointSizeF(skrift.pointSizeF() - 1);
    grid.setFont(skrift);
}

void SpreadClear(fpSpread &grid)
{
    blokkAlleData(grid);
    grid.setAction(fpSpread::SelectBlockAction);
    grid.setForeColor(kBlack);
    grid.setBackColor(kWhite);
    grid.setAction(fpSpread::ClearTextAction);
    grid.setBlockMode(false);
    grid.setAction(fpSpread::DeselectBlockAction);
    grid.setMaxRows(kRaderITomtGrid);
    grid.setSortMark(0, true);
}

void SpreadSelectRows(fpSpread &grid, int forsteRad, int sisteRad, bool paa)
{
    grid.setCol(1);
    grid.setRow(forsteRad);
    grid.setCol2(kAll);
    grid.setRow2(sisteRad);
    grid.setBlockMode(true);
    grid.setAction(paa ? fpSpread::SelectBlockAction : fpSpread::DeselectBlockAction);
}

void SpreadSort(fpSpread &grid, qint16 kol, bool stigende)
{
    blokkAlleData(grid);
    grid.setSortKey(kol, stigende);
    grid.setAction(fpSpread::SortAction);
    grid.setBlockMode(false);
}

void SpreadAddRow(fpSpread &grid, QStringView tekst)
{
    const int datarader = grid.dataRowCnt();
    if (datarader > grid.maxRows() - kRaderTilOvers)
        grid.setMaxRows(grid.maxRows() + kRaderTilOvers);
    grid.setRow(datarader + 1);
    grid.setCol(0);
    qsizetype start = 0;
    for (qsizetype i = 0; i < tekst.size(); ++i) {
        const bool siste = i == tekst.size() - 1;
        if (tekst[i] != u'\t' && !siste)
            continue;
        grid.setCol(grid.col() + 1);
        grid.setText(tekst.sliced(start, (siste ? tekst.size() : i) - start));
        start = i + 1;
    }
}

QString SpreadGetText(fpSpread &grid, int kol, int rad)
{
    grid.setCurrent(kol, rad);
    return grid.text();
}

void SpreadSetText(fpSpread &grid, int kol, int rad, QStringView tekst, bool)
{
    grid.setCurrent(kol, rad);
    grid.setText(tekst);
}

void SpreadSetCellType(fpSpread &grid, int kol, int rad, int type, bool redigerbar,
                       const QString &forste, const QString &andre)
{
    grid.setBlockMode(false);
    grid.setCurrent(kol, rad);
    passOver([&] {
        CellType celle = CellType::ofNumber(type);
        switch (celle.kind) {
        case CellKind::Float:
            celle.showThousands = true;
            celle.thousandsSign = u' ';
            celle.decimalSign = u',';
            celle.decimals = 2;
            break;
        case CellKind::ComboBox:
            celle.items = forste;
            celle.editable = redigerbar;
            break;
        case CellKind::Time:
            celle.timeSign = u':';
            break;
        case CellKind::Date:
        case CellKind::Integer:
        case CellKind::Edit:
        case CellKind::CheckBox:
            break;
        }
        const bool harGrenser =
            celle.isNumber() || celle.kind == CellKind::Date || celle.kind == CellKind::Time;
        if (harGrenser) {
            celle.minimum = forste;
            celle.maximum = andre;
        }
        grid.setCellType(celle);
        if (celle.isNumber())
            grid.setTypeHAlign(int(CellAlign::Right));
    });
}

void SpreadSetBackColor(fpSpread &grid, int kol, int rad, SheetColor farge)
{
    grid.setCurrent(kol, rad);
    grid.setBackColor(farge);
}

void SpreadFitColumn(fpSpread &grid, int kol)
{
    const double plass = grid.twipsToColWidth(grid.widthInTwips() - kTwipsVedKolonnene);
    double andre = 0;
    for (int annen = 1; annen <= grid.maxCols(); ++annen) {
        if (annen != kol && !grid.colHidden(annen))
            andre += grid.colWidth(annen) + kMellomKolonner;
    }
    passOver([&] { grid.setColWidth(kol, plass - andre); });
}

void SpreadTilpassNavn(fpSpread &grid, int kol, bool lesbart)
{
    SpreadFitColumn(grid, kol);
    if (lesbart && grid.colWidth(kol) < kLesbartNavn)
        grid.setColWidth(kol, kLesbartNavn);
}

void SpreadSetColAlign(fpSpread &grid, int kol, int justering)
{
    SpreadSetCellAlign(grid, kAll, kol, justering);
}

void SpreadSetCellAlign(fpSpread &grid, int rad, int kol, int justering)
{
    grid.setCurrent(kol, rad);
    passOver([&] { grid.setTypeHAlign(justering); });
}

void SpreadLockAll(fpSpread &grid, bool paa)
{
    grid.setCurrent(kAll, kAll);
    grid.setBlockMode(true);
    grid.setLock(paa);
    grid.setProtect(paa);
}

void SpreadMarkCell(fpSpread &grid, int rad, int kol)
{
    grid.setRedraw(false);
    SpreadSetBackColor(grid, kAll, kAll, kWindowBackground);
    grid.setCurrent(kol, rad);
    grid.setAction(fpSpread::ActiveCellAction);
    SpreadSetBackColor(grid, kol, rad, kMerkefarge);
    grid.setEditMode(true);
    grid.setRedraw(true);
}
