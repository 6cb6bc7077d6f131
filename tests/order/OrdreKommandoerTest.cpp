#include "order/OrdreMedKommandoer.h"

#include "state/SharedState.h"
#include "support/SessionTap.h"

#include <QMessageBox>

namespace {

/// The modes of the order screen: browsing, New, Copy and Change.
class OrdreKommandoerTest : public OrdreMedKommandoer
{
};

// --- Browsing

TEST_F(OrdreKommandoerTest, OpeningStandsOnTheLastOrder)
{
    leggOrdre({.ordreNr = 1, .kundeNavn = u"Forste AS"_s});
    leggOrdre({.ordreNr = 2, .kundeNavn = u"Siste AS"_s});
    apne();
    EXPECT_EQ(tekst(0), u"Siste AS"_s);
    EXPECT_EQ(tekst(16), u"2"_s);
    EXPECT_EQ(celle(1, 1), u"P1"_s);
    EXPECT_EQ(knapperPaa(), kBrowse);
    EXPECT_TRUE(erPaa(u"btnClose"_s));
    EXPECT_FALSE(grid()->tabStop());
}

TEST_F(OrdreKommandoerTest, WithoutOrdersTheScreenIsBlankAndNewWorks)
{
    apne();
    for (int nr = 0; nr < 27; ++nr)
        EXPECT_EQ(tekst(nr), QString()) << nr;
    EXPECT_EQ(knapperPaa(), QStringList{u"btnNew"_s});
    klikk(u"btnNew"_s);
    EXPECT_EQ(tekst(16), u"1"_s);
    EXPECT_EQ(knapperPaa(), kEditing);
}

TEST_F(OrdreKommandoerTest, TheFourButtonsMoveThroughTheOrders)
{
    for (int nr = 1; nr <= 3; ++nr)
        leggOrdre({.ordreNr = nr});
    apne();
    const auto after = [](const QString &name) {
        klikk(name);
        return tekst(16);
    };
    EXPECT_EQ(after(u"cmdPrevious"_s), u"2"_s);
    EXPECT_EQ(after(u"cmdPrevious"_s), u"1"_s);
    EXPECT_EQ(after(u"cmdNext"_s), u"2"_s);
    EXPECT_EQ(after(u"cmdFirst"_s), u"1"_s);
    EXPECT_EQ(after(u"cmdLast"_s), u"3"_s);
    EXPECT_EQ(knapperPaa(), kBrowse + QStringList{u"btnCancel"_s});
}

TEST_F(OrdreKommandoerTest, AMovePutsTheFocusInKundeNrWhichMovesItOn)
{
    leggOrdre({});
    apne();
    for (const QString &name : {u"cmdFirst"_s, u"cmdPrevious"_s, u"cmdNext"_s, u"cmdLast"_s}) {
        control(u"btnClose"_s)->setFocus();
        runEvents();
        klikk(name);
        EXPECT_EQ(fokus(), u"cmdKunder"_s) << name.toStdString();
    }
    klikk(u"btnChange"_s);
    for (const QString &name : {u"cmdFirst"_s, u"cmdPrevious"_s, u"cmdNext"_s, u"cmdLast"_s}) {
        control(u"btnClose"_s)->setFocus();
        klikk(name);
        EXPECT_EQ(fokus(), u"txtFields_18"_s) << name.toStdString();
    }
}

TEST_F(OrdreKommandoerTest, PastTheEndsTheGridIsEmpty)
{
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    apne();
    klikk(u"cmdNext"_s);
    EXPECT_EQ(grid()->dataRowCnt(), 0);
    klikk(u"cmdNext"_s);
    EXPECT_EQ(grid()->dataRowCnt(), 0);
    klikk(u"cmdPrevious"_s);
    EXPECT_EQ(tekst(16), u"2"_s);
    EXPECT_EQ(celle(1, 1), u"P1"_s);
    klikk(u"cmdFirst"_s);
    klikk(u"cmdPrevious"_s);
    EXPECT_EQ(grid()->dataRowCnt(), 0);
    klikk(u"cmdPrevious"_s);
    klikk(u"cmdNext"_s);
    EXPECT_EQ(tekst(16), u"1"_s);
}

TEST_F(OrdreKommandoerTest, MovingWorksInNewAndChangeMode)
{
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    apne();
    klikk(u"btnNew"_s);
    klikk(u"cmdFirst"_s);
    EXPECT_EQ(tekst(16), u"1"_s);
    EXPECT_EQ(knapperPaa(), kBrowse + QStringList{u"btnCancel"_s});
    // The mode has stayed: a field keeps the focus.
    gaTil(0);
    EXPECT_EQ(fokus(), u"txtFields_0"_s);
}

// --- New

TEST_F(OrdreKommandoerTest, NewClearsTheScreen)
{
    leggOrdre({.ordreNr = 7});
    apne();
    betalt()->setChecked(true);
    control<QCheckBox>(u"chkLevAdr"_s)->setChecked(true);
    klikk(u"btnNew"_s);
    for (const int nr : {0, 1, 2, 3, 4, 5, 6, 7, 8, 14, 15, 18, 19, 24})
        EXPECT_EQ(tekst(nr), QString()) << nr;
    for (const int nr : {20, 21, 22, 23, 25, 26})
        EXPECT_EQ(tekst(nr), u"0.00"_s) << nr;
    EXPECT_EQ(tekst(9), u"0"_s);
    EXPECT_EQ(tekst(16), u"8"_s);
    EXPECT_EQ(tekst(17), u"Ordre"_s);
    for (const int nr : {10, 11, 12, 13})
        EXPECT_EQ(tekst(nr), u"09.03.2014"_s) << nr;
    EXPECT_FALSE(betalt()->isChecked());
    EXPECT_FALSE(control<QCheckBox>(u"chkLevAdr"_s)->isChecked());
    EXPECT_EQ(grid()->dataRowCnt(), 0);
    EXPECT_EQ(grid()->maxRows(), 10);
    EXPECT_EQ(fokus(), u"txtFields_18"_s);
    EXPECT_EQ(knapperPaa(), kEditing);
    EXPECT_TRUE(erPaa(u"btnClose"_s));
    EXPECT_TRUE(grid()->tabStop());
    EXPECT_TRUE(grid()->editModeReplace());
    EXPECT_EQ(verktoytips(u"cmdKunder"_s), u"Klikk for å se kundene"_s);
}

TEST_F(OrdreKommandoerTest, TheFirstNumberComesFromTheClient)
{
    apne();
    const std::pair<int, QString> numbers[] = {
        {0, u"1"_s}, {1, u"1"_s}, {2, u"2"_s}, {1000, u"1000"_s}};
    for (const auto &[first, shown] : numbers) {
        run(u"UPDATE Klient SET FirstFakNr=%1 WHERE KlientNr=5"_s.arg(first));
        klikk(u"btnNew"_s);
        EXPECT_EQ(tekst(16), shown);
        klikk(u"btnCancel"_s);
    }
    // It counts no longer once there is an order.
    leggOrdre({.ordreNr = 40});
    klikk(u"btnNew"_s);
    EXPECT_EQ(tekst(16), u"41"_s);
}

TEST_F(OrdreKommandoerTest, NewWarnsOfAnIncompleteClient)
{
    run(u"UPDATE Klient SET PostNr=Null, TlfArbeid='123' WHERE KlientNr=5"_s);
    apne();
    klikk(u"btnNew"_s);
    EXPECT_EQ(meldinger.ta(), QStringList{u"Det er ufullstendig informasjon på klienten,\n"
                                          "den bør rettes før ordre registreres:\n\n"
                                          "PostNr mangler\tMå rettes\n"
                                          "Tlf. arbeid feil\tBør rettes\n\n\n"
                                          "Oppdateres i Klient ajourhold i Strekkbok.\n"_s});
    EXPECT_EQ(meldinger.ikoner, QList<int>{QMessageBox::Warning});
    // It blocks nothing, and a message box is no activation, which would turn Cancel off.
    EXPECT_EQ(knapperPaa(), kEditing);
}

TEST_F(OrdreKommandoerTest, ACompleteClientGivesNoWarning)
{
    apne();
    klikk(u"btnNew"_s);
    EXPECT_EQ(meldinger.tekster, QStringList());
}

TEST_F(OrdreKommandoerTest, NewGoesOnWhenTheDatabaseCannotBeRead)
{
    leggOrdre({.ordreNr = 7});
    apne();
    SessionTap tap;
    ado::SessionPool::shared().clear();
    tap.fail(u"query"_s);
    klikk(u"btnNew"_s);
    EXPECT_EQ(tekst(16), u"0"_s) << "there is no number to be had";
    EXPECT_EQ(tekst(17), u"Ordre"_s);
    EXPECT_EQ(tekst(13), u"09.03.2014"_s);
    EXPECT_EQ(knapperPaa(), kEditing);
    ASSERT_EQ(meldinger.tekster.size(), 1) << "all of the client's data count as missing";
    EXPECT_TRUE(meldinger.ta()[0].contains(u"Bankkonto mangler\tMå rettes"_s));
}

TEST_F(OrdreKommandoerTest, NewEndsChangeMode)
{
    leggOrdre({});
    apne();
    klikk(u"btnChange"_s);
    // New is off while an order is changed; a move turns it on and keeps the mode.
    klikk(u"cmdLast"_s);
    klikk(u"btnNew"_s);
    klikk(u"btnCancel"_s);
    // Cancel of a new order reads nothing again.
    EXPECT_EQ(tekst(16), u"0"_s);
}

TEST_F(OrdreKommandoerTest, EnterAfterACancelInBrowseModeClosesNothing)
{
    leggOrdre({.ordreNr = 1});
    apne();
    klikk(u"cmdFirst"_s);
    klikk(u"btnCancel"_s);
    EXPECT_EQ(fokus(), u"btnChange"_s);
    tast(Qt::Key_Return);
    EXPECT_NE(skjerm(), nullptr);
}

TEST_F(OrdreKommandoerTest, CancelOfANewOrderLeavesBlankFields)
{
    leggOrdre({.ordreNr = 7});
    apne();
    klikk(u"btnNew"_s);
    skriv(0, u"Ny kunde"_s);
    klikk(u"btnCancel"_s);
    EXPECT_EQ(tekst(0), QString());
    EXPECT_EQ(tekst(16), u"0"_s);
    EXPECT_EQ(tekst(17), QString());
    // Nothing can be changed as long as the status field is blank.
    EXPECT_EQ(knapperPaa(), QStringList{u"btnNew"_s});
    klikk(u"cmdLast"_s);
    EXPECT_EQ(tekst(16), u"7"_s);
    EXPECT_EQ(knapperPaa(), kBrowse + QStringList{u"btnCancel"_s});
    EXPECT_EQ(fokus(), u"cmdKunder"_s);
}

// --- Copy

TEST_F(OrdreKommandoerTest, CopyTakesTheOrderAsANewOne)
{
    leggOrdre({.ordreNr = 7, .status = u"Bokført"_s});
    apne();
    klikk(u"btnCopy"_s);
    EXPECT_EQ(tekst(16), u"8"_s);
    EXPECT_EQ(tekst(17), u"Ordre"_s);
    for (const int nr : {10, 11, 12})
        EXPECT_EQ(tekst(nr), u"09.03.2014"_s) << nr;
    EXPECT_EQ(tekst(13), u"23.03.2014"_s);
    EXPECT_EQ(tekst(0), u"Kunde AS"_s);
    EXPECT_EQ(tekst(19), u"0000018"_s);
    EXPECT_EQ(celle(1, 1), u"P1"_s);
    EXPECT_EQ(fokus(), u"txtFields_18"_s);
    EXPECT_EQ(knapperPaa(), kEditing);
    EXPECT_FALSE(grid()->tabStop());
    EXPECT_FALSE(grid()->editModeReplace());
}

TEST_F(OrdreKommandoerTest, CopyLeavesTheYearsWarningAndTheTipAlone)
{
    leggOrdre({.ordreNr = 7});
    gAar = 2015;
    apne();
    klikk(u"cmdKunder"_s);
    const QString tip = verktoytips(u"cmdKunder"_s);
    klikk(u"btnCopy"_s);
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
    EXPECT_EQ(verktoytips(u"cmdKunder"_s), tip);
}

TEST_F(OrdreKommandoerTest, CopyDoesNothingInAMode)
{
    leggOrdre({.ordreNr = 7});
    leggOrdre({.ordreNr = 8});
    apne();
    klikk(u"btnChange"_s);
    klikk(u"cmdFirst"_s); // turns Copy on
    klikk(u"btnCopy"_s);
    EXPECT_EQ(tekst(16), u"7"_s);
    EXPECT_EQ(knapperPaa(), kBrowse + QStringList{u"btnCancel"_s});
    klikk(u"btnNew"_s);
    klikk(u"cmdFirst"_s);
    klikk(u"btnCopy"_s);
    EXPECT_EQ(tekst(16), u"7"_s);
}

TEST_F(OrdreKommandoerTest, ACopyIsCancelledLikeANewOrder)
{
    leggOrdre({.ordreNr = 7});
    apne();
    klikk(u"btnCopy"_s);
    klikk(u"btnCancel"_s);
    EXPECT_EQ(tekst(0), QString());
    EXPECT_EQ(grid()->dataRowCnt(), 0);
    EXPECT_EQ(knapperPaa(), QStringList{u"btnNew"_s});
}

TEST_F(OrdreKommandoerTest, ACopyOfDaysThatAreNoNumberIsARunTimeError)
{
    run(u"UPDATE Ordre SET BetBet=Null WHERE ID=%1"_s.arg(leggOrdre({.ordreNr = 7})));
    apne();
    ASSERT_EQ(tekst(9), QString());
    klikk(u"btnCopy"_s);
    EXPECT_EQ(meldinger.ta(),
              QStringList{u"Kjørefeil 13:\n\nTypene stemmer ikke overens\n"
                          "Betalingsbet.: skriv antall dager med siffer, for eksempel 14."_s});
    EXPECT_EQ(tekst(16), u"8"_s);
}

// --- Change

TEST_F(OrdreKommandoerTest, ChangeOpensTheOrder)
{
    leggOrdre({.ordreNr = 7});
    apne();
    for (int nr = 0; nr < 23; ++nr)
        felt(nr)->setEnabled(false);
    klikk(u"btnChange"_s);
    EXPECT_EQ(tekst(16), u"7"_s);
    EXPECT_EQ(tekst(10), u"01.03.2014"_s);
    EXPECT_EQ(fokus(), u"txtFields_18"_s);
    EXPECT_EQ(knapperPaa(), kEditing);
    EXPECT_TRUE(grid()->tabStop());
    EXPECT_TRUE(grid()->editModeReplace());
    EXPECT_EQ(verktoytips(u"cmdKunder"_s), u"Klikk for å se kundene"_s);
    for (int nr = 0; nr < 23; ++nr)
        EXPECT_EQ(felt(nr)->isEnabled(), nr < 20) << nr;
}

TEST_F(OrdreKommandoerTest, OnlyAnOrderCanBeChanged)
{
    for (const QString &other : {u"Fakturert"_s, u"Bokført"_s, u"Betalt"_s}) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        leggOrdre({.ordreNr = 7, .status = other});
        apne();
        EXPECT_EQ(knapperPaa(), QStringList({u"btnPrint"_s, u"btnCopy"_s, u"btnNew"_s}))
            << other.toStdString();
        // The command itself looks at the status as well.
        control(u"btnChange"_s)->setEnabled(true);
        klikk(u"btnChange"_s);
        gaTil(0);
        EXPECT_NE(fokus(), u"txtFields_0"_s);
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(OrdreKommandoerTest, BlanksAroundTheStatusDoNotCount)
{
    run(u"UPDATE Ordre SET OrdreStatus=' Ordre ' WHERE ID=%1"_s.arg(leggOrdre({.ordreNr = 7})));
    apne();
    klikk(u"btnChange"_s);
    EXPECT_EQ(knapperPaa(), kEditing);
}

TEST_F(OrdreKommandoerTest, CancelOfAChangeBringsTheStoredOrderBack)
{
    leggOrdre({.ordreNr = 7});
    apne();
    klikk(u"btnChange"_s);
    skriv(0, u"Endret AS"_s);
    EXPECT_EQ(tekst(0), u"Endret AS"_s);
    klikk(u"btnCancel"_s);
    EXPECT_EQ(tekst(0), u"Kunde AS"_s);
    EXPECT_EQ(celle(1, 1), u"P1"_s);
    EXPECT_EQ(knapperPaa(), QStringList({u"btnNew"_s, u"btnChange"_s}));
    // The order came back while the mode was on, so the grid and KundeNr are still as in it.
    EXPECT_TRUE(grid()->tabStop());
    EXPECT_EQ(fokus(), u"txtFields_18"_s);
    gaTil(0);
    EXPECT_NE(fokus(), u"txtFields_0"_s);
    klikk(u"cmdLast"_s);
    EXPECT_FALSE(grid()->tabStop());
}

TEST_F(OrdreKommandoerTest, ChangeOfAnOrderWithoutADateIsARunTimeErrorAtItsEnd)
{
    run(u"UPDATE Ordre SET OrdreDato=Null WHERE ID=%1"_s.arg(leggOrdre({.ordreNr = 7})));
    apne();
    klikk(u"btnChange"_s);
    EXPECT_EQ(meldinger.ta(),
              QStringList{u"Kjørefeil 13:\n\nTypene stemmer ikke overens\n"
                          "Ordre dato: skriv datoen som dd.mm.åååå, for eksempel 31.12.2014."_s});
    EXPECT_EQ(knapperPaa(), kEditing);
    EXPECT_TRUE(grid()->editModeReplace());
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
}

TEST_F(OrdreKommandoerTest, CancelOfAChangeStandsOnTheFirstOrder)
{
    leggOrdre({.ordreNr = 1, .kundeNavn = u"Forste AS"_s});
    leggOrdre({.ordreNr = 2, .kundeNavn = u"Siste AS"_s});
    apne();
    klikk(u"btnChange"_s);
    klikk(u"btnCancel"_s);
    EXPECT_EQ(tekst(0), u"Forste AS"_s) << "the orders have been read again from their beginning";
    klikk(u"cmdNext"_s);
    EXPECT_EQ(tekst(0), u"Siste AS"_s);
}

TEST_F(OrdreKommandoerTest, CancelOfAChangeReadsWhatOthersHaveWritten)
{
    const int id = leggOrdre({.ordreNr = 7});
    apne();
    klikk(u"btnChange"_s);
    run(u"UPDATE Ordre SET KundeNavn='Andre AS' WHERE ID=%1"_s.arg(id));
    klikk(u"btnCancel"_s);
    EXPECT_EQ(tekst(0), u"Andre AS"_s);
}

TEST_F(OrdreKommandoerTest, ACancelThatCannotReadIsARunTimeErrorAndChangesNothing)
{
    leggOrdre({.ordreNr = 7});
    apne();
    klikk(u"btnChange"_s);
    run(u"DROP TABLE OrdreLinjer"_s);
    run(u"DROP TABLE Ordre"_s);
    klikk(u"btnCancel"_s);
    ASSERT_EQ(meldinger.tekster.size(), 1);
    EXPECT_TRUE(meldinger.ta()[0].startsWith(u"Kjørefeil "_s));
    EXPECT_EQ(knapperPaa(), kEditing);
    gaTil(0);
    EXPECT_EQ(fokus(), u"txtFields_0"_s);
}

} // namespace
