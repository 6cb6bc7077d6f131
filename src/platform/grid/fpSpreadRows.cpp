#include "platform/grid/fpSpread.h"

#include "platform/grid/CellDelegate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QPointer>
#include <QToolTip>

// The keys with which a user works in a list: finding a row, opening it, sorting, leaving.

using namespace Qt::StringLiterals;

namespace {

/// A key that is only pressed for the sake of another one.
bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return false;
    }
}

} // namespace

/// Whether a key types something that is seen, of the first plane or beyond it.
bool fpSpread::typesCharacter(const QKeyEvent &event)
{
    const bool isPlain =
        !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    const QString text = event.text();
    return isPlain && !text.isEmpty() && QChar::isPrint(text.toUcs4().constFirst());
}

bool fpSpread::findKey(const QKeyEvent *event)
{
    if (isModifier(event->key()))
        return false;
    if (event->matches(QKeySequence::Find)) {
        m_search.ask();
        tellSearch(true);
        return true;
    }
    const bool isOpen = !m_search.text().isEmpty();
    const bool isSpace = event->key() == Qt::Key_Space; // turns a mark over, unless a text goes on
    const bool isTyped = typesCharacter(*event) && (!isSpace || isOpen);
    const bool takesText = indexOf(m_active).flags().testFlag(Qt::ItemIsEditable);
    if (isTyped && (m_search.isAsked() || !takesText)) {
        m_search.type(event->text());
    } else if (event->key() == Qt::Key_Backspace && (isOpen || m_search.isAsked())) {
        m_search.takeBack();
    } else {
        m_search.end();
        return false;
    }
    const std::optional<int> row =
        m_search.find(m_active.row, [this](int col) { return !colHidden(col); });
    tellSearch(row.has_value());
    if (row)
        userMoves({m_active.col, *row});
    return true;
}

void fpSpread::tellSearch(bool found)
{
    QToolTip::showText(
        mapToGlobal(rect().bottomLeft()),
        found ? u"Finn: "_s + m_search.text() : u"Finner ikke «%1»"_s.arg(m_search.text()), this);
}

bool fpSpread::openKey(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool onHeader = modifiers == Qt::ControlModifier;
    if (!isEnter || (modifiers && !onHeader) ||
        !isSignalConnected(QMetaMethod::fromSignal(&fpSpread::DblClick)))
        return false;
    Q_EMIT DblClick(m_active.col, onHeader ? 0 : m_active.row);
    return true;
}

void fpSpread::moveByKey(int key, Qt::KeyboardModifiers modifiers)
{
    const bool forward = key != Qt::Key_Backtab && !(modifiers & Qt::ShiftModifier);
    if (CellDelegate::leavesGrid(key, modifiers))
        // A view's own goes from cell to cell. NOLINTNEXTLINE(bugprone-parent-virtual-call)
        QAbstractScrollArea::focusNextPrevChild(forward);
    else if (const std::optional<Cell> to = keyTarget(m_active, key, modifiers))
        userMoves(*to);
    else // behind the last cell, or in front of the first one, the focus leaves the grid
        focusNextPrevChild(forward);
}

void fpSpread::setSortMark(int col, bool rising)
{
    m_sortMark = col;
    m_sortMarkRises = rising;
    showSortMark();
}

void fpSpread::showSortMark()
{
    QHeaderView &header = *horizontalHeader();
    header.setSortIndicatorShown(m_sortMark != 0);
    header.setSortIndicator(m_sortMark - 1,
                            m_sortMarkRises ? Qt::AscendingOrder : Qt::DescendingOrder);
}
