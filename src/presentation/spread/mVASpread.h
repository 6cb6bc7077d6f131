#pragma once

#include "platform/grid/SheetColor.h"

#include <QString>
#include <QStringView>

class fpSpread;

// The routines through which all screens drive a grid. Columns and rows count from 1; row 0 and
// column 0 are the headers; -1 stands for all. Those marked "passes over" report no failure; the
// others let a run-time error through to the caller. A screen that writes many cells switches the
// grid's redraw off first: the routines do not.

/// The background of a cell that is marked.
inline constexpr SheetColor kMerkefarge = sheetColor(255, 255, 192);

/// Gives the grid smaller letters and with them narrower columns.
void SpreadLitenSkrift(fpSpread &grid);
/// Empties the grid: no text, black on white, nothing selected, 10 rows.
void SpreadClear(fpSpread &grid);
/// Makes a block of these rows over all columns, and selects it when `paa`, deselects it when not.
/// Block mode stays on.
void SpreadSelectRows(fpSpread &grid, int forsteRad, int sisteRad, bool paa);
/// Sorts all rows by the column. Error 5 for a column that the grid does not have.
void SpreadSort(fpSpread &grid, qint16 kol, bool stigende);
/// Appends a row behind the last one that holds data. Tabs part the fields, from column 1 on; a tab
/// at the very end belongs to the last field, and fields beyond the last column have no effect.
/// When fewer than five rows are left, the grid gets five more.
void SpreadAddRow(fpSpread &grid, QStringView tekst);
/// The cell's text; the cell stays current. Passes over.
[[nodiscard]] QString SpreadGetText(fpSpread &grid, int kol, int rad);
/// Writes the cell's text. The cell is left without a pending state, which is what `ventende` false
/// asks for; true has no other effect. Passes over.
void SpreadSetText(fpSpread &grid, int kol, int rad, QStringView tekst, bool ventende = false);
/// Gives the cell (or column, row, all) the type of that number (0 date, 1 edit, 2 float, 3
/// integer, 6 time, 8 combo box, 10 check box). `forste` and `andre` are the lowest and highest
/// value, of which only dates make use; for a combo box `forste` is the list, parted by tabs, and
/// `redigerbar` lets other text be typed. Ends block mode. Passes over.
void SpreadSetCellType(fpSpread &grid, int kol, int rad, int type, bool redigerbar = false,
                       const QString &forste = {}, const QString &andre = {});
/// The background of the cell, or of all. Passes over.
void SpreadSetBackColor(fpSpread &grid, int kol, int rad, SheetColor farge);
/// Gives the column the width that the other visible columns leave of the grid. Passes over.
void SpreadFitColumn(fpSpread &grid, int kol);
/// The same for a column of names. When they are to be `lesbart` it keeps some letters where the
/// others leave it less, and the grid scrolls.
void SpreadTilpassNavn(fpSpread &grid, int kol, bool lesbart);
/// Alignment 0 left, 1 right, 2 centred; of the whole column. Passes over.
void SpreadSetColAlign(fpSpread &grid, int kol, int justering);
/// The same of one cell, or of the column with row -1. The row comes first. Passes over.
void SpreadSetCellAlign(fpSpread &grid, int rad, int kol, int justering);
/// Locks or unlocks all cells and the grid's protection. Block mode stays on.
void SpreadLockAll(fpSpread &grid, bool paa);
/// Marks an invalid cell: it becomes the active one, the only one with the pale yellow background,
/// and open for typing. The row comes first. Passes over.
void SpreadMarkCell(fpSpread &grid, int rad, int kol);
