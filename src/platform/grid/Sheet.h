#pragma once

#include "platform/grid/CellAttribute.h"
#include "platform/grid/CellTexts.h"
#include "platform/grid/CellType.h"
#include "platform/grid/SheetColor.h"

#include <QString>
#include <QStringView>

/// How text stands in its cell, by the grid's own numbers.
enum class CellAlign : int { Left = 0, Right = 1, Centre = 2 };

/// The cells of a grid without any view: texts, types, locks, colours and alignments. Columns and
/// rows count from 1, row 0 holds the column headers and column 0 the row headers. Places outside
/// the sheet read as empty, and writing there has no effect.
class Sheet
{
public:
    [[nodiscard]] int maxCols() const { return m_texts.columns(); }
    [[nodiscard]] int maxRows() const { return m_texts.rows(); }
    /// What falls away is lost. Error 5 for a negative count.
    void setMaxCols(int count);
    void setMaxRows(int count);
    /// The number of the last row that holds a text; rows without one in front of it are counted.
    [[nodiscard]] int dataRowCount() const { return m_texts.dataRows(); }

    [[nodiscard]] QString text(int col, int row) const;
    void setText(int col, int row, QStringView text);
    void clearTexts(const CellRange &range);

    [[nodiscard]] const CellType &type(int col, int row) const { return m_types.at(col, row); }
    void setType(const CellRange &range, const CellType &type);

    [[nodiscard]] bool isLocked(int col, int row) const { return m_locks.at(col, row); }
    void setLocked(const CellRange &range, bool locked);

    [[nodiscard]] SheetColor foreColor(int col, int row) const { return m_fore.at(col, row); }
    void setForeColor(const CellRange &range, SheetColor color);
    [[nodiscard]] SheetColor backColor(int col, int row) const { return m_back.at(col, row); }
    void setBackColor(const CellRange &range, SheetColor color);

    [[nodiscard]] CellAlign align(int col, int row) const { return m_aligns.at(col, row); }
    void setAlign(const CellRange &range, CellAlign align);

    /// Sorts the rows `firstRow` to `lastRow` by the column, stably in both directions. A column of
    /// numbers or dates is sorted by value, any other as Norwegian text without regard to case; an
    /// empty cell counts as lowest, and rows without any text come last in both directions. What a
    /// single cell has of its own goes along with it. Error 5 for a column that is not there.
    void sortRows(int firstRow, int lastRow, int keyCol, bool rising);

private:
    [[nodiscard]] bool holds(int col, int row) const
    {
        return col >= 1 && row >= 1 && col <= maxCols() && row <= maxRows();
    }
    [[nodiscard]] QStringView cell(int col, int row) const { return m_texts.at(col - 1, row - 1); }

    CellTexts m_texts;
    std::vector<QString> m_columnHeads; ///< by column number; missing ones are empty
    std::unordered_map<int, QString> m_rowHeads;
    CellAttribute<CellType> m_types{CellType()};
    CellAttribute<bool> m_locks{false};
    CellAttribute<SheetColor> m_fore{kWindowText};
    CellAttribute<SheetColor> m_back{kWindowBackground};
    CellAttribute<CellAlign> m_aligns{CellAlign::Left};
};
