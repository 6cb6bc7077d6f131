#include "order/OrdreLinjer.h"

#include "order/OrdreMedLinjer.h"
#include "shell/component/Main.h"
#include "support/SessionTap.h"

using namespace Qt::StringLiterals;
using namespace linjekolonne;
namespace hode = ordrefelt;

namespace {

/// The line grid of the order screen. Product P1 costs 100 without VAT of 25 percent.
class OrdreLinjerTest : public OrdreMedLinjer
{
protected:
    void nyOrdre()
    {
        apne();
        klikk(u"btnNew"_s);
    }
    static QStringList lookUps(const SessionTap &tap)
    {
        return tap.statements().filter(u"ProduktNavn,UtPris"_s);
    }
    static QStringList listReads(const SessionTap &tap)
    {
        return tap.statements().filter(u"SELECT * FROM Produkt "_s);
    }
    static QString productList()
    {
        grid().setCurrent(kProduktNr, 1);
        return grid().cellType().items;
    }
};

TEST_F(OrdreLinjerTest, TheColumnsStandInTheirOrder)
{
    apne();
    const QStringList headers{u"Produkt nr."_s, u"Produkt navn"_s, u"Antall"_s, u"Pris"_s,
                              u"Rabatt"_s,      u"Sum netto"_s,    u"MVA"_s,    u"Sum brutto"_s,
                              u"ID"_s,          u"Pos"_s};
    ASSERT_EQ(grid().maxCols(), headers.size());
    for (int col = 1; col <= headers.size(); ++col) {
        grid().setCurrent(col, 0);
        EXPECT_EQ(grid().text(), headers[col - 1]);
        EXPECT_EQ(grid().colHidden(col), col == 5 || col >= 9) << col;
        EXPECT_EQ(grid().colWidth(col), col == 1   ? 11.0
                                        : col == 2 ? 16.25
                                                   : grid().defaultColWidth());
    }
}

TEST_F(OrdreLinjerTest, IsDesignedWithFiftyRows)
{
    SharedForm<frmOrdre>::get().load();
    EXPECT_EQ(grid().maxRows(), 50);
}

TEST_F(OrdreLinjerTest, ANewOrderBeginsInItsFirstCell)
{
    nyOrdre();
    staaI(kPris, 3);
    klikk(u"btnCancel"_s);
    klikk(u"btnNew"_s);
    EXPECT_EQ(aktiv(), std::pair(kProduktNr, 1));
}

TEST_F(OrdreLinjerTest, AKeyLeavesTheGridForTheButtonThatSaves)
{
    nyOrdre();
    staaI(kProduktNavn, 1);
    tast(Qt::Key_F6);
    EXPECT_EQ(fokus(), u"btnSave"_s) << "not for one that shows another order";
}

TEST_F(OrdreLinjerTest, AProductOfAnotherClientIsNone)
{
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,UtPris,MvaSats,BruttoPris) "
        u"VALUES (6,'F1','Fremmed',10,25,0)"_s);
    run(u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr) VALUES (%1,10,'F1')"_s.arg(
        leggOrdre({.medLinje = false})));
    apne();
    staaI(kProduktNr, 1);
    gridtast(Qt::Key_Tab);
    EXPECT_EQ(rad(1, 1, 4), QStringList({u"F1"_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(aktiv(), std::pair(kAntall, 1));
}

TEST_F(OrdreLinjerTest, WhileBrowsingAProductFillsItsLineToo)
{
    leggProdukt(u"P2"_s, u"Lasting"_s, u"10"_s, u"15"_s);
    leggLinje(leggOrdre({.medLinje = false}), 10, u"P2"_s, u"1"_s, u"99"_s);
    apne();
    EXPECT_EQ(rad(1, 1, 4), QStringList({u"P2"_s, u"Frakt"_s, u"1,0"_s, u" 99,00"_s}));
    staaI(kProduktNr, 1);
    gridtast(Qt::Key_Tab);
    EXPECT_EQ(rad(1, 1, 4), QStringList({u"P2"_s, u"Lasting"_s, u"1,0"_s, u" 10,00"_s}));
    EXPECT_EQ(celle(kMvaPst, 1), u"15,0"_s);
}

TEST_F(OrdreLinjerTest, TheCellsHaveTheirTypes)
{
    leggProdukt(u"A0"_s, u"Lasting"_s, u"10"_s, u"25"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr) VALUES (6,'FREMMED')"_s);
    Main(); // the rates' texts
    apne();
    const auto type = [](int col) {
        grid().setCurrent(col, 7);
        return grid().cellType();
    };
    EXPECT_EQ(type(kProduktNr).kind, CellKind::ComboBox);
    EXPECT_EQ(type(kProduktNr).items, u"P1\tA0"_s) << "in the database's order";
    EXPECT_FALSE(type(kProduktNr).editable);
    EXPECT_EQ(type(kMvaPst).kind, CellKind::ComboBox);
    EXPECT_EQ(type(kMvaPst).items, u"0\t10\t15\t25"_s);
    EXPECT_TRUE(type(kMvaPst).editable);
    for (const int col : {kPris, kRabatt, kSumNetto, kSumBrutto}) {
        EXPECT_EQ(type(col).kind, CellKind::Float) << col;
        EXPECT_EQ(type(col).decimals, 2);
        EXPECT_TRUE(type(col).showThousands);
        EXPECT_EQ(type(col).thousandsSign, u' ');
        EXPECT_EQ(type(col).decimalSign, u',');
    }
}

TEST_F(OrdreLinjerTest, TheProductListIsReadByItsStatement)
{
    SessionTap tap;
    apne();
    EXPECT_EQ(listReads(tap), QStringList({u"SELECT * FROM Produkt WHERE KlientNr= 5"_s}))
        << "opening shows two orders in turn, and reads the list once";
}

TEST_F(OrdreLinjerTest, ANewOrderHasTenRowsAndAFreshProductList)
{
    apne();
    leggProdukt(u"P2"_s, u"Lasting"_s, u"10"_s, u"25"_s);
    klikk(u"btnNew"_s);
    EXPECT_EQ(productList(), u"P1\tP2"_s);
    EXPECT_EQ(grid().maxRows(), 10);
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_TRUE(grid().tabStop());
    EXPECT_TRUE(grid().editModeReplace());
}

TEST_F(OrdreLinjerTest, AProductFillsItsLineAndTheQuantityComesNext)
{
    nyOrdre();
    SessionTap tap;
    staaI(kProduktNr, 1);
    tastInn(u"P1"_s);
    gridtast(Qt::Key_Tab);
    EXPECT_EQ(lookUps(tap),
              QStringList({u"SELECT ID,ProduktNavn,UtPris,Enhet,MvaSats,BruttoPris FROM Produkt "
                           u"WHERE KlientNr= 5 AND ProduktNr='P1'"_s}));
    EXPECT_EQ(rad(1, 1, 8), QStringList({u"P1"_s, u"Frakt"_s, u""_s, u" 100,00"_s, u""_s, u""_s,
                                         u"25,0"_s, u""_s}));
    EXPECT_EQ(aktiv(), std::pair(kAntall, 1));
    EXPECT_TRUE(grid().editMode());
    grid().setCurrent(kAntall, 1);
    EXPECT_EQ(grid().backColor(), sheetColor(255, 255, 192));
    grid().setCurrent(kProduktNr, 1);
    EXPECT_EQ(grid().backColor(), kWindowBackground);
    EXPECT_EQ(tekst(hode::kSumNetto), u" 0,00"_s) << "no quantity adds nothing";

    tastInn(u"2"_s);
    gridtast(Qt::Key_Tab);
    EXPECT_EQ(aktiv(), std::pair(kPris, 1));
    EXPECT_EQ(celle(kSumNetto, 1), u" 200,00"_s);
    EXPECT_EQ(celle(kSumBrutto, 1), u" 250,00"_s);
    EXPECT_EQ(tekst(hode::kSumNetto), u" 200,00"_s);
    EXPECT_EQ(tekst(hode::kMvaKr), u" 50,00"_s);
    EXPECT_EQ(tekst(hode::kSumBrutto), u" 250,00"_s);
    EXPECT_EQ(tekst(hode::kAvrunding), u"0,00"_s);
    EXPECT_EQ(tekst(hode::kKontrollsiffer), u"1"_s);
}

TEST_F(OrdreLinjerTest, APriceWithVatBecomesOneWithout)
{
    for (const int mark : {-1, 1})
        leggProdukt(u"B%1"_s.arg(mark + 2), u"Brutto"_s, u"125"_s, u"25"_s, mark);
    nyOrdre();
    int row = 1;
    for (const QString &nr : {u"B1"_s, u"B3"_s}) {
        skrivLinje(row, nr, u"1"_s);
        EXPECT_EQ(celle(kPris, row), u" 100,00"_s);
        EXPECT_EQ(celle(kSumBrutto, row), u" 125,00"_s);
        ++row;
    }
}

TEST_F(OrdreLinjerTest, AProductWithoutNameOrPriceGivesWhatItHas)
{
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn) VALUES (5,'X1','Uten pris')"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,UtPris,MvaSats) VALUES (5,'Y1',7.5,15)"_s);
    nyOrdre();
    skrivLinje(1, u"X1"_s, u"1"_s);
    skrivLinje(2, u"Y1"_s, u"2"_s);
    EXPECT_EQ(rad(1, 1, 8), QStringList({u"X1"_s, u"Uten pris"_s, u"1,00"_s, u" 0,00"_s, u""_s,
                                         u" 0,00"_s, u""_s, u" 0,00"_s}));
    EXPECT_EQ(rad(2, 1, 8), QStringList({u"Y1"_s, u""_s, u"2,00"_s, u" 7,50"_s, u""_s, u" 15,00"_s,
                                         u"15,0"_s, u" 17,25"_s}));
}

TEST_F(OrdreLinjerTest, AnEmptyProductCellLeavesTheLineAlone)
{
    nyOrdre();
    skrivLinje(1, u"P1"_s, u"2"_s);
    const QStringList before = rad(1, 2, 8);
    SessionTap tap;
    skrivCelle(kProduktNr, 1, {});
    EXPECT_EQ(lookUps(tap).size(), 1) << "the look-up runs with an empty cell too";
    EXPECT_EQ(celle(kProduktNr, 1), QString());
    EXPECT_EQ(rad(1, 2, 8), before);
    EXPECT_EQ(aktiv(), std::pair(kAntall, 1));
    skrivCelle(kProduktNr, 5, {});
    EXPECT_EQ(rad(5, 1, 8).join(QString()), QString()) << "no VAT percent without a product";
}

TEST_F(OrdreLinjerTest, EveryWayOutOfTheFirstColumnLeadsToTheQuantity)
{
    nyOrdre();
    for (const Qt::Key key :
         {Qt::Key_Tab, Qt::Key_Right, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Backtab}) {
        staaI(kProduktNr, 2);
        gridtast(key);
        EXPECT_EQ(aktiv(), std::pair(kAntall, 2)) << key;
    }
    staaI(kProduktNr, 2);
    klikkCelle(kSumBrutto, 6);
    EXPECT_EQ(aktiv(), std::pair(kAntall, 2));
}

TEST_F(OrdreLinjerTest, AProductIsPickedFromTheListWithTheMouse)
{
    leggProdukt(u"P2"_s, u"Lasting"_s, u"10"_s, u"25"_s);
    nyOrdre();
    klikkCelle(kPris, 1);
    klikkCelle(kProduktNr, 1);
    QWidget *popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr) << "a click opens the list";
    auto *items = popup->findChild<QAbstractItemView *>();
    ASSERT_NE(items, nullptr);
    QTest::mouseClick(items->viewport(), Qt::LeftButton, {},
                      items->visualRect(items->model()->index(1, 0)).center());
    runEvents();
    EXPECT_EQ(celle(kProduktNr, 1), u"P2"_s);
    klikkCelle(kMvaPst, 4);
    EXPECT_EQ(celle(kProduktNavn, 1), u"Lasting"_s);
    EXPECT_EQ(aktiv(), std::pair(kAntall, 1));
}

TEST_F(OrdreLinjerTest, LeavingTheGridFromTheFirstColumnKeepsTheFocusWhereItWent)
{
    nyOrdre();
    staaI(kProduktNr, 1);
    tastInn(u"P1"_s);
    gaTil(hode::kKundeNavn);
    EXPECT_EQ(celle(kProduktNavn, 1), u"Frakt"_s);
    EXPECT_EQ(fokus(), u"txtFields_0"_s);
    EXPECT_EQ(aktiv(), std::pair(kAntall, 1));
    EXPECT_FALSE(grid().editMode());
    grid().setCurrent(kAntall, 1);
    EXPECT_EQ(grid().backColor(), sheetColor(255, 255, 192));
}

TEST_F(OrdreLinjerTest, AQuantityTypedLastCountsWhenTheGridIsLeft)
{
    nyOrdre();
    skrivLinje(1, u"P1"_s, u"2"_s);
    staaI(kAntall, 1);
    tastInn(u"3"_s);
    gaTil(hode::kKundeNavn);
    EXPECT_EQ(tekst(hode::kSumNetto), u" 300,00"_s);
}

TEST_F(OrdreLinjerTest, QuantityPriceAndVatMoveTheLineAndOnlyThey)
{
    nyOrdre();
    skrivLinje(1, u"P1"_s, u"2"_s);
    skrivCelle(kPris, 1, u"80,5"_s);
    EXPECT_EQ(celle(kSumNetto, 1), u" 161,00"_s);
    EXPECT_EQ(celle(kSumBrutto, 1), u" 201,25"_s);
    skrivCelle(kMvaPst, 1, u"0"_s);
    EXPECT_EQ(celle(kSumBrutto, 1), u" 161,00"_s);
    EXPECT_EQ(tekst(hode::kMvaKr), u" 0,00"_s);

    skrivCelle(kSumNetto, 1, u"7"_s);
    EXPECT_EQ(celle(kSumNetto, 1), u"7,00"_s) << "what is typed in a sum stands until a number is "
                                                 "left";
    EXPECT_EQ(tekst(hode::kSumNetto), u" 161,00"_s) << "the header does not read it";
    skrivCelle(kProduktNavn, 1, u"Frakt nord"_s);
    EXPECT_EQ(celle(kSumNetto, 1), u"7,00"_s);
    skrivCelle(kAntall, 1, u"1"_s);
    EXPECT_EQ(celle(kSumNetto, 1), u" 80,50"_s);
}

TEST_F(OrdreLinjerTest, ATextAloneMovesNoSum)
{
    nyOrdre();
    skrivLinje(1, u"P1"_s, u"2"_s);
    skrivCelle(kProduktNavn, 2, u"Takk for oppdraget"_s);
    EXPECT_EQ(grid().dataRowCnt(), 2);
    EXPECT_EQ(rad(2, 3, 8).join(QString()), QString());
    EXPECT_EQ(tekst(hode::kSumNetto), u" 200,00"_s);
}

TEST_F(OrdreLinjerTest, AQuantityOfNothingLeavesALineOfNothing)
{
    nyOrdre();
    skrivLinje(1, u"P1"_s, u"2"_s);
    skrivCelle(kAntall, 1, u"0"_s);
    EXPECT_EQ(celle(kSumNetto, 1), u" 0,00"_s);
    EXPECT_EQ(tekst(hode::kSumBrutto), u" 0,00"_s);
}

TEST_F(OrdreLinjerTest, TheDiscountOfAStoredLineMovesNoSum)
{
    const int id = leggOrdre({.medLinje = false});
    leggLinje(id, 10, u"P1"_s, u"1"_s, u"100"_s);
    run(u"UPDATE OrdreLinjer SET RabattKr=40"_s);
    apne();
    EXPECT_EQ(celle(kRabatt, 1), u"40,00"_s);
    staaI(kAntall, 1);
    gridtast(Qt::Key_Tab);
    EXPECT_EQ(celle(kSumNetto, 1), u" 100,00"_s);
    EXPECT_EQ(tekst(hode::kSumNetto), u" 100,00"_s);
}

TEST_F(OrdreLinjerTest, TheEleventhLineHasNoRow)
{
    nyOrdre();
    for (int row = 1; row <= 10; ++row)
        skrivLinje(row, u"P1"_s, u"1"_s);
    EXPECT_EQ(grid().maxRows(), 10);
    staaI(kSumBrutto, 10);
    gridtast(Qt::Key_Tab);
    EXPECT_EQ(aktiv(), std::pair(kSumBrutto, 10));
    EXPECT_FALSE(grid().hasFocus()) << "Tab goes on behind the last cell";
    EXPECT_EQ(tekst(hode::kSumNetto), u"1 000,00"_s);
}

TEST_F(OrdreLinjerTest, AFailedLookUpIsPassedOver)
{
    leggProdukt(u"O''Brien"_s, u"Frakt vest"_s, u"10"_s, u"25"_s);
    nyOrdre();
    skrivLinje(1, u"P1"_s, u"2"_s);
    skrivCelle(kProduktNr, 2, u"O"_s);
    EXPECT_EQ(celle(kProduktNr, 2), u"O'Brien"_s);
    EXPECT_EQ(celle(kProduktNavn, 2), QString());
    EXPECT_EQ(aktiv(), std::pair(kAntall, 2));
    EXPECT_EQ(tekst(hode::kSumNetto), u" 200,00"_s);
    EXPECT_TRUE(gDB->LastError().startsWith(QString::number(ado::errors::kSyntax)));
}

TEST_F(OrdreLinjerTest, AnUnreadableVatPercentIsPassedOver)
{
    nyOrdre();
    skrivLinje(1, u"P1"_s, u"2"_s);
    skrivCelle(kMvaPst, 1, u"abc"_s);
    EXPECT_EQ(celle(kMvaPst, 1), u"abc"_s);
    EXPECT_EQ(celle(kSumNetto, 1), u" 200,00"_s);
    EXPECT_EQ(celle(kSumBrutto, 1), u" 200,00"_s) << "the percent stays at its start of 0";
    EXPECT_EQ(tekst(hode::kSumNetto), u" 200,00"_s);
}

TEST_F(OrdreLinjerTest, LettersAreNoQuantity)
{
    nyOrdre();
    skrivLinje(1, u"P1"_s, u"2"_s);
    skrivCelle(kAntall, 1, u"x"_s);
    EXPECT_EQ(celle(kAntall, 1), u"2,00"_s);
}

TEST_F(OrdreLinjerTest, AQuantityShowsTheDecimalThatIsStored)
{
    nyOrdre();
    skrivLinje(1, u"P1"_s, u"1,25"_s);
    const QModelIndex antall = grid().model()->index(0, kAntall - 1);
    EXPECT_EQ(antall.data(Qt::AccessibleTextRole), u"1,3"_s);
    EXPECT_EQ(celle(kAntall, 1), u"1,25"_s) << "what the sums are made of";
    EXPECT_EQ(celle(kSumNetto, 1), u" 125,00"_s);
}

TEST_F(OrdreLinjerTest, InBrowseModeChangesAreComputedAndLostAtTheNextMove)
{
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    apne();
    EXPECT_FALSE(grid().tabStop());
    staaI(kAntall, 1);
    gridtast(Qt::Key_Backspace);
    tastInn(u"7"_s);
    gridtast(Qt::Key_Tab);
    EXPECT_EQ(tekst(hode::kSumBrutto), u" 875,00"_s);
    klikk(u"cmdFirst"_s);
    klikk(u"cmdLast"_s);
    EXPECT_EQ(celle(kAntall, 1), u"1,0"_s);
    EXPECT_EQ(tekst(hode::kSumBrutto), u" 125,00"_s);
}

TEST_F(OrdreLinjerTest, ManyProductsAreNeitherReadNorBuiltAgainByMovingAbout)
{
    gConn->beginTrans();
    for (int i = 0; i < 10000; ++i) {
        gConn->execute(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn,UtPris,MvaSats) "
                       u"VALUES (5,'N%1','Vare',1,25)"_s.arg(i, 5, 10, QChar(u'0')));
    }
    gConn->commitTrans();
    nyOrdre();
    ASSERT_EQ(productList().count(u'\t'), 10000);
    const QString list = productList();
    SessionTap tap;
    for (int row = 1; row <= 9; ++row) {
        staaI(kProduktNavn, row);
        for (int i = 0; i < 6; ++i)
            gridtast(Qt::Key_Tab);
    }
    EXPECT_TRUE(listReads(tap).isEmpty());
    EXPECT_EQ(lookUps(tap).size(), 0);
    EXPECT_EQ(productList().constData(), list.constData()) << "all cells share one list";
}

} // namespace
