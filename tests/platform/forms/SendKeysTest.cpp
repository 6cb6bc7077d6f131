#include "platform/forms/SendKeys.h"

#include "runtime/RunTimeError.h"
#include "support/TestApplication.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

/// Notes the keys that reach it.
class KeyNotes : public QWidget
{
public:
    using QWidget::QWidget;
    QStringList keys;
    QStringList texts; ///< what the pressed keys type

protected:
    bool focusNextPrevChild(bool) override { return false; }
    void keyPressEvent(QKeyEvent *event) override
    {
        note(u"+"_s, event);
        texts << event->text();
    }
    void keyReleaseEvent(QKeyEvent *event) override { note(u"-"_s, event); }

private:
    void note(const QString &sign, QKeyEvent *event)
    {
        keys << sign + QKeySequence(QKeyCombination(event->modifiers(), Qt::Key(event->key())))
                           .toString(QKeySequence::PortableText);
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

    /// The presses that `keys` makes.
    QStringList presses(const QString &keys) const
    {
        notes->setFocus();
        notes->keys.clear();
        sendKeys(keys);
        runEvents();
        QStringList result;
        for (const QString &key : std::as_const(notes->keys)) {
            if (key.startsWith(u'+'))
                result << key.mid(1);
        }
        return result;
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
    sendKeys(u"{TAB}"_s);
    EXPECT_EQ(QApplication::focusWidget(), first);
    runEvents();
    EXPECT_EQ(QApplication::focusWidget(), second);
}

TEST_F(Keys, EachGoesToTheControlThatHasTheFocusThen)
{
    sendKeys(u"a{TAB}b{TAB}c+{TAB}d"_s);
    runEvents();
    EXPECT_EQ(first->text(), u"a"_s);
    EXPECT_EQ(third->text(), u"c"_s);
    EXPECT_EQ(second->text(), u"d"_s) << "a field entered by key is selected, and typed over";
}

TEST_F(Keys, TextIsTypedAsItStands)
{
    sendKeys(u"Ærlig 12,50 {+}{%}{{}{}}{(}"_s);
    runEvents();
    EXPECT_EQ(first->text(), u"Ærlig 12,50 +%{}("_s);
}

TEST_F(Keys, GoThroughTheFormFirst)
{
    Qt::Key seen = Qt::Key_unknown;
    form->duringKeyDown = [&](Qt::Key key, Qt::KeyboardModifiers) {
        seen = key;
        return true;
    };
    sendKeys(u"{F1}"_s);
    runEvents();
    EXPECT_EQ(seen, Qt::Key_F1);
}

TEST_F(Keys, ReachTheFormWhenNoControlHasTheFocus)
{
    first->clearFocus();
    sendKeys(u"{F1}"_s);
    runEvents();
    EXPECT_EQ(form->takeEvents(), QStringList{u"key"_s});
}

TEST_F(Keys, ArePressedAndReleased)
{
    notes->setFocus();
    sendKeys(u"{F2}"_s);
    runEvents();
    EXPECT_EQ(notes->keys, (QStringList{u"+F2"_s, u"-F2"_s}));
}

TEST_F(Keys, TypeWhatAKeyboardTypes)
{
    notes->setFocus();
    sendKeys(u"{TAB}\t~{ENTER}\n{DOWN}aB^c"_s);
    runEvents();
    EXPECT_EQ(notes->texts, (QStringList{u"\t"_s, u"\t"_s, u"\r"_s, u"\r"_s, u"\r"_s, QString(),
                                         u"a"_s, u"B"_s, QString()}));
}

TEST_F(Keys, NamesGoWithoutRegardToCaseAndWithACount)
{
    EXPECT_EQ(presses(u"{esc}{Down 2}{f16}"_s),
              (QStringList{u"Esc"_s, u"Down"_s, u"Down"_s, u"F16"_s}));
    EXPECT_EQ(presses(u"{PGUP}{del}{BS}~{ENTER}"_s),
              (QStringList{u"PgUp"_s, u"Del"_s, u"Backspace"_s, u"Return"_s, u"Return"_s}));
    EXPECT_EQ(presses(u"{x 3}"_s), (QStringList{u"X"_s, u"X"_s, u"X"_s}));
}

TEST_F(Keys, ModifiersHoldForTheNextKeyOrAGroup)
{
    EXPECT_EQ(presses(u"%{DOWN}{DOWN}"_s), (QStringList{u"Alt+Down"_s, u"Down"_s}));
    EXPECT_EQ(presses(u"^(ab)c"_s), (QStringList{u"Ctrl+A"_s, u"Ctrl+B"_s, u"C"_s}));
    EXPECT_EQ(presses(u"+^{F5}"_s), (QStringList{u"Ctrl+Shift+F5"_s}));
    EXPECT_EQ(presses(u"+{TAB}"_s), (QStringList{u"Shift+Backtab"_s}));
}

TEST_F(Keys, AltDownOpensAComboBox)
{
    auto *box = new QComboBox(form);
    box->addItems({u"25"_s, u"15"_s});
    box->show();
    box->setFocus();
    sendKeys(u"%{DOWN}{DOWN}~"_s);
    runEvents();
    runEvents();
    EXPECT_EQ(box->currentText(), u"15"_s) << "the list has taken the later keys";
}

TEST_F(Keys, ATextThatBreaksTheRulesSendsNothing)
{
    for (const QString &keys : {u"a{TUB}"_s, u"a{TAB"_s, u"a)"_s, u"a}"_s, u"a(b"_s, u"a+"_s,
                                u"{TAB x}"_s, u"{TAB -1}"_s, u"{F17}"_s, u"(a+)"_s}) {
        EXPECT_EQ(passOver([&] { sendKeys(keys); }), 5) << keys.toStdString();
    }
    runEvents();
    EXPECT_EQ(first->text(), QString());
}
