#include "order/OrdreSkjerm.h"

#include "platform/forms/DTPicker.h"
#include "platform/forms/Forms.h"
#include "platform/forms/Image.h"
#include "platform/forms/ImageList.h"
#include "platform/forms/PictureButton.h"
#include "platform/grid/fpSpread.h"
#include "rules/Innstilling.h"
#include "shell/clsRegSettings.h"
#include "state/SharedState.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

class FrmOrdreTest : public OrdreSkjerm
{
protected:
    static QImage bilde(const QString &button)
    {
        return control<PictureButton>(button)->icon().pixmap(16, 16).toImage();
    }
    static QImage tegning(const QString &name)
    {
        ImageList list(QSize(16, 16));
        list.add({}, u":/faktura/%1.svg"_s.arg(name));
        return list.icon(1).pixmap(16, 16).toImage();
    }
    /// The four navigation buttons' pictures: "-" for a greyed one, "+" for a normal one.
    static QString piler()
    {
        const std::pair<QString, QString> all[] = {{u"cmdFirst"_s, u"forste"_s},
                                                   {u"cmdPrevious"_s, u"forrige"_s},
                                                   {u"cmdNext"_s, u"neste"_s},
                                                   {u"cmdLast"_s, u"siste"_s}};
        QString result;
        for (const auto &[button, picture] : all) {
            result += bilde(button) == tegning(picture)                ? u'+'
                      : bilde(button) == tegning(picture + u"-graa"_s) ? u'-'
                                                                       : u'?';
        }
        return result;
    }
    static QString lagret(const QString &key)
    {
        return gReg->GetSetting(u"Regningsdel\\Forms\\frmOrdre"_s, key, u"mangler"_s);
    }
    static void klikkBilde(const QString &name)
    {
        QTest::mouseClick(control(name), Qt::LeftButton);
        runEvents();
    }
};

// --- Texts

TEST_F(FrmOrdreTest, TextsAreTheTold)
{
    apne();
    EXPECT_EQ(skjerm()->windowTitle(), u"Ordre og Faktura"_s);
    const std::pair<QString, QString> captions[] = {
        {u"btnPrint"_s, u"Utskrift"_s},
        {u"btnCopy"_s, u"Kopi"_s},
        {u"btnNew"_s, u"Ny"_s},
        {u"btnChange"_s, u"Endre"_s},
        {u"btnSave"_s, u"Lagre"_s},
        {u"btnCancel"_s, u"Avbryt"_s},
        {u"btnClose"_s, u"Avslutt"_s},
        {u"chkBetalt"_s, u"Betalt"_s},
        {u"chkLevAdr"_s, u"Samme leveringsadresse"_s},
    };
    for (const auto &[name, caption] : captions)
        EXPECT_EQ(control<QAbstractButton>(name)->text(), caption);
    const std::pair<QString, QString> tips[] = {
        {u"cmdFirst"_s, u"Gå til første post"_s},
        {u"cmdPrevious"_s, u"Gå til forrige post"_s},
        {u"cmdNext"_s, u"Gå til neste post"_s},
        {u"cmdLast"_s, u"Gå til siste post"_s},
        {u"imgF1"_s, u" Vis hjelp for dette skjermbildet (F1)"_s}};
    for (const auto &[name, tip] : tips)
        EXPECT_EQ(control(name)->toolTip(), tip);
}

TEST_F(FrmOrdreTest, EachFieldHasItsLabel)
{
    apne();
    const std::pair<int, QString> labels[] = {
        {0, u"Kundenavn:"_s},     {1, u"Adresse:"_s},         {3, u"Poststed:"_s},
        {5, u"Lev. adresse:"_s},  {7, u"Lev. poststed:"_s},   {9, u"Betalingsbet.:"_s},
        {10, u"Ordre dato:"_s},   {11, u"Leverings dato:"_s}, {12, u"Faktura dato:"_s},
        {13, u"Forfall dato:"_s}, {14, u"Vår ref.:"_s},       {15, u"Deres ref.:"_s},
        {16, u"Faktura nr.:"_s},  {17, u"Status:"_s},         {18, u"Kunde nr.:"_s},
        {19, u"KID:"_s},          {20, u"Sum Netto:"_s},      {21, u"Sum MVA:"_s},
        {22, u"Sum Brutto:"_s},   {23, u"Kontrollsiffer"_s},  {24, u"Org.nr.:"_s},
        {25, u"Øreavrunding:"_s},
    };
    for (const auto &[nr, text] : labels) {
        QStringList found;
        for (const QLabel *label : skjerm()->findChildren<QLabel *>()) {
            if (label->buddy() == felt(nr))
                found += label->text();
        }
        EXPECT_EQ(found, QStringList{text}) << nr;
    }
    // Those that no label tells of have a name for those who cannot see.
    for (const int nr : {2, 4, 6, 8})
        EXPECT_NE(felt(nr)->accessibleName(), QString()) << nr;
    EXPECT_EQ(control<QLabel>(u"lblDager"_s)->text(), u"dager"_s);
    EXPECT_EQ(control<QLabel>(u"Label5"_s)->buddy(), felt(25));
}

TEST_F(FrmOrdreTest, TheCheckDigitAndTheInvoiceTypeAreHidden)
{
    apne();
    EXPECT_FALSE(felt(23)->isVisible());
    EXPECT_FALSE(control(u"lblKontrollsiffer"_s)->isVisible());
    EXPECT_FALSE(felt(26)->isVisible());
    EXPECT_TRUE(felt(22)->isVisible());
}

TEST_F(FrmOrdreTest, ThePickersHaveNames)
{
    apne();
    for (const QString &name : {u"dtpOrdre"_s, u"dtpLevDato"_s, u"dtpFakDato"_s, u"dtpForfall"_s})
        EXPECT_NE(control(name)->accessibleName(), QString());
}

// --- Life

TEST_F(FrmOrdreTest, AFirstOpeningTakesTheDefaultPlace)
{
    apne();
    EXPECT_EQ(skjerm()->place(), QRect(195, 195, 10635, 6870));
}

TEST_F(FrmOrdreTest, ThePlaceIsKept)
{
    apne();
    skjerm()->setPlace(300, 450, 12000, 7500);
    runEvents();
    skjerm()->unload();
    runEvents();
    EXPECT_EQ(lagret(u"FLeft"_s).chopped(1), u"300"_s);
    EXPECT_EQ(lagret(u"FHeight"_s).chopped(1), u"7500"_s);
    apne();
    EXPECT_EQ(skjerm()->place(), QRect(300, 450, 12000, 7500));
}

TEST_F(FrmOrdreTest, TheWindowHasALeastSize)
{
    apne();
    skjerm()->setPlace(300, 450, 3000, 1500);
    runEvents();
    // Whole pixels of 15 twips.
    EXPECT_EQ(skjerm()->place().size(), QSize(10635, 6435));
}

TEST_F(FrmOrdreTest, NothingIsCutOffInTheLeastWindow)
{
    apne();
    skjerm()->setPlace(0, 0, 0, 0);
    runEvents();
    for (const QWidget *widget : skjerm()->findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->parentWidget() != skjerm())
            continue;
        EXPECT_TRUE(skjerm()->rect().contains(widget->geometry()))
            << widget->objectName().toStdString();
        if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
            EXPECT_GT(widget->width(), button->fontMetrics().horizontalAdvance(button->text()))
                << widget->objectName().toStdString();
        } else if (qobject_cast<const QLabel *>(widget)) {
            EXPECT_GE(widget->width(), widget->sizeHint().width())
                << widget->objectName().toStdString();
        }
        for (const QWidget *other : skjerm()->findChildren<QWidget *>()) {
            if (other == widget || !other->isVisible() || other->parentWidget() != skjerm())
                continue;
            EXPECT_FALSE(widget->geometry().intersects(other->geometry()))
                << widget->objectName().toStdString() << other->objectName().toStdString();
        }
    }
}

TEST_F(FrmOrdreTest, TheGridTakesTheRoomOfALargerWindow)
{
    apne();
    const QSize before = control(u"vaSpread1"_s)->size();
    const int header = felt(0)->y();
    skjerm()->resize(skjerm()->size() + QSize(200, 150));
    runEvents();
    EXPECT_EQ(control(u"vaSpread1"_s)->size(), before + QSize(200, 150));
    EXPECT_EQ(felt(0)->y(), header);
}

TEST_F(FrmOrdreTest, TheProductsNameTakesTheRoomOfALargerWindow)
{
    apne();
    auto *grid = control<fpSpread>(u"vaSpread1"_s);
    EXPECT_EQ(grid->colWidth(2), 16.25);
    const int first = skjerm()->width();
    skjerm()->resize(first + 300, skjerm()->height());
    runEvents();
    EXPECT_DOUBLE_EQ(grid->colWidth(2), 16.25 + grid->twipsToColWidth(300 * 15));
    EXPECT_EQ(grid->colWidth(1), 11.0);
    skjerm()->resize(first, skjerm()->height());
    runEvents();
    EXPECT_EQ(grid->colWidth(2), 16.25);
}

TEST_F(FrmOrdreTest, SumsOfMillionsAreShownWholeInTheLeastWindow)
{
    apne();
    skjerm()->setPlace(0, 0, 0, 0);
    runEvents();
    constexpr int kFrameAndMargins = 10;
    for (const int nr : {20, 21, 22}) {
        EXPECT_GE(felt(nr)->width(),
                  felt(nr)->fontMetrics().horizontalAdvance(u"12345 678,00"_s) + kFrameAndMargins)
            << nr;
    }
    EXPECT_GE(felt(25)->width(),
              felt(25)->fontMetrics().horizontalAdvance(u"-0,50"_s) + kFrameAndMargins);
}

TEST_F(FrmOrdreTest, TheWarningMovesNothing)
{
    gAar = 2015;
    apne();
    const QRect before = felt(0)->geometry();
    klikk(u"btnNew"_s);
    ASSERT_TRUE(control(u"imgAar"_s)->isVisible());
    EXPECT_EQ(felt(0)->geometry(), before);
}

TEST_F(FrmOrdreTest, EscapeClosesSilentlyAnywhere)
{
    leggOrdre({});
    for (const QString &where : {u"btnClose"_s, u"vaSpread1"_s, u"txtFields_10"_s}) {
        apne();
        control(where)->setFocus();
        tast(Qt::Key_Escape);
        EXPECT_EQ(skjerm(), nullptr) << where.toStdString();
    }
    apne();
    klikk(u"btnNew"_s);
    skriv(0, u"Tapt AS"_s);
    tast(Qt::Key_Escape);
    EXPECT_EQ(skjerm(), nullptr);
}

TEST_F(FrmOrdreTest, CloseClosesInEachMode)
{
    leggOrdre({});
    for (const QString &mode : {u""_s, u"btnNew"_s, u"btnCopy"_s, u"btnChange"_s}) {
        apne();
        if (!mode.isEmpty())
            klikk(mode);
        QTest::mouseClick(control(u"btnClose"_s), Qt::LeftButton);
        runEvents();
        EXPECT_EQ(skjerm(), nullptr) << mode.toStdString();
    }
    EXPECT_EQ(rows(u"SELECT COUNT (*) FROM Ordre"_s), QStringList{u"1"_s});
}

TEST_F(FrmOrdreTest, ANextOpeningBrowses)
{
    leggOrdre({.ordreNr = 7});
    apne();
    klikk(u"btnNew"_s);
    skjerm()->unload();
    runEvents();
    apne();
    EXPECT_EQ(tekst(16), u"7"_s);
    EXPECT_EQ(knapperPaa(),
              QStringList({u"btnPrint"_s, u"btnCopy"_s, u"btnNew"_s, u"btnChange"_s}));
}

TEST_F(FrmOrdreTest, LoggingOffUnloads)
{
    apne();
    EXPECT_TRUE(Forms::instance().logOff());
    runEvents();
    EXPECT_EQ(skjerm(), nullptr);
}

TEST_F(FrmOrdreTest, F1ShowsTheHelpPageAnywhere)
{
    apne();
    for (const QString &where : {u"btnClose"_s, u"vaSpread1"_s, u"txtFields_10"_s}) {
        gHelpTopic.clear();
        control(where)->setFocus();
        tast(Qt::Key_F1);
        EXPECT_EQ(gHelpTopic, u"html\\ordre.htm"_s) << where.toStdString();
    }
    gHelpTopic.clear();
    klikkBilde(u"imgF1"_s);
    EXPECT_EQ(gHelpTopic, u"html\\ordre.htm"_s);
}

// --- One order

TEST_F(FrmOrdreTest, InnIDOpensTheOneOrder)
{
    const int first = leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    SharedForm<frmOrdre>::get().setInnID(first);
    apne();
    EXPECT_EQ(tekst(16), u"1"_s);
    for (const QString &name : {u"cmdFirst"_s, u"cmdPrevious"_s, u"cmdNext"_s, u"cmdLast"_s})
        EXPECT_FALSE(control(name)->isVisible()) << name.toStdString();
    EXPECT_EQ(piler(), u"----"_s);
}

TEST_F(FrmOrdreTest, InnIDTakesOnlyValuesAboveZero)
{
    auto &form = SharedForm<frmOrdre>::get();
    EXPECT_EQ(form.InnID(), 0);
    form.setInnID(-1);
    EXPECT_EQ(form.InnID(), 0);
    form.setInnID(7);
    form.setInnID(0);
    form.setInnID(-1);
    EXPECT_EQ(form.InnID(), 7);
    form.setInnID(8);
    EXPECT_EQ(form.InnID(), 8);
}

TEST_F(FrmOrdreTest, WithoutInnIDTheNavigationShows)
{
    leggOrdre({});
    apne();
    for (const QString &name : {u"cmdFirst"_s, u"cmdPrevious"_s, u"cmdNext"_s, u"cmdLast"_s})
        EXPECT_TRUE(control(name)->isVisible()) << name.toStdString();
}

// --- Activation

TEST_F(FrmOrdreTest, ActivationReadsAnewWhileBrowsing)
{
    leggOrdre({.ordreNr = 1});
    apne();
    leggOrdre({.ordreNr = 2});
    auto *other = new RecordingForm(u"frmAnnet"_s);
    other->show();
    runEvents();
    EXPECT_EQ(tekst(16), u"1"_s);
    skjerm()->show();
    runEvents();
    EXPECT_EQ(tekst(16), u"2"_s);
}

TEST_F(FrmOrdreTest, ActivationInAModeOnlyTurnsCancelOff)
{
    leggOrdre({.ordreNr = 7});
    for (const QString &mode : {u"btnNew"_s, u"btnCopy"_s, u"btnChange"_s}) {
        apne();
        klikk(mode);
        skriv(0, u"Skrevet AS"_s);
        auto *other = new RecordingForm(u"frmAnnet"_s);
        other->show();
        runEvents();
        other->unload();
        runEvents();
        EXPECT_EQ(tekst(0), u"Skrevet AS"_s) << mode.toStdString();
        EXPECT_EQ(knapperPaa(), QStringList{u"btnSave"_s}) << mode.toStdString();
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(FrmOrdreTest, ThePickersAreLimitedToTheYearAndTheNext)
{
    leggOrdre({});
    apne();
    for (const QString &name : {u"dtpOrdre"_s, u"dtpLevDato"_s, u"dtpFakDato"_s, u"dtpForfall"_s}) {
        EXPECT_EQ(control<DTPicker>(name)->minimumDate(), QDate(2014, 1, 1));
        EXPECT_EQ(control<DTPicker>(name)->maximumDate(), QDate(2015, 12, 31));
    }
    // The year is read at each activation.
    gAar = 2016;
    auto *other = new RecordingForm(u"frmAnnet"_s);
    other->show();
    skjerm()->show();
    runEvents();
    EXPECT_EQ(control<DTPicker>(u"dtpForfall"_s)->minimumDate(), QDate(2016, 1, 1));
    EXPECT_EQ(control<DTPicker>(u"dtpForfall"_s)->maximumDate(), QDate(2017, 12, 31));
}

TEST_F(FrmOrdreTest, RoundingIsShownWhenItIsInUse)
{
    leggOrdre({});
    const std::pair<QString, bool> settings[] = {
        {u"0"_s, false}, {u"1"_s, true}, {u"2"_s, true}, {u""_s, false}};
    for (const auto &[setting, isOn] : settings) {
        gReg->SaveSetting(u"Regningsdel"_s, u"Avrunding"_s, setting);
        apne();
        EXPECT_EQ(felt(25)->isEnabled(), isOn) << setting.toStdString();
        EXPECT_EQ(erPaa(u"Label5"_s), isOn);
        const QPalette palette = felt(25)->palette();
        EXPECT_EQ(palette.color(QPalette::Base), isOn
                                                     ? felt(22)->palette().color(QPalette::Base)
                                                     : skjerm()->palette().color(QPalette::Button));
        skjerm()->unload();
        runEvents();
    }
}

// --- Pictures of the navigation buttons

TEST_F(FrmOrdreTest, ThePicturesTellOfTheEnds)
{
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    apne();
    EXPECT_EQ(piler(), u"++++"_s);
    klikk(u"cmdNext"_s);
    EXPECT_EQ(piler(), u"++--"_s);
    klikk(u"cmdPrevious"_s);
    EXPECT_EQ(piler(), u"++++"_s);
    klikk(u"cmdFirst"_s);
    EXPECT_EQ(piler(), u"++++"_s);
    klikk(u"cmdPrevious"_s);
    EXPECT_EQ(piler(), u"--++"_s);
    for (const QString &name : {u"cmdFirst"_s, u"cmdPrevious"_s, u"cmdNext"_s, u"cmdLast"_s})
        EXPECT_TRUE(erPaa(name)) << name.toStdString();
}

TEST_F(FrmOrdreTest, AModeGreysThePicturesAndLeavesTheButtonsOn)
{
    leggOrdre({.ordreNr = 1});
    for (const QString &mode : {u"btnNew"_s, u"btnCopy"_s, u"btnChange"_s}) {
        apne();
        klikk(mode);
        EXPECT_EQ(piler(), u"----"_s) << mode.toStdString();
        for (const QString &name : {u"cmdFirst"_s, u"cmdPrevious"_s, u"cmdNext"_s, u"cmdLast"_s})
            EXPECT_TRUE(erPaa(name)) << name.toStdString();
        klikk(u"btnCancel"_s);
        EXPECT_EQ(piler(), u"----"_s) << mode.toStdString();
        klikk(u"cmdLast"_s);
        EXPECT_EQ(piler(), u"++++"_s) << mode.toStdString();
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(FrmOrdreTest, WithoutOrdersBothEndsAreGrey)
{
    apne();
    EXPECT_EQ(piler(), u"----"_s);
}

// --- The year

TEST_F(FrmOrdreTest, NewWarnsOfAnotherYear)
{
    gAar = 2015;
    apne();
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
    klikk(u"btnNew"_s);
    EXPECT_TRUE(control(u"imgAar"_s)->isVisible());
    EXPECT_EQ(control(u"imgAar"_s)->toolTip(), QString());
    klikkBilde(u"imgAar"_s);
    EXPECT_EQ(control(u"imgAar"_s)->toolTip(),
              u"Ordredato ligger utenfor aktivt regnskapsår (2015) i Strekkbok!"_s);
    // No command hides it again.
    klikk(u"btnCancel"_s);
    EXPECT_TRUE(control(u"imgAar"_s)->isVisible());
}

TEST_F(FrmOrdreTest, ChangeWarnsOfAnotherYear)
{
    leggOrdre({});
    gAar = 2015;
    apne();
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
    klikk(u"btnChange"_s);
    EXPECT_TRUE(control(u"imgAar"_s)->isVisible());
}

TEST_F(FrmOrdreTest, TheSameYearWarnsOfNothing)
{
    leggOrdre({});
    apne();
    klikk(u"btnChange"_s);
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
    klikk(u"btnCancel"_s);
    klikk(u"btnNew"_s);
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
}

TEST_F(FrmOrdreTest, ATextThatIsNoDateIsOutsideTheYear)
{
    gAar = 2015;
    apne();
    klikk(u"btnNew"_s);
    skriv(10, u"snart"_s);
    klikkBilde(u"imgAar"_s);
    EXPECT_NE(control(u"imgAar"_s)->toolTip(), QString());
}

TEST_F(FrmOrdreTest, TheWarningLooksAtTheDateOfTheMoment)
{
    gAar = 2015;
    apne();
    klikk(u"btnNew"_s);
    skriv(10, u"05.01.2015"_s);
    klikkBilde(u"imgAar"_s);
    EXPECT_EQ(control(u"imgAar"_s)->toolTip(), QString());
    EXPECT_TRUE(control(u"imgAar"_s)->isVisible());
}

// --- Keys

TEST_F(FrmOrdreTest, ButtonsHaveKeysOfTheirOwn)
{
    leggOrdre({});
    apne();
    const auto press = [](Qt::Key key) { tast(key, Qt::AltModifier); };
    press(Qt::Key_E);
    // A button pressed by its key stays down for a moment before it clicks.
    EXPECT_TRUE(QTest::qWaitFor([] { return erPaa(u"btnSave"_s); }));
    gaTil(3);
    felt(3)->setText(u"7010"_s);
    press(Qt::Key_B);
    EXPECT_TRUE(QTest::qWaitFor([] { return !erPaa(u"btnSave"_s); }));
    press(Qt::Key_N);
    EXPECT_TRUE(QTest::qWaitFor([] { return tekst(16) == u"2"_s; }));
    // The field that had the focus is left as by a click.
    skriv(3, u"7010"_s);
    press(Qt::Key_A);
    EXPECT_EQ(tekst(4), u"TRONDHEIM"_s);
    EXPECT_TRUE(QTest::qWaitFor([] { return skjerm() == nullptr; }));
    apne();
    QStringList keys;
    for (const QPushButton *button : skjerm()->findChildren<QPushButton *>())
        keys += button->shortcut().toString();
    EXPECT_EQ(keys.removeDuplicates(), 0);
    EXPECT_FALSE(keys.contains(QString()));
}

} // namespace
