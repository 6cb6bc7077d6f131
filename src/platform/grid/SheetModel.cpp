#include "platform/grid/SheetModel.h"

#include "platform/grid/Readable.h"

#include <QBrush>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace {

/// Nothing for the two system colours that a view uses anyway.
QVariant brush(SheetColor color)
{
    if (color == kWindowBackground || color == kWindowText)
        return {};
    if ((color & kSystemColor) != 0)
        return color == kButtonFace ? QVariant(QGuiApplication::palette().button()) : QVariant();
    return QBrush(QColor(int(color & 0xff), int(color >> 8 & 0xff), int(color >> 16 & 0xff)));
}

/// A told colour is kept where the ground that was told with it is. On a dark desktop the window's
/// own ground is dark, and the text goes with that.
QVariant textBrush(SheetColor told, SheetColor ground)
{
    const QPalette palette = QGuiApplication::palette();
    const auto colorOf = [&](SheetColor color, QPalette::ColorRole own) {
        const QVariant painted = brush(color);
        return painted.isValid() ? painted.value<QBrush>().color() : palette.color(own);
    };
    const QColor wished = colorOf(told, QPalette::Text);
    const QColor seen = readable(wished, colorOf(ground, QPalette::Base));
    return seen == wished ? brush(told) : QVariant(QBrush(seen));
}

int alignment(CellAlign align)
{
    switch (align) {
    case CellAlign::Right:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    case CellAlign::Centre:
        return int(Qt::AlignHCenter | Qt::AlignVCenter);
    case CellAlign::Left:
        break;
    }
    return int(Qt::AlignLeft | Qt::AlignVCenter);
}

} // namespace

SheetModel::SheetModel(Sheet &sheet, QObject *parent) : QAbstractTableModel(parent), m_sheet(sheet)
{
    takeSize();
}

void SheetModel::hold()
{
    m_held = true;
}

void SheetModel::release()
{
    m_held = false;
    takeSize();
    if (std::exchange(m_changed, false))
        rangeChanged(CellRange::everything());
    if (std::exchange(m_headsChanged, false) && m_columns > 0)
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, m_columns - 1);
}

void SheetModel::takeSize()
{
    if (m_sheet.maxCols() != m_columns) {
        beginResetModel();
        m_columns = m_sheet.maxCols();
        m_rows = m_sheet.maxRows();
        endResetModel();
    } else if (m_sheet.maxRows() > m_rows) {
        beginInsertRows({}, m_rows, m_sheet.maxRows() - 1);
        m_rows = m_sheet.maxRows();
        endInsertRows();
    } else if (m_sheet.maxRows() < m_rows) {
        beginRemoveRows({}, m_sheet.maxRows(), m_rows - 1);
        m_rows = m_sheet.maxRows();
        endRemoveRows();
    }
}

void SheetModel::sizeChanged()
{
    if (!m_held)
        takeSize();
}

void SheetModel::cellChanged(int col, int row)
{
    if (row <= 0 || col <= 0) {
        m_headsChanged = true;
        if (!m_held) {
            m_headsChanged = false;
            const Qt::Orientation side = row <= 0 ? Qt::Horizontal : Qt::Vertical;
            const int section = (row <= 0 ? col : row) - 1;
            if (section >= 0 && section < (row <= 0 ? m_columns : m_rows))
                Q_EMIT headerDataChanged(side, section, section);
        }
    } else if (m_held) {
        m_changed = true;
    } else if (col <= m_columns && row <= m_rows) {
        const QModelIndex cell = index(row - 1, col - 1);
        Q_EMIT dataChanged(cell, cell);
    }
}

void SheetModel::rangeChanged(const CellRange &range)
{
    if (m_held) {
        m_changed = true;
        return;
    }
    const CellRange r = range.within(m_columns, m_rows);
    if (r.col <= r.col2 && r.row <= r.row2)
        Q_EMIT dataChanged(index(r.row - 1, r.col - 1), index(r.row2 - 1, r.col2 - 1));
}

bool SheetModel::takesInput(int col, int row) const
{
    return col >= 1 && row >= 1 && col <= m_sheet.maxCols() && row <= m_sheet.maxRows() &&
           !(m_protected && m_sheet.isLocked(col, row));
}

int SheetModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int SheetModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columns;
}

QVariant SheetModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int col = index.column() + 1;
    const int row = index.row() + 1;
    const CellType &type = m_sheet.type(col, row);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return m_sheet.text(col, row);
    case Qt::AccessibleTextRole:
        // A check cell says what it is for; whether it is marked goes with its state.
        return type.kind == CellKind::CheckBox ? m_sheet.text(col, 0)
                                               : type.shown(m_sheet.text(col, row));
    case Qt::CheckStateRole:
        if (type.kind != CellKind::CheckBox)
            return {};
        return int(m_sheet.text(col, row) == "1"_L1 ? Qt::Checked : Qt::Unchecked);
    case Qt::TextAlignmentRole:
        return alignment(m_sheet.align(col, row));
    case Qt::ForegroundRole:
        return textBrush(m_sheet.foreColor(col, row), m_sheet.backColor(col, row));
    case Qt::BackgroundRole:
        return brush(m_sheet.backColor(col, row));
    default:
        return {};
    }
}

bool SheetModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid())
        return false;
    const int col = index.column() + 1;
    const int row = index.row() + 1;
    if (!takesInput(col, row))
        return false;
    const CellType &type = m_sheet.type(col, row);
    std::optional<QString> text;
    if (role == Qt::EditRole)
        text = type.accepted(value.toString());
    else if (role == Qt::CheckStateRole && type.kind == CellKind::CheckBox)
        text = value.toInt() == Qt::Unchecked ? u"0"_s : u"1"_s;
    if (!text)
        return false;
    m_sheet.setText(col, row, *text);
    cellChanged(col, row);
    return true;
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return role == Qt::TextAlignmentRole ? QVariant(int(Qt::AlignCenter)) : QVariant();
    if (orientation == Qt::Horizontal)
        return m_sheet.text(section + 1, 0);
    const QString own = m_sheet.text(0, section + 1);
    return own.isEmpty() ? QString::number(section + 1) : own;
}

Qt::ItemFlags SheetModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return {};
    const int col = index.column() + 1;
    const int row = index.row() + 1;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (takesInput(col, row)) {
        flags |= m_sheet.type(col, row).kind == CellKind::CheckBox ? Qt::ItemIsUserCheckable
                                                                   : Qt::ItemIsEditable;
    }
    return flags;
}
