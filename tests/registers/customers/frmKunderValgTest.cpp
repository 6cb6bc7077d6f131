#include "registers/customers/frmKunderTest.h"

// The pick, and what its receiver gets.

TEST_F(FrmKunderTest, TheRowThatOkTakesIsMarked)
{
    addCustomer(10001, u"Anne"_s);
    addCustomer(10002, u"Berit"_s);
    pick(mottaker, [&] {
        EXPECT_EQ(grid().firstSelectedRow(), 1);
        EXPECT_EQ(grid().selectedRowCount(), 1);
        QTest::keyClick(&grid(), Qt::Key_Down);
        doubleClickHeader(1); // falling, on the same row
        EXPECT_EQ(grid().firstSelectedRow(), 2);
        EXPECT_EQ(grid().activeRow(), 2);
        press(u"OKButton"_s);
    });
    EXPECT_EQ(mottaker.texts[KundeFelt::KundeNavn], u"Anne"_s);
}

TEST_F(FrmKunderTest, ThePickArrivesInItsOrderAndShifted)
{
    addAnne();
    pick(mottaker, [&] {
        clickCell(2, 1);
        press(u"OKButton"_s);
    });
    using enum KundeFelt;
    EXPECT_EQ(mottaker.given,
              QList<KundeFelt>({KundeNr, KundeNavn, BetBet, FakAdresse1, FakAdresse2, FakPostNr,
                                FakPostSted, LevAdresse1, LevAdresse2, LevPostNr, LevPostSted,
                                OrganisasjonsNr, ForfallDato, FakturaType}));
    EXPECT_EQ(mottaker.givenBeforeSammeLevAdr, 12);
    EXPECT_EQ(mottaker.texts[KundeNr], u" 10001"_s);
    EXPECT_EQ(mottaker.texts[KundeNavn], u"Annes Transport"_s);
    EXPECT_EQ(mottaker.texts[BetBet], u" 14"_s);
    EXPECT_EQ(mottaker.texts[FakAdresse1], u"Veien 1"_s);
    EXPECT_EQ(mottaker.texts[FakAdresse2], u"Bakgården"_s);
    EXPECT_EQ(mottaker.texts[FakPostNr], u"0150"_s);
    EXPECT_EQ(mottaker.texts[FakPostSted], u"OSLO"_s);
    EXPECT_EQ(mottaker.texts[LevAdresse1], u"Kaia 2"_s);
    EXPECT_EQ(mottaker.texts[LevAdresse2], u"1 etasje"_s);
    EXPECT_EQ(mottaker.texts[LevPostNr], u"5003"_s);
    EXPECT_EQ(mottaker.texts[LevPostSted], u"Kaia 2"_s);
    EXPECT_EQ(mottaker.texts[OrganisasjonsNr], u"      5 003"_s);
    EXPECT_EQ(mottaker.sammeLevAdr, 1);
    EXPECT_EQ(mottaker.texts[ForfallDato], u"23.03.2014"_s);
    EXPECT_EQ(mottaker.texts[FakturaType], u"BERGEN"_s);
}

TEST_F(FrmKunderTest, TheMarkIsTheWholeNumberThatLeadsTheSecondDeliveryLine)
{
    const std::pair<QString, int> lines[] = {
        {u""_s, 0},    {u"Bakgården"_s, 0}, {u"-1 plan"_s, 1},
        {u"1.5"_s, 2}, {u"0.5"_s, 0},       {u"12 B"_s, -1 /* refused, passed over */},
    };
    for (const auto &[line, mark] : lines) {
        run(u"DELETE FROM KundeLev"_s);
        addCustomer(10001, u"Anne"_s);
        run(u"UPDATE KundeLev SET LevAdr2='"_s + line + u'\'');
        Mottaker fresh;
        pick(fresh, [&] { press(u"OKButton"_s); });
        EXPECT_EQ(fresh.sammeLevAdr, mark) << line.toStdString();
        EXPECT_EQ(fresh.given.last(), KundeFelt::FakturaType);
    }
}

TEST_F(FrmKunderTest, TheDueDateGoesByTheDaysAsReadBack)
{
    addCustomer(10001, u"Anne"_s);
    mottaker.readsBetBetAs = u"30"_s;
    pick(mottaker, [&] { press(u"OKButton"_s); });
    EXPECT_EQ(mottaker.texts[KundeFelt::ForfallDato], u"08.04.2014"_s);

    Mottaker noNumber;
    noNumber.readsBetBetAs = u"netto"_s;
    pick(noNumber, [&] { press(u"OKButton"_s); });
    EXPECT_FALSE(noNumber.given.contains(KundeFelt::ForfallDato));
    EXPECT_TRUE(noNumber.given.contains(KundeFelt::FakturaType));
}

TEST_F(FrmKunderTest, ARefusedFieldDoesNotStopTheOthers)
{
    addCustomer(10001, u"Anne"_s);
    mottaker.refused = KundeFelt::KundeNavn;
    pick(mottaker, [&] { press(u"OKButton"_s); });
    EXPECT_EQ(mottaker.given.size(), 13);
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmKunderTest, ADoubleClickOnARowPicksIt)
{
    addCustomer(10001, u"Anne"_s);
    addCustomer(10002, u"Berit"_s);
    pick(mottaker, [&] { doubleClickCell(2, 2); });
    EXPECT_EQ(mottaker.texts[KundeFelt::KundeNr], u" 10002"_s);
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmKunderTest, ArrowKeysAndEnterPick)
{
    addCustomer(10001, u"Anne"_s);
    addCustomer(10002, u"Berit"_s);
    pick(mottaker, [&] {
        runEvents();
        ASSERT_EQ(screen()->focusWidget(), &grid());
        EXPECT_FALSE(control<QPushButton>(u"OKButton"_s).isDefault());
        QTest::keyClick(&grid(), Qt::Key_Down);
        EXPECT_TRUE(control<QPushButton>(u"OKButton"_s).isDefault());
        QTest::keyClick(&grid(), Qt::Key_Return);
    });
    EXPECT_EQ(mottaker.texts[KundeFelt::KundeNavn], u"Berit"_s);
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmKunderTest, TypingANameAndEnterPick)
{
    addCustomer(10001, u"Anne"_s);
    addCustomer(10002, u"Berit"_s);
    pick(mottaker, [&] {
        runEvents();
        QTest::keyClicks(&grid(), u"beri"_s);
        QTest::keyClick(&grid(), Qt::Key_Return);
    });
    EXPECT_EQ(mottaker.texts[KundeFelt::KundeNavn], u"Berit"_s);
}

TEST_F(FrmKunderTest, EnterAtOncePicksTheMarkedRow)
{
    addCustomer(10001, u"Anne"_s);
    pick(mottaker, [&] {
        runEvents();
        QTest::keyClick(&grid(), Qt::Key_Return);
    });
    EXPECT_EQ(mottaker.texts[KundeFelt::KundeNavn], u"Anne"_s);
}

TEST_F(FrmKunderTest, AClickMakesOkTheDefaultButton)
{
    addCustomer(10001, u"Anne"_s);
    open();
    EXPECT_FALSE(control<QPushButton>(u"OKButton"_s).isDefault());
    clickCell(1, 1);
    EXPECT_TRUE(control<QPushButton>(u"OKButton"_s).isDefault());
}

TEST_F(FrmKunderTest, CancelAndEscapeGiveNothing)
{
    addAnne();
    pick(mottaker, [&] { press(u"CancelButton"_s); });
    EXPECT_EQ(screen(), nullptr);
    pick(mottaker, [&] { QTest::keyClick(&grid(), Qt::Key_Escape); });
    EXPECT_EQ(screen(), nullptr);
    EXPECT_TRUE(mottaker.given.isEmpty());
}
