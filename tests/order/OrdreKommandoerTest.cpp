#include "order/OrdreSkjerm.h"

#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "platform/grid/fpSpread.h"

#include <QCheckBox>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

const QStringList kBrowse{u"btnPrint"_s, u"btnCopy"_s, u"btnNew"_s, u"btnChange"_s};
const QStringList kEditing{u"btnSave"_s, u"btnCancel"_s};

class OrdreKommandoerTest : public OrdreSkjerm
{
protected:
    OrdreKommandoerTest()
    {
        frmOrdre::setUtskriftApner([this](const OrdreUtskrift &u) { utskrifter.push_back(u); });
    }
    static fpSpread *grid() { return control<fpSpread>(u"vaSpread1"_s); }
    static QCheckBox *betalt() { return control<QCheckBox>(u"chkBetalt"_s); }
    static QString verktoytips(const QString &name) { return control(name)->toolTip(); }
    QString status(int id)
    {
        return rows(u"SELECT OrdreStatus FROM Ordre WHERE ID=%1"_s.arg(id)).value(0);
    }

    std::vector<OrdreUtskrift> utskrifter;
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
    EXPECT_EQ(meldinger.ta(), QStringList{u"Kjørefeil 13:\n\nTypene stemmer ikke overens"_s});
    EXPECT_EQ(tekst(16), u"8"_s);
}

// --- Change

TEST_F(OrdreKommandoerTest, ChangeOpensTheOrder)
{
    leggOrdre({.ordreNr = 7});
    apne();
    klikk(u"btnChange"_s);
    EXPECT_EQ(tekst(16), u"7"_s);
    EXPECT_EQ(tekst(10), u"01.03.2014"_s);
    EXPECT_EQ(fokus(), u"txtFields_18"_s);
    EXPECT_EQ(knapperPaa(), kEditing);
    EXPECT_TRUE(grid()->tabStop());
    EXPECT_TRUE(grid()->editModeReplace());
    EXPECT_EQ(verktoytips(u"cmdKunder"_s), u"Klikk for å se kundene"_s);
    for (int nr = 0; nr < 20; ++nr)
        EXPECT_TRUE(felt(nr)->isEnabled()) << nr;
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

// --- Print

TEST_F(OrdreKommandoerTest, PrintTellsTheDialogOfTheOrder)
{
    const int id = leggOrdre({.ordreNr = 1031});
    apne();
    klikk(u"btnPrint"_s);
    ASSERT_EQ(utskrifter.size(), 1u);
    EXPECT_FALSE(utskrifter[0].ErKreditnota);
    EXPECT_EQ(utskrifter[0].fakID, QString::number(id));
    EXPECT_EQ(utskrifter[0].fakNr, u"1031"_s);
    EXPECT_TRUE(utskrifter[0].original);
}

TEST_F(OrdreKommandoerTest, ANegativeSumIsACreditNote)
{
    const std::pair<QString, bool> sums[] = {{u"-125"_s, true},
                                             {u"-1"_s, true},
                                             {u"-0.5"_s, false},
                                             {u"0.5"_s, false},
                                             {u"125"_s, false}};
    int nr = 0;
    for (const auto &[sum, isCreditNote] : sums)
        leggOrdre({.ordreNr = ++nr, .sumBrutto = sum});
    apne();
    klikk(u"cmdFirst"_s);
    for (const auto &[sum, isCreditNote] : sums) {
        klikk(u"btnPrint"_s);
        EXPECT_EQ(utskrifter.back().ErKreditnota, isCreditNote) << sum.toStdString();
        klikk(u"cmdNext"_s);
    }
}

TEST_F(OrdreKommandoerTest, WhatIsNoOrderAnyMorePrintsAsCopy)
{
    for (const QString &other : {u"Fakturert"_s, u"Bokført"_s, u"Betalt"_s}) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        leggOrdre({.status = other});
        apne();
        klikk(u"btnPrint"_s);
        EXPECT_FALSE(utskrifter.back().original) << other.toStdString();
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(OrdreKommandoerTest, AKeyWithShiftOnPrintForcesAnOriginalOnce)
{
    leggOrdre({.status = u"Fakturert"_s});
    apne();
    control(u"btnPrint"_s)->setFocus();
    tast(Qt::Key_Space, Qt::ShiftModifier);
    ASSERT_EQ(utskrifter.size(), 1u);
    EXPECT_TRUE(utskrifter[0].original);
    tast(Qt::Key_Space);
    ASSERT_EQ(utskrifter.size(), 2u);
    EXPECT_FALSE(utskrifter[1].original);
    // Shift elsewhere, and keys without it, force nothing.
    control(u"btnCopy"_s)->setFocus();
    tast(Qt::Key_F5, Qt::ShiftModifier);
    control(u"btnPrint"_s)->setFocus();
    tast(Qt::Key_F5);
    tast(Qt::Key_Space);
    EXPECT_FALSE(utskrifter[2].original);
}

TEST_F(OrdreKommandoerTest, AMoveForgetsTheForcedOriginal)
{
    leggOrdre({.status = u"Fakturert"_s});
    apne();
    control(u"btnPrint"_s)->setFocus();
    tast(Qt::Key_F5, Qt::ShiftModifier);
    klikk(u"cmdLast"_s);
    klikk(u"btnPrint"_s);
    EXPECT_FALSE(utskrifter[0].original);
}

TEST_F(OrdreKommandoerTest, PrintTurnsNewOn)
{
    leggOrdre({});
    apne();
    control(u"btnNew"_s)->setEnabled(false);
    klikk(u"btnPrint"_s);
    EXPECT_TRUE(erPaa(u"btnNew"_s));
}

TEST_F(OrdreKommandoerTest, ComingBackFromThePrintStandsOnTheLastOrder)
{
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    apne();
    klikk(u"cmdFirst"_s);
    frmOrdre::setUtskriftApner(
        [](const OrdreUtskrift &) { (new RecordingForm(u"frmUtskrift"_s))->show(); });
    klikk(u"btnPrint"_s);
    EXPECT_EQ(tekst(16), u"1"_s);
    run(u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE OrdreNr=2"_s);
    Forms::byName(u"frmUtskrift"_s)->unload();
    runEvents();
    EXPECT_EQ(tekst(16), u"2"_s);
    EXPECT_EQ(tekst(17), u"Fakturert"_s);
    EXPECT_EQ(knapperPaa(), QStringList({u"btnPrint"_s, u"btnCopy"_s, u"btnNew"_s}));
}

// --- Paid

TEST_F(OrdreKommandoerTest, YesMarksTheInvoiceAsPaid)
{
    for (const QString &from : {u"Fakturert"_s, u"Bokført"_s}) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        const int other = leggOrdre({.ordreNr = 1, .status = from});
        const int id = leggOrdre({.ordreNr = 2, .status = from});
        apne();
        ASSERT_TRUE(betalt()->isEnabled());
        meldinger.svar = answer::kYes;
        klikk(u"chkBetalt"_s);
        EXPECT_EQ(meldinger.ta(), QStringList{u"Vil du merke denne fakturaen som Betalt?"_s});
        EXPECT_EQ(status(id), u"Betalt"_s);
        EXPECT_EQ(status(other), from);
        EXPECT_EQ(tekst(17), u"Betalt"_s);
        EXPECT_FALSE(betalt()->isEnabled());
        EXPECT_TRUE(betalt()->isChecked());
        // The column Betalt is not written.
        EXPECT_EQ(rows(u"SELECT Betalt FROM Ordre WHERE ID=%1"_s.arg(id)), QStringList{u"False"_s});
        skjerm()->unload();
        runEvents();
        // So the box is empty when the invoice is read again.
        apne();
        EXPECT_EQ(tekst(17), u"Betalt"_s);
        EXPECT_FALSE(betalt()->isChecked());
        skjerm()->unload();
        runEvents();
    }
    EXPECT_EQ(meldinger.ikoner[0], int(QMessageBox::Question));
    EXPECT_EQ(meldinger.standardknapper[0], u"button7"_s);
}

TEST_F(OrdreKommandoerTest, NoLeavesTheBoxCheckedAndStoresNothing)
{
    const int id = leggOrdre({.status = u"Fakturert"_s});
    apne();
    meldinger.svar = answer::kNo;
    klikk(u"chkBetalt"_s);
    EXPECT_EQ(meldinger.ta().size(), 1);
    EXPECT_TRUE(betalt()->isChecked());
    EXPECT_TRUE(betalt()->isEnabled());
    EXPECT_EQ(status(id), u"Fakturert"_s);
    EXPECT_EQ(tekst(17), u"Fakturert"_s);
    // Taking the mark away asks nothing.
    klikk(u"chkBetalt"_s);
    EXPECT_EQ(meldinger.tekster, QStringList());
    EXPECT_FALSE(betalt()->isChecked());
}

TEST_F(OrdreKommandoerTest, AnOrderIsNotPaid)
{
    const int id = leggOrdre({.status = u"Ordre"_s});
    apne();
    EXPECT_FALSE(betalt()->isEnabled());
    betalt()->setEnabled(true);
    klikk(u"chkBetalt"_s);
    EXPECT_TRUE(betalt()->isChecked());
    EXPECT_EQ(meldinger.tekster, QStringList());
    EXPECT_EQ(status(id), u"Ordre"_s);
}

TEST_F(OrdreKommandoerTest, APaymentThatCannotBeStoredChangesNothing)
{
    leggOrdre({.status = u"Fakturert"_s});
    apne();
    run(u"DROP TABLE OrdreLinjer"_s);
    run(u"DROP TABLE Ordre"_s);
    meldinger.svar = answer::kYes;
    klikk(u"chkBetalt"_s);
    EXPECT_EQ(meldinger.ta().size(), 1);
    EXPECT_EQ(tekst(17), u"Fakturert"_s);
    EXPECT_TRUE(betalt()->isEnabled());
}

// --- The customers

TEST_F(OrdreKommandoerTest, TheCustomersOpenInAModeOnly)
{
    leggOrdre({});
    apne();
    klikk(u"cmdKunder"_s);
    EXPECT_EQ(verktoytips(u"cmdKunder"_s), u"Du må stå i Ny eller Endre -modus for å se kundene"_s);
    EXPECT_EQ(Forms::byName(u"frmKunder"_s), nullptr);
    for (const QString &mode : {u"btnNew"_s, u"btnChange"_s}) {
        klikk(mode);
        control(u"cmdKunder"_s)->setToolTip({});
        bool opened = false;
        onNextModal<Form>([&](Form &kunder) {
            opened = kunder.objectName() == u"frmKunder"_s && kunder.isModal();
            EXPECT_EQ(verktoytips(u"cmdKunder"_s), u"Klikk for å se kundene"_s);
            kunder.unload();
        });
        QTest::mouseClick(control(u"cmdKunder"_s), Qt::LeftButton);
        roFokus();
        EXPECT_TRUE(opened) << mode.toStdString();
        // Coming back is an activation.
        EXPECT_EQ(knapperPaa(), QStringList{u"btnSave"_s});
        klikk(u"cmdLast"_s);
        klikk(u"btnCancel"_s);
        klikk(u"cmdLast"_s);
    }
}

TEST_F(OrdreKommandoerTest, APickedCustomerFillsTheFields)
{
    run(u"UPDATE KundeLev SET LevAdr1='Kai 3', LevAdr2='2 tr', LevPostNr='7010', "
        u"OrganisasjonsNr='987654321', FakturaType='EHF' WHERE KundeNr=10001"_s);
    apne();
    klikk(u"btnNew"_s);
    onNextModal<Form>([](Form &kunder) {
        QTest::mouseClick(kunder.findChild<QWidget *>(u"OKButton"_s), Qt::LeftButton);
    });
    QTest::mouseClick(control(u"cmdKunder"_s), Qt::LeftButton);
    roFokus();
    EXPECT_EQ(tekst(18).trimmed(), u"10001"_s);
    EXPECT_EQ(tekst(0), u"Kunde AS"_s);
    EXPECT_EQ(tekst(9).trimmed(), u"14"_s);
    EXPECT_EQ(tekst(1), u"Gate 1"_s);
    EXPECT_EQ(tekst(2), u"Bakgården"_s);
    EXPECT_EQ(tekst(3), u"0150"_s);
    EXPECT_EQ(tekst(4), u"OSLO"_s);
    EXPECT_EQ(tekst(5), u"Kai 3"_s);
    EXPECT_EQ(tekst(6), u"2 tr"_s);
    EXPECT_EQ(tekst(7), u"7010"_s);
    EXPECT_EQ(tekst(8), u"Kai 3"_s);
    EXPECT_EQ(tekst(24), u"      7 010"_s);
    EXPECT_EQ(tekst(13), u"23.03.2014"_s);
    EXPECT_EQ(tekst(26), u"TRONDHEIM"_s);
    EXPECT_EQ(knapperPaa(), QStringList{u"btnSave"_s});
}

} // namespace
