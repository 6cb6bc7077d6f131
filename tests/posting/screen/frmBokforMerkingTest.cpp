#include "posting/screen/frmBokforTest.h"
#include "support/Caption.h"

// --- Marking

TEST_F(FrmBokforTest, MarkingByMouseEnablesTheTransfer)
{
    enterMany(3);
    open();
    EXPECT_FALSE(canTransfer());
    clickCell(kBokfor, 2);
    EXPECT_EQ(at(kBokfor, 2), u"1"_s);
    EXPECT_TRUE(canTransfer());
    clickCell(kBokfor, 3);
    clickCell(kBokfor, 2);
    EXPECT_TRUE(canTransfer());
    clickCell(kBokfor, 3);
    EXPECT_FALSE(canTransfer());
}

TEST_F(FrmBokforTest, MarkingByKeyboard)
{
    enterMany(2);
    open();
    clickCell(kBelop, 2);
    QTest::keyClick(&grid(), Qt::Key_Right);
    QTest::keyClick(&grid(), Qt::Key_Space);
    EXPECT_EQ(at(kBokfor, 2), u"1"_s);
    EXPECT_TRUE(canTransfer());
    QTest::keyClick(&grid(), Qt::Key_Space);
    EXPECT_FALSE(canTransfer());
}

TEST_F(FrmBokforTest, AMarkOnARowWithoutInvoiceCountsForNothing)
{
    enterMany(1);
    open();
    clickCell(kBokfor, 5);
    EXPECT_EQ(at(kBokfor, 5), u"1"_s);
    EXPECT_FALSE(canTransfer());
}

TEST_F(FrmBokforTest, MarkAllMarksTheInvoicesAndLeavesTheButton)
{
    enterMany(2);
    open();
    auto &check = control<QCheckBox>(u"Check1"_s);
    press(u"Check1"_s);
    EXPECT_EQ(captionOf(check), u"Fjern merking"_s);
    EXPECT_EQ(check.visibleRegion().boundingRect(), check.rect());
    EXPECT_GE(check.width(), check.sizeHint().width());
    EXPECT_EQ(at(kBokfor, 1) + at(kBokfor, 2) + at(kBokfor, 3), u"11"_s);
    EXPECT_FALSE(canTransfer());

    clickCell(kBokfor, 1); // off
    EXPECT_TRUE(canTransfer());
    press(u"Check1"_s);
    EXPECT_EQ(captionOf(check), u"Merk alle"_s);
    EXPECT_EQ(at(kBokfor, 1) + at(kBokfor, 2), u"00"_s);
    EXPECT_TRUE(canTransfer());

    clickCell(kBokfor, 1); // on
    clickCell(kBokfor, 1); // off
    EXPECT_FALSE(canTransfer());
}

TEST_F(FrmBokforTest, MarkAllPassesByRowsWhoseNumberIsNotAboveZero)
{
    enter({.nr = 0, .linjer = {}});
    enter({.nr = -3, .linjer = {}});
    enterMany(1);
    open();
    press(u"Check1"_s);
    EXPECT_EQ(at(kBokfor, 1) + u'|' + at(kBokfor, 2) + u'|' + at(kBokfor, 3), u"||1"_s);
}

TEST_F(FrmBokforTest, OnlyAClickTurnsAMarkOver)
{
    enterMany(2);
    open();
    clickCell(kBokfor, 1);
    for (const int key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_0, Qt::Key_X, Qt::Key_F2})
        QTest::keyClick(&grid(), Qt::Key(key));
    for (const int key : {Qt::Key_V, Qt::Key_X})
        QTest::keyClick(&grid(), Qt::Key(key), Qt::ControlModifier);
    QTest::keyClick(&grid(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    EXPECT_EQ(at(kBokfor, 1), u"1"_s);
    EXPECT_EQ(at(kBokfor, 2), QString());
    EXPECT_TRUE(canTransfer());
    EXPECT_EQ(grid().dataRowCnt(), 2);
}

TEST_F(FrmBokforTest, ADoubleClickIsTwoClicks)
{
    enterMany(1);
    open();
    doubleClickCell(kBokfor, 1);
    EXPECT_EQ(at(kBokfor, 1), u"1"_s);
    EXPECT_TRUE(canTransfer());
}
