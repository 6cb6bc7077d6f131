#include "order/OrdreLagring.h"

#include "order/OrdreTilLagring.h"

using namespace Qt::StringLiterals;
using namespace linjekolonne;
namespace hode = ordrefelt;

namespace {

/// What the order screen stores.
class OrdreLagringTest : public OrdreTilLagring
{
};

TEST_F(OrdreLagringTest, ANewOrderIsStored)
{
    nyOrdre();
    skriv(hode::kBetBet, u"14"_s);
    skriv(hode::kEgenRef, u"Kari"_s);
    skriv(hode::kDeresRef, u"Ola"_s);
    skriv(hode::kFakAdresse1, u"Gate 1"_s);
    skriv(hode::kFakAdresse2, u"Port 2"_s);
    skriv(hode::kLevAdresse1, u"Kai 3"_s);
    skriv(hode::kLevAdresse2, u"Skur 4"_s);
    skriv(hode::kLevPostNr, u"7010"_s);
    gaTil(hode::kFakDato); // the due date follows
    SessionTap tap;
    lagre();
    EXPECT_EQ(
        tap.statements().filter(u"INSERT INTO Ordre "_s),
        QStringList({u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,Betalt,EgenRef,DeresRef,"
                     u"KundeNr,KundeNavn,FakAdresse1,FakAdresse2,FakPostNr,FakPoststed,LevAdresse1,"
                     u"LevAdresse2,LevPostNr,LevPoststed,KID,BetBet,OrdreDato,FakDato,ForfallDato,"
                     u"LevDato,RabattPst,MvaKr,SumNetto,SumBrutto,Avrunding) VALUES ( 5, 1,"
                     u"'Ordre', 0,'Kari','Ola',10001,'Kunde AS','Gate 1','Port 2','0150','OSLO',"
                     u"'Kai 3','Skur 4','7010','TRONDHEIM','',14,#03/09/2014#,#03/09/2014#,"
                     u"#03/23/2014#,#03/09/2014#,0,50.00,200.00,250.00,0.00)"_s}));
    const QString id = rows(u"SELECT ID FROM Ordre"_s).value(0);
    EXPECT_EQ(tap.statements().filter(u"OrdreLinjer"_s),
              QStringList({u"DELETE FROM OrdreLinjer WHERE OrdreID= "_s + id,
                           u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNr,ProduktNavn,Antall,"
                           u"Pris,RabattPst,RabattKr,MvaPst,SumNetto,SumBrutto) VALUES ( "_s +
                               id + u", 10,'P1','Frakt',2.0,100.00,0,0,25.0,200.00,250.00)"_s}));
    EXPECT_EQ(lines(), QStringList({id + u"|10|P1|Frakt|2|100|0|0|25|200|250"_s}));
    EXPECT_EQ(rows(u"SELECT KlientNr,OrdreNr,OrdreStatus,Betalt,KundeNr,KundeNavn,BetBet,OrdreDato,"
                   u"ForfallDato,MvaKr,SumNetto,SumBrutto,Avrunding,KundeOrgNr,RabattKr,"
                   u"Kontrollsiffer FROM Ordre"_s),
              QStringList({u"5|1|Ordre|False|10001|Kunde AS|14|09.03.2014|23.03.2014|50|200|250|0|"
                           u"Null|Null|Null"_s}));
    EXPECT_EQ(notat(), u"Posten er lagret."_s);
    EXPECT_EQ(SharedForm<frmTMsgBox>::existing()->windowTitle(), u"Lagre"_s);
    EXPECT_EQ(SharedForm<frmTMsgBox>::existing()->IconID(), 64);
    EXPECT_EQ(klokke.sleeps, std::vector<int>({1000}));
    EXPECT_EQ(gDB->LastError(), QString());
}

TEST_F(OrdreLagringTest, TheCallsGoOutInTheirOrder)
{
    nyOrdre();
    SessionTap tap;
    koblePaaNytt();
    tap.forget();
    lagre();
    QStringList calls;
    for (const QString &call : tap.calls()) {
        if (call != u"release"_s && call != u"open"_s)
            calls += call.section(u' ', 0, 3);
    }
    EXPECT_EQ(calls, QStringList(
                         {u"query SELECT COUNT (*)"_s, u"query SELECT Max([OrdreNr])+1 AS"_s,
                          u"query SELECT FirstFakNr FROM"_s, u"begin"_s, u"begin"_s,
                          u"execute INSERT INTO Ordre"_s, u"query SELECT @@IDENTITY"_s, u"commit"_s,
                          u"begin"_s, u"execute DELETE FROM OrdreLinjer"_s, u"commit"_s, u"begin"_s,
                          u"execute INSERT INTO OrdreLinjer"_s, u"commit"_s, u"commit"_s}))
        << "the first begin and the last commit are those of the open connection";
}

TEST_F(OrdreLagringTest, AfterASaveTheWayOnIsPrinting)
{
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    nyOrdre();
    lagre();
    EXPECT_EQ(headers().size(), 3);
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);
    EXPECT_FALSE(grid().editModeReplace());
    EXPECT_TRUE(grid().tabStop());
    EXPECT_EQ(tekst(hode::kKundeNavn), u"Kunde AS"_s);
    gaTil(hode::kKundeNavn);
    EXPECT_EQ(fokus(), u"txtFields_0"_s) << "still New mode: the field keeps the focus";
    EXPECT_EQ(utskriftsID(), u"1"_s) << "not the ID of the order";
    EXPECT_TRUE(erPaa(u"btnNew"_s));
}

TEST_F(OrdreLagringTest, EnterAfterASaveGoesOnToPrinting)
{
    nyOrdre();
    int utskrifter = 0;
    frmOrdre::settUtskriftApner([&](const OrdreUtskrift &) { ++utskrifter; });
    lagre();
    EXPECT_EQ(fokus(), u"btnPrint"_s);
    tast(Qt::Key_Return);
    frmOrdre::settUtskriftApner({});
    EXPECT_EQ(utskrifter, 1);
    ASSERT_NE(skjerm(), nullptr);
}

TEST_F(OrdreLagringTest, ADoubleClickStoresANewOrderOnce)
{
    nyOrdre();
    lagreMedDobbeltklikk();
    EXPECT_EQ(headers(), QStringList({u"1|Kunde AS"_s}));
    EXPECT_EQ(lines().size(), 1);
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);
}

TEST_F(OrdreLagringTest, ADoubleClickOnAChangeLeavesTheOrderOfNumberOneAlone)
{
    leggOrdre({.ordreNr = 0, .kundeNavn = u"Nord AS"_s});
    endreOrdre();
    lagreMedDobbeltklikk();
    EXPECT_EQ(headers(), QStringList({u"0|Nord AS"_s, u"1|Kunde AS"_s}));
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);
}

TEST_F(OrdreLagringTest, AfterADoubleClickTheNextOrderIsStored)
{
    nyOrdre();
    lagreMedDobbeltklikk();
    klikk(u"btnPrint"_s);
    nyOrdre();
    lagre();
    EXPECT_EQ(headers().size(), 2);
}

TEST_F(OrdreLagringTest, AChangeIsStored)
{
    leggOrdre({.ordreNr = 0});
    const int id = endreOrdre();
    skriv(hode::kKundeNavn, u"Nytt navn"_s);
    SessionTap tap;
    lagre();
    EXPECT_EQ(tap.statements().filter(u"UPDATE"_s),
              QStringList({u"UPDATE Ordre SET KlientNr= 5,OrdreNr=1,OrdreStatus='Ordre',Betalt= 0,"
                           u"EgenRef='Kari',DeresRef='Ola',KundeNr=10001,KundeNavn='Nytt navn',"
                           u"FakAdresse1='Gate 1',FakAdresse2='Bakgården',FakPostNr='0150',"
                           u"FakPoststed='OSLO',LevAdresse1='Kai 3',LevAdresse2='Port 4',"
                           u"LevPostNr='7010',LevPoststed='TRONDHEIM',KID='0000018',BetBet=14,"
                           u"OrdreDato=#03/01/2014#,FakDato=#03/02/2014#,ForfallDato=#03/16/2014#,"
                           u"LevDato=#03/03/2014#,RabattPst=0,MvaKr=25.00,SumNetto=100.00,"
                           u"SumBrutto=375.00,Avrunding=0.00 WHERE ID= %1"_s.arg(id)}));
    EXPECT_EQ(headers(), QStringList({u"0|Kunde AS"_s, u"1|Nytt navn"_s}));
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM OrdreLinjer WHERE OrdreID=%1"_s.arg(id)).value(0),
              u"3"_s);
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);
    EXPECT_EQ(notat(), u"Posten er lagret."_s);
}

TEST_F(OrdreLagringTest, TheMiddleLineIsDropped)
{
    const int id = endreOrdre();
    skrivCelle(kProduktNr, 2, {});
    skrivCelle(kProduktNavn, 2, {});
    skrivCelle(kAntall, 2, u"0"_s);
    lagre();
    EXPECT_EQ(rows(u"SELECT PosNr,ProduktNr,Antall FROM OrdreLinjer WHERE OrdreID=%1 "
                   u"ORDER BY PosNr"_s.arg(id)),
              QStringList({u"10|P1|1"_s, u"20|P3|3"_s}));
    EXPECT_EQ(grid().dataRowCnt(), 3) << "on the screen it keeps its place";
}

TEST_F(OrdreLagringTest, TheMiddleLineIsChanged)
{
    const int id = endreOrdre();
    skrivCelle(kAntall, 2, u"1,25"_s);
    skrivCelle(kProduktNavn, 2, u"Frakt nord"_s);
    lagre();
    EXPECT_EQ(rows(u"SELECT PosNr,ProduktNavn,Antall,SumNetto,SumBrutto FROM OrdreLinjer "
                   u"WHERE OrdreID=%1 ORDER BY PosNr"_s.arg(id))[1],
              u"20|Frakt nord|1,3|125|156,25"_s)
        << "the quantity is stored to one decimal, the sums as they were computed";
    EXPECT_EQ(rows(u"SELECT SumNetto,MvaKr,SumBrutto FROM Ordre"_s),
              QStringList({u"525|131,25|656,25"_s}));
}

TEST_F(OrdreLagringTest, ATextAloneIsALineOfNoAmounts)
{
    nyOrdre();
    skrivCelle(kProduktNavn, 2, u"  Takk for oppdraget "_s);
    lagre();
    EXPECT_EQ(rows(u"SELECT PosNr,ProduktNr,ProduktNavn,Antall,Pris,SumBrutto FROM OrdreLinjer "
                   u"ORDER BY PosNr"_s)
                  .value(1),
              u"20||Takk for oppdraget|0|0|0"_s);
}

TEST_F(OrdreLagringTest, NumbersWithoutNameAndAmountAreDropped)
{
    nyOrdre();
    skrivCelle(kPris, 2, u"70"_s);
    skrivCelle(kProduktNavn, 3, u"Hilsen"_s);
    lagre();
    EXPECT_EQ(rows(u"SELECT PosNr,ProduktNavn FROM OrdreLinjer ORDER BY PosNr"_s),
              QStringList({u"10|Frakt"_s, u"20|Hilsen"_s}));
}

TEST_F(OrdreLagringTest, ACopyWithNegativeQuantitiesIsACreditNote)
{
    const int id = leggOrdre({.ordreNr = 1, .status = u"Fakturert"_s});
    apne();
    klikk(u"btnCopy"_s);
    staaI(kAntall, 1);
    gridtast(Qt::Key_Backspace); // what is typed does not replace the text here
    tastInn(u"-1"_s);
    gridtast(Qt::Key_Tab);
    EXPECT_EQ(tekst(hode::kSumBrutto), u"- 125,00"_s);
    lagre();
    EXPECT_EQ(rows(u"SELECT OrdreNr,OrdreStatus,SumNetto,MvaKr,SumBrutto FROM Ordre ORDER BY ID"_s),
              QStringList({u"1|Fakturert|100|25|125"_s, u"2|Ordre|-100|-25|-125"_s}));
    EXPECT_EQ(rows(u"SELECT Antall,SumBrutto FROM OrdreLinjer ORDER BY ID"_s),
              QStringList({u"1|125"_s, u"-1|-125"_s}))
        << "the lines of order " << id << " stay";
}

TEST_F(OrdreLagringTest, TheFirstNumberIsTheClients)
{
    run(u"UPDATE Klient SET FirstFakNr=1000"_s);
    nyOrdre();
    lagre();
    EXPECT_EQ(utskriftsID(), u"1"_s);
    klikk(u"btnNew"_s);
    nyOrdre();
    lagre();
    EXPECT_EQ(headers(), QStringList({u"1000|Kunde AS"_s, u"1001|Kunde AS"_s}));
}

TEST_F(OrdreLagringTest, TheStoredNumberIsAFreshOne)
{
    nyOrdre();
    EXPECT_EQ(tekst(hode::kOrdreNr), u"1"_s);
    leggOrdre({.ordreNr = 1, .kundeNavn = u"Nabo AS"_s});
    lagre();
    EXPECT_EQ(headers(), QStringList({u"1|Nabo AS"_s, u"2|Kunde AS"_s}));
    EXPECT_EQ(tekst(hode::kOrdreNr), u"1"_s) << "the screen goes on showing the other one";
}

TEST_F(OrdreLagringTest, AYearOutsideTheAccountingYearIsNoFault)
{
    nyOrdre();
    skriv(hode::kOrdreDato, u"31.12.2013"_s);
    lagre();
    EXPECT_EQ(rows(u"SELECT OrdreDato FROM Ordre"_s), QStringList({u"31.12.2013"_s}));
}

TEST_F(OrdreLagringTest, TheBoxIsStoredAsItStands)
{
    leggOrdre({.ordreNr = 1, .betalt = true});
    apne();
    klikk(u"btnChange"_s);
    SessionTap tap;
    lagre();
    EXPECT_EQ(rows(u"SELECT Betalt FROM Ordre"_s), QStringList({u"True"_s}));
    EXPECT_EQ(tap.statements().filter(u",Betalt= 1,"_s).size(), 1);
}

TEST_F(OrdreLagringTest, ASecondSaveOfTheSameOrderWorksOnNumberOne)
{
    leggOrdre({.ordreNr = 1});
    nyOrdre();
    lagre();
    klikk(u"btnChange"_s);
    SessionTap tap;
    lagre();
    // The order on the screen has number 2, which the constraint keeps from the row with ID 1.
    EXPECT_EQ(tap.statements().filter(u" WHERE ID= 1"_s).size(), 1);
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    EXPECT_EQ(headers(), QStringList({u"1|Kunde AS"_s, u"2|Kunde AS"_s}));
}

} // namespace
