#include "platform/grid/fpSpread.h"

#include "platform/grid/CellDelegate.h"
#include "runtime/RunTimeError.h"

#include <QEvent>
#include <QHeaderView>

#include <algorithm>
#include <cmath>

fpSpread::fpSpread(QWidget *parent)
    : QTableView(parent), m_model(new SheetModel(m_sheet, this)),
      m_delegate(new CellDelegate(m_sheet, this))
{
    setModel(m_model);
    setItemDelegate(m_delegate);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    // Keys are handled here; this trigger lets an input method start an edit too.
    setEditTriggers(AnyKeyPressed);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    connectInput();
    setMaxRows(10);
    setMaxCols(10);
    applyMetrics();
}

fpSpread::~fpSpread() = default;

void fpSpread::setMaxCols(int count)
{
    forgetEdits();
    m_sheet.setMaxCols(count);
    m_columns.resize(size_t(count) + 1);
    if (m_active.col > count)
        setActive({1, m_active.row});
    select(std::nullopt);
    m_model->takeSize();
    for (int col = 1; col <= count; ++col)
        applyColumn(col);
    showActive();
}

void fpSpread::setMaxRows(int count)
{
    const bool lost = m_active.row > count;
    if (lost)
        endEdit(QAbstractItemDelegate::RevertModelCache);
    if (count < maxRows())
        forgetEdits();
    m_sheet.setMaxRows(count);
    if (m_selected && m_selected->row2 > count)
        select(std::nullopt);
    if (lost)
        m_active.row = m_extent.row = 1;
    m_model->sizeChanged();
    if (lost)
        showActive();
}

void fpSpread::setText(QStringView text)
{
    if (m_answers)
        writeAnswer(text);
    else
        m_sheet.setText(col(), row(), text);
    m_model->cellChanged(col(), row());
    if (editMode() && m_active == Cell{col(), row()})
        m_delegate->reload(cellEditor(), currentIndex());
}

QString fpSpread::value() const
{
    QString text = this->text();
    if (cellType().kind != CellKind::CheckBox)
        return text;
    return text == u"1" ? text : QStringLiteral("0");
}

void fpSpread::setCellType(const CellType &type)
{
    m_sheet.setType(target(), type);
    m_model->rangeChanged(target());
}

void fpSpread::setLock(bool on)
{
    m_sheet.setLocked(target(), on);
    m_model->rangeChanged(target());
}

void fpSpread::setProtect(bool on)
{
    m_model->setProtected(on);
    m_model->rangeChanged(CellRange::everything());
}

void fpSpread::setForeColor(SheetColor color)
{
    m_sheet.setForeColor(target(), color);
    m_model->rangeChanged(target());
}

void fpSpread::setBackColor(SheetColor color)
{
    m_sheet.setBackColor(target(), color);
    m_model->rangeChanged(target());
}

void fpSpread::setTypeHAlign(int align)
{
    if (align < int(CellAlign::Left) || align > int(CellAlign::Centre))
        throw RunTimeError(errors::kInvalidCall);
    m_sheet.setAlign(target(), CellAlign(align));
    m_model->rangeChanged(target());
}

void fpSpread::setAction(int number)
{
    const CellRange block = target().within(maxCols(), maxRows());
    switch (number) {
    case ActiveCellAction:
        ++m_programMoves;
        if (holds({col(), row()})) {
            select(std::nullopt);
            setActive({col(), row()});
        }
        return;
    case SelectBlockAction:
        select(block);
        return;
    case ClearTextAction:
        endEdit(QAbstractItemDelegate::RevertModelCache);
        forgetEdits();
        m_sheet.clearTexts(block);
        m_model->rangeChanged(block);
        return;
    case DeselectBlockAction:
        select(std::nullopt);
        return;
    case SortAction:
        endEdit(QAbstractItemDelegate::NoHint);
        forgetEdits();
        m_sheet.sortRows(block.row, block.row2, m_sortKey, m_sortRising);
        setSortMark(m_sortKey, m_sortRising);
        m_model->rangeChanged(CellRange::everything());
        return;
    default:
        throw RunTimeError(errors::kInvalidCall);
    }
}

void fpSpread::setSortKey(int col, bool rising)
{
    m_sortKey = col;
    m_sortRising = rising;
}

bool fpSpread::colHidden(int col) const
{
    return m_columns[checked(col)].hidden;
}

void fpSpread::setColHidden(int col, bool hidden)
{
    m_columns[checked(col)].hidden = hidden;
    applyColumn(col);
}

double fpSpread::colWidth(int col) const
{
    return m_columns[checked(col)].width.value_or(m_defaultColWidth);
}

void fpSpread::setColWidth(int col, double units)
{
    m_columns[checked(col)].width = units;
    applyColumn(col);
}

void fpSpread::setDefaultColWidth(double units)
{
    m_defaultColWidth = units;
    applyMetrics();
}

double fpSpread::twipsToColWidth(int twips) const
{
    return double(twips) / kTwipsPerPixel / unitPixels();
}

void fpSpread::setColHeaders(const QStringList &texts)
{
    for (int i = 0; i < int(texts.size()); ++i) {
        m_sheet.setText(i + 1, 0, texts[i]);
        m_model->cellChanged(i + 1, 0);
    }
}

void fpSpread::setRedraw(bool on)
{
    if (on == redraw())
        return;
    if (!on) {
        m_model->hold();
        setUpdatesEnabled(false);
        return;
    }
    m_model->release();
    showActive();
    showSelection();
    setUpdatesEnabled(true);
}

void fpSpread::setEditMode(bool on)
{
    if (!on) {
        endEdit(QAbstractItemDelegate::NoHint);
        return;
    }
    m_model->takeSize();
    showActive();
    startEdit(m_editModeReplace ? Entry::Replace : Entry::Append);
}

int fpSpread::selectedRowCount() const
{
    return m_selected ? m_selected->row2 - m_selected->row + 1 : 0;
}

int fpSpread::firstSelectedRow() const
{
    return m_selected ? m_selected->row : 0;
}

bool fpSpread::rowHeaders() const
{
    return !verticalHeader()->isHidden();
}

void fpSpread::setRowHeaders(bool on)
{
    verticalHeader()->setVisible(on);
}

void fpSpread::setRowSelect(bool on)
{
    m_rowSelect = on;
    m_delegate->setActiveCellFilled(on);
}

void fpSpread::setTabStop(bool on)
{
    setFocusPolicy(on ? Qt::StrongFocus : Qt::ClickFocus);
}

QModelIndex fpSpread::indexOf(Cell cell) const
{
    return m_model->index(cell.row - 1, cell.col - 1);
}

QWidget *fpSpread::cellEditor() const
{
    return editMode() ? indexWidget(currentIndex()) : nullptr;
}

size_t fpSpread::checked(int col) const
{
    if (col < 1 || col > maxCols())
        throw RunTimeError(errors::kInvalidCall);
    return size_t(col);
}

double fpSpread::unitPixels() const
{
    return std::max(1, fontMetrics().horizontalAdvance(u'0'));
}

void fpSpread::applyColumn(int col)
{
    m_applyingColumns = true;
    const int pixels = int(std::lround(std::clamp(colWidth(col), 0.0, 10000.0) * unitPixels()));
    setColumnHidden(col - 1, colHidden(col));
    setColumnWidth(col - 1, std::max(pixels, horizontalHeader()->minimumSectionSize()));
    m_applyingColumns = false;
}

void fpSpread::applyMetrics()
{
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    for (int col = 1; col <= maxCols(); ++col)
        applyColumn(col);
}

void fpSpread::setActive(Cell cell)
{
    m_active = m_extent = cell;
    m_userChangedCell = false;
    showActive();
}

void fpSpread::select(std::optional<CellRange> block)
{
    const bool empty = block && (block->col > block->col2 || block->row > block->row2);
    m_selected = empty ? std::nullopt : block;
    showSelection();
}

void fpSpread::showActive()
{
    const QModelIndex index = indexOf(m_active);
    if (index.isValid() && index != currentIndex())
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

void fpSpread::showSelection()
{
    if (!redraw())
        return;
    const CellRange block =
        m_selected ? m_selected->within(maxCols(), maxRows()) : CellRange{1, 1, 0, 0};
    if (block.col > block.col2 || block.row > block.row2) {
        selectionModel()->clearSelection();
        return;
    }
    selectionModel()->select({indexOf({block.col, block.row}), indexOf({block.col2, block.row2})},
                             QItemSelectionModel::ClearAndSelect);
}

void fpSpread::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        applyMetrics();
}
