#include "output/lists/frmOversiktTest.h"

#include "order/OrdreFelter.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

// --- A row opens the order

TEST_F(FrmOversiktTest, ADoubleClickOpensTheOrderByItsId)
{
    legg({.nr = 301});
    const int id = legg({.nr = 302, .navn = u"'Nord AS'"_s});
    legg({.nr = 303});
    open();
    doubleClickRow(2);
    ASSERT_NE(skjerm(), nullptr);
    EXPECT_TRUE(skjerm()->isVisible());
    EXPECT_FALSE(skjerm()->isModal());
    EXPECT_EQ(skjerm()->InnID(), id);
    EXPECT_EQ(tekst(ordrefelt::kOrdreNr), u"302"_s);
    EXPECT_FALSE(OrdreSkjerm::control(u"cmdFirst"_s)->isVisible());
}

TEST_F(FrmOversiktTest, EnterOpensTheRowThatTypingHasFound)
{
    const int id = legg({.nr = 301, .navn = u"'Nord AS'"_s});
    legg({.nr = 302, .navn = u"'Berit'"_s});
    open();
    QTest::keyClicks(&grid(), u"nord"_s);
    EXPECT_EQ(grid().activeRow(), 2);
    QTest::keyClick(&grid(), Qt::Key_Return);
    ASSERT_NE(skjerm(), nullptr);
    EXPECT_EQ(skjerm()->InnID(), id);
    EXPECT_EQ(tekst(ordrefelt::kOrdreNr), u"301"_s);
}

TEST_F(FrmOversiktTest, TheRowHeaderOpensItsOrderToo)
{
    legg({.nr = 7});
    const int id = legg({.nr = 8});
    open();
    const QHeaderView *header = grid().verticalHeader();
    QTest::mouseDClick(header->viewport(), Qt::LeftButton, {},
                       QPoint(header->width() / 2, header->sectionSize(0) / 2));
    ASSERT_NE(skjerm(), nullptr);
    EXPECT_EQ(skjerm()->InnID(), id);
}

TEST_F(FrmOversiktTest, AnotherRowGoesToTheSameScreen)
{
    legg({.nr = 301});
    legg({.nr = 302});
    open();
    doubleClickRow(1, kBelop);
    const frmOrdre *first = skjerm();
    EXPECT_EQ(tekst(ordrefelt::kOrdreNr), u"302"_s);
    open();
    doubleClickRow(2, kNr);
    EXPECT_EQ(skjerm(), first);
    EXPECT_EQ(tekst(ordrefelt::kOrdreNr), u"301"_s);
}

TEST_F(FrmOversiktTest, TheSortedRowOpensItsOwnOrder)
{
    const int low = legg({.nr = 301, .navn = u"'Øst'"_s});
    legg({.nr = 302, .navn = u"'Berit'"_s});
    open();
    doubleClickHeader(kNavn);
    doubleClickRow(2);
    EXPECT_EQ(skjerm()->InnID(), low);
}

TEST_F(FrmOversiktTest, AnOrderDeletedMeanwhileOpensABlankScreen)
{
    const int gone = legg({.nr = 301});
    legg({.nr = 300});
    open();
    run(u"DELETE FROM Ordre WHERE ID=%1"_s.arg(gone));
    doubleClickRow(1);
    ASSERT_NE(skjerm(), nullptr);
    EXPECT_EQ(skjerm()->InnID(), gone);
    EXPECT_EQ(tekst(ordrefelt::kOrdreNr), QString());
    EXPECT_EQ(numbers(), QStringList({u"301"_s, u"300"_s})) << "the list does not follow";
}

TEST_F(FrmOversiktTest, ARowWithoutAnOrderOpensTheScreenForAll)
{
    legg({.nr = 301});
    open();
    doubleClickRow(4);
    ASSERT_NE(skjerm(), nullptr);
    EXPECT_EQ(skjerm()->InnID(), 0);
    EXPECT_EQ(tekst(ordrefelt::kOrdreNr), u"301"_s);
    EXPECT_TRUE(OrdreSkjerm::control(u"cmdFirst"_s)->isVisible());
}

// --- Sorting

TEST_F(FrmOversiktTest, AHeaderSortsRisingThenFallingThenRising)
{
    for (const auto &[nr, navn] : {std::pair(1, u"'Åse'"_s), std::pair(2, u"'Berit'"_s),
                                   std::pair(3, u"'anne'"_s), std::pair(4, u"'Ærlend'"_s)})
        legg({.nr = nr, .navn = navn});
    open();
    const QStringList rising{u"anne"_s, u"Berit"_s, u"Ærlend"_s, u"Åse"_s};
    const QStringList falling{u"Åse"_s, u"Ærlend"_s, u"Berit"_s, u"anne"_s};
    doubleClickHeader(kNavn);
    EXPECT_EQ(column(kNavn), rising);
    EXPECT_EQ(numbers(), QStringList({u"3"_s, u"2"_s, u"4"_s, u"1"_s})) << "whole rows";
    doubleClickHeader(kNavn);
    EXPECT_EQ(column(kNavn), falling);
    doubleClickHeader(kNavn);
    EXPECT_EQ(column(kNavn), rising);
    doubleClickHeader(kNavn);
    EXPECT_EQ(column(kNavn), falling);
}

TEST_F(FrmOversiktTest, CtrlEnterSortsByTheActiveColumn)
{
    for (const auto &[nr, navn] : {std::pair(1, u"'Åse'"_s), std::pair(2, u"'Berit'"_s)})
        legg({.nr = nr, .navn = navn});
    open();
    QTest::keyClick(&grid(), Qt::Key_Right);
    QTest::keyClick(&grid(), Qt::Key_Right);
    const QHeaderView &header = *grid().horizontalHeader();
    EXPECT_FALSE(header.isSortIndicatorShown());
    QTest::keyClick(&grid(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(column(kNavn), QStringList({u"Berit"_s, u"Åse"_s}));
    EXPECT_TRUE(header.isSortIndicatorShown());
    EXPECT_EQ(header.sortIndicatorSection() + 1, kNavn);
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
    QTest::keyClick(&grid(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(column(kNavn), QStringList({u"Åse"_s, u"Berit"_s}));
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
    QTest::keyClick(&grid(), Qt::Key_F5);
    EXPECT_FALSE(header.isSortIndicatorShown()) << "the list is in its own order again";
}

TEST_F(FrmOversiktTest, AnotherHeaderBeginsRising)
{
    legg({.nr = 1, .navn = u"'B'"_s});
    legg({.nr = 2, .navn = u"'A'"_s});
    open();
    doubleClickHeader(kNavn);
    doubleClickHeader(kNr);
    EXPECT_EQ(numbers(), QStringList({u"1"_s, u"2"_s}));
    doubleClickHeader(kNavn);
    EXPECT_EQ(column(kNavn), QStringList({u"A"_s, u"B"_s}))
        << "rising before, but not the column sorted last";
}

TEST_F(FrmOversiktTest, RefreshGoesBackToFallingNumbersAndForgetsTheSorting)
{
    legg({.nr = 1});
    legg({.nr = 2});
    open();
    doubleClickHeader(kNr);
    EXPECT_EQ(numbers(), QStringList({u"1"_s, u"2"_s}));
    legg({.nr = 3});
    EXPECT_EQ(grid().dataRowCnt(), 2);
    press(u"btnRefresh"_s);
    EXPECT_EQ(numbers(), QStringList({u"3"_s, u"2"_s, u"1"_s}));
    doubleClickHeader(kNr);
    EXPECT_EQ(numbers(), QStringList({u"1"_s, u"2"_s, u"3"_s}));
}

TEST_F(FrmOversiktTest, NumbersAmountsAndDatesAreSortedAsTheTextsThatTheyAre)
{
    legg({.nr = 9, .forfall = u"#12/01/2013#"_s, .brutto = u"-20"_s});
    legg({.nr = 10, .forfall = u"#02/05/2014#"_s, .brutto = u"1000"_s});
    legg({.nr = 100, .forfall = u"#01/31/2014#"_s, .brutto = u"200"_s});
    open();
    doubleClickHeader(kForfall);
    EXPECT_EQ(column(kForfall), QStringList({u"01.12.2013"_s, u"05.02.2014"_s, u"31.01.2014"_s}));
    doubleClickHeader(kNr);
    EXPECT_EQ(numbers(), QStringList({u"10"_s, u"100"_s, u"9"_s}));
    doubleClickHeader(kBelop);
    EXPECT_EQ(column(kBelop), QStringList({u" 200,00"_s, u"- 20,00"_s, u"1 000,00"_s}));
}

TEST_F(FrmOversiktTest, EqualCellsKeepTheirOrder)
{
    leggMange(12);
    open();
    const QStringList before = numbers();
    for (int time = 1; time <= 3; ++time) {
        doubleClickHeader(kStatus);
        EXPECT_EQ(numbers(), before) << time;
    }
}

TEST_F(FrmOversiktTest, AnEmptyListCanBeSorted)
{
    open();
    doubleClickHeader(kNr);
    doubleClickHeader(kNr);
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_EQ(meldinger.ta(), QStringList());
}

TEST_F(FrmOversiktTest, ASingleClickOnAHeaderSortsNothing)
{
    leggMange(2);
    open();
    QHeaderView *header = grid().horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(10, header->height() / 2));
    runEvents();
    EXPECT_EQ(numbers(), QStringList({u"2"_s, u"1"_s}));
}
