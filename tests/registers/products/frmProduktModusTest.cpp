#include "platform/forms/Twips.h"
#include "registers/products/ProduktFixture.h"

#include <QHeaderView>

// The register's two pages, and the modes of its details.

namespace {

using FrmProduktModusTest = ProduktFixture;

const QString kListLabel =
    u"Oversikt over produkter, dobbeltklikk eller merk og klikk på Detaljer for å redigere."_s;
const QString kDetailsLabel =
    u"Produkt detaljer, klikk på Ny for å legge inn ny post eller Endre for å redigere en post."_s;

// --- The tabs

TEST_F(FrmProduktModusTest, TheDetailsWithoutASelectionKeepTheirTexts)
{
    open();
    clickTab(2);
    EXPECT_EQ(selectedTab(), 2);
    EXPECT_EQ(label(), kDetailsLabel);
    EXPECT_EQ(enabledButtons(), u"Ny Avslutt"_s);
    EXPECT_EQ(details(), kDesignTexts);
}

TEST_F(FrmProduktModusTest, TheDetailsShowTheFirstSelectedRow)
{
    addThreeProducts();
    open();
    clickCell(1, 2);
    clickCell(1, 3, Qt::ShiftModifier);
    runEvents();
    run(u"UPDATE Produkt SET ProduktNavn='Filter stort' WHERE ID=2"_s);
    const SessionTap tap;
    clickTab(2);
    EXPECT_EQ(tap.statements(),
              QStringList({u"SELECT * FROM Produkt WHERE KlientNr= 5 AND ID=2"_s}));
    EXPECT_EQ(details()[1], u"Filter stort"_s) << "read once more with the tab";
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avslutt"_s);
}

TEST_F(FrmProduktModusTest, OfASelectionDrawnUpwardsTheDetailsShowTheUppermostRow)
{
    addThreeProducts();
    open();
    clickCell(1, 3);
    clickCell(1, 2, Qt::ShiftModifier);
    runEvents();
    EXPECT_EQ(details()[1], u"Pære"_s) << "the list's current row while out of sight";
    clickTab(2);
    EXPECT_EQ(details()[1], u"Filter"_s);
}

TEST_F(FrmProduktModusTest, TheListIsReadAnewWithItsTab)
{
    open();
    clickTab(2);
    addProduct(u"A1"_s, u"Olje"_s);
    clickTab(1);
    EXPECT_EQ(at(1, 1), u"A1"_s);
    EXPECT_EQ(label(), kListLabel);
    EXPECT_EQ(enabledButtons(), u"Oppfrisk Avslutt"_s);
    clickTab(2);
    EXPECT_EQ(enabledButtons(), u"Ny Avslutt"_s) << "the read has ended the selection";
}

TEST_F(FrmProduktModusTest, ThePageOfTheTabStandsInTheStripAndTheOtherIsAway)
{
    open();
    const int away = twipsToPixels(-20000);
    EXPECT_EQ(page(0).x(), 8);
    EXPECT_EQ(page(1).x(), away);
    EXPECT_TRUE(grid().isVisible());
    EXPECT_FALSE(field(0).isVisible());
    clickTab(2);
    EXPECT_EQ(page(0).x(), away);
    EXPECT_EQ(page(1).x(), 8);
    EXPECT_FALSE(grid().isVisible());
    EXPECT_TRUE(field(0).isVisible());
    EXPECT_TRUE(control<TabStrip>(u"TabStrip1"_s).geometry().contains(page(1).geometry()));
    clickTab(1);
    EXPECT_EQ(page(0).x(), 8);
    EXPECT_EQ(page(1).x(), away);
}

TEST_F(FrmProduktModusTest, ATabChangeAsksNothingAndKeepsTheMode)
{
    addThreeProducts();
    open();
    changeFirst();
    type(field(1), u"Halvferdig"_s);
    clickTab(1);
    EXPECT_EQ(enabledButtons(), u"Oppfrisk Avslutt"_s);
    clickTab(2);
    EXPECT_EQ(enabledButtons(), u"Ny Avslutt"_s);
    field(1).setFocus();
    settle();
    EXPECT_EQ(focused(), u"txtFields_1"_s) << "still in change mode";
    EXPECT_EQ(field(1).text(), u"Halvferdig"_s);
}

// --- Double-click and selection

TEST_F(FrmProduktModusTest, ADoubleClickSelectsTheRowAndOpensItsDetails)
{
    addThreeProducts();
    open();
    doubleClickCell(4, 2);
    EXPECT_EQ(selectedTab(), 2);
    EXPECT_EQ(page(1).x(), 8);
    EXPECT_TRUE(field(0).isVisible());
    EXPECT_EQ(grid().selectedRowCount(), 1);
    EXPECT_EQ(grid().firstSelectedRow(), 2);
    EXPECT_EQ(details(), QStringList({u"B2"_s, u"Filter"_s, u"Diverse"_s, u"stk"_s, u" 10,00"_s,
                                      u" 20,00"_s, u"25,0"_s, u"-"_s, u"2"_s}));
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avslutt"_s);
    EXPECT_EQ(label(), kOpeningLabel) << "a double-click leaves the label as it is";
}

TEST_F(FrmProduktModusTest, ADoubleClickOnAnEmptyRowKeepsThePageButForTheId)
{
    addThreeProducts();
    open();
    clickCell(1, 1);
    doubleClickCell(1, 7);
    QStringList kept = kOljeDetails;
    kept[8].clear();
    EXPECT_EQ(details(), kept);
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avslutt"_s);
}

TEST_F(FrmProduktModusTest, ADoubleClickOnAColumnHeaderOpensNothing)
{
    addThreeProducts();
    open();
    auto *header = grid().horizontalHeader();
    QTest::mouseDClick(header->viewport(), Qt::LeftButton, {}, QPoint(20, header->height() / 2));
    runEvents();
    EXPECT_EQ(selectedTab(), 1);
    EXPECT_EQ(enabledButtons(), u"Avslutt"_s);
}

TEST_F(FrmProduktModusTest, TheDetailsFollowTheListWhileTheyAreOutOfSight)
{
    addThreeProducts();
    open();
    clickCell(2, 1);
    EXPECT_EQ(details(), kOljeDetails);
    key(Qt::Key_Down);
    EXPECT_EQ(details()[1], u"Filter"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(details()[1], u"Pære"_s);
    EXPECT_EQ(details()[8], u"3"_s);
    EXPECT_EQ(selectedTab(), 1);
    EXPECT_EQ(enabledButtons(), u"Avslutt"_s);
}

TEST_F(FrmProduktModusTest, TheMarkFollowsTheFlagHoweverItWasWritten)
{
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,BruttoPris) VALUES (5,'A1',-1)"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,BruttoPris) VALUES (5,'B2',0)"_s);
    open();
    EXPECT_EQ(at(8, 1), u"1"_s);
    clickCell(1, 1);
    EXPECT_TRUE(gross().isChecked());
    clickCell(1, 2);
    EXPECT_FALSE(gross().isChecked());
}

TEST_F(FrmProduktModusTest, AProductThatIsGoneKeepsThePage)
{
    addThreeProducts();
    open();
    clickCell(1, 1);
    run(u"DELETE FROM Produkt WHERE ID=2"_s);
    clickCell(1, 2);
    QStringList kept = kOljeDetails;
    kept[8] = u"2"_s;
    EXPECT_EQ(details(), kept);
}

// --- Modes

TEST_F(FrmProduktModusTest, NyEmptiesThePageAndTurnsToIt)
{
    addThreeProducts();
    run(u"UPDATE Produkt SET BruttoPris=1 WHERE ID=1"_s);
    open();
    doubleClickCell(1, 1);
    ASSERT_TRUE(gross().isChecked());
    press(u"btnNew"_s);
    EXPECT_EQ(details(), QStringList({QString(), QString(), QString(), QString(), u"0.00"_s,
                                      u"0.00"_s, u"25"_s, u"-"_s, QString()}));
    EXPECT_EQ(rate().currentIndex(), 0);
    EXPECT_EQ(enabledButtons(), u"Lagre Avbryt Avslutt"_s);
    EXPECT_EQ(selectedTab(), 2);
}

TEST_F(FrmProduktModusTest, NyGoesToTheNameToo)
{
    open();
    newProduct();
    EXPECT_EQ(focused(), u"txtFields_1"_s)
        << "the first field gets the focus while the page is still for reading, and sends it on";
}

TEST_F(FrmProduktModusTest, NyPutsTheFirstRateInPlaceOfATypedOne)
{
    open();
    newProduct();
    type(*rate().lineEdit(), u"12"_s);
    press(u"btnCancel"_s);
    EXPECT_EQ(rate().currentText(), u"12"_s);
    press(u"btnNew"_s);
    EXPECT_EQ(rate().currentText(), u"25"_s);
}

TEST_F(FrmProduktModusTest, NyWritesNothing)
{
    addThreeProducts();
    open();
    clickTab(2);
    const SessionTap tap;
    press(u"btnNew"_s);
    press(u"btnCancel"_s);
    press(u"btnNew"_s);
    EXPECT_EQ(tap.statements(), QStringList());
    EXPECT_EQ(products().size(), 3);
}

TEST_F(FrmProduktModusTest, EndreOpensTheFields)
{
    addThreeProducts();
    open();
    changeFirst();
    EXPECT_EQ(enabledButtons(), u"Lagre Avbryt Avslutt"_s);
    EXPECT_EQ(details(), kOljeDetails);
    EXPECT_EQ(focused(), u"txtFields_1"_s)
        << "the first field gets the focus while the page is still for reading, and sends it on";
}

TEST_F(FrmProduktModusTest, AvbrytKeepsWhatWasTypedAndStaysEnabled)
{
    addThreeProducts();
    open();
    changeFirst();
    type(field(1), u"Halvferdig"_s);
    const SessionTap tap;
    press(u"btnCancel"_s);
    EXPECT_EQ(field(1).text(), u"Halvferdig"_s);
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avbryt Avslutt"_s);
    EXPECT_EQ(tap.statements(), QStringList());
    field(1).setFocus();
    settle();
    EXPECT_NE(focused(), u"txtFields_1"_s) << "the page is for reading again";
}

TEST_F(FrmProduktModusTest, AvbrytAfterNyLeavesThePageEmpty)
{
    addThreeProducts();
    open();
    doubleClickCell(1, 1);
    press(u"btnNew"_s);
    press(u"btnCancel"_s);
    EXPECT_EQ(details()[0], QString());
    EXPECT_EQ(field(11).text(), QString());
    EXPECT_EQ(enabledButtons(), u"Ny Endre Avbryt Avslutt"_s);
    field(1).setFocus();
    settle();
    EXPECT_NE(focused(), u"txtFields_1"_s) << "the page is for reading again";
}

} // namespace
