#include "output/lists/OversiktTest.h"
#include "platform/forms/DTPicker.h"
#include "presentation/screens/frmDummy.h"
#include "presentation/screens/frmInvisible.h"
#include "runtime/Clock.h"
#include "state/SharedState.h"
#include "support/Caption.h"
#include "support/SessionTap.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace {

/// A clock that stands on a day.
struct DayClock : Clock
{
    explicit DayClock(QDate day) : today(day) {}
    QDateTime now() const override { return QDateTime(today, QTime(10, 0)); }
    const QDate today;
};

/// The dialog of the lists. No report file is there, so that the report control keeps what it was
/// handed, and the user is told of the missing file.
class FrmOrdreSkrivTest : public OversiktTest, public ScreenHands<frmOrdreSkriv>
{
protected:
    using ScreenHands::control;
    static DTPicker *fra() { return &control<DTPicker>(u"dtpFraDato"_s); }
    static DTPicker *til() { return &control<DTPicker>(u"dtpTilDato"_s); }
    static QComboBox *kunde() { return &control<QComboBox>(u"cmbKunde"_s); }
    static QComboBox *status() { return &control<QComboBox>(u"cmbStatus"_s); }
    static bool isOn(const QString &name) { return control<QRadioButton>(name).isChecked(); }

    static QStringList entries(const QComboBox *list)
    {
        QStringList texts;
        for (int i = 0; i < list->count(); ++i)
            texts += list->itemText(i);
        return texts;
    }
    static void pick(QComboBox *list, const QString &entry)
    {
        list->showPopup();
        hands::pick(*list, list->findText(entry));
        settle();
    }
    static void typeCustomer(const QString &text) { hands::typeOver(*kunde(), text); }
    /// Types over a date and leaves it.
    static void typeDate(DTPicker *picker, const QString &date)
    {
        picker->setFocus();
        picker->selectAll();
        QTest::keyClicks(picker, date);
        kunde()->setFocus();
    }
    static CrystalReport &kontroll() { return SharedForm<frmInvisible>::get().CrystalReport1; }

    /// What the report control was handed by "Skriv": file name and selection.
    QStringList handed()
    {
        press(u"OKButton"_s);
        EXPECT_EQ(meldinger.ta().size(), 1) << "of the missing report file";
        EXPECT_NE(liste(), nullptr);
        EXPECT_EQ(kontroll().formula(0), QString());
        EXPECT_EQ(kontroll().formula(1), QString());
        return {kontroll().reportFileName().section(u'\\', -1), kontroll().selectionFormula()};
    }
    /// The selection alone.
    QString utvalg() { return handed().value(1); }
};

const QString kHeleAaret =
    u"{Klient.KlientNr}= 5 and {Ordre.OrdreDato} in Date( 2014, 1, 1) to Date( 2014, 3, 9)"_s;
const QString kPurring =
    u"{Klient.KlientNr}= 5 and {Ordre.OrdreStatus}<>'Ordre' and {Ordre.OrdreStatus}<>'Betalt'"
    u" and {Ordre.ForfallDato}<Date( 2014, 3, 9)"_s;

} // namespace

// --- As it opens

TEST_F(FrmOrdreSkrivTest, TextsAndTips)
{
    open();
    EXPECT_EQ(liste()->objectName(), u"frmOrdreSkriv"_s);
    EXPECT_EQ(liste()->windowTitle(), u"Ordre oversikt"_s);
    EXPECT_EQ(control<QGroupBox>(u"rammeType"_s).title(), u"Utskrift av: "_s);
    EXPECT_EQ(captionOf(control<QRadioButton>(u"optType_0"_s)), u"Ordre oversikt"_s);
    EXPECT_EQ(captionOf(control<QRadioButton>(u"optType_1"_s)), u"Purreliste"_s);
    EXPECT_EQ(captionOf(control<QRadioButton>(u"optSkriv_0"_s)), u"Forhåndsvis"_s);
    EXPECT_EQ(control(u"optSkriv_0"_s).toolTip(), u"Forhåndsvis rapporten"_s);
    EXPECT_EQ(captionOf(control<QRadioButton>(u"optSkriv_1"_s)), u"Direkte utskrift"_s);
    EXPECT_EQ(control(u"optSkriv_1"_s).toolTip(), u"Skriv direkte til standardskriver"_s);
    EXPECT_EQ(captionOf(control<QLabel>(u"Label1"_s)), u"Fra/Til dato:"_s);
    EXPECT_EQ(captionOf(control<QLabel>(u"Label2"_s)), u"Kunde:"_s);
    EXPECT_EQ(captionOf(control<QLabel>(u"Label3"_s)), u"Ordre status:"_s);
    EXPECT_EQ(captionOf(control<QLabel>(u"Label4"_s)), u"-"_s);
    EXPECT_EQ(control<QLabel>(u"Label6"_s).text(),
              u"Oversikt-liste over registrerte ordre, med forhåndsvisning."_s);
    EXPECT_EQ(kunde()->toolTip(), u"Kunder som har/har hatt ordre/faktura."_s);
    EXPECT_EQ(captionOf(control<QPushButton>(u"OKButton"_s)), u"Skriv"_s);
    EXPECT_EQ(captionOf(control<QPushButton>(u"CancelButton"_s)), u"Avbryt"_s);
    EXPECT_TRUE(isOn(u"optType_0"_s));
    EXPECT_FALSE(isOn(u"optType_1"_s));
    EXPECT_TRUE(isOn(u"optSkriv_0"_s));
    EXPECT_FALSE(isOn(u"optSkriv_1"_s));
}

TEST_F(FrmOrdreSkrivTest, TheDatesBeginWithTheYearAndEndWithTodayWithinTheirLimits)
{
    open();
    EXPECT_EQ(fra()->value(), QDate(2014, 1, 1));
    EXPECT_EQ(til()->value(), QDate(2014, 3, 9));
    for (const DTPicker *picker : {fra(), til()}) {
        EXPECT_EQ(picker->minimumDate(), QDate(2010, 1, 1));
        EXPECT_EQ(picker->maximumDate(), QDate(2014, 12, 31));
    }
}

TEST_F(FrmOrdreSkrivTest, AnEarlierYearEndsWithTodaysDayInIt)
{
    gAar = 2012;
    open();
    EXPECT_EQ(fra()->value(), QDate(2012, 1, 1));
    EXPECT_EQ(til()->value(), QDate(2012, 3, 9));
    EXPECT_EQ(til()->maximumDate(), QDate(2012, 12, 31));
}

TEST_F(FrmOrdreSkrivTest, TheLeapDayIsTheFirstOfMarchInAnotherYear)
{
    DayClock leapDay(QDate(2016, 2, 29));
    const ScopedClock scope(leapDay);
    gAar = 2014;
    open();
    EXPECT_EQ(til()->value(), QDate(2014, 3, 1));
    liste()->unload();
    gAar = 2016;
    open();
    EXPECT_EQ(til()->value(), QDate(2016, 2, 29));
}

TEST_F(FrmOrdreSkrivTest, AYearBeforeTheLowestDateStillOpens)
{
    gAar = 2009;
    open();
    EXPECT_TRUE(liste()->isVisible());
    EXPECT_TRUE(isOn(u"optType_0"_s));
}

TEST_F(FrmOrdreSkrivTest, TheCustomersThatHaveOrders)
{
    legg({.nr = 1, .kundeNr = u"123"_s, .navn = u"' Ås Pukk '"_s});
    legg({.nr = 2, .kundeNr = u"123"_s, .navn = u"' Ås Pukk '"_s});
    legg({.nr = 3, .kundeNr = u"123456"_s, .navn = u"'Berit'"_s});
    legg({.nr = 4, .kundeNr = u"10001"_s, .navn = u"'Anne'"_s});
    legg({.nr = 5, .kundeNr = u"10001"_s, .navn = u"'Anne AS'"_s});
    legg({.nr = 6, .kundeNr = u"66"_s, .navn = u"'Fremmed'"_s, .klient = 6});
    SessionTap tap;
    open();
    EXPECT_EQ(tap.statements(), QStringList(u"SELECT DISTINCT KundeNr,KundeNavn FROM Ordre WHERE "
                                            u"KlientNr= 5 ORDER BY KundeNavn"_s));
    QStringList customers = entries(kunde());
    EXPECT_EQ(customers.takeFirst(), u"<Alle>"_s);
    customers.sort(); // the database has a blank in front before or behind the letters
    EXPECT_EQ(customers, QStringList({u"00123 Ås Pukk"_s, u"10001 Anne"_s, u"10001 Anne AS"_s,
                                      u"123456 Berit"_s}));
    EXPECT_EQ(kunde()->currentText(), u"<Alle>"_s);
}

TEST_F(FrmOrdreSkrivTest, TheCustomersComeByName)
{
    legg({.nr = 1, .kundeNr = u"1"_s, .navn = u"'Ås'"_s});
    legg({.nr = 2, .kundeNr = u"2"_s, .navn = u"'Aas'"_s});
    legg({.nr = 3, .kundeNr = u"3"_s, .navn = u"'Berit'"_s});
    legg({.nr = 4, .kundeNr = u"Null"_s, .navn = u"'Uten nummer'"_s});
    open();
    QStringList customers = entries(kunde());
    EXPECT_EQ(customers.value(1), u"00003 Berit"_s) << "Aas counts as Ås";
    EXPECT_EQ(customers.size(), 4) << "one without a number makes no entry";
}

TEST_F(FrmOrdreSkrivTest, WithoutOrdersThereIsOnlyAll)
{
    open();
    EXPECT_EQ(entries(kunde()), QStringList(u"<Alle>"_s));
}

TEST_F(FrmOrdreSkrivTest, TheListIsRebuiltEachTimeTheDialogOpens)
{
    legg({.nr = 1, .kundeNr = u"1"_s});
    open();
    EXPECT_EQ(kunde()->count(), 2);
    pick(kunde(), u"00001 Ås Pukk AS"_s);
    press(u"CancelButton"_s);
    EXPECT_EQ(liste(), nullptr);
    legg({.nr = 2, .kundeNr = u"2"_s});
    open();
    EXPECT_EQ(kunde()->count(), 3);
    EXPECT_EQ(kunde()->currentText(), u"<Alle>"_s);
}

TEST_F(FrmOrdreSkrivTest, TheStatuses)
{
    open();
    EXPECT_EQ(entries(status()),
              QStringList({u"<Alle>"_s, u"Betalt"_s, u"Bokført"_s, u"Fakturert"_s, u"Ordre"_s}));
    EXPECT_EQ(status()->currentText(), u"<Alle>"_s);
}

TEST_F(FrmOrdreSkrivTest, TheCustomerListIsTwoHundredPixelsWideEachTimeItOpens)
{
    legg({.nr = 1});
    open();
    for (int time = 0; time < 2; ++time) {
        kunde()->showPopup();
        EXPECT_GE(kunde()->view()->width(), 200);
        kunde()->hidePopup();
        runEvents();
    }
    EXPECT_EQ(kunde()->view()->minimumWidth(), 200);
    EXPECT_LT(kunde()->width(), 200);
}

TEST_F(FrmOrdreSkrivTest, LargerLettersHaveTheirRoom)
{
    legg({.nr = 1});
    const auto bredde = [](const QComboBox *boks) {
        QStyleOptionComboBox option;
        option.initFrom(boks);
        option.editable = boks->isEditable();
        return boks->style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, boks)
            .width();
    };
    open();
    for (const QComboBox *boks : {kunde(), status()})
        EXPECT_EQ(boks->width(), 110);
    QFont stor = liste()->font();
    stor.setPointSizeF(stor.pointSizeF() * 2);
    liste()->setFont(stor);
    runEvents();
    EXPECT_GE(bredde(status()), status()->fontMetrics().horizontalAdvance(u"Fakturert"_s));
    EXPECT_GE(bredde(kunde()), kunde()->fontMetrics().horizontalAdvance(u"<Alle>"_s));
}

// --- Choosing

TEST_F(FrmOrdreSkrivTest, AChosenCustomerIsCutToFiveCharacters)
{
    legg({.nr = 1, .kundeNr = u"123"_s, .navn = u"'Aas'"_s});
    legg({.nr = 2, .kundeNr = u"123456"_s, .navn = u"'Berit'"_s});
    open();
    pick(kunde(), u"00123 Aas"_s);
    EXPECT_EQ(kunde()->currentText(), u"00123"_s);
    pick(kunde(), u"123456 Berit"_s);
    EXPECT_EQ(kunde()->currentText(), u"12345"_s);
    pick(kunde(), u"<Alle>"_s);
    EXPECT_EQ(kunde()->currentText(), u"<Alle"_s);
    EXPECT_EQ(kunde()->count(), 3);
}

TEST_F(FrmOrdreSkrivTest, TheDatesPullEachOtherAlong)
{
    open();
    typeDate(fra(), u"01.05.2014"_s);
    EXPECT_EQ(fra()->value(), QDate(2014, 5, 1));
    EXPECT_EQ(til()->value(), QDate(2014, 5, 1)) << "a later start takes the end along";
    typeDate(til(), u"15.04.2014"_s);
    EXPECT_EQ(fra()->value(), QDate(2014, 4, 15)) << "an earlier end takes the start along";
    EXPECT_EQ(til()->value(), QDate(2014, 4, 15));
    typeDate(til(), u"30.12.2014"_s);
    EXPECT_EQ(fra()->value(), QDate(2014, 4, 15));
    typeDate(fra(), u"01.01.2010"_s);
    EXPECT_EQ(til()->value(), QDate(2014, 12, 30));
    EXPECT_EQ(fra()->value(), QDate(2010, 1, 1));
}

TEST_F(FrmOrdreSkrivTest, TheReminderListHidesDatesAndStatus)
{
    const QStringList hidden{u"Label1"_s,     u"Label3"_s,     u"Label4"_s,
                             u"dtpFraDato"_s, u"dtpTilDato"_s, u"cmbStatus"_s};
    open();
    const QRect customer = kunde()->geometry();
    const QSize size = liste()->size();
    press(u"optType_1"_s);
    EXPECT_EQ(control<QLabel>(u"Label6"_s).text(),
              u"Purreliste, ikke betalte ordre hvor forfallsdato er passert."_s);
    EXPECT_EQ(liste()->windowTitle(), u"Purreliste"_s);
    for (const QString &name : hidden)
        EXPECT_FALSE(control(name).isVisible()) << name.toStdString();
    EXPECT_TRUE(control(u"Label2"_s).isVisible());
    EXPECT_TRUE(kunde()->isVisible());
    EXPECT_EQ(kunde()->geometry(), customer) << "what stays does not jump";
    EXPECT_EQ(liste()->size(), size);

    press(u"optType_0"_s);
    EXPECT_EQ(control<QLabel>(u"Label6"_s).text(),
              u"Oversikt-liste over registrerte ordre, med forhåndsvisning."_s);
    EXPECT_EQ(liste()->windowTitle(), u"Ordre oversikt"_s);
    for (const QString &name : hidden)
        EXPECT_TRUE(control(name).isVisible()) << name.toStdString();
}

TEST_F(FrmOrdreSkrivTest, TheTypeIsChosenByTheArrowKeysAsWell)
{
    open();
    EXPECT_EQ(liste()->focusWidget(), &control(u"optType_0"_s));
    QTest::keyClick(liste()->focusWidget(), Qt::Key_Right);
    EXPECT_TRUE(isOn(u"optType_1"_s));
    EXPECT_EQ(liste()->windowTitle(), u"Purreliste"_s);
    EXPECT_TRUE(isOn(u"optSkriv_0"_s)) << "another group";
}

// --- The selections, to the letter

TEST_F(FrmOrdreSkrivTest, TheOrdersOfAllCustomersAndStatuses)
{
    open();
    EXPECT_EQ(handed(), QStringList({u"Ordreoversikt.rpt"_s, kHeleAaret}));
    EXPECT_TRUE(liste()->isVisible()) << "stays for another choice";
}

TEST_F(FrmOrdreSkrivTest, TheOrdersBetweenTwoDates)
{
    open();
    typeDate(til(), u"31.12.2014"_s);
    typeDate(fra(), u"24.10.2013"_s);
    EXPECT_EQ(utvalg(), u"{Klient.KlientNr}= 5 and {Ordre.OrdreDato} in Date( 2013, 10, 24) to "
                        u"Date( 2014, 12, 31)"_s);
}

TEST_F(FrmOrdreSkrivTest, TheOrdersOfOneCustomerAndOneStatus)
{
    legg({.nr = 1, .kundeNr = u"123"_s, .navn = u"'Aas'"_s});
    open();
    pick(kunde(), u"00123 Aas"_s);
    EXPECT_EQ(utvalg(), kHeleAaret + u" and {Ordre.KundeNr}=00123"_s);
    pick(status(), u"Bokført"_s);
    EXPECT_EQ(utvalg(),
              kHeleAaret + u" and {Ordre.KundeNr}=00123 and {Ordre.OrdreStatus}='Bokført'"_s);
    pick(kunde(), u"<Alle>"_s);
    EXPECT_EQ(utvalg(), kHeleAaret + u" and {Ordre.OrdreStatus}='Bokført'"_s);
    pick(status(), u"<Alle>"_s);
    EXPECT_EQ(utvalg(), kHeleAaret);
}

TEST_F(FrmOrdreSkrivTest, ACustomerOfSixDigitsIsCutInTheSelectionToo)
{
    legg({.nr = 1, .kundeNr = u"123456"_s, .navn = u"'Berit'"_s});
    open();
    typeCustomer(u"123456 Berit"_s);
    EXPECT_EQ(utvalg(), kHeleAaret + u" and {Ordre.KundeNr}=12345"_s);
}

TEST_F(FrmOrdreSkrivTest, ATypedCustomerStandsAsTyped)
{
    legg({.nr = 1, .kundeNr = u"12345"_s});
    open();
    typeCustomer(u"123"_s);
    EXPECT_EQ(kunde()->currentText(), u"123"_s) << "no customer may be put in its place";
    EXPECT_EQ(utvalg(), kHeleAaret + u" and {Ordre.KundeNr}=123"_s);
    typeCustomer(u"<alle>"_s);
    EXPECT_EQ(utvalg(), kHeleAaret + u" and {Ordre.KundeNr}=<alle"_s) << "case counts";
    typeCustomer({});
    EXPECT_EQ(utvalg(), kHeleAaret + u" and {Ordre.KundeNr}="_s);
    EXPECT_EQ(kunde()->count(), 2);
}

TEST_F(FrmOrdreSkrivTest, TheReminderListGoesByTodayAndLeavesDatesAndStatusOut)
{
    legg({.nr = 1, .kundeNr = u"123"_s, .navn = u"'Aas'"_s});
    open();
    typeDate(til(), u"31.12.2014"_s);
    pick(status(), u"Ordre"_s);
    press(u"optType_1"_s);
    EXPECT_EQ(handed(), QStringList({u"Purreliste.rpt"_s, kPurring}));
    pick(kunde(), u"00123 Aas"_s);
    EXPECT_EQ(utvalg(), kPurring + u" AND {Ordre.KundeNr}=00123"_s);
    press(u"optType_0"_s);
    EXPECT_TRUE(utvalg().endsWith(u" and {Ordre.OrdreStatus}='Ordre'"));
}

TEST_F(FrmOrdreSkrivTest, TheReminderListGoesByTheSystemsYear)
{
    gAar = 2012;
    open();
    press(u"optType_1"_s);
    EXPECT_EQ(utvalg(), kPurring);
}

TEST_F(FrmOrdreSkrivTest, TheClientStandsInTheNumberForm)
{
    gKlient = 1234;
    open();
    EXPECT_TRUE(utvalg().startsWith(u"{Klient.KlientNr}= 1234 and "));
}

TEST_F(FrmOrdreSkrivTest, PreviewOrPrinter)
{
    open();
    (void)handed();
    EXPECT_EQ(kontroll().window().state, report::WindowState::Normal);
    EXPECT_EQ(SharedForm<frmDummy>::existing(), nullptr);
    press(u"optSkriv_1"_s);
    EXPECT_FALSE(isOn(u"optSkriv_0"_s));
    EXPECT_TRUE(isOn(u"optType_0"_s)) << "another group";
    (void)handed();
    EXPECT_EQ(kontroll().window().state, report::WindowState::Minimized)
        << "run out of sight, to be printed from there";
    EXPECT_NE(SharedForm<frmDummy>::existing(), nullptr);
}

// --- Keys and closing

TEST_F(FrmOrdreSkrivTest, TabGoesThroughTheControlsAsTheEyeDoes)
{
    open();
    QStringList names;
    // A date picker keeps the first keys for its day, month and year.
    for (int key = 0; key < 20 && !names.contains(u"CancelButton"_s); ++key) {
        if (const QString name = liste()->focusWidget()->objectName(); !names.contains(name))
            names += name;
        QTest::keyClick(liste()->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(names,
              QStringList({u"optType_0"_s, u"cmbKunde"_s, u"dtpFraDato"_s, u"dtpTilDato"_s,
                           u"cmbStatus"_s, u"optSkriv_0"_s, u"OKButton"_s, u"CancelButton"_s}));
}

TEST_F(FrmOrdreSkrivTest, EnterPrintsAndEscapeCloses)
{
    open();
    typeCustomer(u"123"_s);
    QTest::keyClick(kunde(), Qt::Key_Return);
    runEvents();
    EXPECT_EQ(meldinger.ta().size(), 1);
    EXPECT_TRUE(kontroll().selectionFormula().endsWith(u"=123"));
    QTest::keyClick(kunde(), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(liste(), nullptr);
}

TEST_F(FrmOrdreSkrivTest, ADateThatIsTypedCountsWhenEnterPrints)
{
    open();
    fra()->setFocus();
    fra()->selectAll();
    QTest::keyClicks(fra(), u"01.02.2014"_s);
    QTest::keyClick(fra(), Qt::Key_Return);
    runEvents();
    EXPECT_EQ(meldinger.ta().size(), 1);
    EXPECT_TRUE(kontroll().selectionFormula().contains(u"in Date( 2014, 2, 1) to"));
}

TEST_F(FrmOrdreSkrivTest, CancelAndLogOffClose)
{
    open();
    press(u"CancelButton"_s);
    EXPECT_EQ(liste(), nullptr);
    open();
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_EQ(liste(), nullptr);
}
