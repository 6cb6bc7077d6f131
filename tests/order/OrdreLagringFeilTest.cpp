#include "order/OrdreLagring.h"

#include "order/OrdreTilLagring.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;
using namespace linjekolonne;
namespace hode = ordrefelt;

namespace {

/// What keeps an order from being stored, and what is left then.
class OrdreLagringFeilTest : public OrdreTilLagring
{
protected:
    const QString feilbar = u"Feil som må rettes før ordren kan lagres:\n"_s;
};

// --- The checks

TEST_F(OrdreLagringFeilTest, AllFaultsStandInOneBox)
{
    apne();
    klikk(u"btnNew"_s);
    skrivLinje(1, u"P1"_s, u"-1"_s);
    skrivCelle(kAntall, 2, u"1"_s);
    skrivCelle(kPris, 2, u"100"_s);
    skrivCelle(kMvaPst, 2, u"25"_s);
    EXPECT_EQ(tekst(hode::kSumBrutto), u" 0,00"_s);
    const QStringList before = knapperPaa();
    lagre();
    EXPECT_EQ(meldinger.ta(),
              QStringList({feilbar + u"linje 2 må ha Produkt nr. og/eller Produkt navn\n"
                                     u"kundenummer kan ikke være blank\n"
                                     u"kundenavn kan ikke være blank\n"
                                     u"postnummer kan ikke være blank\n"
                                     u"fakturasum kan ikke være 0\n"_s}));
    EXPECT_EQ(meldinger.ikoner.last(), QMessageBox::Warning);
    EXPECT_EQ(headers(), QStringList());
    EXPECT_EQ(knapperPaa(), before);
    EXPECT_TRUE(grid().editModeReplace());
}

TEST_F(OrdreLagringFeilTest, EachCheckHasItsText)
{
    struct Sak
    {
        int felt;
        QString tekst;
        QString melding;
    };
    const Sak saker[] = {
        {hode::kKundeNr, u"  "_s, u"kundenummer kan ikke være blank\n"_s},
        {hode::kKundeNr, u"99"_s, u"ugyldig/manglende kundenummer\n"_s},
        {hode::kKundeNavn, u" "_s, u"kundenavn kan ikke være blank\n"_s},
        {hode::kFakPostNr, u" "_s, u"postnummer kan ikke være blank\n"_s},
        {hode::kFakPostNr, u"0000"_s, u"postnummer kan ikke være blank\n"_s},
        {hode::kFakPostNr, u"N-0150"_s, u"postnummer kan ikke være blank\n"_s},
    };
    nyOrdre();
    SessionTap tap;
    for (const Sak &sak : saker) {
        const QString before = tekst(sak.felt);
        skriv(sak.felt, sak.tekst);
        lagre();
        EXPECT_EQ(meldinger.ta(), QStringList({feilbar + sak.melding})) << sak.tekst.toStdString();
        skriv(sak.felt, before);
    }
    EXPECT_TRUE(tap.statements().contains(
        u"SELECT COUNT (*) FROM KundeLev WHERE KlientNr= 5 AND KundeNr=99"_s));
    EXPECT_EQ(headers(), QStringList());
    lagre();
    EXPECT_EQ(headers().size(), 1);
}

TEST_F(OrdreLagringFeilTest, ASumBelowOneKroneIsNone)
{
    nyOrdre();
    for (const QString &pris : {u"0,6"_s, u"-0,6"_s}) {
        skrivCelle(kAntall, 1, u"1"_s);
        skrivCelle(kPris, 1, pris);
        EXPECT_TRUE(tekst(hode::kSumBrutto).endsWith(u"0,75"));
        lagre();
        EXPECT_EQ(meldinger.ta(), QStringList({feilbar + u"fakturasum kan ikke være 0\n"_s}));
    }
    skrivCelle(kPris, 1, u"0,8"_s);
    EXPECT_EQ(tekst(hode::kSumBrutto), u" 1,00"_s);
    lagre();
    EXPECT_EQ(headers().size(), 1);
}

TEST_F(OrdreLagringFeilTest, TheFirstBadLineIsTold)
{
    nyOrdre();
    for (const int row : {3, 4}) {
        skrivCelle(kAntall, row, u"1"_s);
        skrivCelle(kPris, row, u"50"_s);
    }
    lagre();
    EXPECT_EQ(meldinger.ta(),
              QStringList({feilbar + u"linje 3 må ha Produkt nr. og/eller Produkt navn\n"_s}));
    skrivCelle(kProduktNavn, 3, u"Ekstra"_s);
    skrivCelle(kProduktNavn, 4, u"Mer"_s);
    lagre();
    EXPECT_EQ(lines().size(), 3);
}

// --- Failures

TEST_F(OrdreLagringFeilTest, AnApostropheInTheHeaderIsAFailure)
{
    nyOrdre();
    skriv(hode::kKundeNavn, u"O'Brien"_s);
    SessionTap tap;
    koblePaaNytt();
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet})) << "the error's text has been read already";
    EXPECT_EQ(meldinger.ikoner.last(), QMessageBox::Warning);
    EXPECT_EQ(headers(), QStringList());
    EXPECT_TRUE(tap.calls().contains(u"rollback"_s));
    EXPECT_EQ(tap.statements().filter(u"OrdreLinjer"_s), QStringList());
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);
    EXPECT_EQ(tekst(hode::kKundeNavn), u"O'Brien"_s) << "what was typed stays";
    EXPECT_EQ(celle(kProduktNr, 1), u"P1"_s);
    EXPECT_EQ(notat(), QString());
}

TEST_F(OrdreLagringFeilTest, EnterAfterAFailureKeepsWhatWasTyped)
{
    nyOrdre();
    skriv(hode::kKundeNavn, u"O'Brien"_s);
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList(feilet));
    EXPECT_EQ(fokus(), u"txtFields_18"_s);
    tast(Qt::Key_Return);
    ASSERT_NE(skjerm(), nullptr);
    EXPECT_EQ(tekst(hode::kKundeNavn), u"O'Brien"_s);
}

TEST_F(OrdreLagringFeilTest, ARefusedOrderLeavesTheFocusOnTheCommand)
{
    nyOrdre();
    skriv(hode::kKundeNavn, QString());
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList(feilbar + u"kundenavn kan ikke være blank\n"_s));
    EXPECT_EQ(fokus(), u"btnSave"_s);
}

TEST_F(OrdreLagringFeilTest, AFailedChangeLeavesTheStoredOrder)
{
    endreOrdre();
    const QStringList before = lines();
    skriv(hode::kKundeNavn, u"O'Brien"_s);
    skrivCelle(kAntall, 1, u"7"_s);
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    EXPECT_EQ(headers(), QStringList({u"1|Kunde AS"_s}));
    EXPECT_EQ(lines(), before);
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);

    klikk(u"btnChange"_s); // the way on
    skriv(hode::kKundeNavn, u"OBrien"_s);
    lagre();
    EXPECT_EQ(headers(), QStringList({u"1|OBrien"_s}));
}

TEST_F(OrdreLagringFeilTest, AChangeOfAnOrderThatWasNeverStoredStoresNothing)
{
    nyOrdre();
    skriv(hode::kKundeNavn, u"O'Brien"_s);
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    klikk(u"btnChange"_s); // on by the state after a save, with no order behind it
    skriv(hode::kKundeNavn, u"OBrien"_s);
    SessionTap tap;
    koblePaaNytt();
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    EXPECT_EQ(tap.statements().filter(u" WHERE ID= 0"_s).size(), 1);
    EXPECT_EQ(tap.statements().filter(u"OrdreLinjer"_s), QStringList());
    EXPECT_EQ(tap.calls().filter(u"rollback"_s), QStringList()) << "committed all the same";
    EXPECT_EQ(headers(), QStringList());
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);
}

TEST_F(OrdreLagringFeilTest, AnOrderDeletedMeanwhileIsReportedAsSavedAndIsNot)
{
    endreOrdre();
    run(u"DELETE FROM OrdreLinjer"_s);
    run(u"DELETE FROM Ordre"_s);
    lagre();
    EXPECT_EQ(notat(), u"Posten er lagret."_s) << "an update that hits no row is no error";
    EXPECT_EQ(headers(), QStringList());
    EXPECT_EQ(lines(), QStringList()) << "its lines have nothing to belong to";
    EXPECT_NE(gDB->LastError(), QString());
}

TEST_F(OrdreLagringFeilTest, DaysOfPaymentBeyondTheirColumnAreAFailure)
{
    nyOrdre();
    skriv(hode::kBetBet, u"32768"_s);
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    EXPECT_EQ(headers(), QStringList());
}

TEST_F(OrdreLagringFeilTest, AClearedDateIsAFailure)
{
    nyOrdre();
    skriv(hode::kOrdreDato, {});
    SessionTap tap;
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    EXPECT_EQ(tap.statements().filter(u",# Null#,"_s).size(), 1);
    EXPECT_EQ(headers(), QStringList());
}

TEST_F(OrdreLagringFeilTest, ADateThatIsNoneIsAFailure)
{
    nyOrdre();
    skriv(hode::kLevDato, u"31.02.2014"_s);
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    EXPECT_EQ(headers(), QStringList());
}

TEST_F(OrdreLagringFeilTest, ALineThatFailsIsLostWithoutAWord)
{
    endreOrdre();
    skrivCelle(kProduktNavn, 2, u"O'Brien"_s);
    lagre();
    EXPECT_EQ(notat(), u"Posten er lagret."_s);
    EXPECT_EQ(rows(u"SELECT PosNr,ProduktNr FROM OrdreLinjer ORDER BY PosNr"_s),
              QStringList({u"10|P1"_s, u"30|P3"_s}));
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);
    EXPECT_NE(gDB->LastError(), QString()) << "its text waits for the next reader";
}

TEST_F(OrdreLagringFeilTest, LinesThatCannotBeDeletedAreThereTwice)
{
    const int id = endreOrdre();
    SessionTap tap;
    tap.rewriteStatements([](const QString &statement) {
        if (statement.startsWith(u"DELETE"))
            throw RunTimeError(ado::errors::kTimeout, u"Opptatt"_s);
        return statement;
    });
    ado::SessionPool::shared().clear();
    lagre();
    EXPECT_EQ(notat(), u"Posten er lagret."_s);
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM OrdreLinjer WHERE OrdreID=%1"_s.arg(id)).value(0),
              u"6"_s);
    EXPECT_NE(gDB->LastError(), QString());
}

TEST_F(OrdreLagringFeilTest, AnOldErrorTextCountsAsAFailureOfTheHeader)
{
    nyOrdre();
    EXPECT_FALSE(gDB->Execute(u"DELETE FROM FinnesIkke"_s));
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    EXPECT_EQ(headers(), QStringList({u"1|Kunde AS"_s})) << "the rollback takes nothing back";
    EXPECT_EQ(lines(), QStringList());
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);
}

TEST_F(OrdreLagringFeilTest, TheFirstSaveOnANewDatabaseStoresTheHeaderAndReportsAFailure)
{
    // The start that makes the tables has columns refused that they have already.
    for (const QString &table : {u"OrdreLinjer"_s, u"Ordre"_s, u"Produkt"_s})
        run(u"DROP TABLE "_s + table);
    reload();
    ASSERT_EQ(startModule(), 1);
    leggProdukt(u"P1"_s, u"Frakt"_s, u"100"_s, u"25"_s);
    nyOrdre();
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    EXPECT_EQ(headers(), QStringList({u"1|Kunde AS"_s}));
    EXPECT_EQ(lines(), QStringList());
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);

    klikk(u"btnPrint"_s); // which lets the next order be entered
    nyOrdre();
    lagre();
    EXPECT_EQ(notat(), u"Posten er lagret."_s);
    EXPECT_EQ(headers().last(), u"2|Kunde AS"_s);
    EXPECT_EQ(lines().size(), 1);
}

TEST_F(OrdreLagringFeilTest, ACustomerNumberThatIsNoneLeavesSuchAText)
{
    nyOrdre();
    skriv(hode::kKundeNr, u"abc"_s);
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet})) << "a count that fails is no count of 0";
    EXPECT_EQ(rows(u"SELECT KundeNr FROM Ordre"_s), QStringList({u"0"_s}));
}

TEST_F(OrdreLagringFeilTest, TwoScreensWithOneNumberMeetInTheConstraint)
{
    nyOrdre();
    SessionTap tap;
    bool tatt = false;
    tap.rewriteStatements([&](const QString &statement) {
        if (statement.startsWith(u"INSERT INTO Ordre ") && !std::exchange(tatt, true))
            leggOrdre({.ordreNr = 1, .kundeNavn = u"Nabo AS"_s, .medLinje = false});
        return statement;
    });
    ado::SessionPool::shared().clear();
    lagre();
    EXPECT_EQ(meldinger.ta(), QStringList({feilet}));
    EXPECT_EQ(headers(), QStringList({u"1|Nabo AS"_s}));
    EXPECT_EQ(lines(), QStringList());
    EXPECT_EQ(knapperPaa(), knapperEtterLagring);
}

TEST_F(OrdreLagringFeilTest, WithoutTheOpenConnectionTheSaveGoesOn)
{
    nyOrdre();
    gConn.reset();
    lagre();
    EXPECT_EQ(notat(), u"Posten er lagret."_s);
    EXPECT_EQ(lines().size(), 1);
}

TEST_F(OrdreLagringFeilTest, TheScreenMayBeClosedWhileTheNoteStands)
{
    nyOrdre();
    const QPointer<frmOrdre> screen = skjerm();
    QTimer::singleShot(0, qApp, [] { skjerm()->unload(); });
    QTest::mouseClick(control(u"btnSave"_s), Qt::LeftButton);
    runEvents();
    EXPECT_EQ(screen, nullptr);
    EXPECT_EQ(headers().size(), 1);
}

} // namespace
