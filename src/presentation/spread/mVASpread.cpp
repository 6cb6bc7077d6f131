#include "presentation/spread/mVASpread.h"

#include "platform/grid/fpSpread.h"
#include "runtime/RunTimeError.h"

namespace {

constexpr int kRowsOfEmptyGrid = 10;
constexpr int kRowsToSpare = 5;
constexpr int kTwipsBesideColumns = 330; ///< scroll bar and frame
constexpr double kGapBetweenColumns = 0.03;
constexpr double kReadableName = 12;

void blockAllData(fpSpread &grid)
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
    blockAllData(grid);
    grid.setAction(fpSpread::SelectBlockAction);
    grid.setForeColor(kBlack);
    grid.setBackColor(kWhite);
    grid.setAction(fpSpread::ClearTextAction);
    grid.setBlockMode(false);
    grid.setAction(fpSpread::DeselectBlockAction);
    grid.setMaxRows(kRowsOfEmptyGrid);
    grid.setSortMark(0, true);
}

void SpreadSelectRows(fpSpread &grid, int firstRow, int lastRow, bool on)
{
    grid.setCol(1);
    grid.setRow(firstRow);
    grid.setCol2(kAll);
    grid.setRow2(lastRow);
    grid.setBlockMode(true);
    grid.setAction(on ? fpSpread::SelectBlockAction : fpSpread::DeselectBlockAction);
}

void SpreadSort(fpSpread &grid, qint16 col, bool rising)
{
    blockAllData(grid);
    grid.setSortKey(col, rising);
    grid.setAction(fpSpread::SortAction);
    grid.setBlockMode(false);
}

void SpreadAddRow(fpSpread &grid, QStringView text)
{
    const int dataRows = grid.dataRowCnt();
    if (dataRows > grid.maxRows() - kRowsToSpare)
        grid.setMaxRows(grid.maxRows() + kRowsToSpare);
    grid.setRow(dataRows + 1);
    grid.setCol(0);
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool last = i == text.size() - 1;
        if (text[i] != u'\t' && !last)
            continue;
        grid.setCol(grid.col() + 1);
        grid.setText(text.sliced(start, (last ? text.size() : i) - start));
        start = i + 1;
    }
}

QString SpreadGetText(fpSpread &grid, int col, int row)
{
    grid.setCurrent(col, row);
    return grid.text();
}

void SpreadSetText(fpSpread &grid, int col, int row, QStringView text, bool)
{
    grid.setCurrent(col, row);
    grid.setText(text);
}

void SpreadSetCellType(fpSpread &grid, int col, int row, int type, bool editable,
                       const QString &first, const QString &second)
{
    grid.setBlockMode(false);
    grid.setCurrent(col, row);
    passOver([&] {
        CellType cell = CellType::ofNumber(type);
        switch (cell.kind) {
        case CellKind::Float:
            cell.showThousands = true;
            cell.thousandsSign = u' ';
            cell.decimalSign = u',';
            cell.decimals = 2;
            break;
        case CellKind::ComboBox:
            cell.items = first;
            cell.editable = editable;
            break;
        case CellKind::Time:
            cell.timeSign = u':';
            break;
        case CellKind::Date:
        case CellKind::Integer:
        case CellKind::Edit:
        case CellKind::CheckBox:
            break;
        }
        const bool hasRange =
            cell.isNumber() || cell.kind == CellKind::Date || cell.kind == CellKind::Time;
        if (hasRange) {
            cell.minimum = first;
            cell.maximum = second;
        }
        grid.setCellType(cell);
        if (cell.isNumber())
            grid.setTypeHAlign(int(CellAlign::Right));
    });
}

void SpreadSetBackColor(fpSpread &grid, int col, int row, SheetColor color)
{
    grid.setCurrent(col, row);
    grid.setBackColor(color);
}

void SpreadFitColumn(fpSpread &grid, int col)
{
    const double room = grid.twipsToColWidth(grid.widthInTwips() - kTwipsBesideColumns);
    double others = 0;
    for (int other = 1; other <= grid.maxCols(); ++other) {
        if (other != col && !grid.colHidden(other))
            others += grid.colWidth(other) + kGapBetweenColumns;
    }
    passOver([&] { grid.setColWidth(col, room - others); });
}

void SpreadFitNames(fpSpread &grid, int col, bool readable)
{
    SpreadFitColumn(grid, col);
    if (readable && grid.colWidth(col) < kReadableName)
        grid.setColWidth(col, kReadableName);
}

void SpreadSetColAlign(fpSpread &grid, int col, int align)
{
    SpreadSetCellAlign(grid, kAll, col, align);
}

void SpreadSetCellAlign(fpSpread &grid, int row, int col, int align)
{
    grid.setCurrent(col, row);
    passOver([&] { grid.setTypeHAlign(align); });
}

void SpreadLockAll(fpSpread &grid, bool on)
{
    grid.setCurrent(kAll, kAll);
    grid.setBlockMode(true);
    grid.setLock(on);
    grid.setProtect(on);
}

void SpreadMarkCell(fpSpread &grid, int row, int col)
{
    grid.setRedraw(false);
    SpreadSetBackColor(grid, kAll, kAll, kWindowBackground);
    grid.setCurrent(col, row);
    grid.setAction(fpSpread::ActiveCellAction);
    SpreadSetBackColor(grid, col, row, kMerkefarge);
    grid.setEditMode(true);
    grid.setRedraw(true);
}
