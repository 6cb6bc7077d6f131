#include "order/OrdreSkjerm.h"

#include "platform/forms/DTPicker.h"
#include "runtime/Conversions.h"
#include "runtime/MachineLocale.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/RoadsIntoAField.h"

#include <QCalendarWidget>
#include <QContextMenuEvent>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

const int kAlltidLest[] = {4, 8, 16, 17, 19};
// The invoice date last, since leaving it leads into the grid.
const int kDatoer[] = {10, 11, 13, 12};
const int kRedigerbare[] = {18, 0, 1, 2, 3, 5, 6, 7, 9, 14, 15, 24};

class OrdreHodeTest : public OrdreSkjerm
{
protected:
    static void sett(const QString &key, const QString &value)
    {
        gReg->SaveSetting(u"Regningsdel"_s, key, value);
    }
    /// An open screen with one stored order, in the mode of that button; browsing for none.
    void apneI(const QString &mode)
    {
        leggOrdre({.ordreNr = 1234});
        apne();
        if (!mode.isEmpty())
            klikk(mode);
    }
    /// Types over the field and leaves it with Tab.
    static void skrivOgForlat(int nr, const QString &text)
    {
        skriv(nr, text);
        tast(Qt::Key_Tab);
    }
    static DTPicker *velger(const QString &name) { return control<DTPicker>(name); }
    /// The user's choice of a date in the calendar.
    static void velg(const QString &name, QDate date)
    {
        velger(name)->setFocus();
        QTest::keyClick(velger(name), Qt::Key_F4);
        auto *calendar = velger(name)->calendarWidget();
        ASSERT_TRUE(calendar->isVisible());
        calendar->setSelectedDate(date);
        QTest::keyClick(calendar->focusProxy()
                            ? calendar->focusProxy()
                            : calendar->findChild<QWidget *>(u"qt_calendar_calendarview"_s),
                        Qt::Key_Return);
        runEvents();
    }
};

// --- The focus

TEST_F(OrdreHodeTest, BrowsingMovesTheFocusOn)
{
    apneI({});
    for (const int nr : kRedigerbare) {
        const QString before = tekst(nr);
        gaTil(nr);
        EXPECT_NE(fokus(), felt(nr)->objectName()) << nr;
        QTest::keyClicks(skjerm()->focusWidget(), u"x"_s);
        EXPECT_EQ(tekst(nr), before) << nr;
    }
    gaTil(0);
    // Every field sends the key, up to the first control that keeps the focus.
    EXPECT_EQ(fokus(), u"chkLevAdr"_s);
    for (const int nr : {20, 21, 22}) {
        gaTil(nr);
        EXPECT_NE(fokus(), felt(nr)->objectName()) << nr;
    }
}

TEST_F(OrdreHodeTest, AReadOnlyFieldTakesTextOnNoRoad)
{
    for (const QString &mode : {u"btnChange"_s, u"btnNew"_s, u""_s}) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        apneI(mode);
        std::vector<int> locked(std::begin(kAlltidLest), std::end(kAlltidLest));
        if (mode.isEmpty())
            locked.insert(locked.end(), std::begin(kRedigerbare), std::end(kRedigerbare));
        for (const int nr : locked) {
            SCOPED_TRACE(mode.toStdString() + ' ' + std::to_string(nr));
            const QString before = tekst(nr);
            tryEveryRoad(*felt(nr), u"77"_s);
            roFokus();
            EXPECT_EQ(tekst(nr), before);
            EXPECT_NE(fokus(), felt(nr)->objectName());
        }
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(OrdreHodeTest, AModeOpensItsFieldsOnEveryRoadAndItsEndLocksThem)
{
    apneI(u"btnChange"_s);
    gaTil(1);
    felt(1)->clear();
    tryEveryRoad(*felt(1), u"7"_s);
    EXPECT_TRUE(tekst(1).contains(u'7'));
    klikk(u"btnCancel"_s);
    const QString before = tekst(1);
    tryEveryRoad(*felt(1), u"7"_s);
    EXPECT_EQ(tekst(1), before);
    klikk(u"cmdLast"_s); // turns the copy on
    klikk(u"btnCopy"_s);
    tryEveryRoad(*felt(1), u"7"_s);
    EXPECT_NE(tekst(1), before);
}

TEST_F(OrdreHodeTest, AMenuOverAReadOnlyFieldGivesTheFocusBackToBeSentOn)
{
    apneI(u"btnChange"_s);
    for (const int nr : {16, 17}) {
        const QString before = tekst(nr);
        felt(nr)->setFocus(Qt::MouseFocusReason);
        const QPoint place(5, 5);
        QContextMenuEvent asked(QContextMenuEvent::Mouse, place, felt(nr)->mapToGlobal(place));
        QApplication::sendEvent(felt(nr), &asked);
        runEvents(); // the sent key has gone to the menu
        QWidget *menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        QTest::keyClick(menu, Qt::Key_Escape);
        roFokus();
        EXPECT_NE(fokus(), felt(nr)->objectName()) << nr;
        QTest::keyClicks(skjerm()->focusWidget(), u"77"_s);
        EXPECT_EQ(tekst(nr), before) << nr;
    }
}

TEST_F(OrdreHodeTest, BrowsingLeavesTheDatesOpenForTyping)
{
    apneI({});
    for (const int nr : kDatoer) {
        gaTil(nr);
        EXPECT_EQ(fokus(), felt(nr)->objectName());
        EXPECT_EQ(felt(nr)->selectedText(), tekst(nr));
        EXPECT_NE(tekst(nr), QString());
    }
    control(u"btnNew"_s)->setFocus();
    skriv(10, u"05.05.2014"_s);
    EXPECT_EQ(tekst(10), u"05.05.2014"_s);
    EXPECT_EQ(rows(u"SELECT OrdreDato FROM Ordre"_s), QStringList{u"01.03.2014"_s});
    klikk(u"cmdLast"_s);
    EXPECT_EQ(tekst(10), u"01.03.2014"_s);
}

TEST_F(OrdreHodeTest, AModeKeepsTheFocusInWhatCanBeEdited)
{
    for (const QString &mode : {u"btnNew"_s, u"btnChange"_s, u"btnCopy"_s}) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        apneI(mode);
        for (const int nr : kRedigerbare) {
            gaTil(nr);
            EXPECT_EQ(fokus(), felt(nr)->objectName()) << nr;
        }
        for (const int nr : kDatoer) {
            gaTil(nr);
            EXPECT_EQ(fokus(), felt(nr)->objectName()) << nr;
            EXPECT_EQ(felt(nr)->selectedText(), tekst(nr));
        }
        for (const int nr : kAlltidLest) {
            gaTil(nr);
            EXPECT_NE(fokus(), felt(nr)->objectName()) << nr;
        }
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(OrdreHodeTest, TabFollowsTheEyeAndPassesWhatIsReadOnly)
{
    apneI(u"btnNew"_s);
    QStringList stops;
    while (fokus() != u"vaSpread1"_s && stops.size() < 40) {
        stops += fokus();
        tast(Qt::Key_Tab);
    }
    EXPECT_EQ(stops,
              QStringList({u"txtFields_18"_s, u"cmdKunder"_s, u"txtFields_0"_s, u"txtFields_1"_s,
                           u"txtFields_2"_s, u"txtFields_3"_s, u"txtFields_5"_s, u"txtFields_6"_s,
                           u"txtFields_7"_s, u"txtFields_24"_s, u"txtFields_14"_s,
                           u"txtFields_15"_s, u"chkLevAdr"_s, u"txtFields_9"_s, u"txtFields_10"_s,
                           u"txtFields_11"_s, u"txtFields_12"_s}));
}

TEST_F(OrdreHodeTest, FocusByCodeIsMovedOnToo)
{
    apneI(u"btnNew"_s);
    for (const int nr : kAlltidLest) {
        felt(nr)->setFocus();
        runEvents();
        EXPECT_NE(fokus(), felt(nr)->objectName()) << nr;
    }
}

TEST_F(OrdreHodeTest, EnterDoesNothing)
{
    apneI(u"btnNew"_s);
    skriv(0, u"Navn"_s);
    tast(Qt::Key_Return);
    EXPECT_EQ(fokus(), u"txtFields_0"_s);
    EXPECT_EQ(tekst(0), u"Navn"_s);
    EXPECT_EQ(knapperPaa(), QStringList({u"btnSave"_s, u"btnCancel"_s}));
}

TEST_F(OrdreHodeTest, AContextMenuLeavesNoField)
{
    sett(u"KIDaktivert"_s, u"1"_s);
    apneI(u"btnNew"_s);
    skriv(18, u"10001"_s);
    QFocusEvent out(QEvent::FocusOut, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(felt(18), &out);
    EXPECT_EQ(tekst(19), QString());
    QFocusEvent left(QEvent::FocusOut, Qt::MouseFocusReason);
    QCoreApplication::sendEvent(felt(18), &left);
    EXPECT_NE(tekst(19), QString());
}

TEST_F(OrdreHodeTest, AnotherWindowLeavesNoField)
{
    apneI(u"btnNew"_s);
    skriv(12, u"05.05.2014"_s);
    auto *other = new RecordingForm(u"frmAnnet"_s);
    other->show();
    runEvents();
    EXPECT_EQ(tekst(13), u"09.03.2014"_s);
    other->unload();
    runEvents();
    EXPECT_EQ(fokus(), u"txtFields_12"_s);
}

// --- The due date

TEST_F(OrdreHodeTest, LeavingTheDaysOfPaymentSetsTheDueDate)
{
    apneI(u"btnNew"_s);
    skrivOgForlat(12, u"01.02.2026"_s);
    skrivOgForlat(9, u"14"_s);
    EXPECT_EQ(tekst(13), u"15.02.2026"_s);
    EXPECT_EQ(fokus(), u"txtFields_10"_s);
}

TEST_F(OrdreHodeTest, LeavingTheInvoiceDateSetsTheDueDateAndGoesToTheGrid)
{
    apneI(u"btnNew"_s);
    skrivOgForlat(9, u"14"_s);
    skrivOgForlat(12, u"01.02.2026"_s);
    EXPECT_EQ(tekst(13), u"15.02.2026"_s);
    EXPECT_EQ(fokus(), u"vaSpread1"_s);
    // With a click elsewhere as well.
    gaTil(12);
    gaTil(0);
    EXPECT_EQ(fokus(), u"vaSpread1"_s);
}

TEST_F(OrdreHodeTest, ATypedDueDateStandsUntilTheOthersAreLeft)
{
    apneI(u"btnNew"_s);
    skrivOgForlat(13, u"31.12.2014"_s);
    EXPECT_EQ(tekst(13), u"31.12.2014"_s);
    skrivOgForlat(10, u"05.05.2014"_s);
    skrivOgForlat(11, u"06.05.2014"_s);
    EXPECT_EQ(tekst(13), u"31.12.2014"_s);
    gaTil(9);
    gaTil(0);
    EXPECT_EQ(tekst(13), u"09.03.2014"_s);
}

TEST_F(OrdreHodeTest, TheDueDateFollowsWhileBrowsingToo)
{
    apneI({});
    skriv(12, u"05.03.2014"_s);
    tast(Qt::Key_Tab);
    EXPECT_EQ(tekst(13), u"19.03.2014"_s);
    EXPECT_EQ(rows(u"SELECT ForfallDato FROM Ordre"_s), QStringList{u"16.03.2014"_s});
}

TEST_F(OrdreHodeTest, DaysThatAreNoNumberAreARunTimeError)
{
    apneI(u"btnNew"_s);
    for (const QString &days : {u"fjorten"_s, u""_s}) {
        skriv(9, days);
        tast(Qt::Key_Tab);
        EXPECT_EQ(meldinger.ta(),
                  QStringList{u"Kjørefeil 13:\n\nTypene stemmer ikke overens\n"
                              "Betalingsbet.: skriv antall dager med siffer, for eksempel 14."_s});
        EXPECT_EQ(tekst(13), u"09.03.2014"_s);
    }
}

TEST_F(OrdreHodeTest, AnInvoiceDateThatIsNoneIsARunTimeError)
{
    apneI(u"btnNew"_s);
    skriv(12, u"snart"_s);
    tast(Qt::Key_Tab);
    EXPECT_EQ(meldinger.ta(),
              QStringList{u"Kjørefeil 13:\n\nTypene stemmer ikke overens\n"
                          "Faktura dato: skriv datoen som dd.mm.åååå, for eksempel 31.12.2014."_s});
    EXPECT_EQ(tekst(13), u"09.03.2014"_s);
    EXPECT_NE(fokus(), u"vaSpread1"_s);
}

// --- Postal codes

TEST_F(OrdreHodeTest, PostalCodesFindTheirPlaces)
{
    apneI(u"btnNew"_s);
    skrivOgForlat(3, u"0150"_s);
    EXPECT_EQ(tekst(4), u"OSLO"_s);
    EXPECT_EQ(tekst(8), QString());
    skrivOgForlat(7, u"7010"_s);
    EXPECT_EQ(tekst(8), u"TRONDHEIM"_s);
    EXPECT_EQ(tekst(4), u"OSLO"_s);
}

TEST_F(OrdreHodeTest, AnUnknownPostalCodeEmptiesThePlace)
{
    apneI(u"btnChange"_s);
    EXPECT_EQ(tekst(4), u"OSLO"_s);
    skrivOgForlat(3, u"9999"_s);
    EXPECT_EQ(tekst(4), QString());
}

TEST_F(OrdreHodeTest, APostalCodeThatBreaksTheStatementIsARunTimeError)
{
    apneI(u"btnChange"_s);
    skrivOgForlat(3, u"01'50"_s);
    EXPECT_EQ(meldinger.ta().value(0).left(12), u"Kjørefeil 91"_s);
    EXPECT_EQ(tekst(4), u"OSLO"_s);
}

// --- KID

TEST_F(OrdreHodeTest, LeavingKundeNrMakesTheKid)
{
    sett(u"KIDaktivert"_s, u"1"_s);
    apneI(u"btnChange"_s);
    skrivOgForlat(18, u"10002"_s);
    EXPECT_EQ(tekst(19), u"0012344"_s);
    sett(u"KIDoppbygning"_s, u"1"_s);
    gaTil(18);
    tast(Qt::Key_Tab);
    EXPECT_EQ(tekst(19).left(12), u"010002001234"_s);
}

TEST_F(OrdreHodeTest, KidIsMadeWhileBrowsingAndNotStored)
{
    sett(u"KIDaktivert"_s, u"1"_s);
    apneI({});
    gaTil(18);
    EXPECT_EQ(tekst(19), u"0012344"_s);
    EXPECT_EQ(rows(u"SELECT KID FROM Ordre"_s), QStringList{u"0000018"_s});
}

TEST_F(OrdreHodeTest, WithoutKidTheFieldStays)
{
    apneI(u"btnChange"_s);
    skrivOgForlat(18, u"10002"_s);
    EXPECT_EQ(tekst(19), u"0000018"_s);
    sett(u"KIDaktivert"_s, u"2"_s);
    gaTil(18);
    tast(Qt::Key_Tab);
    EXPECT_EQ(tekst(19), u"0000018"_s);
}

TEST_F(OrdreHodeTest, AnUnknownModulusEmptiesTheKid)
{
    sett(u"KIDaktivert"_s, u"1"_s);
    sett(u"KIDmodulus"_s, u"9"_s);
    apneI(u"btnChange"_s);
    gaTil(18);
    tast(Qt::Key_Tab);
    EXPECT_EQ(tekst(19), QString());
}

TEST_F(OrdreHodeTest, ACopyMakesItsKidFromItsNewNumber)
{
    sett(u"KIDaktivert"_s, u"1"_s);
    apneI(u"btnCopy"_s);
    EXPECT_EQ(tekst(16), u"1235"_s);
    EXPECT_EQ(tekst(19), u"0012344"_s);
    tast(Qt::Key_Tab);
    EXPECT_EQ(tekst(19), u"0012351"_s);
}

// --- The pickers

TEST_F(OrdreHodeTest, AChosenDateReachesItsFieldInAMode)
{
    for (const QString &mode : {u"btnNew"_s, u"btnChange"_s, u"btnCopy"_s}) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        apneI(mode);
        const std::pair<QString, int> pickers[] = {{u"dtpOrdre"_s, 10},
                                                   {u"dtpLevDato"_s, 11},
                                                   {u"dtpForfall"_s, 13},
                                                   {u"dtpFakDato"_s, 12}};
        for (const auto &[name, nr] : pickers) {
            velg(name, QDate(2014, 7, nr));
            EXPECT_EQ(tekst(nr), QDate(2014, 7, nr).toString(u"dd.MM.yyyy")) << nr;
        }
        // The invoice date's choice has not run the due date's rule.
        EXPECT_EQ(tekst(13), u"13.07.2014"_s);
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(OrdreHodeTest, F4AndAltDownInADateFieldOpenItsCalendar)
{
    const std::pair<QString, int> fields[] = {
        {u"dtpOrdre"_s, 10}, {u"dtpLevDato"_s, 11}, {u"dtpForfall"_s, 13}, {u"dtpFakDato"_s, 12}};
    for (const auto &[key, modifiers] :
         {std::pair(Qt::Key_F4, Qt::NoModifier), std::pair(Qt::Key_Down, Qt::AltModifier)}) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        apneI(u"btnNew"_s);
        for (const auto &[name, nr] : fields) {
            skriv(nr, u"10.03.2014"_s);
            tast(key, modifiers);
            ASSERT_NE(QApplication::activePopupWidget(), nullptr) << nr;
            QCalendarWidget *calendar = velger(name)->calendarWidget();
            ASSERT_TRUE(calendar->isVisible()) << nr;
            EXPECT_EQ(calendar->selectedDate(), QDate(2014, 3, 10)) << nr;
            auto *days = calendar->findChild<QTableView *>();
            QTest::keyClick(days, Qt::Key_Right);
            QTest::keyClick(days, Qt::Key_Return);
            runEvents();
            EXPECT_EQ(tekst(nr), u"11.03.2014"_s);
            EXPECT_EQ(fokus(), u"txtFields_%1"_s.arg(nr)) << "the field has not been left";
        }
        EXPECT_EQ(tekst(13), u"11.03.2014"_s) << "nor has the due date been reckoned";
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(OrdreHodeTest, TheseKeysDoNothingInAnotherField)
{
    apneI(u"btnNew"_s);
    felt(0)->setFocus();
    tast(Qt::Key_F4);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(OrdreHodeTest, AChosenDateComesInTheMachinesShortForm)
{
    const ScopedLocale british(MachineLocale::fromName(u"en_GB"_s));
    apneI(u"btnNew"_s);
    velg(u"dtpOrdre"_s, QDate(2014, 7, 10));
    EXPECT_EQ(tekst(10), QDate(2014, 7, 10).toString(MachineLocale::current().shortDate));
    EXPECT_NE(tekst(10), u"10.07.2014"_s);
}

TEST_F(OrdreHodeTest, AChosenDateIsNotCopiedWhileBrowsing)
{
    apneI({});
    const std::pair<QString, int> pickers[] = {
        {u"dtpOrdre"_s, 10}, {u"dtpLevDato"_s, 11}, {u"dtpForfall"_s, 13}, {u"dtpFakDato"_s, 12}};
    for (const auto &[name, nr] : pickers) {
        const QString before = tekst(nr);
        velg(name, QDate(2014, 7, nr));
        EXPECT_EQ(tekst(nr), before) << nr;
    }
}

TEST_F(OrdreHodeTest, ThePickerTakesTheFieldsDateWhenItIsEntered)
{
    apneI(u"btnNew"_s);
    const std::pair<QString, int> pickers[] = {
        {u"dtpOrdre"_s, 10}, {u"dtpLevDato"_s, 11}, {u"dtpFakDato"_s, 12}, {u"dtpForfall"_s, 13}};
    for (const auto &[name, nr] : pickers) {
        felt(nr)->setText(u"2%1.06.2014"_s.arg(nr % 10));
        velger(name)->setFocus();
        EXPECT_EQ(velger(name)->value(), QDate(2014, 6, 20 + nr % 10)) << nr;
    }
}

TEST_F(OrdreHodeTest, ThePickerTakesTheFieldsDateWhenTheFieldIsEntered)
{
    apneI({});
    for (const auto &[name, nr] :
         {std::pair{u"dtpOrdre"_s, 10}, std::pair{u"dtpLevDato"_s, 11},
          std::pair{u"dtpForfall"_s, 13}, std::pair{u"dtpFakDato"_s, 12}}) {
        felt(nr)->setText(u"2%1.06.2014"_s.arg(nr % 10));
        gaTil(nr);
        EXPECT_EQ(velger(name)->value(), QDate(2014, 6, 20 + nr % 10)) << nr;
    }
}

TEST_F(OrdreHodeTest, ATextThatIsNoDateOrOutsideTheLimitsLeavesThePicker)
{
    apneI(u"btnNew"_s);
    gaTil(10);
    const QDate before = velger(u"dtpOrdre"_s)->value();
    EXPECT_EQ(before, QDate(2014, 3, 9));
    for (const QString &text : {u"snart"_s, u""_s, u"31.12.2013"_s, u"01.01.2016"_s}) {
        gaTil(0);
        felt(10)->setText(text);
        gaTil(10);
        EXPECT_EQ(velger(u"dtpOrdre"_s)->value(), before) << text.toStdString();
        velger(u"dtpOrdre"_s)->setFocus();
        EXPECT_EQ(velger(u"dtpOrdre"_s)->value(), before) << text.toStdString();
        EXPECT_EQ(tekst(10), text);
    }
}

TEST_F(OrdreHodeTest, APickerThatWasNeverEnteredPutsNoDateOfItsOwnIntoTheField)
{
    apneI(u"btnNew"_s);
    skriv(10, u"23.11.2014"_s);
    gaTil(0);
    DTPicker *picker = velger(u"dtpOrdre"_s);
    picker->setValue(QDate(2014, 1, 1));
    // Assistive technology writes a text, and then takes a step.
    QAccessible::queryAccessibleInterface(picker)->editableTextInterface()->insertText(0, u"0"_s);
    EXPECT_EQ(tekst(10), u"23.11.2014"_s);
    picker->setCurrentSection(QDateTimeEdit::DaySection);
    picker->stepUp();
    EXPECT_EQ(toDate(tekst(10)).date(), QDate(2014, 11, 24));
    skriv(10, u"12.05.2014"_s);
    gaTil(0);
    picker->setCurrentSection(QDateTimeEdit::DaySection);
    picker->stepDown();
    EXPECT_EQ(toDate(tekst(10)).date(), QDate(2014, 5, 11));
}

} // namespace
