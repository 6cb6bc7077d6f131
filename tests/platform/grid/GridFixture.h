#pragma once

#include "host/guide/Hands.h"
#include "platform/grid/fpSpread.h"
#include "runtime/Support.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

/// A grid of 5 columns and 10 rows in a shown, active window, with a button under it.
class GridFixture : public ::testing::Test
{
protected:
    GridFixture()
    {
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(&grid);
        layout->addWidget(&button);
        grid.setMaxCols(5);
        window.resize(700, 400);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        grid.setFocus();
        record();
    }

    void fill(int col, int row, const QString &text)
    {
        grid.setCurrent(col, row);
        grid.setText(text);
    }
    QString at(int col, int row)
    {
        grid.setCurrent(col, row);
        return grid.text();
    }
    void setType(int col, int row, const CellType &type)
    {
        grid.setCurrent(col, row);
        grid.setCellType(type);
    }
    void activate(int col, int row)
    {
        grid.setCurrent(col, row);
        grid.setAction(fpSpread::ActiveCellAction);
    }
    std::pair<int, int> active() const { return {grid.activeCol(), grid.activeRow()}; }

    QWidget *editor() const
    {
        return grid.editMode() ? grid.indexWidget(grid.currentIndex()) : nullptr;
    }
    /// A key to whatever has the focus, as a user presses it.
    void key(Qt::Key pressed, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), pressed, modifiers);
    }
    void type(const QString &text)
    {
        for (const QChar c : text) {
            ASSERT_NE(QApplication::focusWidget(), nullptr);
            hands::type(*QApplication::focusWidget(), c);
        }
    }
    QPoint middle(int col, int row) { return hands::middleOf(grid, col, row); }
    void click(int col, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        hands::clickCell(grid, col, row, modifiers);
    }
    QPoint headerMiddle(int col) const { return hands::middleOf(*grid.horizontalHeader(), col); }

    QWidget window;
    fpSpread grid;
    QPushButton button{u"Lagre"_s};
    QStringList events; ///< what the grid has told, in order

private:
    void record()
    {
        QObject::connect(&grid, &fpSpread::Click, &grid, [this](int col, int row) {
            events << u"Click %1 %2"_s.arg(col).arg(row);
        });
        QObject::connect(&grid, &fpSpread::ButtonClicked, &grid, [this](int col, int row) {
            events << u"ButtonClicked %1 %2"_s.arg(col).arg(row);
        });
        QObject::connect(&grid, &fpSpread::LeaveCell, &grid,
                         [this](int col, int row, int newCol, int newRow, bool *) {
                             events << u"LeaveCell %1 %2 %3 %4"_s.arg(col).arg(row).arg(newCol).arg(
                                 newRow);
                         });
        QObject::connect(&grid, &fpSpread::SelChange, &grid,
                         [this](int col, int row, int col2, int row2, int curCol, int curRow) {
                             events << u"SelChange %1 %2 %3 %4 at %5 %6"_s.arg(col)
                                           .arg(row)
                                           .arg(col2)
                                           .arg(row2)
                                           .arg(curCol)
                                           .arg(curRow);
                         });
    }
};
