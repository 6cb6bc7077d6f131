#include "presentation/screens/Skjerm.h"

#include "platform/forms/Forms.h"
#include "platform/forms/Image.h"
#include "presentation/screens/frmDummy.h"
#include "presentation/screens/frmInvisible.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/SettingsFolder.h"
#include "support/TestApplication.h"

#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

/// Screen services over settings of the test's own.
class SkjermTest : public FormsFixture
{
protected:
    ~SkjermTest() override { releaseSharedState(); }

    static QString section() { return u"Regningsdel\\Forms\\frmProve"_s; }
    /// The stored text without the zero character that closes it.
    static QString stored(const QString &key)
    {
        const QString text = gReg->GetSetting(section(), key, u"ingen."_s);
        return text.chopped(1);
    }
    static QStringList storedPlace()
    {
        return {stored(u"FLeft"_s), stored(u"FTop"_s), stored(u"FWidth"_s), stored(u"FHeight"_s)};
    }
    static void store(const QString &key, const QString &text)
    {
        EXPECT_TRUE(gReg->SaveSetting(section(), key, text));
    }
    static QRect placeFor(RecordingForm &form)
    {
        HentSkjermPlass(form, 300, 450, 6000, 3000);
        return form.place();
    }

    SettingsFolder settings;
};

/// A form with a help picture, as the six screens have it.
class HelpForm : public RecordingForm
{
public:
    HelpForm() : image(new Image(this)) { image->setObjectName(u"imgF1"_s); }
    Image *image;
};

const QStringList kNothing(4, u"ingen"_s);

} // namespace

// --- places

TEST_F(SkjermTest, FirstRunTakesTheDefaults)
{
    auto *form = new RecordingForm;
    EXPECT_EQ(placeFor(*form), QRect(450, 300, 6000, 3000));
    EXPECT_EQ(storedPlace(), kNothing);
}

TEST_F(SkjermTest, StoresTwipsAsDecimalText)
{
    auto *form = new RecordingForm;
    form->setPlace(-300, 1500, 10635, 6870);
    LagreSkjermPlass(*form);
    EXPECT_EQ(storedPlace(), QStringList({u"-300"_s, u"1500"_s, u"10635"_s, u"6870"_s}));
    EXPECT_EQ(settings.content(u"Brennmark AS/Strekkbok.ini"_s),
              "[Regningsdel\\Forms\\frmProve]\n"
              "FHeight=6870\nFLeft=-300\nFTop=1500\nFWidth=10635\n");
}

TEST_F(SkjermTest, AFormComesBackWhereItWasLeft)
{
    auto *first = new RecordingForm;
    first->show();
    first->setPlace(600, 750, 5250, 2250);
    const QRect left = first->place();
    LagreSkjermPlass(*first);
    first->unload();

    auto *second = new RecordingForm;
    EXPECT_EQ(placeFor(*second), left);
    second->show();
    EXPECT_EQ(second->place(), left);
}

TEST_F(SkjermTest, TheNameOfTheFormIsTrimmed)
{
    auto *form = new RecordingForm(u" frmProve "_s);
    form->setPlace(15, 30, 6000, 3000);
    LagreSkjermPlass(*form);
    EXPECT_EQ(stored(u"FTop"_s), u"30"_s);
}

TEST_F(SkjermTest, AMinimisedFormKeepsTheLastPlace)
{
    auto *form = new RecordingForm;
    form->setPlace(600, 750, 5250, 2250);
    LagreSkjermPlass(*form);
    form->setPlace(900, 900, 9000, 9000);
    form->setState(FormState::Minimised);
    LagreSkjermPlass(*form);
    EXPECT_EQ(storedPlace(), QStringList({u"600"_s, u"750"_s, u"5250"_s, u"2250"_s}));
}

TEST_F(SkjermTest, AMaximisedFormIsStoredAsItStands)
{
    auto *form = new RecordingForm;
    form->show();
    form->setState(FormState::Maximised);
    runEvents();
    const QRect whole = form->place();
    EXPECT_GT(whole.width(), 9000);
    LagreSkjermPlass(*form);
    EXPECT_EQ(storedPlace(),
              QStringList({QString::number(whole.left()), QString::number(whole.top()),
                           QString::number(whole.width()), QString::number(whole.height())}));
}

TEST_F(SkjermTest, EachMissingValueTakesItsOwnDefault)
{
    store(u"FTop"_s, u"1200"_s);
    store(u"FWidth"_s, u"7500"_s);
    auto *form = new RecordingForm;
    EXPECT_EQ(placeFor(*form), QRect(450, 1200, 7500, 3000));
}

TEST_F(SkjermTest, AStoredTextCountsByItsLeadingNumber)
{
    store(u"FLeft"_s, u" 15 0 twips"_s);
    store(u"FTop"_s, u"tull"_s);
    auto *form = new RecordingForm;
    EXPECT_EQ(placeFor(*form), QRect(150, 0, 6000, 3000));
}

TEST_F(SkjermTest, AStoredPlaceBetweenTwoPixelsGoesToTheNearer)
{
    store(u"FLeft"_s, u"22"_s);
    store(u"FTop"_s, u"23"_s);
    auto *form = new RecordingForm;
    EXPECT_EQ(placeFor(*form), QRect(15, 30, 6000, 3000));
}

TEST_F(SkjermTest, AStoredNumberThatIsTooLargeCountsAsNothing)
{
    store(u"FTop"_s, u"99999999999"_s);
    auto *form = new RecordingForm;
    EXPECT_EQ(placeFor(*form), QRect(450, 0, 6000, 3000));
}

TEST_F(SkjermTest, ThePlaceIsNotHeldAgainstTheScreen)
{
    store(u"FLeft"_s, u"60000"_s);
    store(u"FTop"_s, u"45000"_s);
    auto *form = new RecordingForm;
    EXPECT_EQ(placeFor(*form), QRect(60000, 45000, 6000, 3000));
}

TEST_F(SkjermTest, ASizeThatNoScreenHasIsCut)
{
    store(u"FWidth"_s, u"150000"_s);
    store(u"FHeight"_s, u"120000"_s);
    auto *form = new RecordingForm;
    EXPECT_EQ(placeFor(*form).size(), QSize(150000, 120000));
    // What a spoilt file asks for would take all of the machine's memory to show.
    for (const QString &twips : {u"480000"_s, u"2000000000"_s}) {
        store(u"FWidth"_s, twips);
        store(u"FHeight"_s, twips);
        EXPECT_EQ(placeFor(*form).size(), QSize(150000, 150000));
    }
}

TEST_F(SkjermTest, AStoredSizeOfAnyNumberComesUpWithinTheScreens)
{
    const QString stored[] = {u"2000000000"_s, u"150000"_s,      u"99999999999"_s,
                              u"0"_s,          u"-2000000000"_s, u"tull"_s,
                              u""_s,           u"12x"_s};
    for (const QString &twips : stored) {
        SCOPED_TRACE(twips.toStdString());
        store(u"FWidth"_s, twips);
        store(u"FHeight"_s, twips);
        auto *form = new RecordingForm;
        form->setMinimumTwips(4000, 4000);
        (void)placeFor(*form);
        form->show();
        runEvents();
        const QSize all = form->screen()->virtualSize();
        EXPECT_LE(form->width(), all.width());
        EXPECT_LE(form->height(), all.height());
        EXPECT_GE(form->width(), form->minimumWidth());
        EXPECT_GE(form->height(), form->minimumHeight());
        form->unload();
        runEvents();
    }
}

TEST_F(SkjermTest, AStoredPlaceOfNonsenseCanStillBeShown)
{
    for (const QString &key : {u"FLeft"_s, u"FTop"_s, u"FWidth"_s, u"FHeight"_s})
        store(key, u"-2000000000"_s);
    auto *form = new RecordingForm;
    (void)placeFor(*form);
    form->show();
    runEvents();
    EXPECT_TRUE(form->isVisible());
}

TEST_F(SkjermTest, AnUnwritableStoreIsPassedOver)
{
    SettingsFolder::use(u"/proc/finnes-ikke"_s);
    auto *form = new RecordingForm;
    LagreSkjermPlass(*form);
    EXPECT_EQ(placeFor(*form), QRect(450, 300, 6000, 3000));
}

// --- the help picture

TEST_F(SkjermTest, DressesTheHelpPicture)
{
    auto *form = new HelpForm;
    VisHjelpBilde(*form);
    EXPECT_EQ(form->image->size(), QSize(24, 24));
    EXPECT_EQ(form->image->toolTip(), u" Vis hjelp for dette skjermbildet (F1)"_s);
    const auto *holder = SharedForm<frmInvisible>::existing();
    ASSERT_NE(holder, nullptr);
    EXPECT_EQ(form->image->picture().cacheKey(), holder->Image1->picture().cacheKey());
    EXPECT_FALSE(form->image->picture().isNull());
    EXPECT_EQ(form->image->cursor().shape(), Qt::BitmapCursor);
    EXPECT_EQ(form->image->cursor().pixmap().toImage(),
              holder->imgURL->picture().pixmap(32, 32).toImage());
}

TEST_F(SkjermTest, TheHelpPictureLoadsTheHiddenFormWithoutShowingIt)
{
    EXPECT_FALSE(ErFormLastet(u"frmInvisible"_s));
    auto *form = new HelpForm;
    VisHjelpBilde(*form);
    EXPECT_TRUE(ErFormLastet(u"frmInvisible"_s));
    EXPECT_FALSE(SharedForm<frmInvisible>::existing()->isVisible());
}

TEST_F(SkjermTest, AFormWithoutHelpPictureStaysAsItIs)
{
    auto *form = new RecordingForm;
    VisHjelpBilde(*form);
    EXPECT_TRUE(form->findChildren<QWidget *>().isEmpty());
    EXPECT_FALSE(ErFormLastet(u"frmInvisible"_s));
}

TEST_F(SkjermTest, HelpWithoutAFileShowsNothing)
{
    gHelpFile = u"\\finnes\\ikke\\Regningsdel.chm"_s;
    VisHjelp(u"html\\ordre.htm"_s);
    EXPECT_EQ(gHelpTopic, u"html\\ordre.htm"_s);
    for (const QWidget *window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->isVisible());
}

// --- loaded forms

TEST_F(SkjermTest, ALoadedFormIsFoundByItsName)
{
    EXPECT_FALSE(ErFormLastet(u"frmProve"_s));
    auto *form = new RecordingForm;
    EXPECT_FALSE(ErFormLastet(u"frmProve"_s)) << "made, but not loaded";
    form->load();
    EXPECT_TRUE(ErFormLastet(u"frmProve"_s)) << "loaded, though hidden";
    EXPECT_FALSE(ErFormLastet(u"frmprove"_s));
    EXPECT_FALSE(ErFormLastet(u"frmProv"_s));
    EXPECT_FALSE(ErFormLastet(u""_s));
    form->unload();
    EXPECT_FALSE(ErFormLastet(u"frmProve"_s));
}

TEST_F(SkjermTest, OneOfSeveralFormsIsFound)
{
    (new RecordingForm(u"frmA"_s))->load();
    (new RecordingForm(u"frmB"_s))->load();
    (new RecordingForm(u"frmC"_s))->load();
    EXPECT_TRUE(ErFormLastet(u"frmA"_s));
    EXPECT_TRUE(ErFormLastet(u"frmB"_s));
    EXPECT_TRUE(ErFormLastet(u"frmC"_s));
}

// --- folders

TEST_F(SkjermTest, AFolderIsRememberedByTheKindOfFile)
{
    EXPECT_EQ(HentMappe(u"EHF"_s), QString());
    LagreMappe(u"EHF"_s, u"/home/kari/Faktura 2014 æøå ŁЖ %20"_s);
    LagreMappe(u"Logo"_s, u"/"_s);
    EXPECT_EQ(HentMappe(u"EHF"_s), u"/home/kari/Faktura 2014 æøå ŁЖ %20"_s);
    EXPECT_EQ(HentMappe(u"Logo"_s), u"/"_s);
    EXPECT_EQ(HentMappe(u"PDF"_s), QString());
}

// --- the hidden forms

TEST_F(SkjermTest, TheHiddenFormsGoAtLogOff)
{
    SharedForm<frmInvisible>::get().load();
    SharedForm<frmDummy>::get().load();
    EXPECT_TRUE(ErFormLastet(u"frmDummy"_s));
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_FALSE(ErFormLastet(u"frmInvisible"_s));
    EXPECT_FALSE(ErFormLastet(u"frmDummy"_s));
}

TEST_F(SkjermTest, TheHiddenFormHoldsTheDialogs)
{
    EXPECT_FALSE(SharedForm<frmInvisible>::get().CommonDialog1.cancelError);
    EXPECT_EQ(SharedForm<frmInvisible>::get().CommonDialog1.flags, 0);
}
