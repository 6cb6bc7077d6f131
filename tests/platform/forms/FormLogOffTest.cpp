#include "platform/forms/Form.h"
#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "platform/forms/OuterRim.h"
#include "support/TestApplication.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// Lets the session end while the next message box stands; the box is closed by the loop's next
/// round, so that everything that was left to that loop has been done by then.
void logOffDuringNextBox()
{
    onNextModal<QMessageBox>([](QMessageBox &box) {
        Forms::instance().logOff();
        QTimer::singleShot(0, &box, &QDialog::reject);
    });
}

/// A form whose handlers tell something in a message box and go on with the form afterwards.
class TellingForm : public RecordingForm
{
public:
    TellingForm() : m_field(new QLineEdit(this)), m_button(new QPushButton(this))
    {
        m_field->installEventFilter(this);
        onEvent(m_button, &QPushButton::clicked, this, [this] { tell(); });
        duringKeyDown = [this](Qt::Key, Qt::KeyboardModifiers) {
            tell();
            return false;
        };
    }

    void press() { QTest::keyClick(m_field, Qt::Key_A); }
    void click() { QTest::mouseClick(m_button, Qt::LeftButton); }
    void leaveField()
    {
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
        m_field->setFocus();
        m_button->setFocus();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_field && event->type() == QEvent::FocusOut && isLoaded())
            atOuterRim([this] { tell(); });
        return false;
    }

private:
    void tell()
    {
        const QPointer<Form> self = this;
        logOffDuringNextBox();
        MsgBox(u"Posten er ugyldig."_s);
        ASSERT_TRUE(self) << "deleted below its own handler";
        EXPECT_TRUE(isUnloaded());
        EXPECT_FALSE(isVisible());
        m_field->setText(u"a"_s);
    }

    QLineEdit *m_field;
    QPushButton *m_button;
};

struct Way
{
    const char *name;
    void (TellingForm::*act)();
};

void PrintTo(const Way &way, std::ostream *out)
{
    *out << way.name;
}

class FormLogOff : public FormsFixture, public ::testing::WithParamInterface<Way>
{
};

class FormUnloading : public FormsFixture
{
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Handlers, FormLogOff,
                         ::testing::Values(Way{"Key", &TellingForm::press},
                                           Way{"Click", &TellingForm::click},
                                           Way{"Focus", &TellingForm::leaveField}),
                         [](const auto &given) { return std::string(given.param.name); });

TEST_P(FormLogOff, TheFormOutlivesAHandlerWhoseMessageStands)
{
    auto *form = new TellingForm;
    const QPointer<Form> guard = form;
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    (form->*GetParam().act)();
    EXPECT_TRUE(guard->isUnloaded());
    runEvents();
    EXPECT_FALSE(guard);
}

TEST_P(FormLogOff, AModalFormOutlivesAHandlerWhoseMessageStands)
{
    auto *form = new TellingForm;
    const QPointer<Form> guard = form;
    onNextModal([&](QWidget &) { (form->*GetParam().act)(); });
    form->showModal();
    runEvents();
    EXPECT_FALSE(guard);
}

TEST_P(FormLogOff, AFormThatHasOpenedAModalOneOutlivesItsHandler)
{
    auto *opener = new RecordingForm(u"frmA"_s);
    const QPointer<Form> openerGuard = opener;
    QPushButton button;
    QPointer<Form> guard;
    onEvent(&button, &QPushButton::clicked, opener, [&] {
        auto *form = new TellingForm;
        guard = form;
        onNextModal([&, form](QWidget &) { (form->*GetParam().act)(); });
        form->showModal();
        ASSERT_TRUE(openerGuard) << "deleted below its own handler";
        opener->takeEvents();
    });
    opener->show();
    button.click();
    runEvents();
    EXPECT_FALSE(guard);
    EXPECT_FALSE(openerGuard);
}

TEST_F(FormUnloading, AFormThatAsksWhetherToCloseOutlivesItsQuestion)
{
    auto *form = new RecordingForm;
    const QPointer<Form> guard = form;
    form->duringQueryUnload = [&] {
        logOffDuringNextBox();
        MsgBox(u"Avslutte?"_s, msgbox::kYesNo);
        ASSERT_TRUE(guard) << "deleted below its own handler";
        form->takeEvents();
    };
    form->show();
    form->close();
    EXPECT_TRUE(guard->isUnloaded());
    runEvents();
    EXPECT_FALSE(guard);
}

TEST_F(FormUnloading, AFormThatAnothersHandlerUnloadsGoesWhenThatHandlerHasReturned)
{
    auto *form = new RecordingForm;
    const QPointer<Form> guard = form;
    form->show();
    atOuterRim([&] {
        atOuterRim([&] { form->unload(); });
        runEvents();
        EXPECT_TRUE(guard) << "a handler is running still";
    });
    EXPECT_TRUE(guard) << "left to the event loop";
    runEvents();
    EXPECT_FALSE(guard);
}

TEST_F(FormUnloading, TheEndOfAllFormsTakesThoseThatWait)
{
    auto *form = new RecordingForm;
    const QPointer<Form> guard = form;
    form->show();
    atOuterRim([&] {
        form->unload();
        Forms::deleteAll();
        EXPECT_FALSE(guard);
    });
    runEvents();
}
