#include "registers/customers/frmKunderTest.h"

#include "data/clsAdoUtils.h"
#include "state/SharedState.h"
#include "support/Caption.h"
#include "support/SessionTap.h"

#include <QHeaderView>
#include <QRadioButton>

// The list of customers.

TEST_F(FrmKunderTest, TheGridHasItsColumns)
{
    open();
    EXPECT_EQ(screen()->windowTitle(), u"Kundeliste"_s);
    const QStringList headers{u"Kundenr."_s, u"Kundenavn"_s, u"BetBet"_s,      u"Adr1"_s,
                              u"Adr2"_s,     u"PostNr"_s,    u"PostSted"_s,    u"LevAdr1"_s,
                              u"LevAdr2"_s,  u"LevPostNr"_s, u"LevPostSted"_s, u"SammeAdr"_s,
                              u"OrgNr"_s,    u"FakTyp"_s};
    ASSERT_EQ(grid().maxCols(), headers.size());
    for (int col = 1; col <= headers.size(); ++col) {
        EXPECT_EQ(at(col, 0), headers[col - 1]);
        EXPECT_EQ(grid().colHidden(col), col > 2) << col;
    }
    EXPECT_EQ(grid().defaultColWidth(), 10.5);
    EXPECT_EQ(grid().colWidth(1), 10.5);
    EXPECT_EQ(grid().colWidth(2), 24.12);
    EXPECT_EQ(captionOf(control<QRadioButton>(u"optUtvalg_0"_s)), u"Alle"_s);
    EXPECT_EQ(captionOf(control<QRadioButton>(u"optUtvalg_1"_s)), u"Kunder"_s);
    EXPECT_EQ(captionOf(control<QPushButton>(u"OKButton"_s)), u"OK"_s);
    EXPECT_EQ(captionOf(control<QPushButton>(u"CancelButton"_s)), u"Cancel"_s);
}

TEST_F(FrmKunderTest, TheNameTakesTheRoomOfALargerWindow)
{
    open();
    const QSize first = screen()->size();
    screen()->resize(first.width() + 200, first.height());
    runEvents();
    EXPECT_DOUBLE_EQ(grid().colWidth(2), 24.12 + grid().twipsToColWidth(200 * 15));
    screen()->resize(first.width() - 50, first.height());
    runEvents();
    EXPECT_EQ(grid().colWidth(2), 24.12);
}

TEST_F(FrmKunderTest, IsDesignedWithAHundredRows)
{
    SharedForm<frmKunder>::get().load();
    EXPECT_EQ(grid().maxRows(), 100);
}

TEST_F(FrmKunderTest, TheStatementGoesOutWordForWord)
{
    SessionTap tap;
    open();
    EXPECT_TRUE(tap.statements().contains(
        u"SELECT K.KundeNr,K.Navn,K.Adr1,K.Adr2,K.PostNr,P.PostSted,K.BetBet,K.LevAdr1,K.LevAdr2,"_s
        u"K.LevPostNr,L.PostSted AS LevPostSted,SammeLevAdr,K.OrganisasjonsNr,K.FakturaType FROM "_s
        u"(KundeLev AS K LEFT JOIN Poststed AS P ON K.PostNr=P.PostNr) LEFT JOIN Poststed AS L ON "_s
        u"K.LevPostNr=L.PostNr WHERE KlientNr= 5AND K.KundeNr<50000 ORDER BY KundeNr"_s))
        << tap.statements().join(u'\n').toStdString();
}

TEST_F(FrmKunderTest, OpeningShowsTheCustomersBelowFiftyThousand)
{
    addCustomer(50000, u"Leverandør"_s);
    addCustomer(49999, u"Siste kunde"_s);
    addCustomer(10002, u"Berit"_s);
    run(u"INSERT INTO KundeLev (KlientNr,KundeNr,Navn,BetBet) VALUES (6,1,'Annen klient',1)"_s);
    open();
    EXPECT_TRUE(control<QRadioButton>(u"optUtvalg_1"_s).isChecked());
    EXPECT_EQ(numbers(), QStringList({u" 10002"_s, u" 49999"_s}));
    press(u"optUtvalg_0"_s);
    EXPECT_FALSE(control<QRadioButton>(u"optUtvalg_1"_s).isChecked());
    EXPECT_EQ(numbers(), QStringList({u" 10002"_s, u" 49999"_s, u" 50000"_s}));
    press(u"optUtvalg_1"_s);
    EXPECT_EQ(numbers(), QStringList({u" 10002"_s, u" 49999"_s}));
}

TEST_F(FrmKunderTest, BecomingActiveFillsAnew)
{
    open();
    addCustomer(10001, u"Anne"_s);
    press(u"optUtvalg_0"_s);
    EXPECT_EQ(numbers().size(), 1);
    addCustomer(10002, u"Berit"_s);
    auto *other = new RecordingForm(u"frmAnnet"_s);
    other->show();
    screen()->show();
    EXPECT_EQ(numbers().size(), 2);
    EXPECT_TRUE(control<QRadioButton>(u"optUtvalg_1"_s).isChecked());
}

TEST_F(FrmKunderTest, IkkeVisTakesValuesAboveZeroAndKeepsTheGrid)
{
    auto &picker = SharedForm<frmKunder>::get();
    picker.settIkkeVis(7);
    picker.load();
    EXPECT_EQ(picker.IkkeVis(), 0) << "loading sets it to 0";
    picker.settIkkeVis(2);
    picker.settIkkeVis(0);
    picker.settIkkeVis(-1);
    EXPECT_EQ(picker.IkkeVis(), 2);
    addCustomer(10001, u"Anne"_s);
    open();
    EXPECT_TRUE(numbers().isEmpty());
}

TEST_F(FrmKunderTest, TheDeliveryAddressStandsTwiceInARow)
{
    addAnne();
    open();
    QStringList row;
    for (int col = 1; col <= grid().maxCols(); ++col)
        row += at(col, 1);
    EXPECT_EQ(row, QStringList({u" 10001"_s, u"Annes Transport"_s, u" 14"_s, u"Veien 1"_s,
                                u"Bakgården"_s, u"0150"_s, u"OSLO"_s, u"Kaia 2"_s, u"1 etasje"_s,
                                u"5003"_s, u"Kaia 2"_s, u"1 etasje"_s, u"5003"_s, u"BERGEN"_s}));
}

TEST_F(FrmKunderTest, ACustomerOfNullsOnlyBeyondTheThreeIsShown)
{
    addCustomer(10001, u"Anne"_s);
    open();
    QStringList row;
    for (int col = 1; col <= grid().maxCols(); ++col)
        row += at(col, 1);
    EXPECT_EQ(row.mid(0, 3), QStringList({u" 10001"_s, u"Anne"_s, u" 14"_s}));
    EXPECT_EQ(row.mid(3).join(QString()), QString());
}

TEST_F(FrmKunderTest, ARowThatCannotBeComposedRepeatsTheOneBefore)
{
    addCustomer(10001, u"Null"_s); // nothing stands before it
    addCustomer(10002, u"Berit"_s);
    addCustomer(10003, u"Null"_s);
    addCustomer(10004, u"Dina"_s, u"Null"_s);
    addCustomer(10005, u"Eva"_s);
    open();
    EXPECT_EQ(numbers(), QStringList({u" 10002"_s, u" 10002"_s, u" 10002"_s, u" 10005"_s}));
}

TEST_F(FrmKunderTest, AnEmptyRegisterGivesTenRowsAndOkStillCloses)
{
    mottaker.texts[KundeFelt::KundeNavn] = u"Gammel"_s;
    pick(mottaker, [&] {
        EXPECT_EQ(grid().maxRows(), 10);
        press(u"OKButton"_s);
    });
    EXPECT_EQ(screen(), nullptr);
    EXPECT_EQ(mottaker.texts[KundeFelt::KundeNavn], QString());
    EXPECT_EQ(mottaker.texts[KundeFelt::OrganisasjonsNr].trimmed(), QString());
    EXPECT_FALSE(mottaker.given.contains(KundeFelt::ForfallDato));
    EXPECT_EQ(mottaker.given.last(), KundeFelt::FakturaType);
}

TEST_F(FrmKunderTest, TheGridGrowsByFive)
{
    for (int i = 1; i <= 7; ++i)
        addCustomer(10000 + i, u"Kunde"_s);
    open();
    EXPECT_EQ(grid().maxRows(), 15);
}

TEST_F(FrmKunderTest, DoubleClickOnTheHeadersSorts)
{
    addCustomer(10001, u"Berit"_s);
    addCustomer(10002, u"Anne"_s);
    addCustomer(50001, u"Æsop"_s);
    open();
    SessionTap tap;
    doubleClickHeader(1);
    EXPECT_EQ(numbers(), QStringList({u" 50001"_s, u" 10002"_s, u" 10001"_s}))
        << "the filter is not carried over";
    EXPECT_TRUE(control<QRadioButton>(u"optUtvalg_1"_s).isChecked());
    doubleClickHeader(1);
    EXPECT_EQ(numbers(), QStringList({u" 10001"_s, u" 10002"_s, u" 50001"_s}));
    doubleClickHeader(2);
    EXPECT_EQ(column(2), QStringList({u"Anne"_s, u"Berit"_s, u"Æsop"_s}));
    doubleClickHeader(2);
    EXPECT_EQ(column(2), QStringList({u"Æsop"_s, u"Berit"_s, u"Anne"_s}));
    doubleClickHeader(1);
    EXPECT_TRUE(tap.statements().last().endsWith(u" WHERE KlientNr= 5 ORDER BY KundeNr ASC"_s));
    press(u"optUtvalg_1"_s);
    EXPECT_EQ(numbers().size(), 2);
    EXPECT_TRUE(tap.statements().last().endsWith(u"ORDER BY KundeNr"_s));
    doubleClickHeader(1);
    EXPECT_EQ(numbers().first(), u" 50001"_s) << "the options leave the sort clause alone";
}

TEST_F(FrmKunderTest, CtrlEnterSortsByTheActiveColumnAndTheHeaderShowsIt)
{
    addCustomer(10001, u"Berit"_s);
    addCustomer(10002, u"Anne"_s);
    open();
    const QHeaderView &header = *grid().horizontalHeader();
    EXPECT_EQ(header.sortIndicatorSection(), 0);
    QTest::keyClick(&grid(), Qt::Key_Right);
    QTest::keyClick(&grid(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(column(2), QStringList({u"Anne"_s, u"Berit"_s}));
    EXPECT_EQ(header.sortIndicatorSection(), 1);
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
    QTest::keyClick(&grid(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(column(2), QStringList({u"Berit"_s, u"Anne"_s}));
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_NE(screen(), nullptr);
}

TEST_F(FrmKunderTest, AHeaderWithoutAClauseLeavesTheFormUsable)
{
    addCustomer(10001, u"Anne"_s);
    open();
    grid().setColHidden(3, false);
    doubleClickHeader(3);
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_TRUE(grid().redraw());
    EXPECT_NE(gDB->LastError(), QString());
    press(u"optUtvalg_0"_s);
    EXPECT_EQ(numbers(), QStringList({u" 10001"_s}));
}

TEST_F(FrmKunderTest, NothingCanBeTypedInTheList)
{
    addCustomer(10001, u"Anne"_s);
    open();
    clickCell(2, 1);
    QTest::keyClick(&grid(), 'x');
    QTest::keyClick(&grid(), Qt::Key_F2);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    EXPECT_FALSE(grid().editMode());
    EXPECT_EQ(at(2, 1), u"Anne"_s);
}

TEST_F(FrmKunderTest, NothingIsKeptBetweenOpenings)
{
    addCustomer(10001, u"Anne"_s);
    addCustomer(50001, u"Berit"_s);
    pick(mottaker, [&] {
        doubleClickHeader(1);
        press(u"CancelButton"_s);
    });
    runEvents();
    pick(mottaker, [&] {
        EXPECT_EQ(numbers(), QStringList({u" 10001"_s}));
        doubleClickHeader(1);
        EXPECT_EQ(numbers(), QStringList({u" 50001"_s, u" 10001"_s}));
        press(u"CancelButton"_s);
    });
}

TEST_F(FrmKunderTest, LogOffUnloads)
{
    open();
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_EQ(screen(), nullptr);
}
