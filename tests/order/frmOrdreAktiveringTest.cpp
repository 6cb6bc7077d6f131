#include "order/OrdreSkjerm.h"

#include "platform/forms/DTPicker.h"
#include "platform/forms/Forms.h"
#include "platform/forms/OwnPicture.h"
#include "platform/forms/PictureButton.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

/// What the screen shows when it has become active: one order or all, its pictures, its warning.
class FrmOrdreAktiveringTest : public OrdreSkjerm
{
protected:
    static QImage bilde(const QString &button)
    {
        return control<PictureButton>(button)->icon().pixmap(16, 16).toImage();
    }
    static QImage tegning(const QString &name)
    {
        return ownPicture(u":/faktura/%1.svg"_s.arg(name), {16, 16}).pixmap(16, 16).toImage();
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
};

// --- One order

TEST_F(FrmOrdreAktiveringTest, InnIDOpensTheOneOrder)
{
    const int first = leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2});
    SharedForm<frmOrdre>::get().settInnID(first);
    apne();
    EXPECT_EQ(tekst(16), u"1"_s);
    for (const QString &name : {u"cmdFirst"_s, u"cmdPrevious"_s, u"cmdNext"_s, u"cmdLast"_s})
        EXPECT_FALSE(control(name)->isVisible()) << name.toStdString();
    EXPECT_EQ(piler(), u"----"_s);
}

TEST_F(FrmOrdreAktiveringTest, InnIDTakesOnlyValuesAboveZero)
{
    auto &form = SharedForm<frmOrdre>::get();
    EXPECT_EQ(form.InnID(), 0);
    form.settInnID(-1);
    EXPECT_EQ(form.InnID(), 0);
    form.settInnID(7);
    form.settInnID(0);
    form.settInnID(-1);
    EXPECT_EQ(form.InnID(), 7);
    form.settInnID(8);
    EXPECT_EQ(form.InnID(), 8);
}

TEST_F(FrmOrdreAktiveringTest, WithoutInnIDTheNavigationShows)
{
    leggOrdre({});
    apne();
    for (const QString &name : {u"cmdFirst"_s, u"cmdPrevious"_s, u"cmdNext"_s, u"cmdLast"_s})
        EXPECT_TRUE(control(name)->isVisible()) << name.toStdString();
}

// --- Activation

TEST_F(FrmOrdreAktiveringTest, ActivationReadsAnewWhileBrowsing)
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

TEST_F(FrmOrdreAktiveringTest, ActivationInAModeOnlyTurnsCancelOff)
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

TEST_F(FrmOrdreAktiveringTest, ThePickersAreLimitedToTheYearAndTheNext)
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

TEST_F(FrmOrdreAktiveringTest, RoundingIsShownWhenItIsInUse)
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

TEST_F(FrmOrdreAktiveringTest, ThePicturesTellOfTheEnds)
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

TEST_F(FrmOrdreAktiveringTest, AModeGreysThePicturesAndLeavesTheButtonsOn)
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

TEST_F(FrmOrdreAktiveringTest, WithoutOrdersBothEndsAreGrey)
{
    apne();
    EXPECT_EQ(piler(), u"----"_s);
}

// --- The year

TEST_F(FrmOrdreAktiveringTest, NewWarnsOfAnotherYear)
{
    gAar = 2015;
    apne();
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
    klikk(u"btnNew"_s);
    EXPECT_TRUE(control(u"imgAar"_s)->isVisible());
    EXPECT_EQ(control(u"imgAar"_s)->toolTip(), QString());
    klikk(u"imgAar"_s);
    EXPECT_EQ(control(u"imgAar"_s)->toolTip(),
              u"Ordredato ligger utenfor aktivt regnskapsår (2015) i Strekkbok!"_s);
    // No command hides it again.
    klikk(u"btnCancel"_s);
    EXPECT_TRUE(control(u"imgAar"_s)->isVisible());
}

TEST_F(FrmOrdreAktiveringTest, ChangeWarnsOfAnotherYear)
{
    leggOrdre({});
    gAar = 2015;
    apne();
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
    klikk(u"btnChange"_s);
    EXPECT_TRUE(control(u"imgAar"_s)->isVisible());
}

TEST_F(FrmOrdreAktiveringTest, TheSameYearWarnsOfNothing)
{
    leggOrdre({});
    apne();
    klikk(u"btnChange"_s);
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
    klikk(u"btnCancel"_s);
    klikk(u"btnNew"_s);
    EXPECT_FALSE(control(u"imgAar"_s)->isVisible());
}

TEST_F(FrmOrdreAktiveringTest, ATextThatIsNoDateIsOutsideTheYear)
{
    gAar = 2015;
    apne();
    klikk(u"btnNew"_s);
    skriv(10, u"snart"_s);
    klikk(u"imgAar"_s);
    EXPECT_NE(control(u"imgAar"_s)->toolTip(), QString());
}

TEST_F(FrmOrdreAktiveringTest, TheWarningLooksAtTheDateOfTheMoment)
{
    gAar = 2015;
    apne();
    klikk(u"btnNew"_s);
    skriv(10, u"05.01.2015"_s);
    klikk(u"imgAar"_s);
    EXPECT_EQ(control(u"imgAar"_s)->toolTip(), QString());
    EXPECT_TRUE(control(u"imgAar"_s)->isVisible());
}

} // namespace
