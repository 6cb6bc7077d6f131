#include "order/OrdreMedKommandoer.h"
#include "platform/forms/MsgBox.h"

#include <QMessageBox>

namespace {

/// What the order screen does with the order that it shows: print, mark as paid, pick a customer.
class OrdreHandlingTest : public OrdreMedKommandoer
{
};

// --- Print

TEST_F(OrdreHandlingTest, PrintTellsTheDialogOfTheOrder)
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

TEST_F(OrdreHandlingTest, ANegativeSumIsACreditNote)
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

TEST_F(OrdreHandlingTest, WhatIsNoOrderAnyMorePrintsAsCopy)
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

TEST_F(OrdreHandlingTest, AKeyWithShiftOnPrintForcesAnOriginalOnce)
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

TEST_F(OrdreHandlingTest, TheShiftKeyItselfForcesAnOriginalToo)
{
    leggOrdre({.status = u"Fakturert"_s});
    apne();
    control(u"btnPrint"_s)->setFocus();
    tast(Qt::Key_Shift);
    klikk(u"btnPrint"_s);
    EXPECT_TRUE(utskrifter.at(0).original);
}

TEST_F(OrdreHandlingTest, AMoveForgetsTheForcedOriginal)
{
    leggOrdre({.status = u"Fakturert"_s});
    apne();
    control(u"btnPrint"_s)->setFocus();
    tast(Qt::Key_F5, Qt::ShiftModifier);
    klikk(u"cmdLast"_s);
    klikk(u"btnPrint"_s);
    EXPECT_FALSE(utskrifter[0].original);
}

TEST_F(OrdreHandlingTest, PrintTurnsNewOn)
{
    leggOrdre({});
    apne();
    control(u"btnNew"_s)->setEnabled(false);
    klikk(u"btnPrint"_s);
    EXPECT_TRUE(erPaa(u"btnNew"_s));
}

TEST_F(OrdreHandlingTest, ComingBackFromThePrintStandsOnTheLastOrder)
{
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    apne();
    klikk(u"cmdFirst"_s);
    frmOrdre::settUtskriftApner(
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

TEST_F(OrdreHandlingTest, YesMarksTheInvoiceAsPaid)
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

TEST_F(OrdreHandlingTest, NoLeavesTheBoxCheckedAndStoresNothing)
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

TEST_F(OrdreHandlingTest, AnOrderIsNotPaid)
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

TEST_F(OrdreHandlingTest, APaymentThatCannotBeStoredChangesNothing)
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

TEST_F(OrdreHandlingTest, TheCustomersOpenInAModeOnly)
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

TEST_F(OrdreHandlingTest, APickedCustomerFillsTheFields)
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
