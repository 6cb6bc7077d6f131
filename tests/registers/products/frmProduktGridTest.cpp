#include "registers/products/ProduktFixture.h"

#include <QHeaderView>

// Editing in the product grid, which is for the eye alone.

namespace {

class FrmProduktGridTest : public ProduktFixture
{
protected:
    void SetUp() override
    {
        addThreeProducts();
        open();
    }
    static CellType typeAt(int col, int row)
    {
        grid().setCurrent(col, row);
        return grid().cellType();
    }
    static void typeInCell(int col, int row, const QString &text)
    {
        clickCell(col, row);
        for (const QChar c : text)
            QTest::keyClick(screen()->focusWidget(), c.toLatin1());
    }
    static QString changed(int row) { return at(10, row); }
};

const QString kGroups = u"SELECT DISTINCT Gruppe FROM Produkt ORDER BY Gruppe ASC"_s;

TEST_F(FrmProduktGridTest, EnteringTheRateMakesTheCellAListOfTheRates)
{
    clickCell(6, 2);
    EXPECT_EQ(typeAt(7, 2).kind, CellKind::Edit);
    key(Qt::Key_Right);
    EXPECT_EQ(typeAt(7, 2).kind, CellKind::ComboBox);
    EXPECT_EQ(typeAt(7, 2).items, u"0\t10\t15\t25"_s);
    EXPECT_FALSE(typeAt(7, 2).editable);
}

TEST_F(FrmProduktGridTest, LeavingTheRateMakesTheCellATextAgain)
{
    clickCell(6, 2);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(typeAt(7, 2).kind, CellKind::Edit);
    EXPECT_EQ(at(7, 2), u"25,0"_s) << "nothing was chosen";
}

TEST_F(FrmProduktGridTest, EnteringTheRateFromAnotherRowMakesTheListInTheRowLeft)
{
    clickCell(1, 3);
    clickCell(7, 1);
    EXPECT_EQ(typeAt(7, 3).kind, CellKind::ComboBox);
    EXPECT_EQ(typeAt(7, 1).kind, CellKind::Edit);
}

TEST_F(FrmProduktGridTest, MovingDownTheRatesLeavesThemTexts)
{
    clickCell(1, 5);
    clickCell(7, 1);
    key(Qt::Key_Down);
    EXPECT_EQ(typeAt(7, 1).kind, CellKind::Edit);
    EXPECT_EQ(typeAt(7, 2).kind, CellKind::Edit);
}

TEST_F(FrmProduktGridTest, AnEditIsTakenBackBeyondTheMarksOfRowsThatWereOnlyPassed)
{
    const QString before = at(1, 1);
    typeInCell(1, 1, u"X"_s);
    key(Qt::Key_Tab);
    ASSERT_NE(at(1, 1), before);
    for (int step = 0; step < 3; ++step)
        key(Qt::Key_Down);
    EXPECT_EQ(changed(2), u"1"_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(at(1, 1), before);
    EXPECT_EQ(grid().activeCol(), 1);
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_NE(at(1, 1), before);
    EXPECT_EQ(changed(1), u"1"_s);
}

TEST_F(FrmProduktGridTest, TheListFilledAnewLeavesNothingToTakeBack)
{
    const QString before = at(1, 1);
    typeInCell(1, 1, u"X"_s);
    key(Qt::Key_Tab);
    clickTab(2);
    clickTab(1);
    EXPECT_EQ(at(1, 1), before);
    grid().setFocus();
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(at(1, 1), before);
    EXPECT_EQ(changed(1), QString());
}

TEST_F(FrmProduktGridTest, EnteringTheGroupAsksForAColumnThatIsNotThere)
{
    grid().setColHidden(3, false);
    clickCell(2, 2);
    const SessionTap tap;
    key(Qt::Key_Right);
    EXPECT_EQ(tap.statements().value(0), kGroups);
    EXPECT_EQ(typeAt(7, 2).kind, CellKind::Edit);
    EXPECT_EQ(typeAt(3, 2).kind, CellKind::Edit);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(FrmProduktGridTest, WithSuchAColumnTheFirstGroupBecomesTheListOfTheRate)
{
    run(u"ALTER TABLE Produkt ADD COLUMN Gruppe TEXT(10) NULL"_s);
    run(u"UPDATE Produkt SET Gruppe='Øl' WHERE ID=1"_s);
    run(u"UPDATE Produkt SET Gruppe='Brus' WHERE ID>1"_s);
    grid().setColHidden(3, false);
    clickCell(2, 2);
    key(Qt::Key_Right);
    EXPECT_EQ(typeAt(7, 2).kind, CellKind::ComboBox);
    EXPECT_EQ(typeAt(7, 2).items, u"Brus"_s);
    EXPECT_FALSE(typeAt(7, 2).editable);
    EXPECT_EQ(typeAt(3, 2).kind, CellKind::Edit);

    key(Qt::Key_Left);
    EXPECT_EQ(typeAt(7, 2).kind, CellKind::Edit) << "leaving the group ends it";
}

TEST_F(FrmProduktGridTest, AnEmptyGroupMakesNoList)
{
    run(u"ALTER TABLE Produkt ADD COLUMN Gruppe TEXT(10) NULL"_s);
    grid().setColHidden(3, false);
    clickCell(2, 2);
    key(Qt::Key_Right);
    EXPECT_EQ(typeAt(7, 2).kind, CellKind::Edit) << "a Null first group";
    run(u"UPDATE Produkt SET Gruppe=''"_s);
    key(Qt::Key_Left);
    key(Qt::Key_Right);
    EXPECT_EQ(typeAt(7, 2).kind, CellKind::Edit) << "an empty first group";
}

TEST_F(FrmProduktGridTest, ChangedComparesTheCellLeftWithTheCellEntered)
{
    clickCell(1, 1);
    EXPECT_EQ(changed(1), QString()) << "the cell itself was the active one";
    key(Qt::Key_Right);
    EXPECT_EQ(changed(1), u"1"_s) << "two texts that differ, though nothing was typed";
    EXPECT_EQ(changed(2), QString());
}

TEST_F(FrmProduktGridTest, ChangedIsNotSetBetweenCellsOfTheSameText)
{
    clickCell(4, 2); // from (1, 1) to the unit
    ASSERT_EQ(changed(1), u"1"_s);
    key(Qt::Key_Down); // "stk" to "stk"
    EXPECT_EQ(changed(2), QString());
}

TEST_F(FrmProduktGridTest, ATypedTextCountsAsTheTextOfTheCellLeft)
{
    clickCell(4, 2);
    grid().setEditModeReplace(true);
    typeInCell(4, 2, u"par"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(at(4, 2), u"par"_s);
    EXPECT_EQ(changed(2), u"1"_s);
}

TEST_F(FrmProduktGridTest, NothingOfTheGridReachesTheDatabase)
{
    const QStringList before = products();
    const SessionTap tap;
    grid().setEditModeReplace(true);
    typeInCell(2, 1, u"Gullolje"_s);
    key(Qt::Key_Return);
    typeInCell(6, 1, u"999"_s);
    key(Qt::Key_Tab);
    clickCell(8, 1);
    EXPECT_EQ(at(2, 1), u"Gullolje"_s);
    EXPECT_EQ(at(6, 1), u"999,00"_s);
    EXPECT_EQ(at(8, 1), u"1"_s);
    for (const QString &statement : tap.statements())
        EXPECT_TRUE(statement.startsWith(u"SELECT * FROM Produkt"_s)) << statement.toStdString();
    EXPECT_EQ(products(), before);

    clickTab(1);
    EXPECT_EQ(rowTexts(1, 1, 10),
              QStringList({u"A1"_s, u"Olje"_s, u"Diverse"_s, u"stk"_s, u"10,00"_s, u" 20,00"_s,
                           u"25,0"_s, u"0"_s, u"1"_s, QString()}))
        << "gone with the next read";
}

TEST_F(FrmProduktGridTest, AnEditedNameDoesNotReachTheDetails)
{
    grid().setEditModeReplace(true);
    typeInCell(2, 1, u"Gullolje"_s);
    key(Qt::Key_Return);
    doubleClickCell(2, 1);
    EXPECT_EQ(field(1).text(), u"Olje"_s);
}

TEST_F(FrmProduktGridTest, ClosesInTheMiddleOfAnEdit)
{
    typeInCell(2, 1, u"x"_s);
    ASSERT_TRUE(grid().editMode());
    QTest::keyClick(screen()->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(screen(), nullptr);
    runEvents();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(FrmProduktGridTest, TurnsToTheDetailsInTheMiddleOfAnEdit)
{
    typeInCell(2, 1, u"x"_s);
    ASSERT_TRUE(grid().editMode());
    clickTab(2);
    EXPECT_EQ(field(1).text(), u"Olje"_s);
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avslutt"_s);
}

TEST_F(FrmProduktGridTest, EnterOpensTheProductThatIsFound)
{
    addThreeProducts();
    open();
    key(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(&grid(), u"filt"_s);
    settle();
    EXPECT_EQ(grid().activeRow(), 2);
    key(Qt::Key_Return);
    EXPECT_EQ(selectedTab(), 2);
    EXPECT_EQ(field(0).text(), u"B2"_s);
    EXPECT_TRUE(control<QPushButton>(u"btnChange"_s).isEnabled());
}

TEST_F(FrmProduktGridTest, AHeaderSortsByMouseAndByKey)
{
    addThreeProducts();
    open();
    const QHeaderView &header = *grid().horizontalHeader();
    QTest::mouseDClick(header.viewport(), Qt::LeftButton, {},
                       QPoint(header.sectionViewportPosition(1) + 20, header.height() / 2));
    EXPECT_EQ(at(2, 1), u"Filter"_s);
    EXPECT_EQ(at(9, 1), u"2"_s) << "whole rows";
    EXPECT_EQ(header.sortIndicatorSection(), 1);
    clickCell(2, 1);
    key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(at(2, 1), u"Pære"_s);
    EXPECT_EQ(selectedTab(), 1);
    clickTab(2);
    EXPECT_EQ(field(0).text(), u"C3"_s) << "the row that is marked now";
    clickTab(1);
    EXPECT_EQ(at(2, 1), u"Olje"_s) << "in the order of the numbers again";
    EXPECT_FALSE(header.isSortIndicatorShown());
}

} // namespace
