#include "host/guide/Hands.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QRadioButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>

namespace hands {

namespace {

QModelIndex indexOf(const QAbstractItemView &grid, int col, int row)
{
    return grid.model()->index(row - 1, col - 1);
}

void doubleClick(QWidget *widget, QPoint place)
{
    QTest::mouseClick(widget, Qt::LeftButton, {}, place);
    QTest::mouseDClick(widget, Qt::LeftButton, {}, place);
}

} // namespace

QPoint target(const QWidget &control)
{
    QPoint place = control.rect().center();
    if (qobject_cast<const QCheckBox *>(&control) || qobject_cast<const QRadioButton *>(&control)) {
        constexpr int kMark = 8; // pixels to the middle of the mark
        place.setX(control.layoutDirection() == Qt::LeftToRight ? kMark : control.width() - kMark);
    }
    return place;
}

void click(QWidget &control)
{
    QTest::mouseClick(&control, Qt::LeftButton, {}, target(control));
}

void type(QWidget &field, const QString &text)
{
    for (const QChar letter : text) {
        // The codes of Latin letters and signs are those of their capitals.
        if (letter == u'\n')
            QTest::keyClick(&field, Qt::Key_Return);
        else
            QTest::sendKeyEvent(QTest::Click, &field, Qt::Key(letter.toUpper().unicode()),
                                QString(letter), Qt::NoModifier);
    }
}

void typeOver(QWidget &field, const QString &text)
{
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    type(field, text);
}

void pick(QComboBox &combo, int entry)
{
    QWidget &list = *combo.view();
    QTest::keyClick(&list, Qt::Key_Home);
    for (int i = 0; i < entry; ++i)
        QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Return);
}

void clickTab(QTabBar &bar, int number)
{
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(number - 1).center());
}

QString textAt(const QAbstractItemView &grid, int col, int row)
{
    const QAbstractItemModel &model = *grid.model();
    return (row == 0 ? model.headerData(col - 1, Qt::Horizontal) : indexOf(grid, col, row).data())
        .toString();
}

QPoint middleOf(QAbstractItemView &grid, int col, int row)
{
    const QModelIndex index = indexOf(grid, col, row);
    grid.scrollTo(index);
    return grid.visualRect(index).center();
}

void clickCell(QAbstractItemView &grid, int col, int row, Qt::KeyboardModifiers modifiers)
{
    const QPoint place = middleOf(grid, col, row);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, modifiers, place);
}

void doubleClickCell(QAbstractItemView &grid, int col, int row)
{
    doubleClick(grid.viewport(), middleOf(grid, col, row));
}

QPoint middleOf(const QHeaderView &header, int col)
{
    return {header.sectionViewportPosition(col - 1) + header.sectionSize(col - 1) / 2,
            header.height() / 2};
}

void doubleClickHeader(QTableView &grid, int col)
{
    const QHeaderView &header = *grid.horizontalHeader();
    doubleClick(header.viewport(), middleOf(header, col));
}

} // namespace hands
