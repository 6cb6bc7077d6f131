#pragma once

#include "platform/grid/Sheet.h"

#include <QAbstractTableModel>

/// Shows a sheet to Qt's views: cell (column, row) is the index (row - 1, column - 1), and its text
/// answers both DisplayRole and EditRole. While held, the model keeps its size and tells of no
/// change; release tells of everything at once, so that a fill costs the views nothing per cell.
class SheetModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// `sheet` stays the caller's and must outlive the model.
    explicit SheetModel(Sheet &sheet, QObject *parent = nullptr);

    void hold();
    void release();
    [[nodiscard]] bool isHeld() const { return m_held; }
    /// Gives the model the sheet's size, held or not.
    void takeSize();

    /// To be called after a change of the sheet.
    void sizeChanged();
    void cellChanged(int col, int row);
    void rangeChanged(const CellRange &range);

    /// Whether users are refused where a cell is locked.
    [[nodiscard]] bool isProtected() const { return m_protected; }
    void setProtected(bool on) { m_protected = on; }
    /// True when a user may change the cell.
    [[nodiscard]] bool takesInput(int col, int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index,
                                int role = Qt::DisplayRole) const override;
    /// What a user does: refused where the cell takes no input or its type does not take the text.
    /// EditRole takes the typed text, CheckStateRole the mark of a check cell.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    Sheet &m_sheet;
    int m_rows = 0; ///< the size that the views know
    int m_columns = 0;
    bool m_held = false;
    bool m_changed = false; ///< cells changed while held
    bool m_headsChanged = false;
    bool m_protected = false;
};
