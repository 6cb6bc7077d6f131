#pragma once

#include "platform/grid/EditHistory.h"
#include "platform/grid/RowSearch.h"
#include "platform/grid/Sheet.h"
#include "platform/grid/SheetModel.h"

#include <QTableView>

#include <functional>
#include <optional>

class CellDelegate;

/// The grid of all screens.
///
/// It is driven by addressing: a caller sets the current column and row, or with block mode on a
/// block that reaches to the second column and row, and then reads or writes a property. Columns
/// and rows count from 1; row 0 and column 0 are the headers; kAll means all. Text is always that
/// of the one current cell; types, locks, colours, alignments and actions take the block. A place
/// that is not on the grid reads as empty, and writing there has no effect; a value that a property
/// does not know raises run-time error 5. What the module sets and never reads can be read all the
/// same: tests see by it what a screen has set.
///
/// The signals tell of what a user does, never of what a program does through these properties.
/// A user leaves a cell with Tab, Enter, the arrow keys or a click elsewhere; typing starts an
/// edit, F2 or a double click goes on with the text that stands there, Escape brings it back. A
/// double click edits only while nobody listens to DblClick, and Enter in a cell that takes no
/// input is left to the window. Ctrl+Z takes back what one key has changed in the cells, with what
/// the screen has written in answer, and Ctrl+Shift+Z does it again; emptying, sorting or shrinking
/// the sheet ends that. A block of cells that is pasted fills the cells from the first one chosen,
/// those that are in sight and take what comes to them.
///
/// In a list, a grid to whose DblClick a screen listens, Enter does what a double click on the cell
/// does and Ctrl+Enter what one on the column's header does. Typing in a cell that takes no input
/// finds the row that begins so, and Ctrl+F finds in any grid. F6 and Ctrl+Tab leave the grid, with
/// Shift backwards.
///
/// The model answers DisplayRole at (row - 1, column - 1).
class fpSpread : public QTableView
{
    Q_OBJECT
    Q_PROPERTY(int maxCols READ maxCols WRITE setMaxCols)
    Q_PROPERTY(int maxRows READ maxRows WRITE setMaxRows)
    Q_PROPERTY(double defaultColWidth READ defaultColWidth WRITE setDefaultColWidth)
    Q_PROPERTY(bool rowHeaders READ rowHeaders WRITE setRowHeaders)
    Q_PROPERTY(bool rowSelect READ rowSelect WRITE setRowSelect)
    Q_PROPERTY(bool tabStop READ tabStop WRITE setTabStop)

public:
    /// What setAction does, by number.
    enum ActionNumber : int {
        ActiveCellAction = 0,     ///< moves the active cell to the current cell
        SelectBlockAction = 2,    ///< selects the block
        ClearTextAction = 12,     ///< empties the block's cells
        DeselectBlockAction = 14, ///< ends the selection
        SortAction = 25,          ///< sorts the block's rows, whole rows, by sortKey
    };

    /// A grid of 10 columns and 10 rows.
    explicit fpSpread(QWidget *parent = nullptr);
    ~fpSpread() override;

    // --- Addressing

    [[nodiscard]] int col() const { return m_block.col; }
    void setCol(int col) { m_block.col = col; }
    [[nodiscard]] int row() const { return m_block.row; }
    void setRow(int row) { m_block.row = row; }
    [[nodiscard]] int col2() const { return m_block.col2; }
    void setCol2(int col) { m_block.col2 = col; }
    [[nodiscard]] int row2() const { return m_block.row2; }
    void setRow2(int row) { m_block.row2 = row; }
    [[nodiscard]] bool blockMode() const { return m_blockMode; }
    void setBlockMode(bool on) { m_blockMode = on; }
    /// Makes the cell current and closes the block to it; block mode stays as it is.
    void setCurrent(int col, int row) { m_block = {col, row, col, row}; }

    // --- Size

    [[nodiscard]] int maxCols() const { return m_sheet.maxCols(); }
    void setMaxCols(int count);
    [[nodiscard]] int maxRows() const { return m_sheet.maxRows(); }
    void setMaxRows(int count);
    /// The number of the last row that holds data; an empty row in front of it is counted.
    [[nodiscard]] int dataRowCnt() const { return m_sheet.dataRowCount(); }

    // --- Cells

    [[nodiscard]] QString text() const { return m_sheet.text(col(), row()); }
    /// Ends what a user has typed into that cell and not left yet.
    void setText(QStringView text);
    /// The text, but "1" or "0" for a check cell.
    [[nodiscard]] QString value() const;

    [[nodiscard]] const CellType &cellType() const { return m_sheet.type(col(), row()); }
    void setCellType(const CellType &type);
    /// A locked cell refuses the user while the grid is protected.
    [[nodiscard]] bool lock() const { return m_sheet.isLocked(col(), row()); }
    void setLock(bool on);
    [[nodiscard]] bool protect() const { return m_model->isProtected(); }
    void setProtect(bool on);
    [[nodiscard]] SheetColor foreColor() const { return m_sheet.foreColor(col(), row()); }
    void setForeColor(SheetColor color);
    [[nodiscard]] SheetColor backColor() const { return m_sheet.backColor(col(), row()); }
    void setBackColor(SheetColor color);
    /// 0 left, 1 right, 2 centred.
    [[nodiscard]] int typeHAlign() const { return int(m_sheet.align(col(), row())); }
    void setTypeHAlign(int align);

    /// Carries out the action of that number (ActionNumber).
    void setAction(int number);
    /// The column by which SortAction sorts, and whether it rises.
    void setSortKey(int col, bool rising);

    // --- Columns

    [[nodiscard]] bool colHidden(int col) const;
    void setColHidden(int col, bool hidden);
    /// In column units: the width of the digit 0 in the grid's font. What was set reads back as it
    /// was; a width below the header's smallest (a negative one too) shows as that smallest.
    [[nodiscard]] double colWidth(int col) const;
    void setColWidth(int col, double units);
    [[nodiscard]] double defaultColWidth() const { return m_defaultColWidth; }
    void setDefaultColWidth(double units);
    [[nodiscard]] double twipsToColWidth(int twips) const;
    /// The grid's own width in twips (1440 to the inch, 15 to the pixel).
    [[nodiscard]] int widthInTwips() const { return width() * kTwipsPerPixel; }
    /// The texts of row 0 from column 1 on.
    void setColHeaders(const QStringList &texts);
    /// The arrow in the header of the column by which the rows are sorted; column 0 for none.
    void setSortMark(int col, bool rising);

    // --- State

    [[nodiscard]] bool redraw() const { return !m_model->isHeld(); }
    /// Off: nothing is shown of what changes. On: all of it at once.
    void setRedraw(bool on);
    [[nodiscard]] bool editMode() const { return state() == EditingState; }
    /// On opens the active cell for typing when it takes input; off keeps what was typed.
    void setEditMode(bool on);
    /// Whether typing replaces a cell's text; otherwise it goes on at the end of the text.
    [[nodiscard]] bool editModeReplace() const { return m_editModeReplace; }
    void setEditModeReplace(bool on) { m_editModeReplace = on; }
    /// What the user has changed so far stands, and cannot be undone any more.
    void forgetEdits();
    [[nodiscard]] int activeCol() const { return m_active.col; }
    [[nodiscard]] int activeRow() const { return m_active.row; }
    /// How many rows the selection touches, and the first of them; 0 without a selection.
    [[nodiscard]] int selectedRowCount() const;
    [[nodiscard]] int firstSelectedRow() const;

    // --- Design

    [[nodiscard]] bool rowHeaders() const;
    void setRowHeaders(bool on);
    /// Whether a user who chooses a cell selects its whole row.
    [[nodiscard]] bool rowSelect() const { return m_rowSelect; }
    void setRowSelect(bool on);
    [[nodiscard]] bool tabStop() const { return (focusPolicy() & Qt::TabFocus) != 0; }
    void setTabStop(bool on);

    /// Selects all cells, as a user does with Ctrl+A.
    void selectAll() override;

Q_SIGNALS:
    /// After a click; row 0 for a column header, column 0 for a row header.
    void Click(int col, int row);
    void DblClick(int col, int row);
    /// Before the active cell moves. `*cancel` set to true keeps it where it is, and so does moving
    /// the active cell elsewhere by ActiveCellAction. The new column and row are -1 when a cell
    /// that the user has changed loses the focus to another control, and for each cell that a
    /// pasted block, an undo or a redo has changed; that cannot be cancelled.
    void LeaveCell(int col, int row, int newCol, int newRow, bool *cancel);
    /// The user has selected the block from (blockCol, blockRow) to (blockCol2, blockRow2).
    void SelChange(int blockCol, int blockRow, int blockCol2, int blockRow2, int curCol,
                   int curRow);
    /// The user has turned the mark of a check cell over, by a click or with Space.
    void ButtonClicked(int col, int row);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void commitData(QWidget *editor) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    static constexpr int kTwipsPerPixel = 15;

    struct Cell
    {
        int col = 1;
        int row = 1;
        friend bool operator==(Cell, Cell) = default;
    };
    struct Column
    {
        std::optional<double> width; ///< none for the default
        bool hidden = false;
    };
    enum class Entry { Replace, Append };

    [[nodiscard]] CellRange target() const
    {
        return m_blockMode ? m_block : CellRange::cell(col(), row());
    }
    [[nodiscard]] bool holds(Cell cell) const
    {
        return cell.col >= 1 && cell.row >= 1 && cell.col <= maxCols() && cell.row <= maxRows();
    }
    [[nodiscard]] QModelIndex indexOf(Cell cell) const;
    [[nodiscard]] Cell cellAt(QPoint point) const;
    [[nodiscard]] QWidget *cellEditor() const;
    [[nodiscard]] size_t checked(int col) const;
    [[nodiscard]] double unitPixels() const;
    void applyColumn(int col);
    void applyMetrics();

    // What the program and the user do to the active cell and the selection.
    void setActive(Cell cell);
    void select(std::optional<CellRange> block);
    void showActive();
    void showSelection();

    // What the user does (fpSpreadInput.cpp).
    void connectInput();
    [[nodiscard]] CellRange chosenBlock(Cell corner) const;
    void userSelects(const CellRange &block);
    bool userMoves(Cell to);
    void userExtends(Cell to);
    bool mayLeaveFor(int newCol, int newRow);
    [[nodiscard]] bool focusIsElsewhere() const;
    void leaveChangedCell();
    void userPressesRowHeader(int row);
    bool editKey(QKeyEvent *event);
    bool moveKey(const QKeyEvent *event);
    [[nodiscard]] std::optional<Cell> keyTarget(Cell from, int key,
                                                Qt::KeyboardModifiers modifiers) const;
    [[nodiscard]] int visibleCol(int from, int step) const;
    bool startEdit(Entry entry);
    bool startTyping();
    void endEdit(QAbstractItemDelegate::EndEditHint hint);
    bool openList();
    bool toggleMark();

    // What the user changes in many cells at once, and takes back (fpSpreadEdits.cpp).
    bool clipboardKey(const QKeyEvent *event);
    bool historyKey(const QKeyEvent *event);
    void copySelection() const;
    void clearSelection();
    bool tellOfCleared(EditHistory::Step &step);
    void paste();
    void pasteBlock(const QStringList &lines);
    void replay(const EditHistory::Step &step);
    [[nodiscard]] bool isSeen(const EditHistory::Step &step) const;
    void rewrite(EditHistory::Place place, const QString &text);
    bool userWrites(Cell cell, const QVariant &value, int role, EditHistory::Step &step);
    bool tellOfChange(Cell cell, EditHistory::Step &answers);
    bool hearAnswers(EditHistory::Step &answers, const std::function<void()> &tell);
    void writeAnswer(QStringView text);
    void showRefusal(Cell cell, const QString &typed);
    [[nodiscard]] CellRange selectedOrActive() const;

    // Working in a list (fpSpreadRows.cpp).
    [[nodiscard]] static bool typesCharacter(const QKeyEvent &event);
    void moveByKey(int key, Qt::KeyboardModifiers modifiers);
    bool findKey(const QKeyEvent *event);
    void tellSearch(bool found);
    bool openKey(const QKeyEvent *event);
    void showSortMark();

    Sheet m_sheet;
    SheetModel *m_model;
    CellDelegate *m_delegate;

    CellRange m_block;
    bool m_blockMode = false;
    int m_sortKey = 1;
    bool m_sortRising = true;
    int m_sortMark = 0; ///< the column with the arrow; 0 for none
    bool m_sortMarkRises = true;

    std::vector<Column> m_columns; ///< by column number; 0 is not used
    double m_defaultColWidth = 10.5;
    bool m_applyingColumns = false;

    Cell m_active;
    Cell m_extent; ///< the selection's corner opposite to the active cell
    std::optional<CellRange> m_selected;
    bool m_editModeReplace = false;
    bool m_rowSelect = false;

    EditHistory m_history;
    EditHistory::Step *m_answers = nullptr; ///< takes what the screen writes while it is told

    std::optional<Cell> m_pressed; ///< where the mouse button went down
    unsigned m_programMoves = 0;   ///< how often the program has moved the active cell
    bool m_userChangedCell = false;
    bool m_keyCameUp = false; ///< the key comes from a cell's editor that had no use for it
    RowSearch m_search{m_sheet};
};
