#include "platform/forms/MsgBox.h"

#include "support/Caption.h"
#include "support/TestApplication.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {

class StandardMessage : public FormsFixture
{
};

QPushButton *button(const QMessageBox &box, const QString &text)
{
    for (QPushButton *candidate : box.findChildren<QPushButton *>()) {
        if (captionOf(*candidate) == text)
            return candidate;
    }
    return nullptr;
}

QLabel *label(const QMessageBox &box)
{
    return box.findChild<QLabel *>(u"qt_msgbox_label"_s);
}

/// The answer of a box of `style` when its button `text` is clicked with the mouse.
int answerTo(int style, const QString &text)
{
    onNextModal<QMessageBox>([text](QMessageBox &box) {
        ASSERT_NE(button(box, text), nullptr) << text.toStdString();
        QTest::mouseClick(button(box, text), Qt::LeftButton);
    });
    return MsgBox(u"Tekst"_s, style);
}

/// The answer of a box of `style` to one key; with Enter after it when the key leaves the box open.
int answerToKey(int style, Qt::Key key, bool *stayed = nullptr)
{
    onNextModal<QMessageBox>([=](QMessageBox &box) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
        QTest::keyClick(box.windowHandle(), key);
        if (stayed)
            *stayed = box.isVisible();
        if (box.isVisible())
            QTest::keyClick(box.windowHandle(), Qt::Key_Return);
    });
    return MsgBox(u"Tekst"_s, style);
}

} // namespace

TEST_F(StandardMessage, EveryButtonHasItsNumber)
{
    EXPECT_EQ(answerTo(0, u"OK"_s), 1);
    EXPECT_EQ(answerTo(4, u"Ja"_s), 6);
    EXPECT_EQ(answerTo(4, u"Nei"_s), 7);
}

TEST_F(StandardMessage, TheIconFollowsTheStyle)
{
    const std::pair<int, QMessageBox::Icon> icons[] = {
        {0, QMessageBox::NoIcon},   {16, QMessageBox::Critical},    {36, QMessageBox::Question},
        {48, QMessageBox::Warning}, {64, QMessageBox::Information}, {80, QMessageBox::NoIcon},
        {176, QMessageBox::NoIcon}, {4096, QMessageBox::NoIcon},
    };
    for (const auto &[style, icon] : icons) {
        QMessageBox::Icon shown = QMessageBox::NoIcon;
        onNextModal<QMessageBox>([&](QMessageBox &box) {
            shown = box.icon();
            box.reject();
        });
        MsgBox(u"Tekst"_s, style);
        EXPECT_EQ(shown, icon) << style;
    }
}

TEST_F(StandardMessage, TheDefaultButtonIsTheFirstOrTheOneOfTheStyle)
{
    EXPECT_EQ(answerToKey(4 + 32, Qt::Key_Return), 6);
    EXPECT_EQ(answerToKey(292, Qt::Key_Return), 7);
    EXPECT_EQ(answerToKey(0, Qt::Key_Return), 1);
}

TEST_F(StandardMessage, EscapeAnswersTheOnlyButton)
{
    EXPECT_EQ(answerToKey(0, Qt::Key_Escape), 1);
}

TEST_F(StandardMessage, EscapeDoesNothingWhereTheUserMustChoose)
{
    bool stayed = false;
    answerToKey(4, Qt::Key_Escape, &stayed);
    EXPECT_TRUE(stayed);
}

TEST_F(StandardMessage, TheCloseBoxAnswersLikeEscape)
{
    onNextModal([](QWidget &box) { box.close(); });
    EXPECT_EQ(MsgBox(u"Tekst"_s), 1);
    onNextModal<QMessageBox>([](QMessageBox &box) {
        EXPECT_FALSE(box.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        box.close();
        EXPECT_TRUE(box.isVisible());
        button(box, u"Ja"_s)->click();
    });
    EXPECT_EQ(MsgBox(u"Tekst"_s, 4), 6);
}

TEST_F(StandardMessage, JAndNAnswerWithoutAlt)
{
    EXPECT_EQ(answerToKey(292, Qt::Key_J), 6);
    EXPECT_EQ(answerToKey(36, Qt::Key_N), 7);
    onNextModal<QMessageBox>([](QMessageBox &box) {
        QTest::keyClick(&box, Qt::Key_J, Qt::ControlModifier);
        EXPECT_TRUE(box.isVisible());
        QTest::keyClick(&box, Qt::Key_N);
    });
    EXPECT_EQ(MsgBox(u"Tekst"_s, 36), 7);
}

TEST_F(StandardMessage, TextIsShownAsItStands)
{
    const QString text = u"  <b>Det</b> er  to & tre,\r\n\r\nslutt "_s;
    QString shown;
    Qt::TextFormat format = Qt::AutoText;
    onNextModal<QMessageBox>([&](QMessageBox &box) {
        shown = box.text();
        format = box.textFormat();
        box.reject();
    });
    MsgBox(text);
    EXPECT_EQ(shown, u"  <b>Det</b> er  to & tre,\n\nslutt "_s);
    EXPECT_EQ(format, Qt::PlainText);
}

TEST_F(StandardMessage, TheCallersLinesAreNotBroken)
{
    int height = 0;
    int lineHeight = 1;
    onNextModal<QMessageBox>([&](QMessageBox &box) {
        lineHeight = label(box)->fontMetrics().lineSpacing();
        height = label(box)->heightForWidth(label(box)->width());
        box.reject();
    });
    MsgBox(u"Det er ufullstendig informasjon på klienten, den bør rettes.\nSlutt"_s, 48);
    EXPECT_LT(height, 3 * lineHeight);
}

TEST_F(StandardMessage, ATabbedListIsSeenToItsEnd)
{
    int missing = 1;
    onNextModal<QMessageBox>([&](QMessageBox &box) {
        missing = label(box)->sizeHint().width() - label(box)->width();
        box.reject();
    });
    MsgBox(u"PostNr mangler\tMå rettes\r\nTlf. arbeid mangler\tBør rettes\r\n"_s, 48);
    EXPECT_LE(missing, 0);
}

TEST_F(StandardMessage, AWordLongerThanTheBoxIsBroken)
{
    const QString text = u"Finner ikke /srv/"_s + QString(2500, u'x') + u".rpt nå"_s;
    onNextModal<QMessageBox>([&](QMessageBox &box) {
        runEvents();
        EXPECT_EQ(box.text(), text);
        EXPECT_LE(box.width(), box.screen()->availableGeometry().width());
        auto *view = box.findChild<QTextEdit *>();
        ASSERT_NE(view, nullptr);
        EXPECT_TRUE(view->isVisible());
        EXPECT_FALSE(label(box)->isVisible());
        EXPECT_EQ(view->toPlainText(), text);
        EXPECT_EQ(view->height(), view->document()->size().height());
        EXPECT_LE(view->document()->idealWidth(), view->viewport()->width());
        EXPECT_LE(view->width(), box.screen()->availableGeometry().width() * 3 / 4 + 10);
        EXPECT_FALSE(view->verticalScrollBar()->isVisible());
        EXPECT_EQ(box.grab().toImage().pixelColor(view->geometry().topLeft()),
                  box.palette().color(QPalette::Window));
        box.reject();
    });
    MsgBox(text);
}

TEST_F(StandardMessage, AMessageHigherThanTheScreenScrolls)
{
    const QString text = u"Linjen må ha Produkt nr. og/eller Produkt navn\r\n"_s.repeated(300);
    onNextModal<QMessageBox>([](QMessageBox &box) {
        runEvents();
        EXPECT_LE(box.height(), box.screen()->availableGeometry().height());
        EXPECT_TRUE(box.rect().contains(button(box, u"OK"_s)->geometry()));
        auto *view = box.findChild<QTextEdit *>();
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(view->document()->begin().layout()->lineCount(), 1) << "no line is broken";
        const QScrollBar *bar = view->verticalScrollBar();
        EXPECT_GT(bar->maximum(), 0);
        EXPECT_EQ(box.focusWidget(), button(box, u"OK"_s));
        QTest::keyClick(box.windowHandle(), Qt::Key_PageDown);
        const int down = bar->value();
        EXPECT_GT(down, 0);
        QTest::keyClick(box.windowHandle(), Qt::Key_PageUp);
        EXPECT_LT(bar->value(), down);
        QTest::keyClick(box.windowHandle(), Qt::Key_Return);
        EXPECT_FALSE(box.isVisible());
    });
    EXPECT_EQ(MsgBox(text, 48), 1);
}

TEST_F(StandardMessage, ALongTextCanBeReadAndNotChanged)
{
    const QString text = QString(3000, u'x');
    onNextModal<QMessageBox>([&](QMessageBox &box) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
        auto *view = box.findChild<QTextEdit *>();
        ASSERT_NE(view, nullptr);
        QTest::mouseClick(view->viewport(), Qt::LeftButton);
        EXPECT_TRUE(view->hasFocus());
        QTest::keyClick(view, Qt::Key_A);
        EXPECT_EQ(view->toPlainText(), text);
        QTest::keyClick(view, Qt::Key_Tab);
        EXPECT_TRUE(button(box, u"OK"_s)->hasFocus());
        QTest::keyClick(view, Qt::Key_Escape);
        EXPECT_FALSE(box.isVisible());
    });
    EXPECT_EQ(MsgBox(text), 1);
}

TEST_F(StandardMessage, AnEmptyTextIsABoxAllTheSame)
{
    EXPECT_EQ(answerTo(48, u"OK"_s), 1);
    onNextModal<QMessageBox>([](QMessageBox &box) {
        EXPECT_EQ(box.text(), QString());
        button(box, u"OK"_s)->click();
    });
    EXPECT_EQ(MsgBox({}, 64), 1);
}

TEST_F(StandardMessage, TheInnerOfTwoBoxesAnswersFirst)
{
    int inner = 0;
    onNextModal<QMessageBox>([&](QMessageBox &outer) {
        onNextModal<QMessageBox>([&](QMessageBox &box) {
            EXPECT_NE(&box, &outer);
            button(box, u"Nei"_s)->click();
        });
        inner = MsgBox(u"Den andre"_s, 36);
        EXPECT_TRUE(outer.isVisible());
        button(outer, u"OK"_s)->click();
    });
    EXPECT_EQ(MsgBox(u"Den første"_s), 1);
    EXPECT_EQ(inner, 7);
}

TEST_F(StandardMessage, TheTitleIsTheApplications)
{
    QString title;
    onNextModal([&](QWidget &box) {
        title = box.windowTitle();
        box.close();
    });
    MsgBox(u"Tekst"_s);
    EXPECT_EQ(title, u"Regningsdel"_s);
}

TEST_F(StandardMessage, ThePublicNames)
{
    QString name;
    QStringList buttons;
    onNextModal<QMessageBox>([&](QMessageBox &box) {
        name = box.objectName();
        for (const QAbstractButton *made : box.buttons())
            buttons << made->objectName() + u'=' + captionOf(*made);
        box.reject();
    });
    EXPECT_EQ(MsgBox(u"Tekst"_s, 4), 7) << "without a button, the last one counts";
    buttons.sort();
    EXPECT_EQ(name, u"MsgBox"_s);
    EXPECT_EQ(buttons, (QStringList{u"button6=Ja"_s, u"button7=Nei"_s}));
}

TEST_F(StandardMessage, SurvivesTheFormThatItStandsAbove)
{
    auto *form = new RecordingForm;
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    const QPointer<Form> guard = form;
    bool visible = false;
    onNextModal<QMessageBox>([&](QMessageBox &box) {
        form->unload();
        runEvents();
        visible = box.isVisible();
        box.reject();
    });
    EXPECT_EQ(MsgBox(u"Tekst"_s), 1);
    EXPECT_TRUE(visible);
    EXPECT_FALSE(guard);
}

TEST_F(StandardMessage, IsOnTheScreenWhereverTheFormIs)
{
    for (const QPoint corner : {QPoint(-6000, -6000), QPoint(0, 0), QPoint(90000, 90000)}) {
        auto *form = new RecordingForm;
        form->setPlace(corner.x(), corner.y(), 3000, 1500);
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        onNextModal([&](QWidget &box) {
            EXPECT_TRUE(box.screen()->availableGeometry().contains(box.frameGeometry()))
                << corner.x() << ' ' << box.x() << ' ' << box.y();
            box.close();
        });
        MsgBox(u"Linje\n"_s.repeated(20));
        form->unload();
        runEvents();
    }
}

TEST_F(StandardMessage, StandsAboveTheActiveForm)
{
    auto *form = new RecordingForm;
    form->setPlace(3000, 1500, 4500, 4500);
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    QPoint centre;
    QSize size;
    onNextModal([&](QWidget &box) {
        centre = box.frameGeometry().center();
        size = box.size();
        box.close();
    });
    MsgBox(u"Tekst"_s);
    const QPoint distance = centre - form->frameGeometry().center();
    EXPECT_LT(std::abs(distance.x()), size.width() / 4 + 4);
    EXPECT_LT(std::abs(distance.y()), size.height() / 4 + 4);
}
