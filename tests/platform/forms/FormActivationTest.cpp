#include "platform/forms/CommonDialog.h"
#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "support/TestApplication.h"

#include <QDialog>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

/// Two forms on screen, the second one active, with nothing left in the event queue.
class FormActivation : public FormsFixture
{
protected:
    void SetUp() override
    {
        first = new RecordingForm(u"frmA"_s);
        second = new RecordingForm(u"frmB"_s);
        first->show();
        second->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(second));
        runEvents();
    }

    static int activations(RecordingForm *form)
    {
        return int(form->takeEvents().count(u"activate"_s));
    }

    RecordingForm *first = nullptr;
    RecordingForm *second = nullptr;
};

} // namespace

TEST_F(FormActivation, EachFormIsActivatedOnceByBeingShown)
{
    EXPECT_EQ(activations(first), 1);
    EXPECT_EQ(activations(second), 1);
}

TEST_F(FormActivation, ComingBackFromAnotherFormActivates)
{
    activations(first);
    activations(second);
    first->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(first));
    EXPECT_EQ(activations(first), 1);
    EXPECT_EQ(activations(second), 0);
}

TEST_F(FormActivation, ShowingAnOpenFormBringsItUpAgain)
{
    activations(first);
    first->show();
    EXPECT_EQ(activations(first), 1);
    EXPECT_TRUE(QTest::qWaitForWindowActive(first));
    runEvents();
    EXPECT_EQ(activations(first), 0);
    first->show();
    runEvents();
    EXPECT_EQ(activations(first), 0) << "it was the active form already";
}

TEST_F(FormActivation, ShowingAMinimisedFormRestoresIt)
{
    first->setState(FormState::Minimised);
    first->show();
    EXPECT_EQ(first->state(), FormState::Normal);
}

TEST_F(FormActivation, BringingToFrontActivatesNothing)
{
    activations(first);
    first->bringToFront();
    runEvents();
    EXPECT_EQ(activations(first), 0);
    EXPECT_TRUE(second->isActiveWindow());
}

TEST_F(FormActivation, AMessageBoxIsNoActivation)
{
    activations(second);
    onNextModal<QMessageBox>([](QMessageBox &box) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    MsgBox(u"Melding"_s);
    ASSERT_TRUE(QTest::qWaitForWindowActive(second)) << "the form beneath is active again";
    runEvents();
    EXPECT_EQ(activations(second), 0);
    EXPECT_EQ(activations(first), 1) << "only the one of its first show";
}

TEST_F(FormActivation, AFileDialogIsNoActivation)
{
    activations(second);
    onNextModal<QDialog>([](QDialog &dialog) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        dialog.reject();
    });
    CommonDialog dialog;
    dialog.showSave();
    ASSERT_TRUE(QTest::qWaitForWindowActive(second));
    runEvents();
    EXPECT_EQ(activations(second), 0);
}

TEST_F(FormActivation, AWindowOfTheParentProgramIsNoActivation)
{
    activations(second);
    QWidget foreign;
    foreign.show();
    foreign.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&foreign));
    second->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(second));
    EXPECT_EQ(activations(second), 0);
}

TEST_F(FormActivation, ClosingTheActiveFormActivatesTheOneThatWasActiveBefore)
{
    activations(first);
    second->unload();
    ASSERT_TRUE(QTest::qWaitForWindowActive(first));
    EXPECT_EQ(activations(first), 1);
}

TEST_F(FormActivation, ClosingAFormInTheBackgroundActivatesNothing)
{
    activations(second);
    first->unload();
    runEvents();
    EXPECT_TRUE(second->isActiveWindow());
    EXPECT_EQ(activations(second), 0);
}

TEST_F(FormActivation, AModalFormActivatesItsOpenerWhenItCloses)
{
    activations(second);
    onNextModal<RecordingForm>([](RecordingForm &modal) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return modal.isActiveWindow(); }));
        EXPECT_EQ(activations(&modal), 1);
        modal.unload();
    });
    (new RecordingForm(u"frmModal"_s))->showModal();
    ASSERT_TRUE(QTest::qWaitForWindowActive(second));
    EXPECT_EQ(activations(second), 1);
    EXPECT_EQ(activations(first), 1) << "only the one of its first show";
}

TEST_F(FormActivation, HidingAndShowingActivatesAgain)
{
    activations(second);
    second->hide();
    second->show();
    EXPECT_EQ(activations(second), 1);
    ASSERT_TRUE(QTest::qWaitForWindowActive(second));
    runEvents();
    EXPECT_EQ(activations(second), 0);
}

TEST_F(FormActivation, ALoadedFormThatIsNotShownIsNeverActive)
{
    auto *hidden = new RecordingForm(u"frmC"_s);
    hidden->load();
    runEvents();
    EXPECT_EQ(activations(hidden), 0);
}
