#include "presentation/spread/mVASpread.h"
#include "platform/grid/GridFixture.h"
#include "runtime/RunTimeError.h"

#include <QSignalSpy>

namespace {

class mVASpread : public GridFixture
{
protected:
    void addRows(int count)
    {
        for (int i = 1; i <= count; ++i)
            SpreadAddRow(grid, u"nr %1"_s.arg(i));
    }
    SheetColor backColor(int col, int row)
    {
        grid.setCurrent(col, row);
        return grid.backColor();
    }
    int align(int col, int row)
    {
        grid.setCurrent(col, row);
        return grid.typeHAlign();
    }
    CellType cellType(int col, int row)
    {
        grid.setCurrent(col, row);
        return grid.cellType();
    }
};

} // namespace

// --- SpreadClear

TEST_F(mVASpread, ClearLeavesTenRowsWhateverTheDesignWas)
{
    for (const int design : {100, 50, 10, 3}) {
        grid.setMaxRows(design);
        SpreadClear(grid);
        EXPECT_EQ(grid.maxRows(), 10);
    }
}

TEST_F(mVASpread, ClearEmptiesTextsAndColoursAndKeepsHeaders)
{
    grid.setColHeaders({u"Nr"_s});
    addRows(3);
    SpreadSetBackColor(grid, 1, 2, sheetColor(255, 255, 192));
    SpreadClear(grid);
    EXPECT_EQ(grid.dataRowCnt(), 0);
    EXPECT_EQ(at(1, 0), u"Nr");
    for (const auto &[col, row] : {std::pair(1, 2), {5, 10}}) {
        grid.setCurrent(col, row);
        EXPECT_EQ(grid.backColor(), sheetColor(255, 255, 255));
        EXPECT_EQ(grid.foreColor(), sheetColor(0, 0, 0));
    }
}

TEST_F(mVASpread, ClearEndsBlockModeAndTheSelectionWithoutAnEvent)
{
    addRows(3);
    SpreadSelectRows(grid, 1, 3, true);
    SpreadClear(grid);
    EXPECT_FALSE(grid.blockMode());
    EXPECT_EQ(grid.selectedRowCount(), 0);
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(mVASpread, ClearKeepsTypesAndWidths)
{
    SpreadSetCellType(grid, 2, -1, 10, false, {}, {});
    grid.setColWidth(2, 20);
    SpreadClear(grid);
    EXPECT_EQ(cellType(2, 5).kind, CellKind::CheckBox);
    EXPECT_DOUBLE_EQ(grid.colWidth(2), 20);
}

// --- SpreadSelectRows

TEST_F(mVASpread, SelectRowsSelectsThemOverAllColumns)
{
    SpreadSelectRows(grid, 3, 5, true);
    EXPECT_EQ(grid.selectedRowCount(), 3);
    EXPECT_EQ(grid.firstSelectedRow(), 3);
    EXPECT_EQ(grid.selectionModel()->selectedIndexes().size(), 3 * 5);
    EXPECT_TRUE(grid.blockMode());
    SpreadSelectRows(grid, 3, 5, false);
    EXPECT_EQ(grid.selectedRowCount(), 0);
    EXPECT_TRUE(grid.blockMode());
}

TEST_F(mVASpread, TheCallsThatFollowSelectRowsTouchTheirCellOnly)
{
    SpreadSelectRows(grid, 2, 5, true);
    SpreadSetText(grid, 3, 2, u"x", false);
    SpreadSetBackColor(grid, 3, 2, kBlack);
    SpreadSetCellAlign(grid, 2, 3, 1);
    EXPECT_EQ(at(4, 2), QString());
    EXPECT_EQ(backColor(4, 2), kWindowBackground);
    EXPECT_EQ(backColor(3, 3), kWindowBackground);
    EXPECT_EQ(backColor(3, 2), kBlack);
    EXPECT_EQ(align(3, 2), 1);
    EXPECT_EQ(align(4, 2), 0);
    EXPECT_TRUE(grid.blockMode());
}

// --- SpreadSort

TEST_F(mVASpread, SortRisesWithTrueAndFallsWithFalse)
{
    for (const char16_t *name : {u"Bodø", u"Ålesund", u"arendal"})
        SpreadAddRow(grid, QStringView(name));
    SpreadSort(grid, 1, true);
    EXPECT_EQ(at(1, 1), u"arendal");
    EXPECT_EQ(at(1, 3), u"Ålesund");
    EXPECT_FALSE(grid.blockMode());
    SpreadSort(grid, 1, false);
    EXPECT_EQ(at(1, 1), u"Ålesund");
    EXPECT_EQ(at(1, 3), u"arendal");
}

TEST_F(mVASpread, SortPassesAnErrorToItsCaller)
{
    EXPECT_EQ(passOver([&] { SpreadSort(grid, 99, true); }), errors::kInvalidCall);
}

// --- SpreadAddRow

TEST_F(mVASpread, AddRowWritesTheFieldsFromColumnOneOn)
{
    SpreadAddRow(grid, u"1\t\ttre\t4");
    EXPECT_EQ(at(1, 1), u"1");
    EXPECT_EQ(at(2, 1), QString());
    EXPECT_EQ(at(3, 1), u"tre");
    EXPECT_EQ(at(4, 1), u"4");
    EXPECT_EQ(at(5, 1), QString());
    SpreadAddRow(grid, u"neste");
    EXPECT_EQ(at(1, 2), u"neste");
}

TEST_F(mVASpread, AddRowTakesAClosingTabIntoTheLastField)
{
    SpreadAddRow(grid, u"a\tb\t");
    EXPECT_EQ(at(2, 1), u"b\t");
    EXPECT_EQ(at(3, 1), QString());
    SpreadAddRow(grid, u"\t");
    EXPECT_EQ(at(1, 2), u"\t");
    SpreadAddRow(grid, u"\t\t");
    EXPECT_EQ(at(1, 3), QString());
    EXPECT_EQ(at(2, 3), u"\t");
}

TEST_F(mVASpread, AddRowWritesAOneCharacterText)
{
    SpreadAddRow(grid, u"x");
    EXPECT_EQ(at(1, 1), u"x");
    SpreadAddRow(grid, u"a\tb");
    EXPECT_EQ(at(2, 2), u"b");
}

TEST_F(mVASpread, AddRowWithAnEmptyTextWritesNothing)
{
    SpreadAddRow(grid, u"");
    EXPECT_EQ(grid.dataRowCnt(), 0);
    EXPECT_EQ(grid.row(), 1);
    EXPECT_EQ(grid.col(), 0);
}

TEST_F(mVASpread, AddRowGoesBehindTheLastRowWithData)
{
    fill(3, 4, u"x"_s);
    SpreadAddRow(grid, u"ny");
    EXPECT_EQ(at(1, 5), u"ny");
}

TEST_F(mVASpread, AddRowGrowsByFiveWhenFewerThanFiveRowsAreLeft)
{
    addRows(5);
    EXPECT_EQ(grid.maxRows(), 10);
    SpreadAddRow(grid, u"den sjette");
    EXPECT_EQ(grid.maxRows(), 10); // there were 5 data rows
    SpreadAddRow(grid, u"den sjuende");
    EXPECT_EQ(grid.maxRows(), 15); // there were 6
    EXPECT_EQ(at(1, 7), u"den sjuende");
    addRows(100);
    EXPECT_EQ(grid.dataRowCnt(), 107);
    EXPECT_GE(grid.maxRows(), 107);
    EXPECT_EQ(grid.model()->rowCount(), grid.maxRows());
}

TEST_F(mVASpread, AddRowFillsAGridWithoutRows)
{
    grid.setMaxRows(0);
    addRows(3);
    EXPECT_EQ(grid.dataRowCnt(), 3);
}

TEST_F(mVASpread, FieldsBeyondTheLastColumnHaveNoEffect)
{
    SpreadAddRow(grid, u"1\t2\t3\t4\t5\t6\t7");
    EXPECT_EQ(at(5, 1), u"5");
    EXPECT_EQ(at(6, 1), QString());
    EXPECT_EQ(grid.maxCols(), 5);
    EXPECT_EQ(grid.dataRowCnt(), 1);
    EXPECT_EQ(at(1, 2), QString());
}

// --- SpreadGetText, SpreadSetText

TEST_F(mVASpread, GetTextLeavesTheCellCurrent)
{
    SpreadSetText(grid, 2, 3, u"Kari", false);
    grid.setCurrent(1, 1);
    EXPECT_EQ(SpreadGetText(grid, 2, 3), u"Kari");
    EXPECT_EQ(grid.col(), 2);
    EXPECT_EQ(grid.row(), 3);
}

TEST_F(mVASpread, TextsOfPlacesThatAreNotThereAreEmpty)
{
    EXPECT_EQ(SpreadGetText(grid, 99, 1), QString());
    EXPECT_EQ(SpreadGetText(grid, 1, -1), QString());
    SpreadSetText(grid, 99, 1, u"x", false);
    SpreadSetText(grid, 1, -1, u"x", false);
    EXPECT_EQ(grid.dataRowCnt(), 0);
}

TEST_F(mVASpread, AWrittenCellHasNothingPending)
{
    type(u"halvferdig"_s);
    SpreadSetText(grid, 1, 1, u"ferdig", false);
    key(Qt::Key_Tab);
    EXPECT_EQ(SpreadGetText(grid, 1, 1), u"ferdig");
}

// --- SpreadSetCellType

TEST_F(mVASpread, AFloatHasBlankCommaTwoDecimalsAndStandsRight)
{
    SpreadSetCellType(grid, 4, -1, 2, false, {}, {});
    const CellType type = cellType(4, 7);
    EXPECT_EQ(type.kind, CellKind::Float);
    EXPECT_TRUE(type.showThousands);
    EXPECT_EQ(type.thousandsSign, u' ');
    EXPECT_EQ(type.decimalSign, u',');
    EXPECT_EQ(type.decimals, 2);
    EXPECT_EQ(align(4, 7), 1);
    EXPECT_EQ(align(3, 7), 0);
    EXPECT_EQ(cellType(3, 7).kind, CellKind::Edit);
}

TEST_F(mVASpread, AnIntegerStandsRight)
{
    SpreadSetCellType(grid, 1, 1, 3, false, {}, {});
    EXPECT_EQ(cellType(1, 1).kind, CellKind::Integer);
    EXPECT_EQ(align(1, 1), 1);
    EXPECT_EQ(align(1, 2), 0);
}

TEST_F(mVASpread, MinimumAndMaximumGoToTheSameAttributesForAllTypes)
{
    for (const int number : {0, 2, 3, 6}) {
        SpreadSetCellType(grid, 1, 1, number, false, u"01.01.2014"_s, u"31.12.2014"_s);
        EXPECT_EQ(cellType(1, 1).minimum, u"01.01.2014") << number;
        EXPECT_EQ(cellType(1, 1).maximum, u"31.12.2014") << number;
    }
    SpreadSetCellType(grid, 1, 1, 6, false, {}, {});
    EXPECT_EQ(cellType(1, 1).timeSign, u':');
    EXPECT_EQ(cellType(1, 1).minimum, QString());
}

TEST_F(mVASpread, AComboBoxTakesItsListFromTheFirstText)
{
    SpreadSetCellType(grid, 1, -1, 8, false, u"A1\tB2"_s, u"uten virkning"_s);
    EXPECT_EQ(cellType(1, 1).kind, CellKind::ComboBox);
    EXPECT_EQ(cellType(1, 1).items, u"A1\tB2");
    EXPECT_FALSE(cellType(1, 1).editable);
    EXPECT_EQ(cellType(1, 1).maximum, QString());
    SpreadSetCellType(grid, 1, 3, 8, true, u"C3"_s, {});
    EXPECT_TRUE(cellType(1, 3).editable);
    EXPECT_EQ(cellType(1, 3).items, u"C3");
    EXPECT_EQ(cellType(1, 2).items, u"A1\tB2");
}

TEST_F(mVASpread, ACellGoesBackToTheEditType)
{
    SpreadSetCellType(grid, 2, 3, 8, false, u"0\t10"_s, {});
    SpreadSetCellType(grid, 2, 3, 1, false, {}, {});
    EXPECT_EQ(cellType(2, 3), CellType());
}

TEST_F(mVASpread, SetCellTypeEndsBlockModeAndPassesOverAnUnknownType)
{
    SpreadLockAll(grid, false);
    ASSERT_TRUE(grid.blockMode());
    SpreadSetCellType(grid, 2, 3, 77, false, {}, {});
    EXPECT_FALSE(grid.blockMode());
    EXPECT_EQ(grid.col(), 2);
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(cellType(2, 3).kind, CellKind::Edit);
}

// --- Colours and alignment

TEST_F(mVASpread, SetBackColorTakesTheColumnFirstAndMinusOneForAll)
{
    SpreadSetBackColor(grid, 2, 3, kBlack);
    EXPECT_EQ(backColor(2, 3), kBlack);
    EXPECT_EQ(backColor(3, 2), kWindowBackground);
    SpreadSetBackColor(grid, -1, -1, kWhite);
    EXPECT_EQ(backColor(2, 3), kWhite);
    EXPECT_EQ(backColor(5, 10), kWhite);
}

TEST_F(mVASpread, SetColAlignTakesTheWholeColumn)
{
    SpreadSetColAlign(grid, 2, 2);
    EXPECT_EQ(align(2, 1), 2);
    EXPECT_EQ(align(2, 10), 2);
    EXPECT_EQ(align(1, 1), 0);
}

TEST_F(mVASpread, SetCellAlignTakesTheRowFirst)
{
    SpreadSetCellAlign(grid, 3, 2, 1);
    EXPECT_EQ(align(2, 3), 1);
    EXPECT_EQ(align(3, 2), 0);
    SpreadSetCellAlign(grid, -1, 4, 1);
    EXPECT_EQ(align(4, 10), 1);
}

TEST_F(mVASpread, AnUnknownAlignmentIsPassedOver)
{
    SpreadSetColAlign(grid, 2, 9);
    SpreadSetCellAlign(grid, 1, 2, -4);
    EXPECT_EQ(align(2, 1), 0);
}

// --- SpreadFitColumn

TEST_F(mVASpread, FitColumnGivesTheSpareWidthAndLeavesHiddenColumnsOut)
{
    grid.setColWidth(1, 8);
    grid.setColWidth(2, 4.5);
    grid.setColWidth(4, 30);
    grid.setColHidden(4, true);
    SpreadFitColumn(grid, 3);
    const double room = grid.twipsToColWidth(grid.width() * 15 - 330);
    EXPECT_NEAR(grid.colWidth(3), room - (8 + 0.03) - (4.5 + 0.03) - (10.5 + 0.03), 1e-9);
}

TEST_F(mVASpread, FitColumnDoesNotCountTheColumnItself)
{
    SpreadFitColumn(grid, 3);
    const double once = grid.colWidth(3);
    SpreadFitColumn(grid, 3);
    EXPECT_DOUBLE_EQ(grid.colWidth(3), once);
}

TEST_F(mVASpread, AFittedGridNeedsNoHorizontalScrollBar)
{
    grid.setRowHeaders(false);
    grid.setMaxRows(100);
    SpreadFitColumn(grid, 2);
    QApplication::processEvents();
    EXPECT_TRUE(grid.verticalScrollBar()->isVisible());
    EXPECT_FALSE(grid.horizontalScrollBar()->isVisible());
}

TEST_F(mVASpread, FitColumnWritesANegativeWidthAsItIs)
{
    grid.setColWidth(1, 500);
    SpreadFitColumn(grid, 3);
    EXPECT_LT(grid.colWidth(3), 0);
    EXPECT_FALSE(grid.colHidden(3));
}

TEST_F(mVASpread, AColumnOfNamesKeepsSomeLettersWhenItIsToBeReadable)
{
    SpreadTilpassNavn(grid, 3, true);
    const double spare = grid.colWidth(3);
    SpreadFitColumn(grid, 3);
    EXPECT_DOUBLE_EQ(grid.colWidth(3), spare) << "where there is room";
    grid.setColWidth(1, 500);
    SpreadTilpassNavn(grid, 3, true);
    EXPECT_EQ(grid.colWidth(3), 12);
    SpreadTilpassNavn(grid, 3, false);
    EXPECT_LT(grid.colWidth(3), 0);
}

TEST_F(mVASpread, FitColumnPassesOverAColumnThatIsNotThere)
{
    EXPECT_EQ(passOver([&] { SpreadFitColumn(grid, 99); }), 0);
}

// --- SpreadLockAll

TEST_F(mVASpread, LockAllLocksAndProtectsAndKeepsBlockMode)
{
    SpreadLockAll(grid, true);
    EXPECT_TRUE(grid.blockMode());
    EXPECT_TRUE(grid.protect());
    EXPECT_EQ(grid.col(), -1);
    EXPECT_EQ(grid.row(), -1);
    type(u"a"_s);
    EXPECT_FALSE(grid.editMode());
    SpreadLockAll(grid, false);
    EXPECT_FALSE(grid.protect());
    EXPECT_TRUE(grid.blockMode());
    type(u"a"_s);
    EXPECT_TRUE(grid.editMode());
}

// --- SpreadMarkCell

TEST_F(mVASpread, MarkCellTakesTheRowFirstAndOpensTheCell)
{
    SpreadMarkCell(grid, 2, 4);
    EXPECT_EQ(active(), std::pair(4, 2));
    EXPECT_EQ(backColor(4, 2), 0xC0FFFFu);
    EXPECT_TRUE(grid.editMode());
    EXPECT_TRUE(grid.redraw());
    EXPECT_TRUE(events.isEmpty());
    type(u"7"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(at(4, 2), u"7");
}

TEST_F(mVASpread, MarkCellShowsAllOfItsChangesAtOnce)
{
    const QSignalSpy changes(grid.model(), &QAbstractItemModel::dataChanged);
    SpreadMarkCell(grid, 2, 4);
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(mVASpread, MarkCellRemovesTheMarkBefore)
{
    SpreadMarkCell(grid, 2, 4);
    SpreadMarkCell(grid, 3, 1);
    EXPECT_EQ(backColor(4, 2), kWindowBackground);
    EXPECT_EQ(backColor(1, 3), 0xC0FFFFu);
    EXPECT_EQ(active(), std::pair(1, 3));
}

TEST_F(mVASpread, MarkCellOutsideTheGridOnlyRemovesTheMark)
{
    SpreadMarkCell(grid, 2, 4);
    SpreadMarkCell(grid, 99, 4);
    EXPECT_EQ(backColor(4, 2), kWindowBackground);
    EXPECT_EQ(active(), std::pair(4, 2));
    EXPECT_TRUE(grid.redraw());
}

TEST_F(mVASpread, MarkCellWhileACellIsLeftSendsTheUserThere)
{
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid, [&](int col, int row, int, int, bool *) {
        if (col == 1)
            SpreadMarkCell(grid, row, 3);
    });
    grid.setEditModeReplace(true);
    fill(3, 1, u"gammelt"_s);
    type(u"A1"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(active(), std::pair(3, 1));
    ASSERT_TRUE(grid.editMode());
    type(u"2"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(SpreadGetText(grid, 3, 1), u"2");
    EXPECT_EQ(active(), std::pair(4, 1));
}
