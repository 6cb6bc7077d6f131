#pragma once

#include <QPoint>
#include <QString>

class QAbstractItemView;
class QComboBox;
class QHeaderView;
class QTabBar;
class QTableView;
class QWidget;

/// What a user's hands do on a widget, and how eyes read a grid. All of it is done at once, without
/// a look at what comes of it. Columns and rows count from 1, as in the module; row 0 is the
/// header.
namespace hands {

/// Where a user clicks: in the middle, or on the mark of a check box or option, since those take no
/// click beside mark and text.
[[nodiscard]] QPoint target(const QWidget &control);
void click(QWidget &control);

/// Types letter by letter, also what no key of a keyboard stands for alone; a line's end is Enter.
void type(QWidget &field, const QString &text);
/// Takes out what stands in a field and types.
void typeOver(QWidget &field, const QString &text);

/// Picks from an open list with the keyboard, since a list takes no click in its first moments.
void pick(QComboBox &combo, int entry);

void clickTab(QTabBar &bar, int number);

[[nodiscard]] QString textAt(const QAbstractItemView &grid, int col, int row);
/// The middle of a cell, which is scrolled into view.
[[nodiscard]] QPoint middleOf(QAbstractItemView &grid, int col, int row);
void clickCell(QAbstractItemView &grid, int col, int row, Qt::KeyboardModifiers modifiers = {});
/// The two clicks of a double click.
void doubleClickCell(QAbstractItemView &grid, int col, int row);
[[nodiscard]] QPoint middleOf(const QHeaderView &header, int col);
void doubleClickHeader(QTableView &grid, int col);

} // namespace hands
