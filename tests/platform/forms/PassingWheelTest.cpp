#include "platform/forms/PassingWheel.h"

#include "platform/forms/CommonDialog.h"
#include "platform/forms/DTPicker.h"
#include "support/TestApplication.h"

#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

/// One notch downwards, as the window system reports it.
void turnWheel(QWidget &control)
{
    QWheelEvent wheel(QPointF(5, 5), control.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel); // else it goes no further than to the control
    qApp->notify(&control, &wheel);            // which leaves that as it is
}

/// What a wheel can change, in a window of a test.
struct Controls
{
    explicit Controls(QWidget &window)
    {
        auto *layout = new QVBoxLayout(&window);
        list->addItems({u"a"_s, u"b"_s, u"c"_s});
        number->setValue(5);
        for (QWidget *control : std::initializer_list<QWidget *>{other, list, number})
            layout->addWidget(control);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        other->setFocus();
    }

    QLineEdit *other = new QLineEdit;
    QComboBox *list = new QComboBox;
    QSpinBox *number = new QSpinBox;
};

class PassingWheelTest : public FormsFixture
{
};

} // namespace

TEST_F(PassingWheelTest, OnAFormItChangesWhatHasTheFocusAlone)
{
    auto *form = new RecordingForm;
    const Controls on(*form);
    turnWheel(*on.list);
    turnWheel(*on.number);
    EXPECT_EQ(on.list->currentIndex(), 0);
    EXPECT_EQ(on.number->value(), 5);
    for (const QWidget *control : std::initializer_list<QWidget *>{on.list, on.number})
        EXPECT_EQ(control->focusPolicy(), Qt::StrongFocus) << "a wheel would bring the focus";

    on.list->setFocus();
    turnWheel(*on.list);
    EXPECT_EQ(on.list->currentIndex(), 1);
    on.number->setFocus();
    turnWheel(*on.number);
    EXPECT_EQ(on.number->value(), 4);
}

TEST_F(PassingWheelTest, ItTurnsNoPagesUnderWhatIsBeingTyped)
{
    auto *form = new RecordingForm;
    auto *pages = new QTabWidget(form);
    auto *field = new QLineEdit;
    pages->addTab(field, u"En"_s);
    pages->addTab(new QWidget, u"To"_s);
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    field->setFocus();
    turnWheel(*pages->tabBar());
    EXPECT_EQ(pages->currentIndex(), 0);
}

TEST_F(PassingWheelTest, ItGoesOnToWhatLiesBelow)
{
    class Below : public RecordingForm
    {
    public:
        int notches = 0;

    protected:
        void wheelEvent(QWheelEvent *event) override
        {
            ++notches;
            event->accept();
        }
    };
    auto *form = new Below;
    const Controls on(*form);
    turnWheel(*on.list);
    EXPECT_EQ(form->notches, 1);
}

TEST_F(PassingWheelTest, TheParentsOwnWindowsAreLeftAlone)
{
    (new RecordingForm)->show();
    QDialog parents;
    const Controls on(parents);
    EXPECT_EQ(on.list->focusPolicy(), Qt::WheelFocus);
    turnWheel(*on.list);
    turnWheel(*on.number);
    EXPECT_EQ(on.list->currentIndex(), 1);
    EXPECT_EQ(on.number->value(), 4);
}

TEST_F(PassingWheelTest, ThePrintDialogIsGuarded)
{
    int copies = 0;
    onNextModal<QDialog>([&](QDialog &shown) {
        auto *box = shown.findChild<QSpinBox *>(u"spnEksemplarer"_s);
        shown.findChild<QComboBox *>(u"cmbSkriver"_s)->setFocus();
        turnWheel(*box);
        copies = box->value();
        shown.reject();
    });
    CommonDialog dialog;
    dialog.copies = 3;
    dialog.showPrinter();
    EXPECT_EQ(copies, 3);
}

TEST_F(PassingWheelTest, TheFileDialogIsGuarded)
{
    int filter = -1;
    onNextModal<QFileDialog>([&](QFileDialog &shown) {
        auto *types = shown.findChild<QComboBox *>(u"fileTypeCombo"_s);
        shown.findChild<QLineEdit *>(u"fileNameEdit"_s)->setFocus();
        turnWheel(*types);
        filter = types->currentIndex();
        shown.reject();
    });
    CommonDialog dialog;
    dialog.filter = u"EHF|*.xml|Alle|*.*"_s;
    dialog.showSave();
    EXPECT_EQ(filter, 0);
}
