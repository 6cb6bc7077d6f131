#include "platform/forms/TabStrip.h"
#include "presentation/options/OptionsFixture.h"

#include "platform/forms/Twips.h"

#include <QScopeGuard>
#include <QScreen>

namespace {

/// The screen by design, its pages and its end.
class FrmOptionsTest : public OptionsFixture
{
protected:
    static QString textOf(const QString &name)
    {
        return control(name).property("text").toString().remove(u'&');
    }
    static QString titleOf(const QString &name)
    {
        return control(name).property("title").toString();
    }
};

// --- As designed

TEST_F(FrmOptionsTest, TheCaptions)
{
    open();
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

TEST_F(FrmOptionsTest, TheToolTips)
{
    open();
    const QString underLines = u"Fakturateksten kommer under fakturalinjene på fakturablanketten"_s;
    EXPECT_EQ(control(u"chkTxt1"_s).toolTip(), underLines);
    EXPECT_EQ(control(u"chkTxt2"_s).toolTip(), underLines);
    EXPECT_EQ(control(u"optAvrunding_0"_s).toolTip(), u"Alle øre (desimaler) vises med 2 siffer"_s);
    EXPECT_EQ(control(u"optAvrunding_1"_s).toolTip(),
              u"Eks. 111,49 avrundes ned til 111,00 / 111,50 forhøyes opp til 112,00"_s);
    EXPECT_EQ(control(u"optAvrunding_2"_s).toolTip(), u"Eks. 111,99 avrundes ned til 111,00"_s);
}

TEST_F(FrmOptionsTest, TheTabs)
{
    open();
    auto &strip = control<TabStrip>(u"tbsOptions"_s);
    ASSERT_EQ(strip.count(), 3);
    EXPECT_EQ(strip.tabText(0).remove(u'&'), u"KID"_s);
    EXPECT_EQ(strip.tabText(1).remove(u'&'), u"Logo"_s);
    EXPECT_EQ(strip.tabText(2).remove(u'&'), u"Faktura"_s);
    EXPECT_EQ(strip.tabToolTip(0), u"Innstillinger for bruk av KID"_s);
    EXPECT_EQ(strip.tabToolTip(1), u"Instillinger for bruk av Logo på fakturablankett"_s);
    EXPECT_EQ(strip.tabToolTip(2), u"Innstillinger for Faktura"_s);
    EXPECT_EQ(strip.widget(0)->objectName(), u"Group1"_s);
    EXPECT_EQ(strip.widget(1)->objectName(), u"Group20"_s);
    EXPECT_EQ(strip.widget(2)->objectName(), u"Group3"_s);
}

TEST_F(FrmOptionsTest, StandsInTheMiddleOfTheScreen)
{
    open();
    const QPoint apart =
        screen()->frameGeometry().center() - screen()->screen()->availableGeometry().center();
    EXPECT_LE(apart.manhattanLength(), 8); // the frame comes when the window is shown
}

TEST_F(FrmOptionsTest, TheTextBoxesStandInTheGapsOfTheirCaptions)
{
    open();
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
    open();
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
    open();
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

// --- The pages

TEST_F(FrmOptionsTest, ATabBringsItsPageAndTakesTheOthersAway)
{
    open();
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
    open();
    auto &strip = control<TabStrip>(u"tbsOptions"_s);
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
    open();
    clickTab(3);
    area(1).setFocus();
    QTest::keyClick(&area(1), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(control<TabStrip>(u"tbsOptions"_s).selected(), 1);
    EXPECT_EQ(area(1).text(), standardSentence());
    EXPECT_FALSE(area(1).hasFocus());
}

TEST_F(FrmOptionsTest, TheTabKeyStaysOnThePageInFront)
{
    store(u"KIDaktivert"_s, u"1"_s);
    open();
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
    open();
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
        QWidget &save = control(u"cmdApply"_s);
        const QRect place(save.mapTo(screen(), QPoint()), save.size());
        EXPECT_TRUE(screen()->rect().contains(place));
        EXPECT_GT(place.top(), strip.bottom());
    }
}

TEST_F(FrmOptionsTest, LargeLettersHaveRoomInTheButtonsAndTheTextBoxes)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(2 * usual.pointSizeF());
    const auto restored = qScopeGuard([&] { QApplication::setFont(usual); });
    QApplication::setFont(large);
    open();
    const int line = QFontMetrics(large).height();
    for (const QString &name : {u"cmdOK"_s, u"cmdCancel"_s, u"cmdApply"_s}) {
        QWidget &button = control(name);
        EXPECT_GT(button.height(), line) << name.toStdString();
        button.setFocus(); // where the screen is too narrow for the letters, it comes into view
        EXPECT_EQ(button.visibleRegion().boundingRect(), button.rect()) << name.toStdString();
    }
    for (const QString &name : {u"Text1"_s, u"Text2"_s, u"Text3"_s}) {
        const QLineEdit &standing = box(name);
        EXPECT_GT(standing.width(), QFontMetrics(large).horizontalAdvance(u'8') + 4)
            << name.toStdString();
        EXPECT_TRUE(standing.parentWidget()->rect().contains(standing.geometry()))
            << name.toStdString();
    }
}

// --- The end

TEST_F(FrmOptionsTest, EscapeAndAvbrytClose)
{
    open();
    QTest::keyClick(&check(u"Check1"_s), Qt::Key_Escape);
    EXPECT_EQ(screen(), nullptr);
    open();
    press(u"cmdCancel"_s);
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmOptionsTest, ClosesWhenTheUserLogsOff)
{
    open();
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(FrmOptionsTest, AReopenedScreenBeginsAnew)
{
    open();
    press(u"Check1"_s);
    clickTab(3);
    type(box(u"txtFirstFak"_s), u"77"_s);
    reopen();
    EXPECT_FALSE(check(u"Check1"_s).isChecked());
    EXPECT_EQ(control<TabStrip>(u"tbsOptions"_s).selected(), 1);
    EXPECT_EQ(box(u"txtFirstFak"_s).text(), u"1"_s);
}

} // namespace
