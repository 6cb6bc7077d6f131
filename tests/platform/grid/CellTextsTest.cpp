#include "platform/grid/CellTexts.h"

#include <QString>
#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace {

CellTexts texts(int columns, int rows)
{
    CellTexts t;
    t.resize(columns, rows);
    return t;
}

} // namespace

TEST(CellTexts, NewCellsAreEmpty)
{
    const CellTexts t = texts(3, 2);
    EXPECT_TRUE(t.at(2, 1).isEmpty());
    EXPECT_EQ(t.dataRows(), 0);
    EXPECT_TRUE(t.isEmptyRow(0));
}

TEST(CellTexts, KeepsWhatIsSet)
{
    CellTexts t = texts(2, 2);
    t.set(0, 0, u"Bjørn");
    t.set(1, 1, u"Ås");
    EXPECT_EQ(t.at(0, 0), u"Bjørn");
    EXPECT_EQ(t.at(1, 1), u"Ås");
    EXPECT_TRUE(t.at(1, 0).isEmpty());
}

TEST(CellTexts, ReplacesByShorterAndLongerText)
{
    CellTexts t = texts(2, 1);
    t.set(0, 0, u"12345");
    t.set(1, 0, u"nabo");
    t.set(0, 0, u"12");
    EXPECT_EQ(t.at(0, 0), u"12");
    t.set(0, 0, u"en lengre tekst");
    EXPECT_EQ(t.at(0, 0), u"en lengre tekst");
    EXPECT_EQ(t.at(1, 0), u"nabo");
}

TEST(CellTexts, DataRowsIsTheLastRowWithText)
{
    CellTexts t = texts(2, 10);
    t.set(0, 2, u"a");
    t.set(1, 6, u"b");
    EXPECT_EQ(t.dataRows(), 7);
    t.set(1, 6, u"");
    EXPECT_EQ(t.dataRows(), 3);
    t.set(0, 2, u"");
    EXPECT_EQ(t.dataRows(), 0);
}

TEST(CellTexts, ClearEmptiesTheBlockOnly)
{
    CellTexts t = texts(3, 3);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            t.set(column, row, u"x");
    }
    t.clear(1, 1, 2, 2);
    EXPECT_EQ(t.at(0, 2), u"x");
    EXPECT_EQ(t.at(2, 0), u"x");
    EXPECT_TRUE(t.at(1, 1).isEmpty());
    EXPECT_TRUE(t.at(2, 2).isEmpty());
    EXPECT_EQ(t.dataRows(), 3);
}

TEST(CellTexts, AnotherSizeKeepsTheCellsThatRemain)
{
    CellTexts t = texts(2, 3);
    t.set(0, 0, u"a");
    t.set(1, 0, u"b");
    t.set(0, 2, u"c");
    t.resize(4, 5);
    EXPECT_EQ(t.at(1, 0), u"b");
    EXPECT_EQ(t.at(0, 2), u"c");
    EXPECT_TRUE(t.at(3, 4).isEmpty());
    t.resize(1, 2);
    EXPECT_EQ(t.at(0, 0), u"a");
    EXPECT_EQ(t.dataRows(), 1);
    t.resize(1, 5);
    EXPECT_TRUE(t.at(0, 2).isEmpty());
}

TEST(CellTexts, ReorderMovesWholeRows)
{
    CellTexts t = texts(2, 4);
    for (int row = 0; row < 4; ++row) {
        t.set(0, row, QString::number(row));
        t.set(1, row, u"rad %1"_s.arg(row));
    }
    t.reorder(1, {3, 1, 2});
    EXPECT_EQ(t.at(0, 0), u"0");
    EXPECT_EQ(t.at(1, 1), u"rad 3");
    EXPECT_EQ(t.at(1, 2), u"rad 1");
    EXPECT_EQ(t.at(1, 3), u"rad 2");
}

TEST(CellTexts, TakesATextLongerThanAPieceOfMemory)
{
    CellTexts t = texts(1, 3);
    const QString lengthy(200000, u'ø');
    t.set(0, 0, u"foran");
    t.set(0, 1, lengthy);
    t.set(0, 2, u"bak");
    EXPECT_EQ(t.at(0, 0), u"foran");
    EXPECT_EQ(t.at(0, 1), lengthy);
    EXPECT_EQ(t.at(0, 2), u"bak");
}

TEST(CellTexts, ManyReplacementsDoNotGrowTheStoreWithoutEnd)
{
    CellTexts t = texts(1, 2);
    t.set(0, 1, u"blir");
    for (int i = 0; i < 20000; ++i) {
        t.set(0, 0, u"");
        t.set(0, 0, u"en tekst av femti tegn, som skrives om og om igjen");
    }
    EXPECT_LT(t.storedUnits(), 200000u);
    EXPECT_EQ(t.at(0, 1), u"blir");
    EXPECT_EQ(t.at(0, 0), u"en tekst av femti tegn, som skrives om og om igjen");
}

TEST(CellTexts, DropsItsMemoryWhenAllIsCleared)
{
    CellTexts t = texts(1, 100);
    for (int row = 0; row < 100; ++row)
        t.set(0, row, u"tekst");
    t.clear(0, 0, 0, 99);
    EXPECT_EQ(t.storedUnits(), 0u);
}

TEST(CellTexts, AgreesWithPlainStringsUnderRandomChanges)
{
    std::mt19937 random(20141231);
    CellTexts t = texts(4, 30);
    std::vector<QString> plain(4 * 30);
    const auto number = [&](int below) { return int(random() % unsigned(below)); };
    for (int step = 0; step < 30000; ++step) {
        const int column = number(4);
        const int row = number(30);
        if (number(50) == 0) {
            t.clear(column, row, 3, 29);
            for (int r = row; r < 30; ++r) {
                for (int c = column; c < 4; ++c)
                    plain[size_t(r * 4 + c)].clear();
            }
        }
        const QString text(number(60), QChar(u'a' + number(26)));
        t.set(column, row, text);
        plain[size_t(row * 4 + column)] = text;
        if (step % 500 != 0)
            continue;
        int last = 0;
        for (int r = 0; r < 30; ++r) {
            for (int c = 0; c < 4; ++c) {
                ASSERT_EQ(t.at(c, r), plain[size_t(r * 4 + c)]);
                last = plain[size_t(r * 4 + c)].isEmpty() ? last : r + 1;
            }
        }
        ASSERT_EQ(t.dataRows(), last);
    }
}
