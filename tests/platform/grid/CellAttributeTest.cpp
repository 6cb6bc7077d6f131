#include "platform/grid/CellAttribute.h"

#include <gtest/gtest.h>

namespace {

constexpr int kCols = 4;
constexpr int kRows = 6;

} // namespace

TEST(CellAttribute, HasOneValueUntilOneIsSet)
{
    const CellAttribute<int> a(7);
    EXPECT_EQ(a.at(1, 1), 7);
    EXPECT_EQ(a.at(400, 600), 7);
    EXPECT_EQ(a.at(kAll, kAll), 7);
}

TEST(CellAttribute, ACellComesBeforeItsColumnAndTheColumnBeforeTheSheet)
{
    CellAttribute<int> a(0);
    a.set(CellRange::column(2), kCols, kRows, 5);
    a.set(CellRange::cell(2, 3), kCols, kRows, 9);
    EXPECT_EQ(a.at(2, 3), 9);
    EXPECT_EQ(a.at(2, 4), 5);
    EXPECT_EQ(a.atColumn(2), 5);
    EXPECT_EQ(a.at(1, 3), 0);
}

TEST(CellAttribute, AColumnSetLaterReplacesItsCells)
{
    CellAttribute<int> a(0);
    a.set(CellRange::cell(2, 3), kCols, kRows, 9);
    a.set(CellRange::cell(1, 3), kCols, kRows, 8);
    a.set(CellRange::column(2), kCols, kRows, 5);
    EXPECT_EQ(a.at(2, 3), 5);
    EXPECT_EQ(a.at(1, 3), 8);
}

TEST(CellAttribute, EverythingSetLaterReplacesAll)
{
    CellAttribute<int> a(0);
    a.set(CellRange::column(2), kCols, kRows, 5);
    a.set(CellRange::cell(1, 1), kCols, kRows, 9);
    a.set(CellRange{1, 1, kAll, kAll}, kCols, kRows, 3);
    EXPECT_EQ(a.at(2, 2), 3);
    EXPECT_EQ(a.at(1, 1), 3);
}

TEST(CellAttribute, AColumnHoldsForRowsThatComeLater)
{
    CellAttribute<int> a(0);
    a.set(CellRange{2, 1, 3, kAll}, kCols, kRows, 5);
    EXPECT_EQ(a.at(3, 1000), 5);
    EXPECT_EQ(a.at(4, 1000), 0);
}

TEST(CellAttribute, ARowAndABlockAreSetCellByCell)
{
    CellAttribute<int> a(0);
    a.set(CellRange{kAll, 2, kAll, 2}, kCols, kRows, 5);
    EXPECT_EQ(a.at(1, 2), 5);
    EXPECT_EQ(a.at(4, 2), 5);
    EXPECT_EQ(a.at(1, 3), 0);
    a.set(CellRange{3, 5, 2, 4}, kCols, kRows, 6); // corners the other way round
    EXPECT_EQ(a.at(2, 4), 6);
    EXPECT_EQ(a.at(3, 5), 6);
    EXPECT_EQ(a.at(1, 4), 0);
}

TEST(CellAttribute, HeadersAndPlacesOutsideTakeNothing)
{
    CellAttribute<int> a(0);
    a.set(CellRange::cell(0, 1), kCols, kRows, 5);
    a.set(CellRange::cell(1, 0), kCols, kRows, 5);
    a.set(CellRange::cell(5, 7), kCols, kRows, 5);
    a.set(CellRange::column(5), kCols, kRows, 5);
    EXPECT_EQ(a.at(0, 1), 0);
    EXPECT_EQ(a.at(1, 0), 0);
    EXPECT_EQ(a.at(1, 1), 0);
    EXPECT_EQ(a.at(5, 7), 0);
}

TEST(CellAttribute, CutRowsForgetsWhatFellAway)
{
    CellAttribute<int> a(0);
    a.set(CellRange::cell(1, 6), kCols, kRows, 5);
    a.set(CellRange::cell(1, 2), kCols, kRows, 4);
    a.cutRows(5);
    EXPECT_EQ(a.at(1, 6), 0);
    EXPECT_EQ(a.at(1, 2), 4);
}

TEST(CellAttribute, MoveRowsTakesTheCellsAlong)
{
    CellAttribute<int> a(0);
    a.set(CellRange::cell(1, 1), kCols, kRows, 5);
    a.set(CellRange::cell(2, 2), kCols, kRows, 6);
    a.moveRows([](int row) { return 3 - row; });
    EXPECT_EQ(a.at(1, 2), 5);
    EXPECT_EQ(a.at(2, 1), 6);
    EXPECT_EQ(a.at(1, 1), 0);
}
