#include "platform/grid/Sheet.h"

#include "runtime/Support.h"

using namespace Qt::StringLiterals;

namespace {

class SheetTest : public ::testing::Test
{
protected:
    SheetTest()
    {
        sheet.setMaxCols(3);
        sheet.setMaxRows(10);
    }

    void column(int col, const QStringList &texts)
    {
        for (int i = 0; i < int(texts.size()); ++i)
            sheet.setText(col, i + 1, texts[i]);
    }
    QStringList column(int col, int rows) const
    {
        QStringList texts;
        for (int row = 1; row <= rows; ++row)
            texts << sheet.text(col, row);
        return texts;
    }
    void setType(int col, int number)
    {
        sheet.setType(CellRange::column(col), CellType::ofNumber(number));
    }

    Sheet sheet;
};

} // namespace

TEST_F(SheetTest, KeepsHeadersApartFromCells)
{
    sheet.setText(1, 0, u"Navn");
    sheet.setText(0, 2, u"Sum");
    EXPECT_EQ(sheet.text(1, 0), u"Navn");
    EXPECT_EQ(sheet.text(0, 2), u"Sum");
    EXPECT_EQ(sheet.dataRowCount(), 0);
    sheet.clearTexts(CellRange::everything());
    EXPECT_EQ(sheet.text(1, 0), u"Navn");
}

TEST_F(SheetTest, PlacesOutsideReadAsEmptyAndTakeNothing)
{
    sheet.setText(4, 1, u"x");
    sheet.setText(1, 11, u"x");
    sheet.setText(-1, 1, u"x");
    sheet.setText(1, -1, u"x");
    sheet.setText(4, 0, u"x");
    EXPECT_EQ(sheet.text(4, 1), QString());
    EXPECT_EQ(sheet.text(1, 11), QString());
    EXPECT_EQ(sheet.text(-1, -1), QString());
    EXPECT_EQ(sheet.text(4, 0), QString());
    EXPECT_EQ(sheet.dataRowCount(), 0);
    sheet.setMaxRows(20);
    EXPECT_EQ(sheet.text(1, 11), QString());
}

TEST_F(SheetTest, ClearsABlock)
{
    column(1, {u"a"_s, u"b"_s, u"c"_s});
    column(2, {u"d"_s, u"e"_s, u"f"_s});
    sheet.clearTexts(CellRange{2, 2, kAll, kAll});
    EXPECT_EQ(column(1, 3), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    EXPECT_EQ(column(2, 3), (QStringList{u"d"_s, QString(), QString()}));
}

TEST_F(SheetTest, ClearingAnEmptySheetIsHarmless)
{
    sheet.setMaxRows(0);
    sheet.clearTexts(CellRange::everything());
    EXPECT_EQ(sheet.dataRowCount(), 0);
}

TEST_F(SheetTest, NegativeSizesAreErrors)
{
    EXPECT_EQ(errorOf([&] { sheet.setMaxRows(-1); }), errors::kInvalidCall);
    EXPECT_EQ(errorOf([&] { sheet.setMaxCols(-1); }), errors::kInvalidCall);
    EXPECT_EQ(sheet.maxRows(), 10);
}

TEST_F(SheetTest, RowsThatFallAwayLoseTheirAttributes)
{
    sheet.setBackColor(CellRange::cell(1, 8), kWhite);
    sheet.setForeColor(CellRange::cell(1, 8), kWhite);
    sheet.setLocked(CellRange::cell(1, 8), true);
    sheet.setAlign(CellRange::cell(1, 8), CellAlign::Right);
    sheet.setType(CellRange::cell(1, 8), CellType::ofNumber(10));
    const Sheet untouched;
    sheet.setMaxRows(5);
    sheet.setMaxRows(10);
    EXPECT_EQ(sheet.backColor(1, 8), kWindowBackground);
    EXPECT_EQ(sheet.foreColor(1, 8), untouched.foreColor(1, 8));
    EXPECT_FALSE(sheet.isLocked(1, 8));
    EXPECT_EQ(sheet.align(1, 8), untouched.align(1, 8));
    EXPECT_EQ(sheet.type(1, 8).kind, untouched.type(1, 8).kind);
}

TEST_F(SheetTest, SortsTextAsNorwegianWithoutRegardToCase)
{
    column(1, {u"Ås"_s, u"ødegård"_s, u"Zimmer"_s, u"Ærlig"_s, u"anders"_s, u"Bjørn"_s});
    sheet.sortRows(1, 10, 1, true);
    EXPECT_EQ(column(1, 6), (QStringList{u"anders"_s, u"Bjørn"_s, u"Zimmer"_s, u"Ærlig"_s,
                                         u"ødegård"_s, u"Ås"_s}));
}

TEST_F(SheetTest, FallingIsTheOtherWayRound)
{
    column(1, {u"b"_s, u"c"_s, u"a"_s});
    sheet.sortRows(1, 10, 1, false);
    EXPECT_EQ(column(1, 3), (QStringList{u"c"_s, u"b"_s, u"a"_s}));
}

TEST_F(SheetTest, WholeRowsMove)
{
    column(1, {u"b"_s, u"a"_s});
    column(3, {u"2"_s, u"1"_s});
    sheet.sortRows(1, 10, 1, true);
    EXPECT_EQ(column(3, 2), (QStringList{u"1"_s, u"2"_s}));
}

TEST_F(SheetTest, SortsAColumnWithoutATypeAsTheTextItHolds)
{
    column(1, {u"100"_s, u"9"_s, u"20"_s});
    sheet.sortRows(1, 10, 1, true);
    EXPECT_EQ(column(1, 3), (QStringList{u"100"_s, u"20"_s, u"9"_s}));
}

TEST_F(SheetTest, SortsANumberColumnByValue)
{
    setType(1, 2);
    column(1, {machineForm(u"1 000,00"_s), machineForm(u" 9,50"_s), machineForm(u"-20,00"_s),
               u"abc"_s, machineForm(u" 20,00"_s)});
    sheet.sortRows(1, 10, 1, true);
    EXPECT_EQ(column(1, 5),
              (QStringList{u"abc"_s, machineForm(u"-20,00"_s), machineForm(u" 9,50"_s),
                           machineForm(u" 20,00"_s), machineForm(u"1 000,00"_s)}));
}

TEST_F(SheetTest, SortsADateColumnByDay)
{
    const ScopedLocale norwegian(commaLocale());
    setType(1, 0);
    column(1, {u"01.12.2014"_s, u"31.01.2015"_s, u"15.06.2014"_s});
    sheet.sortRows(1, 10, 1, true);
    EXPECT_EQ(column(1, 3), (QStringList{u"15.06.2014"_s, u"01.12.2014"_s, u"31.01.2015"_s}));
}

TEST_F(SheetTest, EqualRowsKeepTheirOrderInBothDirections)
{
    column(1, {u"x"_s, u"X"_s, u"a"_s, u"x"_s});
    column(2, {u"1"_s, u"2"_s, u"3"_s, u"4"_s});
    sheet.sortRows(1, 10, 1, true);
    EXPECT_EQ(column(2, 4), (QStringList{u"3"_s, u"1"_s, u"2"_s, u"4"_s}));
    sheet.sortRows(1, 10, 1, false);
    EXPECT_EQ(column(2, 4), (QStringList{u"1"_s, u"2"_s, u"4"_s, u"3"_s}));
}

TEST_F(SheetTest, EmptyRowsComeLastInBothDirections)
{
    column(1, {u"b"_s, QString(), u"a"_s, QString()});
    column(2, {u"1"_s, QString(), u"2"_s, u"3"_s});
    sheet.sortRows(1, 10, 1, true);
    EXPECT_EQ(column(2, 4), (QStringList{u"3"_s, u"2"_s, u"1"_s, QString()}));
    EXPECT_EQ(sheet.dataRowCount(), 3);
    sheet.sortRows(1, 10, 1, false);
    EXPECT_EQ(column(2, 4), (QStringList{u"1"_s, u"2"_s, u"3"_s, QString()}));
}

TEST_F(SheetTest, SortsOnlyTheRowsAskedFor)
{
    column(1, {u"d"_s, u"c"_s, u"b"_s, u"a"_s});
    sheet.sortRows(2, 3, 1, true);
    EXPECT_EQ(column(1, 4), (QStringList{u"d"_s, u"b"_s, u"c"_s, u"a"_s}));
}

TEST_F(SheetTest, WhatACellHasOfItsOwnFollowsItsRow)
{
    column(1, {u"b"_s, u"a"_s});
    sheet.setBackColor(CellRange::cell(1, 1), kWhite);
    sheet.setForeColor(CellRange::cell(1, 1), 0x0000FF);
    sheet.setAlign(CellRange::cell(1, 1), CellAlign::Right);
    sheet.setType(CellRange::cell(1, 1), CellType::ofNumber(10));
    sheet.setLocked(CellRange::cell(2, 2), true);
    sheet.sortRows(1, 10, 1, true);
    EXPECT_EQ(sheet.backColor(1, 2), kWhite);
    EXPECT_EQ(sheet.backColor(1, 1), kWindowBackground);
    EXPECT_EQ(sheet.foreColor(1, 2), 0x0000FFu);
    EXPECT_NE(sheet.foreColor(1, 1), 0x0000FFu);
    EXPECT_EQ(sheet.align(1, 2), CellAlign::Right);
    EXPECT_NE(sheet.align(1, 1), CellAlign::Right);
    EXPECT_EQ(sheet.type(1, 2).kind, CellKind::CheckBox);
    EXPECT_NE(sheet.type(1, 1).kind, CellKind::CheckBox);
    EXPECT_TRUE(sheet.isLocked(2, 1));
    EXPECT_FALSE(sheet.isLocked(2, 2));
}

TEST_F(SheetTest, SortingByAColumnThatIsNotThereIsAnError)
{
    EXPECT_EQ(errorOf([&] { sheet.sortRows(1, 10, 0, true); }), errors::kInvalidCall);
    EXPECT_EQ(errorOf([&] { sheet.sortRows(1, 10, 4, true); }), errors::kInvalidCall);
}

TEST_F(SheetTest, SortingAnEmptySheetIsHarmless)
{
    sheet.sortRows(1, 10, 1, true);
    EXPECT_EQ(sheet.dataRowCount(), 0);
}
