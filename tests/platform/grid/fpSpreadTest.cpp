#include "GridFixture.h"

#include "runtime/RunTimeError.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace {

class fpSpreadTest : public GridFixture
{
};

} // namespace

TEST_F(fpSpreadTest, ReadsAndWritesTheCurrentCell)
{
    grid.setCol(2);
    grid.setRow(3);
    grid.setText(u"Olje");
    EXPECT_EQ(grid.text(), u"Olje");
    EXPECT_EQ(grid.model()->index(2, 1).data(), u"Olje"_s);
    grid.setCol(1);
    EXPECT_EQ(grid.text(), QString());
}

TEST_F(fpSpreadTest, TextIsThatOfOneCellInBlockModeToo)
{
    grid.setCol(1);
    grid.setRow(1);
    grid.setCol2(3);
    grid.setRow2(3);
    grid.setBlockMode(true);
    grid.setText(u"a");
    EXPECT_EQ(at(1, 1), u"a");
    EXPECT_EQ(at(2, 1), QString());
}

TEST_F(fpSpreadTest, PlacesThatAreNotThereTakeNothing)
{
    fill(6, 1, u"x"_s);
    fill(1, 11, u"x"_s);
    fill(kAll, 1, u"x"_s);
    EXPECT_EQ(grid.dataRowCnt(), 0);
    EXPECT_EQ(at(6, 1), QString());
}

TEST_F(fpSpreadTest, BlockModeGivesTheBlockTheAttribute)
{
    grid.setCol(2);
    grid.setRow(2);
    grid.setCol2(3);
    grid.setRow2(3);
    grid.setBlockMode(true);
    grid.setBackColor(0xC0FFFF);
    grid.setForeColor(kWhite);
    grid.setLock(true);
    grid.setTypeHAlign(2);
    grid.setCellType(CellType::ofNumber(10));
    grid.setBlockMode(false);
    for (const auto &[col, row, inside] :
         {std::tuple(2, 2, true), {3, 3, true}, {1, 2, false}, {4, 3, false}, {2, 4, false}}) {
        grid.setCurrent(col, row);
        EXPECT_EQ(grid.backColor(), inside ? 0xC0FFFF : kWindowBackground);
        EXPECT_EQ(grid.foreColor(), inside ? kWhite : kWindowText);
        EXPECT_EQ(grid.lock(), inside);
        EXPECT_EQ(grid.typeHAlign(), inside ? 2 : 0);
        EXPECT_EQ(grid.cellType().kind, inside ? CellKind::CheckBox : CellKind::Edit);
    }
}

TEST_F(fpSpreadTest, WithoutBlockModeMinusOneIsAllRowsOrColumns)
{
    grid.setCurrent(3, kAll);
    grid.setTypeHAlign(1);
    grid.setCurrent(3, 7);
    EXPECT_EQ(grid.typeHAlign(), 1);
    grid.setCurrent(2, 7);
    EXPECT_EQ(grid.typeHAlign(), 0);
    grid.setCurrent(kAll, 7);
    grid.setLock(true);
    grid.setCurrent(5, 7);
    EXPECT_TRUE(grid.lock());
    grid.setCurrent(5, 6);
    EXPECT_FALSE(grid.lock());
}

TEST_F(fpSpreadTest, ValueOfACheckCellIsOneOrZero)
{
    setType(1, 1, CellType::ofNumber(10));
    grid.setCurrent(1, 1);
    EXPECT_EQ(grid.value(), u"0");
    grid.setText(u"1");
    EXPECT_EQ(grid.value(), u"1");
    fill(2, 1, u"tekst"_s);
    EXPECT_EQ(grid.value(), u"tekst");
}

TEST_F(fpSpreadTest, CountsRowsUpToTheLastWithData)
{
    fill(1, 1, u"a"_s);
    fill(1, 3, u"c"_s);
    EXPECT_EQ(grid.dataRowCnt(), 3);
    fill(1, 1, QString());
    EXPECT_EQ(grid.dataRowCnt(), 3);
    fill(1, 3, QString());
    EXPECT_EQ(grid.dataRowCnt(), 0);
}

TEST_F(fpSpreadTest, UnknownNumbersAreErrors)
{
    EXPECT_EQ(errorOf([&] { grid.setAction(99); }), errors::kInvalidCall);
    EXPECT_EQ(errorOf([&] { grid.setTypeHAlign(3); }), errors::kInvalidCall);
    EXPECT_EQ(errorOf([&] { grid.setTypeHAlign(-1); }), errors::kInvalidCall);
    EXPECT_EQ(errorOf([&] { grid.setMaxRows(-1); }), errors::kInvalidCall);
    EXPECT_EQ(errorOf([&] { grid.setMaxCols(-1); }), errors::kInvalidCall);
    EXPECT_EQ(errorOf([&] { grid.setColWidth(6, 10); }), errors::kInvalidCall);
    EXPECT_EQ(errorOf([&] { grid.setColHidden(0, true); }), errors::kInvalidCall);
    EXPECT_EQ(errorOf([&] { (void)grid.colWidth(0); }), errors::kInvalidCall);
}

TEST_F(fpSpreadTest, StartsAtTheFirstCellWithNothingSelected)
{
    EXPECT_EQ(active(), std::pair(1, 1));
    EXPECT_EQ(grid.selectedRowCount(), 0);
    EXPECT_EQ(grid.firstSelectedRow(), 0);
    EXPECT_TRUE(grid.currentIndex().isValid());
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
}

TEST_F(fpSpreadTest, Action0MovesTheActiveCellWithoutAnEvent)
{
    activate(3, 4);
    EXPECT_EQ(active(), std::pair(3, 4));
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(3, 2));
    EXPECT_EQ(grid.selectedRowCount(), 0);
    activate(3, 40);
    EXPECT_EQ(active(), std::pair(3, 4));
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(fpSpreadTest, Actions2And14SelectAndDeselectTheBlock)
{
    grid.setCol(1);
    grid.setRow(3);
    grid.setCol2(kAll);
    grid.setRow2(6);
    grid.setBlockMode(true);
    grid.setAction(fpSpread::SelectBlockAction);
    EXPECT_EQ(grid.selectedRowCount(), 4);
    EXPECT_EQ(grid.firstSelectedRow(), 3);
    EXPECT_EQ(grid.selectionModel()->selectedIndexes().size(), 4 * 5);
    grid.setAction(fpSpread::DeselectBlockAction);
    EXPECT_EQ(grid.selectedRowCount(), 0);
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(fpSpreadTest, Action12ClearsTheBlocksTextAndNoHeader)
{
    grid.setColHeaders({u"Nr"_s, u"Navn"_s});
    fill(1, 1, u"a"_s);
    fill(2, 2, u"b"_s);
    grid.setCurrent(1, 1);
    grid.setAction(fpSpread::ClearTextAction);
    EXPECT_EQ(at(1, 1), QString());
    EXPECT_EQ(at(2, 2), u"b");
    grid.setCurrent(kAll, kAll);
    grid.setAction(fpSpread::ClearTextAction);
    EXPECT_EQ(grid.dataRowCnt(), 0);
    EXPECT_EQ(at(2, 0), u"Navn");
}

TEST_F(fpSpreadTest, Action25SortsTheBlocksRows)
{
    for (const auto &[row, text] : {std::pair(1, u"b"_s), {2, u"c"_s}, {3, u"a"_s}})
        fill(2, row, text);
    grid.setCurrent(kAll, kAll);
    grid.setSortKey(2, false);
    grid.setAction(fpSpread::SortAction);
    EXPECT_EQ(at(2, 1), u"c");
    EXPECT_EQ(at(2, 3), u"a");
    grid.setCurrent(kAll, kAll);
    grid.setSortKey(9, true);
    EXPECT_EQ(errorOf([&] { grid.setAction(fpSpread::SortAction); }), errors::kInvalidCall);
}

TEST_F(fpSpreadTest, HiddenColumnsAreHiddenAndKeepTheirWidth)
{
    grid.setColWidth(2, 16.25);
    grid.setColHidden(2, true);
    EXPECT_TRUE(grid.colHidden(2));
    EXPECT_TRUE(grid.isColumnHidden(1));
    EXPECT_DOUBLE_EQ(grid.colWidth(2), 16.25);
    grid.setColHidden(2, false);
    EXPECT_EQ(grid.columnWidth(1), qRound(16.25 * grid.fontMetrics().horizontalAdvance(u'0')));
}

TEST_F(fpSpreadTest, ColumnsHaveTheDefaultWidthUntilTheyGetOne)
{
    grid.setColWidth(1, 20);
    grid.setDefaultColWidth(12);
    const int unit = grid.fontMetrics().horizontalAdvance(u'0');
    EXPECT_EQ(grid.columnWidth(0), 20 * unit);
    EXPECT_EQ(grid.columnWidth(1), 12 * unit);
    EXPECT_DOUBLE_EQ(grid.colWidth(2), 12);
}

TEST_F(fpSpreadTest, ANegativeWidthReadsBackAndShowsAsTheSmallest)
{
    grid.setColWidth(1, -3.5);
    EXPECT_DOUBLE_EQ(grid.colWidth(1), -3.5);
    EXPECT_EQ(grid.columnWidth(0), grid.horizontalHeader()->minimumSectionSize());
    EXPECT_FALSE(grid.colHidden(1));
}

TEST_F(fpSpreadTest, ConvertsTwipsToColumnWidth)
{
    const int unit = grid.fontMetrics().horizontalAdvance(u'0');
    EXPECT_DOUBLE_EQ(grid.twipsToColWidth(15 * unit * 7), 7);
    EXPECT_EQ(grid.widthInTwips(), grid.width() * 15);
}

TEST_F(fpSpreadTest, AUserResizesAColumnWithTheMouse)
{
    QHeaderView *header = grid.horizontalHeader();
    const int before = grid.columnWidth(0);
    const QPoint edge(header->sectionViewportPosition(1) - 1, header->height() / 2);
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
    QTest::mouseMove(header->viewport(), edge + QPoint(40, 0));
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(40, 0));
    EXPECT_EQ(grid.columnWidth(0), before + 40);
    const int unit = grid.fontMetrics().horizontalAdvance(u'0');
    EXPECT_NEAR(grid.colWidth(1), double(before + 40) / unit, 0.01);
}

TEST_F(fpSpreadTest, ColumnsFollowTheFont)
{
    QFont font = grid.font();
    font.setPointSize(font.pointSize() * 2);
    const int before = grid.rowHeight(0);
    grid.setFont(font);
    const int unit = grid.fontMetrics().horizontalAdvance(u'0');
    EXPECT_EQ(grid.columnWidth(0), qRound(10.5 * unit));
    EXPECT_GT(grid.rowHeight(0), before);
}

TEST_F(fpSpreadTest, WhatChangesACellsLooksTellsTheViewAtOnce)
{
    QSignalSpy changed(grid.model(), &QAbstractItemModel::dataChanged);
    const auto tells = [&](const auto &change) {
        changed.clear();
        change();
        return changed.count() == 1 && changed[0][0].toModelIndex() == grid.model()->index(1, 2) &&
               changed[0][1].toModelIndex() == grid.model()->index(1, 2);
    };
    grid.setCurrent(3, 2);
    EXPECT_TRUE(tells([&] { grid.setText(u"1"); }));
    EXPECT_TRUE(tells([&] { grid.setCellType(CellType::ofNumber(10)); }));
    EXPECT_TRUE(tells([&] { grid.setLock(true); }));
    EXPECT_TRUE(tells([&] { grid.setBackColor(0xC0FFFF); }));
}

TEST_F(fpSpreadTest, RedrawOffTellsTheViewNothingUntilItIsOn)
{
    QSignalSpy changed(grid.model(), &QAbstractItemModel::dataChanged);
    QSignalSpy inserted(grid.model(), &QAbstractItemModel::rowsInserted);
    grid.setRedraw(false);
    EXPECT_FALSE(grid.redraw());
    for (int row = 1; row <= 500; ++row) {
        grid.setMaxRows(std::max(10, row));
        fill(1, row, QString::number(row));
    }
    EXPECT_EQ(changed.count() + inserted.count(), 0);
    EXPECT_EQ(grid.dataRowCnt(), 500);
    grid.setRedraw(true);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(grid.model()->rowCount(), 500);
    EXPECT_TRUE(grid.updatesEnabled());
}

TEST_F(fpSpreadTest, WhatIsChosenWhileRedrawIsOffShowsAfterwards)
{
    grid.setRedraw(false);
    grid.setMaxRows(50);
    activate(2, 45);
    grid.setCurrent(kAll, 45);
    grid.setAction(fpSpread::SelectBlockAction);
    grid.setRedraw(true);
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(44, 1));
    EXPECT_EQ(grid.selectionModel()->selectedIndexes().size(), 5);
}

TEST_F(fpSpreadTest, AnActiveCellWhoseRowGoesAwayGoesToTheFirstRow)
{
    grid.setMaxRows(50);
    activate(2, 45);
    grid.setMaxRows(10);
    EXPECT_EQ(active(), std::pair(2, 1));
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(0, 1));
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
}

TEST_F(fpSpreadTest, AnotherColumnCountKeepsTextsWidthsAndHiddenColumns)
{
    fill(2, 1, u"b"_s);
    grid.setColWidth(2, 20);
    grid.setColHidden(3, true);
    grid.setMaxCols(8);
    EXPECT_EQ(at(2, 1), u"b");
    EXPECT_EQ(grid.columnWidth(1), 20 * grid.fontMetrics().horizontalAdvance(u'0'));
    EXPECT_TRUE(grid.isColumnHidden(2));
    EXPECT_FALSE(grid.isColumnHidden(7));
    EXPECT_TRUE(grid.currentIndex().isValid());
}

TEST_F(fpSpreadTest, TheModelHoldsUnderTheTesterThroughAWholeLife)
{
    const QAbstractItemModelTester tester(grid.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    grid.setRedraw(false);
    grid.setMaxRows(40);
    for (int row = 1; row <= 40; ++row)
        fill(1, row, QString::number(row % 7));
    grid.setRedraw(true);
    grid.setCurrent(kAll, kAll);
    grid.setAction(fpSpread::SortAction);
    grid.setCurrent(kAll, kAll);
    grid.setAction(fpSpread::ClearTextAction);
    grid.setMaxRows(10);
    grid.setMaxCols(7);
    EXPECT_EQ(grid.dataRowCnt(), 0);
}

TEST_F(fpSpreadTest, DesignPropertiesAreSettableByName)
{
    for (const char *name : {"rowHeaders", "rowSelect", "tabStop"}) {
        const bool before = grid.property(name).toBool();
        EXPECT_TRUE(grid.setProperty(name, !before)) << name;
        EXPECT_EQ(grid.property(name).toBool(), !before) << name;
    }
    EXPECT_TRUE(grid.setProperty("maxCols", 14));
    EXPECT_TRUE(grid.setProperty("maxRows", 100));
    EXPECT_TRUE(grid.setProperty("defaultColWidth", 8.5));
    EXPECT_EQ(grid.maxCols(), 14);
    EXPECT_EQ(grid.maxRows(), 100);
    EXPECT_DOUBLE_EQ(grid.colWidth(14), 8.5);
}

TEST_F(fpSpreadTest, TabStopTakesTheGridOutOfTheTabOrder)
{
    QLineEdit before(&window);
    window.layout()->addWidget(&before);
    before.show();
    QWidget::setTabOrder(&before, &grid);
    QWidget::setTabOrder(&grid, &button);
    before.setFocus();
    key(Qt::Key_Tab);
    EXPECT_TRUE(grid.hasFocus());
    grid.setTabStop(false);
    before.setFocus();
    key(Qt::Key_Tab);
    EXPECT_TRUE(button.hasFocus());
}

TEST_F(fpSpreadTest, ACellOpenForTypingGoesAwayWithItsRow)
{
    grid.setMaxRows(50);
    activate(2, 45);
    type(u"abc"_s);
    grid.setMaxRows(10);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(grid.dataRowCnt(), 0);
    type(u"x"_s);
    EXPECT_TRUE(grid.editMode());
}
