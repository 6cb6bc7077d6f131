#include "presentation/OptionsFixture.h"

#include "platform/forms/Twips.h"

#include <QScreen>

namespace {

/// How the screen opens: what is on it by design and what it shows of the stored settings.
class FrmOptionsTest : public OptionsFixture
{
protected:
    static QString textOf(const QString &name) { return control(name).property("text").toString(); }
    static QString titleOf(const QString &name)
    {
        return control(name).property("title").toString();
    }
};

const QStringList kOfKid{u"optMOD_0"_s, u"optMOD_1"_s, u"optKID_0"_s, u"optKID_1"_s,
                         u"Text1"_s,    u"Text2"_s,    u"Text3"_s};
const QString kRente =
    u"Etter forfall beregnes maksimal rente i hht. bestemmelsene i Lov om renter "
    u"ved forsinket betaling."_s;

// --- As designed

TEST_F(FrmOptionsTest, CaptionsStandAsTold)
{
    openScreen();
    EXPECT_EQ(screen()->windowTitle(), u"Innstillinger"_s);
    EXPECT_EQ(textOf(u"cmdOK"_s), u"OK"_s);
    EXPECT_EQ(textOf(u"cmdCancel"_s), u"Avbryt"_s);
    EXPECT_EQ(textOf(u"cmdApply"_s), u"Lagre"_s);

    EXPECT_EQ(textOf(u"Check1"_s), u"Aktiver KID på faktura"_s);
    EXPECT_EQ(textOf(u"Label2"_s),
              u"Du må ha en OCR avtale med banken før du sender ut fakturaer med KID, og avtalen "
              u"må være godkjent og aktiv, ellers vil ikke kundene kunne betale med den oppgitte "
              u"KID. "_s);
    EXPECT_EQ(textOf(u"Label3"_s), u"Oppbygning av KID nummer:"_s);
    EXPECT_EQ(titleOf(u"rammeKID"_s), u"KID "_s);
    EXPECT_EQ(textOf(u"optKID_0"_s), u"Fakturanummer (      siffer) + kontrollsiffer"_s);
    EXPECT_EQ(textOf(u"optKID_1"_s),
              u"Kundenr (      siffer) + Fakturanummer (       siffer) + kontrollsiffer"_s);
    EXPECT_EQ(textOf(u"optMOD_0"_s), u"Kontrollsiffer modulus 10 (MOD10)"_s);
    EXPECT_EQ(textOf(u"optMOD_1"_s), u"Kontrollsiffer modulus 11 (MOD11)"_s);

    EXPECT_EQ(titleOf(u"rammeBlankett"_s), u"Fakturablankett "_s);
    EXPECT_EQ(textOf(u"optLogo_0"_s), u"Uten logo men med giro"_s);
    EXPECT_EQ(textOf(u"optLogo_1"_s), u"Med logo og med giro"_s);
    EXPECT_EQ(textOf(u"optLogo_2"_s), u"Uten logo og uten giro"_s);
    EXPECT_EQ(textOf(u"optLogo_3"_s), u"Med logo men uten giro"_s);
    EXPECT_EQ(titleOf(u"frLogo"_s), u"Logo "_s);
    EXPECT_EQ(textOf(u"cmdLogoInn"_s), u"Sett inn logo"_s);
    EXPECT_EQ(textOf(u"cmdLogoSlett"_s), u"Fjern logo"_s);
    EXPECT_EQ(textOf(u"lblLogo"_s), u"Logo kan være inntil 2x6,3 cm eller 76 x 237 pixels"_s);

    EXPECT_EQ(textOf(u"chkTxt1"_s), u"Bruk fakturatekst 1"_s);
    EXPECT_EQ(textOf(u"chkTxt2"_s), u"Bruk fakturatekst 2"_s);
    EXPECT_EQ(titleOf(u"Frame4"_s), u"Første fakturanummer"_s);
    EXPECT_EQ(titleOf(u"rammeAvrunding"_s), u"Øreavrunding"_s);
    EXPECT_EQ(textOf(u"optAvrunding_0"_s), u"Ingen øreavrunding"_s);
    EXPECT_EQ(textOf(u"optAvrunding_1"_s), u"Nærmeste hele krone"_s);
    EXPECT_EQ(textOf(u"optAvrunding_2"_s), u"Ingen desimaler (stryk øre)"_s);
    EXPECT_EQ(textOf(u"chkPrintVis"_s), u"Forhåndsvis faktura ved utskrift"_s);
}

TEST_F(FrmOptionsTest, ToolTipsStandAsTold)
{
    openScreen();
    const QString underLines = u"Fakturateksten kommer under fakturalinjene på fakturablanketten"_s;
    EXPECT_EQ(control(u"chkTxt1"_s).toolTip(), underLines);
    EXPECT_EQ(control(u"chkTxt2"_s).toolTip(), underLines);
    EXPECT_EQ(control(u"optAvrunding_0"_s).toolTip(), u"Alle øre (desimaler) vises med 2 siffer"_s);
    EXPECT_EQ(control(u"optAvrunding_1"_s).toolTip(),
              u"Eks. 111,49 avrundes ned til 111,00 / 111,50 forhøyes opp til 112,00"_s);
    EXPECT_EQ(control(u"optAvrunding_2"_s).toolTip(), u"Eks. 111,99 avrundes ned til 111,00"_s);
}

TEST_F(FrmOptionsTest, TheTabsStandAsTold)
{
    openScreen();
    const auto &strip = control<TabStrip>(u"tbsOptions"_s);
    ASSERT_EQ(strip.count(), 3);
    EXPECT_EQ(strip.tabText(0), u"KID"_s);
    EXPECT_EQ(strip.tabText(1), u"Logo"_s);
    EXPECT_EQ(strip.tabText(2), u"Faktura"_s);
    EXPECT_EQ(strip.tabToolTip(0), u"Innstillinger for bruk av KID"_s);
    EXPECT_EQ(strip.tabToolTip(1), u"Instillinger for bruk av Logo på fakturablankett"_s);
    EXPECT_EQ(strip.tabToolTip(2), u"Innstillinger for Faktura"_s);
    EXPECT_EQ(strip.key(1), u"Group1"_s);
    EXPECT_EQ(strip.key(2), u"Group20"_s);
    EXPECT_EQ(strip.key(3), u"Group3"_s);
}

TEST_F(FrmOptionsTest, StandsInTheMiddleOfTheScreen)
{
    openScreen();
    const QPoint apart =
        screen()->frameGeometry().center() - screen()->screen()->availableGeometry().center();
    EXPECT_LE(apart.manhattanLength(), 8); // the frame comes when the window is shown
}

TEST_F(FrmOptionsTest, TheTextBoxesStandInTheGapsOfTheirCaptions)
{
    openScreen();
    const QFontMetrics metrics(option(u"optKID_1"_s).font());
    const int mark = 40; // pixels, generously
    const auto expectAfter = [&](const QString &name, const QString &owner, const QString &words,
                                 int earlierBoxes) {
        const QLineEdit &standing = box(name);
        EXPECT_EQ(standing.parentWidget(), &option(owner));
        EXPECT_EQ(standing.width(), twipsToPixels(225));
        const int before = metrics.horizontalAdvance(words) + earlierBoxes;
        EXPECT_GE(standing.x(), before) << name.toStdString();
        EXPECT_LE(standing.x(), before + mark) << name.toStdString();
    };
    expectAfter(u"Text3"_s, u"optKID_0"_s, u"Fakturanummer ("_s, 0);
    expectAfter(u"Text1"_s, u"optKID_1"_s, u"Kundenr ("_s, 0);
    expectAfter(u"Text2"_s, u"optKID_1"_s, u"Kundenr (siffer) + Fakturanummer ("_s,
                twipsToPixels(225));
    for (const QString &name : {u"Text1"_s, u"Text2"_s, u"Text3"_s})
        EXPECT_EQ(box(name).maxLength(), 32767) << name.toStdString();
}

TEST_F(FrmOptionsTest, TheDesignLogoIsBlankAndOfItsSize)
{
    openScreen();
    const QImage blank = control<PictureBox>(u"imgTomLogo"_s).picture();
    EXPECT_EQ(blank.size(), QSize(237, 76));
    EXPECT_EQ(logo(), blank);
    for (int y = 0; y < blank.height(); ++y) {
        for (int x = 0; x < blank.width(); ++x)
            ASSERT_EQ(blank.pixelColor(x, y), QColor(Qt::white));
    }
    EXPECT_FALSE(control(u"imgTomLogo"_s).isVisibleTo(screen()));
    EXPECT_EQ(control<PictureBox>(u"picLogo"_s).contentsRect().size(), blank.size());
}

TEST_F(FrmOptionsTest, TheFirstTabIsSelectedAndItsPageIsSeen)
{
    openScreen();
    EXPECT_EQ(control<TabStrip>(u"tbsOptions"_s).selected(), 1);
    EXPECT_TRUE(page(0).isVisible());
    EXPECT_EQ(page(0).x(), twipsToPixels(210));
    EXPECT_EQ(page(1).x(), twipsToPixels(-20000));
    EXPECT_EQ(page(2).x(), twipsToPixels(210));
    // No tab click has run: no page is disabled.
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(page(i).isEnabled());
    EXPECT_TRUE(screen()->childAt(page(0).geometry().center()) == &page(0) ||
                page(0).isAncestorOf(screen()->childAt(page(0).geometry().center())));
}

// --- Nothing stored

TEST_F(FrmOptionsTest, OpensWithItsDefaults)
{
    openScreen();
    EXPECT_FALSE(check(u"Check1"_s).isChecked());
    EXPECT_EQ(chosen(u"optKID"_s), 0);
    EXPECT_EQ(box(u"Text1"_s).text(), u"5"_s);
    EXPECT_EQ(box(u"Text2"_s).text(), u"6"_s);
    EXPECT_EQ(box(u"Text3"_s).text(), u"6"_s);
    EXPECT_EQ(chosen(u"optMOD"_s), 0);
    EXPECT_EQ(chosen(u"optLogo"_s), 0);
    EXPECT_FALSE(check(u"chkTxt1"_s).isChecked());
    EXPECT_FALSE(check(u"chkTxt2"_s).isChecked());
    EXPECT_EQ(area(1).text(), kRente);
    EXPECT_EQ(area(2).text(), QString());
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1"_s);
    EXPECT_EQ(chosen(u"optAvrunding"_s), 0);
    EXPECT_FALSE(check(u"chkPrintVis"_s).isChecked());
}

TEST_F(FrmOptionsTest, OpeningStoresNothing)
{
    const SessionTap tap;
    openScreen();
    for (const QString &statement : tap.statements())
        EXPECT_TRUE(statement.startsWith(u"SELECT"_s)) << statement.toStdString();
    press(u"cmdCancel"_s);
    EXPECT_EQ(screen(), nullptr);
    EXPECT_EQ(stored(u"KIDaktivert"_s), u"-"_s);
    EXPECT_EQ(client(u"FirstFakNr,FakTekstBruk,FakTekst1,FakTekst2"_s),
              QStringList{u"Null|Null|Null|Null"_s});
    EXPECT_TRUE(storedLogo().isNull());
}

TEST_F(FrmOptionsTest, ReadsTheClientsRowInItsOrder)
{
    addOrder();
    const SessionTap tap;
    openScreen();
    EXPECT_EQ(tap.statements(), QStringList({u"SELECT Logo FROM Klient WHERE KlientNr= 5"_s,
                                             u"SELECT COUNT (*) FROM Ordre WHERE KlientNr= 5"_s,
                                             u"SELECT FirstFakNr FROM Klient WHERE KlientNr= 5"_s,
                                             u"SELECT FakTekstBruk FROM Klient WHERE KlientNr= 5"_s,
                                             u"SELECT FakTekst1 FROM Klient WHERE KlientNr= 5"_s,
                                             u"SELECT FakTekst2 FROM Klient WHERE KlientNr= 5"_s}));
}

// --- Page KID

TEST_F(FrmOptionsTest, KidIsOnForExactlyOne)
{
    for (const auto &[value, on] : std::vector<std::pair<QString, bool>>{{u"1"_s, true},
                                                                         {u"1,9"_s, true},
                                                                         {u"0"_s, false},
                                                                         {u"2"_s, false},
                                                                         {u"-1"_s, false},
                                                                         {u"1.5"_s, false},
                                                                         {u"ja"_s, false},
                                                                         {QString(), false}}) {
        store(u"KIDaktivert"_s, value);
        openScreen();
        EXPECT_EQ(check(u"Check1"_s).isChecked(), on) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsTest, WithKidOffItsChoicesAreOff)
{
    openScreen();
    for (const QString &name : kOfKid)
        EXPECT_FALSE(isOn(name)) << name.toStdString();
    for (const QString &name : {u"Text1"_s, u"Text2"_s, u"Text3"_s})
        EXPECT_FALSE(hasWindowGround(name)) << name.toStdString();
}

TEST_F(FrmOptionsTest, WithKidOnItsChoicesAreOn)
{
    store(u"KIDaktivert"_s, u"1"_s);
    openScreen();
    for (const QString &name : kOfKid)
        EXPECT_TRUE(isOn(name)) << name.toStdString();
    for (const QString &name : {u"Text1"_s, u"Text2"_s, u"Text3"_s})
        EXPECT_TRUE(hasWindowGround(name)) << name.toStdString();
}

TEST_F(FrmOptionsTest, TickingKidTurnsItsChoicesOnAndOff)
{
    openScreen();
    press(u"Check1"_s);
    for (const QString &name : kOfKid)
        EXPECT_TRUE(isOn(name)) << name.toStdString();
    EXPECT_TRUE(hasWindowGround(u"Text2"_s));
    QTest::keyClick(&check(u"Check1"_s), Qt::Key_Space);
    for (const QString &name : kOfKid)
        EXPECT_FALSE(isOn(name)) << name.toStdString();
    EXPECT_FALSE(hasWindowGround(u"Text2"_s));
}

TEST_F(FrmOptionsTest, TheStructureIsOneForExactlyOne)
{
    for (const auto &[value, structure] :
         std::vector<std::pair<QString, int>>{{u"1"_s, 1}, {u"0"_s, 0}, {u"2"_s, 0}, {u"x"_s, 0}}) {
        store(u"KIDoppbygning"_s, value);
        openScreen();
        EXPECT_EQ(chosen(u"optKID"_s), structure) << value.toStdString();
        EXPECT_EQ(isOn(u"Label3"_s), structure == 1) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsTest, TheLabelOfTheStructureFollowsNoLaterChoice)
{
    store(u"KIDaktivert"_s, u"1"_s);
    openScreen();
    press(u"optKID_1"_s);
    EXPECT_EQ(chosen(u"optKID"_s), 1);
    EXPECT_FALSE(isOn(u"Label3"_s));
}

TEST_F(FrmOptionsTest, TheLengthsAreShownAsStored)
{
    store(u"KIDlengdeFakturanr"_s, u"8"_s);
    store(u"KIDlengdeKundenr"_s, u"sju"_s);
    openScreen();
    EXPECT_EQ(box(u"Text2"_s).text(), u"8"_s);
    EXPECT_EQ(box(u"Text3"_s).text(), u"8"_s);
    EXPECT_EQ(box(u"Text1"_s).text(), u"sju"_s);
}

TEST_F(FrmOptionsTest, ModulusIsElevenForExactlyEleven)
{
    for (const auto &[value, modulus] : std::vector<std::pair<QString, int>>{
             {u"11"_s, 1}, {u"10"_s, 0}, {u"9"_s, 0}, {u"11.1"_s, 0}}) {
        store(u"KIDmodulus"_s, value);
        openScreen();
        EXPECT_EQ(chosen(u"optMOD"_s), modulus) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsTest, StructureAndModulusAreChosenApart)
{
    store(u"KIDaktivert"_s, u"1"_s);
    openScreen();
    press(u"optKID_1"_s);
    press(u"optMOD_1"_s);
    EXPECT_EQ(chosen(u"optKID"_s), 1);
    EXPECT_EQ(chosen(u"optMOD"_s), 1);
    press(u"optKID_0"_s);
    EXPECT_EQ(chosen(u"optMOD"_s), 1);
}

// --- Page Faktura

TEST_F(FrmOptionsTest, WithAnOrderTheFirstNumberIsShownAndStandsFast)
{
    run(u"UPDATE Klient SET FirstFakNr=1001 WHERE KlientNr=5"_s);
    addOrder();
    openScreen();
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1001"_s);
    EXPECT_FALSE(isOn(u"txtFirstFak"_s));
    EXPECT_FALSE(isOn(u"Frame4"_s));
    EXPECT_FALSE(hasWindowGround(u"txtFirstFak"_s));
    clickTab(3);
    QTest::mouseClick(&box(u"txtFirstFak"_s), Qt::LeftButton);
    EXPECT_NE(focused(), u"txtFirstFak"_s);
}

TEST_F(FrmOptionsTest, WithoutAnOrderTheStoredFirstNumberIsNotShown)
{
    run(u"UPDATE Klient SET FirstFakNr=1001 WHERE KlientNr=5"_s);
    addOrder(6);
    openScreen();
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1"_s);
    EXPECT_TRUE(isOn(u"txtFirstFak"_s));
    EXPECT_TRUE(isOn(u"Frame4"_s));
    EXPECT_TRUE(hasWindowGround(u"txtFirstFak"_s));
    EXPECT_EQ(box(u"txtFirstFak"_s).alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
}

TEST_F(FrmOptionsTest, WithAnOrderAndNoFirstNumberAZeroIsShown)
{
    addOrder();
    openScreen();
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"0"_s);
}

TEST_F(FrmOptionsTest, ACountThatFailsCountsAsNoOrder)
{
    run(u"DROP TABLE OrdreLinjer"_s);
    run(u"DROP TABLE Ordre"_s);
    openScreen();
    EXPECT_TRUE(isOn(u"txtFirstFak"_s));
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1"_s);
}

TEST_F(FrmOptionsTest, TheTextsInUseAreTicked)
{
    for (const auto &[value, first, second] :
         std::vector<std::tuple<int, bool, bool>>{{0, false, false},
                                                  {1, true, false},
                                                  {2, false, true},
                                                  {3, true, true},
                                                  {4, false, false},
                                                  {5, false, false},
                                                  {-1, false, false}}) {
        run(u"UPDATE Klient SET FakTekstBruk=%1 WHERE KlientNr=5"_s.arg(value));
        openScreen();
        EXPECT_EQ(check(u"chkTxt1"_s).isChecked(), first) << value;
        EXPECT_EQ(check(u"chkTxt2"_s).isChecked(), second) << value;
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsTest, TheTextsAreShown)
{
    run(u"UPDATE Klient SET FakTekst1='Takk for handelen.', FakTekst2='God jul' WHERE "
        u"KlientNr=5"_s);
    openScreen();
    EXPECT_EQ(area(1).text(), u"Takk for handelen."_s);
    EXPECT_EQ(area(2).text(), u"God jul"_s);
}

TEST_F(FrmOptionsTest, ABlankFirstTextIsOfferedTheStandardSentence)
{
    for (const QString &value : {QString(), u"   "_s}) {
        run(u"UPDATE Klient SET FakTekst1='%1', FakTekst2='%1' WHERE KlientNr=5"_s.arg(value));
        openScreen();
        EXPECT_EQ(area(1).text(), kRente);
        EXPECT_EQ(area(2).text(), value);
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsTest, TheRoundingIsChosen)
{
    for (const auto &[value, index] : std::vector<std::pair<QString, int>>{
             {u"0"_s, 0}, {u"1"_s, 1}, {u"2"_s, 2}, {u"3"_s, 0}, {u"-1"_s, 0}, {u"99999"_s, 0}}) {
        store(u"Avrunding"_s, value);
        openScreen();
        EXPECT_EQ(chosen(u"optAvrunding"_s), index) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsTest, ThePreviewIsTickedForExactlyOne)
{
    for (const auto &[value, on] : std::vector<std::pair<QString, bool>>{
             {u"1"_s, true}, {u"0"_s, false}, {u"2"_s, false}, {u"1.1"_s, false}}) {
        store(u"PrintVis"_s, value);
        openScreen();
        EXPECT_EQ(check(u"chkPrintVis"_s).isChecked(), on) << value.toStdString();
        press(u"cmdCancel"_s);
    }
}

TEST_F(FrmOptionsTest, ATextAreaTakesLinesAndNoMoreThanItsLength)
{
    openScreen();
    clickTab(3);
    for (const int number : {1, 2}) {
        type(area(number), u"Linje 1\nLinje 2"_s);
        EXPECT_EQ(area(number).text(), u"Linje 1\r\nLinje 2"_s);
        type(area(number), QString(300, u'x'));
        EXPECT_EQ(area(number).text(), QString(255, u'x'));
    }
}

TEST_F(FrmOptionsTest, TheClientWithoutARowOpensAllTheSame)
{
    run(u"DELETE FROM Klient WHERE KlientNr=5"_s);
    openScreen();
    EXPECT_TRUE(screen()->isVisible());
    EXPECT_EQ(area(1).text(), kRente);
    EXPECT_FALSE(check(u"chkTxt1"_s).isChecked());
    EXPECT_TRUE(logo().isNull());
}

// --- The pages

TEST_F(FrmOptionsTest, ATabBringsItsPageAndTakesTheOthersAway)
{
    openScreen();
    for (const int selected : {2, 3, 1}) {
        clickTab(selected);
        for (int i = 0; i < 3; ++i) {
            const bool shown = i == selected - 1;
            EXPECT_EQ(page(i).x(), twipsToPixels(shown ? 210 : -20000)) << selected << i;
            EXPECT_EQ(page(i).isEnabled(), shown) << selected << i;
            EXPECT_EQ(page(i).isVisible(), shown) << selected << i;
        }
    }
}

TEST_F(FrmOptionsTest, ControlTabGoesRoundThePages)
{
    openScreen();
    const auto &strip = control<TabStrip>(u"tbsOptions"_s);
    for (const int next : {2, 3, 1}) {
        QTest::keyClick(screen()->focusWidget() ? screen()->focusWidget() : screen(), Qt::Key_Tab,
                        Qt::ControlModifier);
        runEvents();
        EXPECT_EQ(strip.selected(), next);
        EXPECT_TRUE(page(next - 1).isVisible());
        EXPECT_FALSE(page(next % 3).isVisible());
    }
}

TEST_F(FrmOptionsTest, ControlTabLeavesATextAreaToo)
{
    openScreen();
    clickTab(3);
    area(1).setFocus();
    QTest::keyClick(&area(1), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(control<TabStrip>(u"tbsOptions"_s).selected(), 1);
    EXPECT_EQ(area(1).text(), kRente);
    EXPECT_FALSE(area(1).hasFocus());
}

TEST_F(FrmOptionsTest, TheTabKeyStaysOnThePageInFront)
{
    store(u"KIDaktivert"_s, u"1"_s);
    openScreen();
    control<TabStrip>(u"tbsOptions"_s).tabBar()->setFocus();
    QStringList visited;
    for (int i = 0; i < 10; ++i) {
        QTest::keyClick(screen()->focusWidget(), Qt::Key_Tab);
        visited += focused();
    }
    EXPECT_EQ(visited.mid(0, 9),
              QStringList({u"Check1"_s, u"optKID_0"_s, u"Text3"_s, u"Text1"_s, u"Text2"_s,
                           u"optMOD_0"_s, u"cmdOK"_s, u"cmdCancel"_s, u"cmdApply"_s}));
}

TEST_F(FrmOptionsTest, PagesAndButtonsFollowTheForm)
{
    openScreen();
    const QSize smallest = screen()->size();
    for (const QSize size : {smallest, smallest + QSize(300, 200), QSize(10, 10)}) {
        screen()->resize(size);
        runEvents();
        const QRect strip = control(u"tbsOptions"_s).geometry();
        EXPECT_EQ(screen()->size(), size.expandedTo(smallest));
        for (int i = 0; i < 3; ++i) {
            clickTab(i + 1);
            EXPECT_TRUE(strip.contains(page(i).geometry())) << i;
            for (const QWidget *child :
                 page(i).findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
                EXPECT_TRUE(page(i).rect().contains(child->geometry()))
                    << child->objectName().toStdString();
            }
        }
        const QWidget &save = control(u"cmdApply"_s);
        const QRect place(save.mapTo(screen(), QPoint()), save.size());
        EXPECT_TRUE(screen()->rect().contains(place));
        EXPECT_GT(place.top(), strip.bottom());
    }
}

// --- The end

TEST_F(FrmOptionsTest, EscapeAndAvbrytClose)
{
    openScreen();
    QTest::keyClick(&check(u"Check1"_s), Qt::Key_Escape);
    EXPECT_EQ(screen(), nullptr);
    openScreen();
    press(u"cmdCancel"_s);
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmOptionsTest, ClosesWhenTheUserLogsOff)
{
    openScreen();
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmOptionsTest, AReopenedScreenBeginsAnew)
{
    openScreen();
    press(u"Check1"_s);
    clickTab(3);
    type(box(u"txtFirstFak"_s), u"77"_s);
    reopenScreen();
    EXPECT_FALSE(check(u"Check1"_s).isChecked());
    EXPECT_EQ(control<TabStrip>(u"tbsOptions"_s).selected(), 1);
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1"_s);
}

} // namespace
