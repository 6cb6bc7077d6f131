#include "presentation/screens/frmTMsgBox.h"

#include "platform/forms/Forms.h"
#include "platform/forms/Image.h"
#include "platform/forms/MsgBox.h"
#include "platform/forms/OwnPicture.h"
#include "platform/forms/Twips.h"
#include "support/TestApplication.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

class FrmTMsgBoxTest : public FormsFixture
{
protected:
    FrmTMsgBoxTest() : note(&SharedForm<frmTMsgBox>::get()) { note->load(); }

    void show(const QString &text = u"Posten er lagret."_s)
    {
        note->settTekst(text);
        note->show();
    }
    template<class Control>
    Control *control(const QString &name)
    {
        auto *found = note->findChild<Control *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QTimer *timer() { return control<QTimer>(u"Timer1"_s); }
    /// One second, without waiting for it.
    void tick()
    {
        ASSERT_TRUE(timer()->isActive());
        QTimerEvent event(timer()->timerId());
        QCoreApplication::sendEvent(timer(), &event);
    }
    static bool isClosed() { return SharedForm<frmTMsgBox>::existing() == nullptr; }
    QImage picture() { return control<Image>(u"Image1"_s)->picture().pixmap(32, 32).toImage(); }
    static QImage artwork(const QString &file)
    {
        return ownPicture(u":/faktura/"_s + file, {32, 32}).pixmap(32, 32).toImage();
    }
    /// A text whose label is at least that many twips wide, and hardly wider.
    QString textOfWidth(int twips)
    {
        QString text;
        while (pixelsToTwips(control<QLabel>(u"Label1"_s)->width()) < twips) {
            text += u'.';
            note->settTekst(text);
        }
        return text;
    }
    int labelTwips() { return pixelsToTwips(control<QLabel>(u"Label1"_s)->width()); }

    frmTMsgBox *note;
};

TEST_F(FrmTMsgBoxTest, EachIconHasItsPicture)
{
    const std::pair<qint32, QString> icons[] = {
        {-3, u"sad.svg"_s},  {-2, u"smile.svg"_s},    {-1, u"check.svg"_s},
        {16, u"stop.svg"_s}, {32, u"question.svg"_s}, {48, u"exclamation.svg"_s},
        {64, u"info.svg"_s}, {17, u"info.svg"_s},     {-4, u"info.svg"_s},
    };
    for (const auto &[icon, file] : icons) {
        auto &fresh = SharedForm<frmTMsgBox>::get();
        note = &fresh;
        fresh.load();
        fresh.setIconID(icon);
        fresh.show();
        EXPECT_EQ(picture(), artwork(file)) << icon;
        fresh.unload();
    }
    EXPECT_NE(artwork(u"sad.svg"_s), artwork(u"smile.svg"_s));
}

TEST_F(FrmTMsgBoxTest, NoIconIsInfo)
{
    show();
    EXPECT_EQ(note->IconID(), 0);
    EXPECT_EQ(picture(), artwork(u"info.svg"_s));
}

TEST_F(FrmTMsgBoxTest, ZeroIsNotStored)
{
    note->setIconID(64);
    EXPECT_EQ(note->IconID(), 64);
    note->setIconID(0);
    EXPECT_EQ(note->IconID(), 64);
    note->setIconID(-2147483647 - 1);
    EXPECT_EQ(note->IconID(), -2147483647 - 1);
}

TEST_F(FrmTMsgBoxTest, LoadingForgetsTheIcon)
{
    note->unload();
    note = &SharedForm<frmTMsgBox>::get();
    note->setIconID(16);
    note->load();
    EXPECT_EQ(note->IconID(), 0);
}

TEST_F(FrmTMsgBoxTest, ANoteThatIsUpTakesTheNewPicture)
{
    note->setIconID(16);
    show();
    ASSERT_EQ(picture(), artwork(u"stop.svg"_s));
    note->setIconID(48);
    note->show();
    EXPECT_EQ(picture(), artwork(u"exclamation.svg"_s));
    note->setIconID(0);
    EXPECT_EQ(picture(), artwork(u"exclamation.svg"_s));
}

TEST_F(FrmTMsgBoxTest, ScreenReadersAreToldTheTextAndANewOneToo)
{
    const auto told = [this] {
        return QAccessible::queryAccessibleInterface(note)->text(QAccessible::Description);
    };
    show(u"Posten er lagret."_s);
    EXPECT_EQ(told(), u"Posten er lagret."_s);
    show(u"Data er lagret."_s);
    EXPECT_EQ(told(), u"Data er lagret."_s);
}

TEST_F(FrmTMsgBoxTest, TheTimerRunsFromActivationOn)
{
    EXPECT_FALSE(timer()->isActive());
    show();
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 1000);
    EXPECT_FALSE(timer()->isSingleShot());
}

TEST_F(FrmTMsgBoxTest, ClosesAtTheSecondTick)
{
    show();
    tick();
    EXPECT_FALSE(isClosed());
    EXPECT_TRUE(note->isVisible());
    tick();
    EXPECT_TRUE(isClosed());
    EXPECT_FALSE(note->isVisible());
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(FrmTMsgBoxTest, ShowingItAgainDoesNotResetTheCounter)
{
    show();
    tick();
    show(u"Data er lagret."_s);
    tick();
    EXPECT_TRUE(isClosed());
}

TEST_F(FrmTMsgBoxTest, ActivationAfterAnotherFormResetsTheCounter)
{
    show();
    tick();
    auto *other = new RecordingForm(u"frmAnnet"_s);
    other->show();
    note->show();
    tick();
    EXPECT_FALSE(isClosed());
    tick();
    EXPECT_TRUE(isClosed());
}

TEST_F(FrmTMsgBoxTest, TheButtonClosesAndStopsTheTimer)
{
    show();
    tick();
    QTest::mouseClick(control<QPushButton>(u"Command1"_s), Qt::LeftButton);
    EXPECT_TRUE(isClosed());
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(FrmTMsgBoxTest, EnterPressesTheButton)
{
    show();
    runEvents(); // the window system hands out the focus
    EXPECT_EQ(note->focusWidget(), control<QPushButton>(u"Command1"_s));
    QTest::keyClick(note->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(isClosed());
}

TEST_F(FrmTMsgBoxTest, TheCloseBoxClosesAndStopsTheTimer)
{
    show();
    note->close();
    EXPECT_TRUE(isClosed());
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(FrmTMsgBoxTest, TheTimerClosesANoteWhoseButtonIsHidden)
{
    note->skjulKnapp();
    show();
    tick();
    tick();
    EXPECT_TRUE(isClosed());
}

TEST_F(FrmTMsgBoxTest, KeysOtherThanTheButtonsLeaveItOpen)
{
    show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(note));
    for (const Qt::Key key : {Qt::Key_F1, Qt::Key_O, Qt::Key_Tab}) {
        QTest::keyClick(note->focusWidget(), key);
        EXPECT_FALSE(isClosed()) << key;
    }
    QTest::keyClick(note->windowHandle(), Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor(isClosed)) << "the button is seen to go down first";
}

TEST_F(FrmTMsgBoxTest, EscapeAndEnterAreItsButton)
{
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) {
        note = &SharedForm<frmTMsgBox>::get();
        note->load();
        show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(note));
        QTest::keyClick(note->focusWidget(), key);
        EXPECT_TRUE(QTest::qWaitFor(isClosed)) << key;
    }
}

TEST_F(FrmTMsgBoxTest, TheTimerGoesOnBehindAMessageBox)
{
    show();
    tick();
    onNextModal([this](QWidget &box) {
        tick();
        EXPECT_TRUE(isClosed());
        runEvents();
        EXPECT_TRUE(box.isVisible());
        box.close();
    });
    EXPECT_EQ(MsgBox(u"Feil"_s), 1);
}

TEST_F(FrmTMsgBoxTest, LogOffUnloads)
{
    show();
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_TRUE(isClosed());
}

TEST_F(FrmTMsgBoxTest, AShortTextLeavesTheWidthAsDrawn)
{
    const int drawn = note->width();
    show(u"Ja"_s);
    EXPECT_EQ(note->width(), drawn);
    EXPECT_NE(pixelsToTwips(drawn), 1980 + 1200);
}

TEST_F(FrmTMsgBoxTest, ALongTextMakesTheWindowWider)
{
    const QString text = textOfWidth(1981);
    show(text);
    EXPECT_GT(labelTwips(), 1980);
    EXPECT_EQ(pixelsToTwips(note->width()), labelTwips() + 1200);
    EXPECT_LE(control<QLabel>(u"Label1"_s)->geometry().right(), note->width());
}

TEST_F(FrmTMsgBoxTest, ATextOnePixelBeyondTheLimitMakesItWider)
{
    note->settTekst(u"x"_s);
    control<QLabel>(u"Label1"_s)->resize(twipsToPixels(1980) + 1, 17);
    note->show();
    EXPECT_EQ(pixelsToTwips(note->width()), 1995 + 1200);
}

TEST_F(FrmTMsgBoxTest, AnEndlessTextMakesNoEndlessWindow)
{
    show(QString(100000, u'x'));
    EXPECT_GT(labelTwips(), 150000);
    EXPECT_EQ(pixelsToTwips(note->width()), 150000);
    tick();
    tick();
    EXPECT_TRUE(isClosed());
}

TEST_F(FrmTMsgBoxTest, LinesLeaveTheHeightAsDrawnAndTheButtonOnTop)
{
    const int drawn = note->height();
    show(u"linje\r\n"_s.repeated(100));
    EXPECT_EQ(note->height(), drawn);
    const auto *button = control<QPushButton>(u"Command1"_s);
    EXPECT_EQ(note->childAt(button->geometry().center()), button);
}

TEST_F(FrmTMsgBoxTest, NoTextLeavesTheWindowAsDrawn)
{
    const QSize drawn = note->size();
    show({});
    EXPECT_EQ(note->size(), drawn);
}

TEST_F(FrmTMsgBoxTest, ATextOfTheLimitLeavesTheWidthAsDrawn)
{
    const int drawn = note->width();
    note->settTekst(u"x"_s);
    control<QLabel>(u"Label1"_s)->resize(twipsToPixels(1980), 17);
    note->show();
    EXPECT_EQ(note->width(), drawn);
}

TEST_F(FrmTMsgBoxTest, TheLabelSizesItselfToTheText)
{
    show(u"i"_s);
    const int narrow = labelTwips();
    note->settTekst(u"En lengre tekst"_s);
    EXPECT_GT(labelTwips(), narrow);
    note->settTekst(u"i"_s);
    EXPECT_EQ(labelTwips(), narrow);
}

TEST_F(FrmTMsgBoxTest, MarkupIsShownAsItStands)
{
    show(u"<b>A</b> & B"_s);
    EXPECT_EQ(control<QLabel>(u"Label1"_s)->textFormat(), Qt::PlainText);
}

TEST_F(FrmTMsgBoxTest, TheButtonStaysCentredAboveTheBottom)
{
    show();
    const auto *button = control<QPushButton>(u"Command1"_s);
    const QSize size = button->size();
    for (const QSize window : {note->size(), QSize(401, 200), QSize(300, 150)}) {
        note->resize(window);
        EXPECT_EQ(button->size(), size);
        EXPECT_EQ(button->x(), (window.width() - size.width()) / 2);
        EXPECT_EQ(button->y(), window.height() - 57);
    }
}

} // namespace
