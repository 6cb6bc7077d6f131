#pragma once

#include "platform/grid/Sheet.h"

#include <QStyledItemDelegate>

/// Paints the cells of a sheet by their types and makes the editors for them.
class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// `sheet` stays the caller's and must outlive the delegate.
    explicit CellDelegate(const Sheet &sheet, QObject *parent = nullptr);

    /// Whether the active cell of a selection is filled as the others are; otherwise it keeps its
    /// own colour within a frame.
    void setActiveCellFilled(bool on) { m_activeCellFilled = on; }

    /// The text box in which an editor of this delegate takes keys; null for a list without one.
    [[nodiscard]] static class QLineEdit *textBox(QWidget *editor);
    /// Tabs and line ends part cells and rows: within a cell's text they become blanks.
    static void putInOneLine(QString &text);
    /// Whether the key takes the focus out of the grid from any cell.
    [[nodiscard]] static bool leavesGrid(int key, Qt::KeyboardModifiers modifiers);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    /// Loads the cell's text, unless it is the one that the editor has loaded already: what is
    /// typed outlives a change of other cells, or of this cell's colour.
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    /// Loads the cell's text anew in any case.
    void reload(QWidget *editor, const QModelIndex &index) const;
    /// Shows the whole text of a cell that is cut.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
    /// Writes only what the user has changed.
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

Q_SIGNALS:
    /// A key that leaves the cell ended an edit: one that leaves the grid, Tab, Backtab, Return,
    /// Enter, or of a text box Up, Down, PageUp or PageDown.
    void moveWanted(int key, Qt::KeyboardModifiers modifiers);
    /// The user wants to undo, or to do again, and the editor has nothing of its own for that.
    void undoWanted();
    void redoWanted();

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    [[nodiscard]] const CellType &type(const QModelIndex &index) const
    {
        return m_sheet.type(index.column() + 1, index.row() + 1);
    }
    void finish(QWidget *editor);
    bool passesHistoryOn(const QKeyEvent &key, QWidget *editor);

    const Sheet &m_sheet;
    bool m_activeCellFilled = false;
};
