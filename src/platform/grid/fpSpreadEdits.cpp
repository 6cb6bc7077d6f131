#include "platform/grid/fpSpread.h"

#include "platform/grid/CellDelegate.h"
#include "platform/grid/RefusalMark.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

// What a user changes in many cells at once, and takes back. The screen is told of each cell as of
// one that was edited and left; what it writes in answer belongs to the same step.

namespace {

/// The lines of what was copied. The end of the last one parts nothing.
QStringList linesOf(QString text)
{
    static const QRegularExpression lineEnd(u"\r\n|\r|\n"_s);
    if (text.endsWith(u'\n'))
        text.chop(text.endsWith("\r\n"_L1) ? 2 : 1);
    return text.split(lineEnd);
}

} // namespace

bool fpSpread::clipboardKey(const QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
    } else if (event->matches(QKeySequence::Cut)) {
        copySelection();
        clearSelection();
    } else if (event->matches(QKeySequence::Paste)) {
        paste();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else {
        return false;
    }
    return true;
}

bool fpSpread::historyKey(const QKeyEvent *event)
{
    if (event->matches(QKeySequence::Undo))
        replay(m_history.undo());
    else if (event->matches(QKeySequence::Redo))
        replay(m_history.redo());
    else
        return false;
    return true;
}

CellRange fpSpread::selectedOrActive() const
{
    return m_selected ? *m_selected : CellRange::cell(m_active.col, m_active.row);
}

void fpSpread::copySelection() const
{
    const CellRange block = selectedOrActive();
    QString text;
    for (int row = block.row; row <= block.row2; ++row) {
        bool first = true;
        for (int col = block.col; col <= block.col2; ++col) {
            if (colHidden(col))
                continue;
            if (!std::exchange(first, false))
                text += u'\t';
            QString cell = m_sheet.text(col, row);
            CellDelegate::putInOneLine(cell);
            text += cell;
        }
        if (block.row != block.row2)
            text += u'\n';
    }
    QGuiApplication::clipboard()->setText(text);
}

/// Of one cell the screen is told when that is left; of several at once, since only one of them
/// will be.
void fpSpread::clearSelection()
{
    const CellRange block = selectedOrActive();
    EditHistory::Step step;
    for (int row = block.row; row <= block.row2; ++row) {
        for (int col = block.col; col <= block.col2; ++col) {
            // A mark is turned over, and ButtonClicked tells of it; it cannot be emptied.
            if (colHidden(col) || m_sheet.type(col, row).kind == CellKind::CheckBox)
                continue;
            if (userWrites({col, row}, QString(), Qt::EditRole, step))
                m_userChangedCell = true;
        }
    }
    if (step.size() > 1 && !tellOfCleared(step))
        return;
    m_history.add(step, false);
}

/// Tells the screen of the cells of the step. They are empty and stay so; what the screen writes
/// elsewhere in answer belongs to the step. Returns as hearAnswers.
bool fpSpread::tellOfCleared(EditHistory::Step &step)
{
    const Cell active = m_active;
    const Cell extent = m_extent;
    const EditHistory::Step cleared = step;
    for (const auto &[place, texts] : cleared) {
        EditHistory::Step answers;
        if (!tellOfChange({place.col, place.row}, answers))
            return false;
        for (const auto &[answer, written] : answers) {
            if (cleared.contains(answer))
                rewrite(answer, QString());
            else
                EditHistory::note(step, answer, written.before, written.after);
        }
    }
    // A screen may have gone to another cell in answer. What it answers when this one is left goes
    // with the step.
    setActive(active);
    m_extent = extent;
    m_userChangedCell = true;
    return true;
}

void fpSpread::paste()
{
    const QString text = QGuiApplication::clipboard()->text();
    if (text.isEmpty()) // a picture, say
        return;
    const QStringList lines = linesOf(text);
    if (lines.size() > 1 || lines.first().contains(u'\t')) {
        pasteBlock(lines);
        return;
    }
    startEdit(Entry::Replace);
    if (QLineEdit *box = CellDelegate::textBox(cellEditor()))
        box->paste();
}

void fpSpread::pasteBlock(const QStringList &lines)
{
    const CellRange chosen = selectedOrActive();
    const Cell first{chosen.col, chosen.row};
    Cell last = first;
    EditHistory::Step step;
    for (Cell cell = first; cell.row <= maxRows() && cell.row - first.row < lines.size();
         ++cell.row) {
        cell.col = first.col;
        for (const QString &text : lines[cell.row - first.row].split(u'\t')) {
            last = {std::max(last.col, cell.col), cell.row};
            const QString before = m_sheet.text(cell.col, cell.row);
            if (!userWrites(cell, text, Qt::EditRole, step))
                showRefusal(cell, text);
            if (m_sheet.text(cell.col, cell.row) != before && !tellOfChange(cell, step))
                return;
            const int next = visibleCol(cell.col, 1);
            if (next == std::exchange(cell.col, next)) // there is no column for the rest
                break;
        }
    }
    if (step.empty())
        return;
    m_history.add(step, false);
    setActive(first);
    m_extent = last;
    userSelects(chosenBlock(last));
    if (const int room = maxRows() - first.row + 1; lines.size() > room)
        markCell(*this, indexOf(first),
                 u"Det var plass til %1 av %2 linjer."_s.arg(room).arg(lines.size()));
}

/// Gives the cells the step's texts. What the screen writes in answer is not the user's and is put
/// back; of these cells it is told as well, so that its sums are those of what stands there.
void fpSpread::replay(const EditHistory::Step &step)
{
    if (step.empty())
        return;
    endEdit(QAbstractItemDelegate::RevertModelCache);
    std::vector<EditHistory::Place> changed;
    std::set<EditHistory::Place> known;
    for (const auto &[place, texts] : step) {
        rewrite(place, texts.after);
        changed.push_back(place);
        known.insert(place);
    }
    for (size_t next = 0; next < changed.size(); ++next) {
        EditHistory::Step answers;
        if (!tellOfChange({changed[next].col, changed[next].row}, answers))
            return;
        endEdit(QAbstractItemDelegate::RevertModelCache);
        for (const auto &[place, texts] : answers) {
            rewrite(place, texts.before);
            if (known.insert(place).second)
                changed.push_back(place);
        }
    }
    const auto first = std::ranges::find_if(
        changed, [this](EditHistory::Place place) { return !colHidden(place.col); });
    if (first == changed.end())
        return;
    setActive({first->col, first->row});
    userSelects(chosenBlock(m_active));
}

bool fpSpread::isSeen(const EditHistory::Step &step) const
{
    return std::ranges::any_of(step,
                               [this](const auto &change) { return !colHidden(change.first.col); });
}

void fpSpread::forgetEdits()
{
    m_history.forget();
    if (EditHistory::Step *answers = std::exchange(m_answers, nullptr))
        answers->clear();
}

/// Gives a cell a text that is neither typed nor told of.
void fpSpread::rewrite(EditHistory::Place place, const QString &text)
{
    m_sheet.setText(place.col, place.row, text);
    m_model->cellChanged(place.col, place.row);
}

/// As SheetModel::setData, and notes the change in `step`.
bool fpSpread::userWrites(Cell cell, const QVariant &value, int role, EditHistory::Step &step)
{
    const QString before = m_sheet.text(cell.col, cell.row);
    const bool taken = m_model->setData(indexOf(cell), value, role);
    EditHistory::note(step, {cell.row, cell.col}, before, m_sheet.text(cell.col, cell.row));
    return taken;
}

/// Tells the screen that the user has changed the cell; returns as hearAnswers.
bool fpSpread::tellOfChange(Cell cell, EditHistory::Step &answers)
{
    return hearAnswers(answers, [&] {
        bool cancel = false;
        if (m_sheet.type(cell.col, cell.row).kind == CellKind::CheckBox)
            Q_EMIT ButtonClicked(cell.col, cell.row);
        else
            Q_EMIT LeaveCell(cell.col, cell.row, kAll, kAll, &cancel);
    });
}

/// Runs `tell` and adds what the screen writes meanwhile to `answers`. False when there is nothing
/// to go on with: the screen has ended the edits so far, or the grid.
bool fpSpread::hearAnswers(EditHistory::Step &answers, const std::function<void()> &tell)
{
    const QPointer<fpSpread> self(this);
    EditHistory::Step *const outer = std::exchange(m_answers, &answers);
    tell();
    return self && std::exchange(m_answers, outer) == &answers;
}

/// What the screen writes while it is told, which is undone with what the user did.
void fpSpread::writeAnswer(QStringView text)
{
    const QString before = this->text();
    m_sheet.setText(col(), row(), text);
    EditHistory::note(*m_answers, {row(), col()}, before, this->text());
}

void fpSpread::showRefusal(Cell cell, const QString &typed)
{
    if (m_model->takesInput(cell.col, cell.row))
        markRefusal(*this, indexOf(cell), typed, m_sheet.type(cell.col, cell.row));
}
