#include "order/OrdreLager.h"

#include "order/OrdreMedLinjer.h"
#include "support/SessionTap.h"

#include <QCheckBox>

using namespace Qt::StringLiterals;
using namespace linjekolonne;
namespace hode = ordrefelt;

namespace {

/// How orders come into the order screen.
class OrdreLagerTest : public OrdreMedLinjer
{
protected:
    static QStringList header()
    {
        QStringList texts;
        for (int nr = 0; nr < hode::kAntall; ++nr)
            texts += tekst(nr);
        return texts;
    }
    static bool erBetalt() { return control<QCheckBox>(u"chkBetalt"_s)->isChecked(); }
};

TEST_F(OrdreLagerTest, OrdersAreReadByTheirStatement)
{
    const QString statement =
        u"SELECT ID,KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,KundeNr,KundeNavn,"_s
        u"FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,LevAdresse2,LevPostNr,"_s
        u"LevPoststed,KID,BetBet,OrdreDato,FakDato,ForfallDato,LevDato,RabattPst,RabattKr,MvaKr,"_s
        u"SumNetto,SumBrutto,Avrunding,Kontrollsiffer FROM Ordre WHERE KlientNr= 5"_s;
    const int id = leggOrdre({.ordreNr = 7});
    {
        SessionTap tap;
        apne();
        const QStringList orders = tap.statements().filter(u" FROM Ordre WHERE"_s);
        EXPECT_EQ(orders, QStringList({statement}));
        EXPECT_EQ(tap.statements().filter(u"OrdreLinjer"_s).value(0),
                  u"SELECT * FROM OrdreLinjer WHERE OrdreID= %1 ORDER BY PosNr"_s.arg(id));
    }
    skjerm()->unload();
    runEvents();
    SessionTap tap;
    SharedForm<frmOrdre>::get().settInnID(id);
    apne();
    EXPECT_EQ(tap.statements().filter(u" FROM Ordre WHERE"_s),
              QStringList({statement + u" AND ID= %1"_s.arg(id)}));
}

TEST_F(OrdreLagerTest, TheFieldsShowTheirColumns)
{
    leggOrdre({.ordreNr = 12, .sumBrutto = u"1234567.5"_s, .betalt = true});
    run(u"UPDATE Ordre SET MvaKr=25.254,SumNetto=-1,Avrunding=-0.4,Kontrollsiffer=7"_s);
    apne();
    EXPECT_EQ(header(), QStringList({u"Kunde AS"_s,   u"Gate 1"_s,      u"Bakgården"_s,
                                     u"0150"_s,       u"OSLO"_s,        u"Kai 3"_s,
                                     u"Port 4"_s,     u"7010"_s,        u"TRONDHEIM"_s,
                                     u"14"_s,         u"01.03.2014"_s,  u"03.03.2014"_s,
                                     u"02.03.2014"_s, u"16.03.2014"_s,  u"Kari"_s,
                                     u"Ola"_s,        u"12"_s,          u"Ordre"_s,
                                     u"10001"_s,      u"0000018"_s,     u"- 1,00"_s,
                                     u" 25,25"_s,     u"1234 567,50"_s, u"7"_s,
                                     u"Kari"_s,       u"-0,40"_s,       u""_s}));
    EXPECT_TRUE(erBetalt());
}

TEST_F(OrdreLagerTest, WhatIsNullIsBlank)
{
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus) VALUES (5,3,'Ordre')"_s);
    apne();
    QStringList expected(hode::kAntall, QString());
    expected[hode::kOrdreNr] = u"3"_s;
    expected[hode::kOrdreStatus] = u"Ordre"_s;
    EXPECT_EQ(header(), expected);
    EXPECT_FALSE(erBetalt());
}

TEST_F(OrdreLagerTest, LinesStandByPositionInTheirForms)
{
    const int id = leggOrdre({.ordreNr = 1, .medLinje = false});
    leggLinje(id, 20, u"P1"_s, u"2.5"_s, u"1234.5"_s);
    leggLinje(id, 10, u"P2"_s, u"-1"_s, u"0.005"_s);
    run(u"UPDATE OrdreLinjer SET RabattKr=3,SumNetto=1234567,MvaPst=12.25,SumBrutto=-0.5 "
        u"WHERE PosNr=20"_s);
    run(u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNavn) VALUES (%1,30,'Hilsen')"_s.arg(id));
    const QStringList ids = rows(u"SELECT ID FROM OrdreLinjer ORDER BY PosNr"_s);
    apne();
    EXPECT_EQ(grid().dataRowCnt(), 3);
    EXPECT_EQ(rad(1, 1, 10), QStringList({u"P2"_s, u"Frakt"_s, u"-1,0"_s, u" 0,01"_s, u"0,00"_s,
                                          u" 100,00"_s, u"25,0"_s, u" 125,00"_s, ids[0], u"10"_s}));
    EXPECT_EQ(rad(2, 1, 10),
              QStringList({u"P1"_s, u"Frakt"_s, u"2,5"_s, u"1 234,50"_s, u"3,00"_s,
                           u"1234 567,00"_s, u"12,3"_s, u"- 0,50"_s, ids[1], u"20"_s}));
    EXPECT_EQ(rad(3, 1, 10), QStringList({u""_s, u"Hilsen"_s, u""_s, u""_s, u""_s, u""_s, u""_s,
                                          u""_s, ids[2], u"30"_s}));
}

TEST_F(OrdreLagerTest, TheGridGrowsWithTheLines)
{
    const int id = leggOrdre({.ordreNr = 1, .medLinje = false});
    for (int i = 1; i <= 23; ++i)
        leggLinje(id, i * 10, u"P1"_s, QString::number(i), u"100"_s);
    apne();
    EXPECT_EQ(grid().dataRowCnt(), 23);
    EXPECT_EQ(grid().maxRows(), 30);
    EXPECT_EQ(celle(kAntall, 23), u"23,0"_s);
    EXPECT_TRUE(grid().redraw());
}

TEST_F(OrdreLagerTest, OnlyTheClientsOrdersAreRead)
{
    leggOrdre({.ordreNr = 1});
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,KundeNavn) "
        u"VALUES (6,1,'Ordre','Fremmed')"_s);
    apne();
    EXPECT_EQ(tekst(hode::kKundeNavn), u"Kunde AS"_s);
    klikk(u"cmdNext"_s);
    EXPECT_EQ(tekst(hode::kKundeNavn), QString());
}

TEST_F(OrdreLagerTest, TheBoxAndTheChangeButtonGoByTheFirstRecord)
{
    leggOrdre({.ordreNr = 1, .status = u"Fakturert"_s});
    leggOrdre({.ordreNr = 2});
    apne();
    EXPECT_EQ(tekst(hode::kOrdreNr), u"2"_s) << "the last one shows";
    EXPECT_TRUE(erPaa(u"chkBetalt"_s));
    klikk(u"cmdFirst"_s);
    EXPECT_TRUE(erPaa(u"chkBetalt"_s));

    run(u"UPDATE Ordre SET OrdreStatus='Betalt' WHERE OrdreNr=1"_s);
    run(u"UPDATE Ordre SET OrdreStatus='Bokført' WHERE OrdreNr=2"_s);
    (new RecordingForm)->show();
    apne();
    EXPECT_EQ(tekst(hode::kOrdreStatus), u"Bokført"_s);
    EXPECT_FALSE(erPaa(u"chkBetalt"_s));
}

TEST_F(OrdreLagerTest, AnOrderWithLinesCanBePrintedAndCopied)
{
    leggOrdre({.ordreNr = 1});
    apne();
    EXPECT_EQ(knapperPaa(),
              QStringList({u"btnPrint"_s, u"btnCopy"_s, u"btnNew"_s, u"btnChange"_s}));
}

TEST_F(OrdreLagerTest, AnOrderWithoutLinesCannotBePrintedOrCopied)
{
    leggOrdre({.ordreNr = 1, .medLinje = false});
    apne();
    EXPECT_EQ(knapperPaa(), QStringList({u"btnNew"_s, u"btnChange"_s}));
    EXPECT_EQ(grid().dataRowCnt(), 0);
}

TEST_F(OrdreLagerTest, AnInvoiceCannotBeChanged)
{
    for (const QString &status : {u"Fakturert"_s, u"Bokført"_s, u"Betalt"_s}) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        leggOrdre({.ordreNr = 1, .status = status});
        apne();
        EXPECT_EQ(knapperPaa(), QStringList({u"btnPrint"_s, u"btnCopy"_s, u"btnNew"_s}));
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(OrdreLagerTest, WithoutOrdersTheScreenIsBlank)
{
    apne();
    EXPECT_EQ(header().join(QString()), QString());
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_EQ(grid().maxRows(), 10);
    EXPECT_FALSE(erPaa(u"btnPrint"_s));
    EXPECT_FALSE(erPaa(u"btnCopy"_s));
    EXPECT_TRUE(erPaa(u"btnNew"_s));
}

TEST_F(OrdreLagerTest, ScreenBecomesBlankWhenTheOrdersAreGone)
{
    leggOrdre({.ordreNr = 1, .betalt = true});
    apne();
    run(u"DELETE FROM OrdreLinjer"_s);
    run(u"DELETE FROM Ordre"_s);
    (new RecordingForm)->show();
    apne();
    EXPECT_EQ(header().join(QString()), QString());
    EXPECT_FALSE(erBetalt());
    EXPECT_EQ(grid().dataRowCnt(), 0);
}

TEST_F(OrdreLagerTest, AFailedReadIsPassedOver)
{
    leggOrdre({.ordreNr = 1});
    {
        SessionTap tap;
        tap.fail(u"query"_s);
        apne();
    }
    EXPECT_EQ(header().join(QString()), QString());
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_TRUE(grid().redraw());
    EXPECT_NE(gDB->LastError(), QString());
}

TEST_F(OrdreLagerTest, BeyondTheEndsNothingShows)
{
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    for (const auto &[end, beyond] :
         {std::pair(u"cmdLast"_s, u"cmdNext"_s), std::pair(u"cmdFirst"_s, u"cmdPrevious"_s)}) {
        apne();
        klikk(end);
        klikk(beyond);
        EXPECT_EQ(header().join(QString()), QString());
        EXPECT_EQ(grid().dataRowCnt(), 0);
        EXPECT_EQ(knapperPaa(), QStringList({u"btnNew"_s, u"btnCancel"_s}));
        klikk(end);
        EXPECT_EQ(tekst(hode::kKundeNavn), u"Kunde AS"_s);
        EXPECT_EQ(grid().dataRowCnt(), 1);
    }
}

TEST_F(OrdreLagerTest, MovingWithoutOrdersKeepsWhatIsBeingTyped)
{
    apne();
    klikk(u"btnNew"_s);
    skriv(hode::kKundeNavn, u"Ny kunde"_s);
    klikk(u"cmdFirst"_s);
    EXPECT_EQ(tekst(hode::kKundeNavn), u"Ny kunde"_s);
}

TEST_F(OrdreLagerTest, TheGridIsATabStopInAModeOnly)
{
    leggOrdre({.ordreNr = 1});
    apne();
    EXPECT_FALSE(grid().tabStop());
    klikk(u"btnChange"_s);
    EXPECT_TRUE(grid().tabStop());
    klikk(u"cmdFirst"_s);
    EXPECT_TRUE(grid().tabStop()) << "a move in a mode";
}

TEST_F(OrdreLagerTest, RowsFollowTheRecordOnEachMove)
{
    for (int nr = 1; nr <= 3; ++nr) {
        const int id =
            leggOrdre({.ordreNr = nr, .kundeNavn = u"Kunde %1"_s.arg(nr), .medLinje = false});
        leggLinje(id, 10, u"P%1"_s.arg(nr), u"1"_s, u"100"_s);
    }
    apne();
    const auto shown = [] { return tekst(hode::kKundeNavn) + u'|' + celle(kProduktNr, 1); };
    EXPECT_EQ(shown(), u"Kunde 3|P3"_s);
    klikk(u"cmdPrevious"_s);
    EXPECT_EQ(shown(), u"Kunde 2|P2"_s);
    klikk(u"cmdFirst"_s);
    EXPECT_EQ(shown(), u"Kunde 1|P1"_s);
    klikk(u"cmdNext"_s);
    EXPECT_EQ(shown(), u"Kunde 2|P2"_s);
    klikk(u"cmdLast"_s);
    EXPECT_EQ(shown(), u"Kunde 3|P3"_s);
}

} // namespace
