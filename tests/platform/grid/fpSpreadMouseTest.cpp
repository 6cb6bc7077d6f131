#include "GridFixture.h"

namespace {

class fpSpreadMouse : public GridFixture
{
protected:
    void doubleClick(int col, int row)
    {
        click(col, row);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, middle(col, row));
    }
    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, from);
        // A move with the button held, which the test library cannot send by itself.
        QMouseEvent move(QEvent::MouseMove, to, grid.viewport()->mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(grid.viewport(), &move);
        QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, to);
    }
};

} // namespace

TEST_F(fpSpreadMouse, AClickLeavesTheOldCellChoosesTheNewOneAndTellsOfItself)
{
    click(2, 3);
    EXPECT_EQ(active(), std::pair(2, 3));
    EXPECT_EQ(events,
              (QStringList{u"LeaveCell 1 1 2 3"_s, u"SelChange 2 3 2 3 at 2 3"_s, u"Click 2 3"_s}));
    EXPECT_EQ(grid.selectedRowCount(), 1);
    EXPECT_EQ(grid.firstSelectedRow(), 3);
    EXPECT_FALSE(grid.editMode());
}

TEST_F(fpSpreadMouse, AClickOnTheActiveCellLeavesNothing)
{
    click(1, 1);
    EXPECT_EQ(events, (QStringList{u"SelChange 1 1 1 1 at 1 1"_s, u"Click 1 1"_s}));
    events.clear();
    click(1, 1);
    EXPECT_EQ(events, (QStringList{u"Click 1 1"_s}));
}

TEST_F(fpSpreadMouse, AClickElsewhereKeepsWhatWasTypedAndThenLeaves)
{
    QString seen;
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid, [&] { seen = at(1, 1); });
    type(u"A1"_s);
    click(4, 4);
    EXPECT_EQ(seen, u"A1");
    EXPECT_EQ(active(), std::pair(4, 4));
    EXPECT_EQ(events.filter(u"LeaveCell"_s), (QStringList{u"LeaveCell 1 1 4 4"_s}));
}

TEST_F(fpSpreadMouse, ACancelledOrRedirectedClickIsNoClick)
{
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid, [&](int col, int row, int, int, bool *) {
        if (col == 1)
            activate(3, row);
    });
    click(5, 6);
    EXPECT_EQ(active(), std::pair(3, 1));
    EXPECT_EQ(events, (QStringList{u"LeaveCell 1 1 5 6"_s}));
    EXPECT_EQ(grid.selectedRowCount(), 0);
    click(5, 6);
    EXPECT_EQ(active(), std::pair(5, 6));
}

TEST_F(fpSpreadMouse, ARedirectedClickMayOpenTheNewCell)
{
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid, [&](int col, int row, int, int, bool *) {
        if (col != 1)
            return;
        activate(3, row);
        grid.setEditMode(true);
    });
    type(u"A1"_s);
    click(5, 6);
    EXPECT_TRUE(grid.editMode());
    type(u"7"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(at(3, 1), u"7");
}

TEST_F(fpSpreadMouse, AClickBesideTheCellsDoesNothing)
{
    grid.setMaxRows(2);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(20, 200));
    EXPECT_EQ(active(), std::pair(1, 1));
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(fpSpreadMouse, AClickTurnsAMarkOverBeforeItTells)
{
    setType(2, kAll, CellType::ofNumber(10));
    QString seen;
    QObject::connect(&grid, &fpSpread::Click, &grid, [&] { seen = at(2, 2); });
    click(2, 2);
    EXPECT_EQ(seen, u"1");
    EXPECT_EQ(events, (QStringList{u"LeaveCell 1 1 2 2"_s, u"SelChange 2 2 2 2 at 2 2"_s,
                                   u"ButtonClicked 2 2"_s, u"Click 2 2"_s}));
    click(2, 2);
    EXPECT_EQ(at(2, 2), u"0");
}

TEST_F(fpSpreadMouse, ADragSelectsABlockAndMarksNothing)
{
    setType(2, kAll, CellType::ofNumber(10));
    drag(middle(2, 2), middle(3, 4));
    EXPECT_EQ(at(2, 2), QString());
    EXPECT_EQ(active(), std::pair(2, 2));
    EXPECT_EQ(grid.firstSelectedRow(), 2);
    EXPECT_EQ(grid.selectedRowCount(), 3);
    EXPECT_EQ(events.last(), u"SelChange 2 2 3 4 at 2 2");
}

TEST_F(fpSpreadMouse, ADragOutOfTheGridScrolls)
{
    grid.setMaxRows(100);
    const QPoint below(middle(2, 2).x(), grid.viewport()->height() + 50);
    drag(middle(2, 2), below);
    EXPECT_GT(grid.selectedRowCount(), 5);
    EXPECT_GT(grid.rowAt(0), 0);
}

TEST_F(fpSpreadMouse, ShiftClickExtendsTheSelection)
{
    click(2, 2);
    click(4, 5, Qt::ShiftModifier);
    EXPECT_EQ(events.last(), u"SelChange 2 2 4 5 at 2 2");
    EXPECT_EQ(active(), std::pair(2, 2));
}

TEST_F(fpSpreadMouse, ADoubleClickEditsWhileNobodyListens)
{
    fill(2, 2, u"ab"_s);
    doubleClick(2, 2);
    ASSERT_TRUE(grid.editMode());
    type(u"c"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(at(2, 2), u"abc");
}

TEST_F(fpSpreadMouse, ADoubleClickGoesToTheScreenThatListens)
{
    QStringList told;
    QObject::connect(&grid, &fpSpread::DblClick, &grid,
                     [&](int col, int row) { told << u"%1 %2"_s.arg(col).arg(row); });
    doubleClick(2, 2);
    EXPECT_EQ(told, (QStringList{u"2 2"_s}));
    EXPECT_FALSE(grid.editMode());
}

TEST_F(fpSpreadMouse, ADoubleClickThatLeavesACellAsksFirst)
{
    QObject::connect(&grid, &fpSpread::DblClick, &grid,
                     [&](int col, int row) { events << u"DblClick %1 %2"_s.arg(col).arg(row); });
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, middle(3, 4));
    EXPECT_EQ(events.first(), u"LeaveCell 1 1 3 4");
    EXPECT_TRUE(events.contains(u"DblClick 3 4"_s));
    EXPECT_EQ(active(), std::pair(3, 4));
}

TEST_F(fpSpreadMouse, HeadersTellOfClicksWithRowOrColumnZero)
{
    QStringList told;
    QObject::connect(&grid, &fpSpread::DblClick, &grid,
                     [&](int col, int row) { told << u"%1 %2"_s.arg(col).arg(row); });
    QWidget *header = grid.horizontalHeader()->viewport();
    QTest::mouseClick(header, Qt::LeftButton, {}, headerMiddle(3));
    EXPECT_EQ(events.last(), u"Click 3 0");
    QTest::mouseDClick(header, Qt::LeftButton, {}, headerMiddle(3));
    EXPECT_EQ(told, (QStringList{u"3 0"_s}));

    const QPoint second(5, middle(1, 2).y());
    QTest::mouseClick(grid.verticalHeader()->viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(events.last(), u"Click 0 2");
    QTest::mouseDClick(grid.verticalHeader()->viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(told.last(), u"0 2");
}

TEST_F(fpSpreadMouse, AColumnHeaderSelectsTheColumnAndLeavesNoCell)
{
    QTest::mouseClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, headerMiddle(3));
    EXPECT_EQ(events, (QStringList{u"SelChange 3 1 3 10 at 1 1"_s, u"Click 3 0"_s}));
    EXPECT_EQ(active(), std::pair(1, 1));
}

TEST_F(fpSpreadMouse, ARowHeaderSelectsTheRowAndMakesItActive)
{
    QTest::mouseClick(grid.verticalHeader()->viewport(), Qt::LeftButton, {},
                      QPoint(5, middle(1, 4).y()));
    EXPECT_EQ(active(), std::pair(1, 4));
    EXPECT_EQ(grid.selectedRowCount(), 1);
    EXPECT_TRUE(events.contains(u"LeaveCell 1 1 1 4"_s));
    EXPECT_TRUE(events.contains(u"SelChange 1 4 5 4 at 1 4"_s));
}

TEST_F(fpSpreadMouse, AHeaderBringsTheFocusIntoTheGrid)
{
    button.setFocus();
    QTest::mouseClick(grid.verticalHeader()->viewport(), Qt::LeftButton, {},
                      QPoint(5, middle(1, 4).y()));
    EXPECT_TRUE(grid.hasFocus());
    button.setFocus();
    QTest::mouseClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, headerMiddle(3));
    EXPECT_TRUE(grid.hasFocus());
}

TEST_F(fpSpreadMouse, ARowHeaderChoosesNothingWhereTheCellMayNotBeLeft)
{
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid,
                     [](int, int, int, int, bool *cancel) { *cancel = true; });
    QTest::mouseClick(grid.verticalHeader()->viewport(), Qt::LeftButton, {},
                      QPoint(5, middle(1, 4).y()));
    EXPECT_EQ(active(), std::pair(1, 1));
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(0, 0));
    EXPECT_EQ(grid.selectedRowCount(), 0);
}

TEST_F(fpSpreadMouse, DraggingOverHeadersSelectsFromTheActiveCellOn)
{
    const auto drag = [](QHeaderView *header, QPoint from, QPoint to) {
        QTest::mousePress(header->viewport(), Qt::LeftButton, {}, from);
        QTest::mouseMove(header->viewport(), to);
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, to);
    };
    drag(grid.verticalHeader(), QPoint(5, middle(1, 2).y()), QPoint(5, middle(1, 4).y()));
    EXPECT_EQ(events.last(), u"SelChange 1 2 5 4 at 1 2");
    EXPECT_EQ(active(), std::pair(1, 2));
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(1, 0));
    EXPECT_EQ(grid.selectionModel()->selectedIndexes().size(), 15);

    drag(grid.horizontalHeader(), headerMiddle(2), headerMiddle(3));
    EXPECT_EQ(active(), std::pair(1, 2));
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(1, 0));
}

TEST_F(fpSpreadMouse, RowSelectMarksTheWholeRow)
{
    grid.setRowSelect(true);
    click(2, 3);
    EXPECT_TRUE(events.contains(u"SelChange 1 3 5 3 at 2 3"_s));
    EXPECT_EQ(grid.selectionModel()->selectedIndexes().size(), 5);
}

TEST_F(fpSpreadMouse, TheScreenMayCloseInAClickOnACheckBox)
{
    auto *other = new fpSpread;
    other->setCellType(CellType::ofNumber(10));
    other->show();
    QObject::connect(other, &fpSpread::ButtonClicked, other, [other] { delete other; });
    const QPoint first = other->visualRect(other->model()->index(0, 0)).center();
    const QPointer<fpSpread> alive(other);
    QTest::mouseClick(other->viewport(), Qt::LeftButton, {}, first);
    EXPECT_TRUE(alive.isNull());
}

TEST_F(fpSpreadMouse, TheScreenMayCloseInADoubleClick)
{
    auto *other = new fpSpread;
    other->show();
    QObject::connect(other, &fpSpread::DblClick, other, [other] { delete other; });
    const QPoint first = other->visualRect(other->model()->index(0, 0)).center();
    const QPointer<fpSpread> alive(other);
    QTest::mouseDClick(other->viewport(), Qt::LeftButton, {}, first);
    EXPECT_TRUE(alive.isNull());
}
