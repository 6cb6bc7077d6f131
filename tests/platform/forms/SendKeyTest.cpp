#include "platform/forms/SendKey.h"

#include "support/TestApplication.h"

#include <QComboBox>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

/// Notes the keys that reach it, with what they type.
class KeyNotes : public QWidget
{
public:
    using QWidget::QWidget;
    QStringList keys;

protected:
    bool focusNextPrevChild(bool) override { return false; }
    void keyPressEvent(QKeyEvent *event) override { note(u"+"_s, event); }
    void keyReleaseEvent(QKeyEvent *event) override { note(u"-"_s, event); }

private:
    void note(const QString &sign, QKeyEvent *event)
    {
        keys << sign + QKeySequence(event->key()).toString(QKeySequence::PortableText) +
                    event->text();
    }
};

class Keys : public FormsFixture
{
protected:
    void SetUp() override
    {
        form = new RecordingForm;
        first = new QLineEdit(form);
        second = new QLineEdit(form);
        third = new QLineEdit(form);
        notes = new KeyNotes(form);
        notes->setFocusPolicy(Qt::ClickFocus);
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        first->setFocus();
        form->takeEvents();
    }

    RecordingForm *form = nullptr;
    QLineEdit *first = nullptr;
    QLineEdit *second = nullptr;
    QLineEdit *third = nullptr;
    KeyNotes *notes = nullptr;
};

} // namespace

TEST_F(Keys, AreDeliveredAfterTheRunningHandler)
{
    sendKey(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), first);
    runEvents();
    EXPECT_EQ(QApplication::focusWidget(), second);
}

TEST_F(Keys, EachGoesToTheControlThatHasTheFocusThen)
{
    sendKey(Qt::Key_Tab);
    sendKey(Qt::Key_Tab);
    runEvents();
    EXPECT_EQ(QApplication::focusWidget(), third);
}

TEST_F(Keys, GoThroughTheFormFirst)
{
    Qt::Key seen = Qt::Key_unknown;
    form->duringKeyDown = [&](Qt::Key key, Qt::KeyboardModifiers) {
        seen = key;
        return true;
    };
    sendKey(Qt::Key_F1);
    runEvents();
    EXPECT_EQ(seen, Qt::Key_F1);
}

TEST_F(Keys, ReachTheFormWhenNoControlHasTheFocus)
{
    first->clearFocus();
    sendKey(Qt::Key_F1);
    runEvents();
    EXPECT_EQ(form->takeEvents(), QStringList{u"key"_s});
}

TEST_F(Keys, ArePressedAndReleased)
{
    notes->setFocus();
    sendKey(Qt::Key_F1);
    sendKey(Qt::Key_Tab);
    runEvents();
    EXPECT_EQ(notes->keys, (QStringList{u"+F1"_s, u"-F1"_s, u"+Tab\t"_s, u"-Tab\t"_s}));
}

TEST_F(Keys, AnOpenListTakesThem)
{
    auto *box = new QComboBox(form);
    box->addItems({u"25"_s, u"15"_s});
    box->show();
    box->setFocus();
    box->showPopup();
    sendKey(Qt::Key_Down);
    sendKey(Qt::Key_Return);
    runEvents();
    runEvents();
    EXPECT_EQ(box->currentText(), u"15"_s);
}
