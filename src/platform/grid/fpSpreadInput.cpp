#include "platform/grid/fpSpread.h"

#include "platform/grid/CellDelegate.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPointer>

#include <algorithm>

// What a user does in the grid. Every way of leaving a cell comes through mayLeaveFor, which asks
// the screen first; a screen may unload its form in any of the signals, so nothing of the grid is
// touched after one that could.

namespace {

bool isPlain(Qt::KeyboardModifiers modifiers)
{
    return !(modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

} // namespace

void fpSpread::connectInput()
{
    connect(m_delegate, &CellDelegate::moveWanted, this, &fpSpread::moveByKey);
    connect(m_delegate, &CellDelegate::undoWanted, this, [this] { replay(m_history.undo()); });
    connect(m_delegate, &CellDelegate::redoWanted, this, [this] { replay(m_history.redo()); });
    // A click on any header would move the arrow there.
    connect(horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, &fpSpread::showSortMark);

    // Choosing by the headers goes through the same steps as choosing by cells.
    disconnect(horizontalHeader(), SIGNAL(sectionPressed(int)), this, nullptr);
    disconnect(horizontalHeader(), SIGNAL(sectionEntered(int)), this, nullptr);
    disconnect(verticalHeader(), SIGNAL(sectionPressed(int)), this, nullptr);
    disconnect(verticalHeader(), SIGNAL(sectionEntered(int)), this, nullptr);

    connect(horizontalHeader(), &QHeaderView::sectionPressed, this, [this](int section) {
        setFocus(Qt::MouseFocusReason);
        userSelects(CellRange::column(section + 1).within(maxCols(), maxRows()));
    });
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int section) { Q_EMIT Click(section + 1, 0); });
    connect(horizontalHeader(), &QHeaderView::sectionDoubleClicked, this,
            [this](int section) { Q_EMIT DblClick(section + 1, 0); });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int section, int, int pixels) {
                if (!m_applyingColumns && pixels > 0 && section < maxCols())
                    m_columns[size_t(section) + 1].width = pixels / unitPixels();
            });

    connect(verticalHeader(), &QHeaderView::sectionPressed, this,
            [this](int section) { userPressesRowHeader(section + 1); });
    connect(verticalHeader(), &QHeaderView::sectionEntered, this, [this](int section) {
        m_extent = {maxCols(), section + 1};
        userSelects(
            CellRange{1, m_active.row, maxCols(), section + 1}.within(maxCols(), maxRows()));
    });
    connect(verticalHeader(), &QHeaderView::sectionClicked, this,
            [this](int section) { Q_EMIT Click(0, section + 1); });
    connect(verticalHeader(), &QHeaderView::sectionDoubleClicked, this,
            [this](int section) { Q_EMIT DblClick(0, section + 1); });
}

// --- Moving and selecting

CellRange fpSpread::chosenBlock(Cell corner) const
{
    if (m_rowSelect)
        return CellRange{1, m_active.row, maxCols(), corner.row}.within(maxCols(), maxRows());
    return CellRange{m_active.col, m_active.row, corner.col, corner.row}.within(maxCols(),
                                                                                maxRows());
}

void fpSpread::userSelects(const CellRange &block)
{
    if (m_selected == block)
        return;
    select(block);
    Q_EMIT SelChange(block.col, block.row, block.col2, block.row2, m_active.col, m_active.row);
}

bool fpSpread::userMoves(Cell to)
{
    if (!holds(to))
        return false;
    const QPointer<fpSpread> self(this);
    if (to != m_active) {
        if (!mayLeaveFor(to.col, to.row) || !holds(to))
            return false;
        setActive(to);
    }
    m_extent = m_active;
    userSelects(chosenBlock(m_active));
    return self != nullptr;
}

void fpSpread::userExtends(Cell to)
{
    if (!holds(to) || to == m_extent)
        return;
    endEdit(QAbstractItemDelegate::NoHint);
    m_extent = to;
    scrollTo(indexOf(to));
    userSelects(chosenBlock(to));
}

bool fpSpread::mayLeaveFor(int newCol, int newRow)
{
    const QPointer<fpSpread> self(this);
    endEdit(QAbstractItemDelegate::NoHint);
    const bool changed = std::exchange(m_userChangedCell, false);
    const unsigned moves = m_programMoves;
    bool cancel = false;
    EditHistory::Step answers;
    hearAnswers(answers,
                [&] { Q_EMIT LeaveCell(m_active.col, m_active.row, newCol, newRow, &cancel); });
    if (!self)
        return false;
    // An answer that nobody sees, to a key that has changed nothing, is nothing to take back.
    if (changed || isSeen(answers))
        m_history.add(answers, changed);
    return !cancel && moves == m_programMoves;
}

void fpSpread::userPressesRowHeader(int row)
{
    setFocus(Qt::MouseFocusReason);
    if (!(QGuiApplication::keyboardModifiers() & Qt::ShiftModifier) &&
        !userMoves({m_active.col, row}))
        return;
    m_extent = {maxCols(), row};
    userSelects(CellRange{1, m_active.row, maxCols(), row}.within(maxCols(), maxRows()));
}

void fpSpread::selectAll()
{
    m_extent = {maxCols(), maxRows()};
    userSelects(CellRange::everything().within(maxCols(), maxRows()));
}

// --- Mouse

fpSpread::Cell fpSpread::cellAt(QPoint point) const
{
    const QModelIndex index = indexAt(point);
    return index.isValid() ? Cell{index.column() + 1, index.row() + 1} : Cell{0, 0};
}

void fpSpread::mousePressEvent(QMouseEvent *event)
{
    m_pressed.reset();
    m_search.end();
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const Cell cell = cellAt(event->position().toPoint());
    if (event->modifiers() & Qt::ShiftModifier)
        userExtends(cell);
    else if (userMoves(cell))
        m_pressed = cell;
}

void fpSpread::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_pressed || !(event->buttons() & Qt::LeftButton))
        return;
    const QPoint point = event->position().toPoint();
    const QRect area = viewport()->rect();
    const QPoint inside(std::clamp(point.x(), area.left(), area.right()),
                        std::clamp(point.y(), area.top(), area.bottom()));
    Cell cell = cellAt(inside);
    if (cell.row == 0) // beyond the last row or column
        return;
    // A drag out of the grid draws the next row or column in.
    if (inside.y() != point.y())
        cell.row = std::clamp(cell.row + (point.y() < inside.y() ? -1 : 1), 1, maxRows());
    if (inside.x() != point.x())
        cell.col = visibleCol(cell.col, point.x() < inside.x() ? -1 : 1);
    userExtends(cell);
}

void fpSpread::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_pressed)
        return;
    const Cell cell = *m_pressed;
    m_pressed.reset();
    if (cellAt(event->position().toPoint()) != cell || m_extent != cell)
        return;
    const QPointer<fpSpread> self(this);
    toggleMark();
    if (!self)
        return;
    openList();
    Q_EMIT Click(cell.col, cell.row);
}

void fpSpread::mouseDoubleClickEvent(QMouseEvent *event)
{
    const Cell cell = cellAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !userMoves(cell))
        return;
    m_pressed = cell;
    if (isSignalConnected(QMetaMethod::fromSignal(&fpSpread::DblClick)))
        Q_EMIT DblClick(cell.col, cell.row);
    else
        startEdit(Entry::Append);
}

// --- Keys

int fpSpread::visibleCol(int from, int step) const
{
    int col = from + step;
    while (col >= 1 && col <= maxCols() && colHidden(col))
        col += step;
    return col >= 1 && col <= maxCols() ? col : from;
}

// In one piece: a case for each key.
std::optional<fpSpread::Cell> fpSpread::keyTarget(Cell from, int key,
                                                  Qt::KeyboardModifiers modifiers) const
{
    const bool control = (modifiers & Qt::ControlModifier) != 0;
    const int firstCol = visibleCol(0, 1);
    const int lastCol = visibleCol(maxCols() + 1, -1);
    const int page = std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize() - 1);
    const auto rowAt = [&](int row) { return std::clamp(row, 1, std::max(1, maxRows())); };
    switch (key) {
    case Qt::Key_Left:
        return Cell{control ? firstCol : visibleCol(from.col, -1), from.row};
    case Qt::Key_Right:
        return Cell{control ? lastCol : visibleCol(from.col, 1), from.row};
    case Qt::Key_Up:
        return Cell{from.col, control ? 1 : rowAt(from.row - 1)};
    case Qt::Key_Down:
        return Cell{from.col, control ? maxRows() : rowAt(from.row + 1)};
    case Qt::Key_PageUp:
        return Cell{from.col, rowAt(from.row - page)};
    case Qt::Key_PageDown:
        return Cell{from.col, rowAt(from.row + page)};
    case Qt::Key_Home:
        return Cell{firstCol, control ? 1 : from.row};
    case Qt::Key_End:
        return Cell{lastCol, control ? rowAt(dataRowCnt()) : from.row};
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Cell{from.col, rowAt(from.row + (modifiers & Qt::ShiftModifier ? -1 : 1))};
    case Qt::Key_Tab:
        if (from.col < lastCol)
            return Cell{visibleCol(from.col, 1), from.row};
        if (from.row < maxRows())
            return Cell{firstCol, from.row + 1};
        return std::nullopt;
    case Qt::Key_Backtab:
        if (from.col > firstCol)
            return Cell{visibleCol(from.col, -1), from.row};
        if (from.row > 1)
            return Cell{lastCol, from.row - 1};
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

bool fpSpread::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        m_keyCameUp = true;
    return QTableView::viewportEvent(event);
}

void fpSpread::keyPressEvent(QKeyEvent *event)
{
    QWidget *editor = cellEditor();
    const bool cameUp = std::exchange(m_keyCameUp, false);
    if (editor != nullptr && !cameUp) { // sent to the grid itself
        QApplication::sendEvent(editor, event);
        event->accept(); // a key that the editor does not want has come up through here by now
    } else if (editor != nullptr ||
               (!clipboardKey(event) && !historyKey(event) && !findKey(event) && !openKey(event) &&
                !editKey(event) && !moveKey(event))) {
        event->ignore();
    }
}

void fpSpread::inputMethodEvent(QInputMethodEvent *event)
{
    // A letter composed of dead keys comes whole. The base class would open the cell and lose it.
    if (editMode() || event->commitString().isEmpty())
        QTableView::inputMethodEvent(event);
    else if (startTyping())
        QApplication::sendEvent(cellEditor(), event);
}

bool fpSpread::editKey(QKeyEvent *event)
{
    const int key = event->key();
    if (key == Qt::Key_Down && event->modifiers() & Qt::AltModifier)
        return openList();
    if (!isPlain(event->modifiers()))
        return false;
    switch (key) {
    case Qt::Key_F4:
        return openList();
    case Qt::Key_F2:
        return startEdit(Entry::Append);
    case Qt::Key_Delete:
        clearSelection();
        return true;
    case Qt::Key_Backspace:
        if (!startEdit(Entry::Replace))
            return false;
        if (QLineEdit *box = CellDelegate::textBox(cellEditor()))
            box->del();
        return true;
    default:
        break;
    }
    if (key == Qt::Key_Space && toggleMark())
        return true;
    if (!typesCharacter(*event) || !startTyping())
        return false;
    QApplication::sendEvent(cellEditor(), event);
    return true;
}

// In one piece: the order in which the grid lets go of a key is the rule.
bool fpSpread::moveKey(const QKeyEvent *event)
{
    const int key = event->key();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool tab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
    if (CellDelegate::leavesGrid(key, modifiers)) {
        moveByKey(key, modifiers);
        return true;
    }
    if (modifiers & (Qt::AltModifier | Qt::MetaModifier))
        return false;
    if ((enter || tab) && !isPlain(modifiers))
        return false;
    if (enter && !m_model->takesInput(m_active.col, m_active.row))
        return false;
    const bool extends = modifiers & Qt::ShiftModifier && !enter && !tab;
    const std::optional<Cell> to = keyTarget(extends ? m_extent : m_active, key, modifiers);
    if (to && extends)
        userExtends(*to);
    else if (to)
        userMoves(*to);
    else // a Tab out of the grid goes on unless the screen wants the cell kept
        return tab && !mayLeaveFor(kAll, kAll);
    return true;
}

// --- Editing

bool fpSpread::startTyping()
{
    return startEdit(m_editModeReplace ? Entry::Replace : Entry::Append);
}

bool fpSpread::startEdit(Entry entry)
{
    const QModelIndex index = indexOf(m_active);
    if (!index.flags().testFlag(Qt::ItemIsEditable))
        return false;
    if (!editMode()) {
        scrollTo(index);
        edit(index);
    }
    QLineEdit *box = CellDelegate::textBox(cellEditor());
    if (box != nullptr && entry == Entry::Replace)
        box->selectAll();
    else if (box != nullptr)
        box->end(false);
    return editMode();
}

void fpSpread::endEdit(QAbstractItemDelegate::EndEditHint hint)
{
    QWidget *editor = cellEditor();
    if (editor == nullptr)
        return;
    if (hint != QAbstractItemDelegate::RevertModelCache)
        commitData(editor);
    closeEditor(editor, hint);
}

void fpSpread::commitData(QWidget *editor)
{
    const QLineEdit *box = CellDelegate::textBox(editor);
    const QString typed = box != nullptr && box->isModified() ? box->text() : QString();
    const QString before = m_sheet.text(m_active.col, m_active.row);
    QTableView::commitData(editor);
    const QString after = m_sheet.text(m_active.col, m_active.row);
    if (after != before) {
        m_userChangedCell = true;
        m_history.add({{{m_active.row, m_active.col}, {before, after}}}, false);
    } else if (!m_sheet.type(m_active.col, m_active.row).accepted(typed)) {
        showRefusal(m_active, typed);
    }
}

void fpSpread::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    const bool reverted = hint == QAbstractItemDelegate::RevertModelCache;
    QTableView::closeEditor(editor, reverted ? hint : QAbstractItemDelegate::NoHint);
    if (focusIsElsewhere())
        leaveChangedCell();
    else
        setFocus(); // in a window that is not active it gets the focus with its return
}

void fpSpread::focusOutEvent(QFocusEvent *event)
{
    QTableView::focusOutEvent(event);
    m_search.end();
    if (focusIsElsewhere())
        leaveChangedCell();
}

bool fpSpread::focusIsElsewhere() const
{
    const QWidget *focus = QApplication::focusWidget();
    return focus != nullptr && focus != this && focus->window() == window() && !isAncestorOf(focus);
}

void fpSpread::leaveChangedCell()
{
    if (m_userChangedCell)
        mayLeaveFor(kAll, kAll);
}

bool fpSpread::openList()
{
    if (m_sheet.type(m_active.col, m_active.row).kind != CellKind::ComboBox ||
        !startEdit(Entry::Replace))
        return false;
    if (auto *list = qobject_cast<QComboBox *>(cellEditor()))
        list->showPopup();
    return true;
}

bool fpSpread::toggleMark()
{
    const QModelIndex index = indexOf(m_active);
    const bool marked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    EditHistory::Step step;
    if (!userWrites(m_active, int(marked ? Qt::Unchecked : Qt::Checked), Qt::CheckStateRole, step))
        return false;
    m_userChangedCell = true;
    if (tellOfChange(m_active, step))
        m_history.add(step, false);
    return true;
}
