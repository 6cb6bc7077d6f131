#include "platform/forms/Form.h"

#include "support/TestApplication.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

class FormKeys : public FormsFixture
{
protected:
    void SetUp() override
    {
        form = new RecordingForm;
        auto *panel = new QWidget(form);
        edit = new QLineEdit(panel);
        other = new QPushButton(u"Annen"_s, form);
        ok = new QPushButton(u"OK"_s, form);
        cancel = new QPushButton(u"Avbryt"_s, form);
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        edit->setFocus();
        form->takeEvents();
    }

    /// A key as the window system delivers it: to the window, which passes it to the focus.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(form->windowHandle(), key, modifiers);
    }

    enum class Held : bool { No, Yes };
    static void press(QWindow &window, Qt::Key key, Held held)
    {
        QTest::simulateEvent(&window, true, key, Qt::NoModifier, {}, held == Held::Yes);
    }

    RecordingForm *form = nullptr;
    QLineEdit *edit = nullptr;
    QPushButton *other = nullptr;
    QPushButton *ok = nullptr;
    QPushButton *cancel = nullptr;
};

} // namespace

TEST_F(FormKeys, TheFormSeesAKeyAheadOfTheControl)
{
    QString textAtKeyDown = u"?"_s;
    Qt::Key seen = Qt::Key_unknown;
    form->duringKeyDown = [&](Qt::Key key, Qt::KeyboardModifiers) {
        seen = key;
        textAtKeyDown = edit->text();
        return false;
    };
    press(Qt::Key_A);
    EXPECT_EQ(seen, Qt::Key_A);
    EXPECT_EQ(textAtKeyDown, QString());
    EXPECT_EQ(edit->text(), u"a"_s);
}

TEST_F(FormKeys, ASwallowedKeyDoesNotReachTheControl)
{
    form->duringKeyDown = [](Qt::Key key, Qt::KeyboardModifiers) { return key == Qt::Key_A; };
    press(Qt::Key_A);
    press(Qt::Key_B);
    EXPECT_EQ(edit->text(), u"b"_s);
}

TEST_F(FormKeys, TheShiftStateComesAlong)
{
    Qt::KeyboardModifiers seen;
    form->duringKeyDown = [&](Qt::Key, Qt::KeyboardModifiers shift) {
        seen = shift;
        return false;
    };
    press(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(seen, Qt::ShiftModifier);
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(seen, Qt::ControlModifier);
}

TEST_F(FormKeys, AKeyThatNoControlWantsIsSeenOnceOnItsWayUp)
{
    press(Qt::Key_F1);
    EXPECT_EQ(form->takeEvents(), QStringList{u"key"_s});
    press(Qt::Key_F1);
    EXPECT_EQ(form->takeEvents(), QStringList{u"key"_s});
    QTest::keyClick(form, Qt::Key_F1);
    EXPECT_EQ(form->takeEvents(), QStringList{u"key"_s});
}

TEST_F(FormKeys, TabIsSeenBeforeTheFocusMoves)
{
    const QWidget *focus = nullptr;
    form->duringKeyDown = [&](Qt::Key, Qt::KeyboardModifiers) {
        focus = QApplication::focusWidget();
        return false;
    };
    press(Qt::Key_Tab);
    EXPECT_EQ(focus, edit);
    EXPECT_EQ(QApplication::focusWidget(), other);
}

TEST_F(FormKeys, AFormMayCloseOnAKey)
{
    const QPointer<Form> guard = form;
    form->duringKeyDown = [&](Qt::Key key, Qt::KeyboardModifiers) {
        if (key == Qt::Key_Escape)
            form->unload();
        return false;
    };
    press(Qt::Key_Escape);
    runEvents();
    EXPECT_FALSE(guard);
}

TEST_F(FormKeys, KeysOfOtherWindowsAreNotSeen)
{
    QLineEdit foreign;
    foreign.show();
    QTest::keyClick(&foreign, Qt::Key_Escape);
    EXPECT_TRUE(form->takeEvents().isEmpty());
}

TEST_F(FormKeys, EnterInAFieldPressesTheDefaultButton)
{
    const QSignalSpy clicks(ok, &QPushButton::clicked);
    press(Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 0) << "there is no default button yet";
    form->setDefaultButton(ok);
    EXPECT_TRUE(ok->isDefault());
    press(Qt::Key_Return);
    press(Qt::Key_Enter);
    EXPECT_EQ(clicks.count(), 2);
    ok->setEnabled(false);
    press(Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(FormKeys, TheDefaultButtonCanChange)
{
    form->setDefaultButton(ok);
    form->setDefaultButton(other);
    EXPECT_FALSE(ok->isDefault());
    const QSignalSpy clicks(other, &QPushButton::clicked);
    press(Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(FormKeys, EnterOnAButtonPressesThatButton)
{
    form->setDefaultButton(ok);
    const QSignalSpy clicks(other, &QPushButton::clicked);
    const QSignalSpy defaultClicks(ok, &QPushButton::clicked);
    other->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_EQ(defaultClicks.count(), 0);
}

TEST_F(FormKeys, EnterOnACheckBoxPressesTheDefaultButton)
{
    auto *box = new QCheckBox(form);
    box->show();
    box->setFocus();
    form->setDefaultButton(ok);
    const QSignalSpy clicks(ok, &QPushButton::clicked);
    press(Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_FALSE(box->isChecked());
}

TEST_F(FormKeys, AButtonThatIsDisabledPassesTheFocusBack)
{
    ok->setFocus();
    ok->setEnabled(false);
    EXPECT_EQ(QApplication::focusWidget(), other);
    other->setEnabled(false);
    EXPECT_EQ(QApplication::focusWidget(), edit);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), cancel) << "a Tab goes on";
}

TEST_F(FormKeys, EscapePressesTheCancelButton)
{
    form->setCancelButton(cancel);
    const QSignalSpy clicks(cancel, &QPushButton::clicked);
    press(Qt::Key_Escape);
    EXPECT_EQ(clicks.count(), 1);
    cancel->hide();
    press(Qt::Key_Escape);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(FormKeys, ACommandKeyPressesItsButtonFromAnyControl)
{
    form->setCommandKey(Qt::CTRL | Qt::Key_S, other);
    EXPECT_EQ(other->toolTip(), u"Ctrl+S"_s);
    const QSignalSpy clicks(other, &QPushButton::clicked);
    press(Qt::Key_S);
    EXPECT_EQ(clicks.count(), 0);
    bool isLeft = false;
    QObject::connect(other, &QPushButton::clicked, other, [&] { isLeft = !edit->hasFocus(); });
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_TRUE(isLeft) << "the field has to be left ahead of the command";
    EXPECT_EQ(QApplication::focusWidget(), edit);
    EXPECT_EQ(edit->text(), u"s"_s);
}

TEST_F(FormKeys, ACommandKeyDoesNotBringTheFocusBackFromWhereItsCommandLeads)
{
    form->setCommandKey(Qt::CTRL | Qt::Key_S, other);
    QObject::connect(other, &QPushButton::clicked, other, [&] { ok->setFocus(); });
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), ok);
}

TEST_F(FormKeys, ACommandKeyBringsTheFocusBackInAWindowThatIsNotActiveYet)
{
    form->setCommandKey(Qt::CTRL | Qt::Key_S, other);
    QWidget message; // as a message box that has just been answered
    QObject::connect(other, &QPushButton::clicked, other, [&] {
        message.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&message));
    });
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(form->focusWidget(), edit);
}

TEST_F(FormKeys, ACommandKeyLeavesAButtonAloneThatCannotBePressed)
{
    other->setToolTip(u"Lagrer"_s);
    form->setCommandKey(Qt::Key_F5, other);
    EXPECT_EQ(other->toolTip(), u"Lagrer"_s);
    const QSignalSpy clicks(other, &QPushButton::clicked);
    other->setEnabled(false);
    press(Qt::Key_F5);
    EXPECT_EQ(clicks.count(), 0);
    EXPECT_EQ(QApplication::focusWidget(), edit);
}

TEST_F(FormKeys, ACommandKeyOfAButtonThatIsGoneDoesNothing)
{
    form->setCommandKey(Qt::Key_F5, other);
    delete other;
    press(Qt::Key_F5);
    EXPECT_EQ(QApplication::focusWidget(), edit);
}

TEST_F(FormKeys, AKeyThatIsHeldDownIsNotForTheNextWindow)
{
    auto *above = new RecordingForm(u"frmOver"_s);
    above->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(above));
    above->duringKeyDown = [&](Qt::Key, Qt::KeyboardModifiers) {
        above->unload();
        return true;
    };
    press(*above->windowHandle(), Qt::Key_Escape, Held::No);
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    form->takeEvents();
    press(*form->windowHandle(), Qt::Key_Escape, Held::Yes);
    EXPECT_TRUE(form->takeEvents().isEmpty());

    QTest::keyRelease(form->windowHandle(), Qt::Key_Escape);
    press(*form->windowHandle(), Qt::Key_Down, Held::No);
    press(*form->windowHandle(), Qt::Key_Down, Held::Yes);
    EXPECT_EQ(form->takeEvents(), (QStringList{u"key"_s, u"key"_s})) << "pressed and held here";
}

TEST_F(FormKeys, ALetterWithAltThatPressesNothingTypesNothing)
{
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_K, Qt::AltModifier, u"k"_s);
    QCoreApplication::sendEvent(edit, &letter);
    EXPECT_EQ(edit->text(), QString());
    QKeyEvent third(QEvent::KeyPress, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier, u"@"_s);
    QCoreApplication::sendEvent(edit, &third);
    EXPECT_EQ(edit->text(), u"@"_s) << "both together are AltGr";
}

TEST_F(FormKeys, AButtonPressedByItsLetterTakesTheFocus)
{
    auto *letters = new RecordingForm(u"frmBokstaver"_s);
    auto *field = new QLineEdit(letters);
    auto *save = new QPushButton(u"&Lagre"_s, letters);
    letters->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(letters));
    field->setFocus();
    const QSignalSpy presses(save, &QPushButton::pressed);
    QTest::keyClick(letters->windowHandle(), Qt::Key_L, Qt::AltModifier);
    EXPECT_EQ(presses.count(), 1);
    EXPECT_EQ(QApplication::focusWidget(), save);
}
