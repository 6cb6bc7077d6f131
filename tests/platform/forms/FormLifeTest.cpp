#include "platform/forms/Form.h"

#include "platform/forms/Forms.h"
#include "runtime/RunTimeError.h"
#include "support/TestApplication.h"

#include <QMessageBox>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

class FormLife : public FormsFixture
{
};

} // namespace

TEST_F(FormLife, LoadRunsOnceBeforeTheFirstShowThenResizeThenActivate)
{
    auto *form = new RecordingForm;
    EXPECT_FALSE(form->isLoaded());
    form->show();
    const QStringList events = form->takeEvents();
    ASSERT_EQ(events.first(), u"load"_s);
    EXPECT_EQ(events.last(), u"activate"_s);
    EXPECT_TRUE(events.contains(u"resize"_s));
    EXPECT_EQ(events.count(u"activate"_s), 1);

    form->hide();
    form->show();
    EXPECT_FALSE(form->takeEvents().contains(u"load"_s));
}

TEST_F(FormLife, LoadWithoutShowingKeepsTheFormHidden)
{
    auto *form = new RecordingForm;
    form->load();
    form->load();
    EXPECT_EQ(form->takeEvents(), QStringList{u"load"_s});
    EXPECT_TRUE(form->isLoaded());
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FormLife, EveryWayOfShowingLoadsFirst)
{
    auto *form = new RecordingForm;
    form->showMaximized();
    EXPECT_EQ(form->takeEvents().first(), u"load"_s);
}

TEST_F(FormLife, NoResizeReachesAFormBeforeItIsLoaded)
{
    auto *form = new RecordingForm;
    form->resize(300, 200);
    form->winId();
    EXPECT_TRUE(form->takeEvents().isEmpty());
    form->show();
    form->takeEvents();
    form->resize(310, 210);
    EXPECT_EQ(form->takeEvents(), QStringList{u"resize"_s});
}

TEST_F(FormLife, UnloadByCodeAsksWithModeOneAndEndsTheForm)
{
    auto *form = new RecordingForm;
    const QPointer<Form> guard = form;
    form->show();
    form->takeEvents();
    QStringList events;
    form->duringUnload = [&] {
        EXPECT_TRUE(Forms::byName(u"frmProve"_s)) << "still in the collection while unloading";
        events = form->events;
    };
    EXPECT_TRUE(form->unload());
    EXPECT_EQ(events, (QStringList{u"query 1"_s, u"unload"_s}));
    EXPECT_TRUE(form->isUnloaded());
    EXPECT_FALSE(form->isVisible());
    runEvents();
    EXPECT_FALSE(guard);
}

TEST_F(FormLife, TheCloseBoxAsksWithModeZero)
{
    auto *form = new RecordingForm;
    const QPointer<Form> guard = form;
    form->show();
    UnloadMode mode = UnloadMode::Code;
    form->duringUnload = [&] { mode = form->lastMode; };
    form->close();
    EXPECT_EQ(mode, UnloadMode::User);
    EXPECT_TRUE(form->isUnloaded());
    runEvents();
    EXPECT_FALSE(guard);
}

TEST_F(FormLife, ARefusalKeepsTheFormOpen)
{
    auto *form = new RecordingForm;
    form->show();
    form->refuses = true;
    EXPECT_FALSE(form->unload());
    form->close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(form->isLoaded());
    EXPECT_FALSE(form->takeEvents().contains(u"unload"_s));
}

TEST_F(FormLife, AFormMayUnloadItselfWhenAsked)
{
    auto *form = new RecordingForm;
    form->show();
    form->takeEvents();
    QStringList events;
    form->duringQueryUnload = [&] { form->unload(); };
    form->duringUnload = [&] { events = form->events; };
    EXPECT_TRUE(form->unload(UnloadMode::LoggingOff));
    EXPECT_EQ(events, (QStringList{u"query 2"_s, u"unload"_s}));
}

TEST_F(FormLife, UnloadingTwiceOrFromInsideUnloadRunsTheEventOnce)
{
    auto *form = new RecordingForm;
    form->show();
    int unloads = 0;
    form->duringUnload = [&] {
        ++unloads;
        form->unload();
    };
    form->unload();
    form->unload();
    EXPECT_EQ(unloads, 1);
}

TEST_F(FormLife, AFormThatWasNeverLoadedGoesWithoutEvents)
{
    auto *form = new RecordingForm;
    const QPointer<Form> guard = form;
    bool asked = false;
    form->duringQueryUnload = [&] { asked = true; };
    EXPECT_TRUE(form->unload());
    runEvents();
    EXPECT_FALSE(asked);
    EXPECT_FALSE(guard);
}

TEST_F(FormLife, AnUnloadedFormDoesNotComeBack)
{
    auto *form = new RecordingForm;
    form->show();
    form->unload();
    form->show();
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FormLife, AFormThatUnloadsItselfWhileLoadingIsNotShown)
{
    auto *form = new RecordingForm;
    form->duringLoad = [&] { form->unload(); };
    form->show();
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(Forms::loaded().empty());
}

TEST_F(FormLife, AnErrorInAnEventIsToldAndStopsThere)
{
    auto *form = new RecordingForm;
    form->duringLoad = [] { throw RunTimeError(91); };
    form->duringUnload = [] { throw RunTimeError(94); };
    form->duringQueryUnload = [] { throw RunTimeError(11); };
    form->duringKeyDown = [](Qt::Key, Qt::KeyboardModifiers) -> bool { throw RunTimeError(6); };
    QStringList texts;
    const auto note = [&] {
        onNextModal<QMessageBox>([&](QMessageBox &box) {
            texts << box.text().section(u':', 0, 0);
            box.reject();
        });
    };
    note();
    form->show();
    EXPECT_TRUE(form->isVisible());
    note();
    QTest::keyClick(form, Qt::Key_F1);
    note();
    form->duringUnload = [&] {
        note();
        throw RunTimeError(94);
    };
    EXPECT_TRUE(form->unload());
    EXPECT_EQ(texts, (QStringList{u"Kjørefeil 91"_s, u"Kjørefeil 6"_s, u"Kjørefeil 11"_s,
                                  u"Kjørefeil 94"_s}));
}

TEST_F(FormLife, ShowModalReturnsWhenTheFormIsUnloaded)
{
    auto *form = new RecordingForm;
    const QPointer<Form> guard = form;
    Qt::WindowModality modality = Qt::NonModal;
    onNextModal<RecordingForm>([&](RecordingForm &shown) {
        modality = shown.windowModality();
        shown.unload();
    });
    form->showModal();
    EXPECT_EQ(modality, Qt::ApplicationModal);
    runEvents();
    EXPECT_FALSE(guard);
}

TEST_F(FormLife, ShowModalReturnsWhenTheFormIsHidden)
{
    auto *form = new RecordingForm;
    onNextModal([](QWidget &shown) { shown.hide(); });
    form->showModal();
    EXPECT_TRUE(form->isLoaded());
    EXPECT_FALSE(form->isModal());
    form->show();
    EXPECT_TRUE(form->isVisible());
}

TEST_F(FormLife, ShowModalGoesOnWhileTheFormIsMinimised)
{
    auto *form = new RecordingForm;
    const QPointer<Form> guard = form;
    onNextModal([form](QWidget &) {
        form->setState(FormState::Minimised);
        QTimer::singleShot(0, form, [form] {
            EXPECT_TRUE(form->isModal());
            form->unload();
        });
    });
    form->showModal();
    EXPECT_TRUE(!guard || guard->isUnloaded());
}

TEST_F(FormLife, ShowModalReturnsWhenTheFormClosesInItsOwnLoad)
{
    auto *form = new RecordingForm;
    form->duringLoad = [&] { form->unload(); };
    form->showModal();
    EXPECT_TRUE(form->isUnloaded());
}

TEST_F(FormLife, ShowModalOnAVisibleFormIsError400)
{
    auto *form = new RecordingForm;
    form->show();
    EXPECT_EQ(passOver([&] { form->showModal(); }), 400);
}

TEST_F(FormLife, TheWindowStateHasThreeNumbers)
{
    auto *form = new RecordingForm;
    form->show();
    EXPECT_EQ(int(form->state()), 0);
    form->setState(FormState::Maximised);
    EXPECT_EQ(int(form->state()), 2);
    EXPECT_TRUE(form->isMaximized());
    form->setState(FormState::Minimised);
    EXPECT_EQ(int(form->state()), 1);
    EXPECT_TRUE(form->isMinimized());
    form->setState(FormState::Normal);
    EXPECT_EQ(int(form->state()), 0);
}

TEST_F(FormLife, APlaceInTwipsComesBackAsItWasSet)
{
    auto *form = new RecordingForm;
    form->setPlace(200, 300, 9150, 6435);
    EXPECT_EQ(form->place(), QRect(195, 300, 9150, 6435)) << "whole pixels";
    form->show();
    EXPECT_EQ(form->size(), QSize(610, 429));
    EXPECT_EQ(form->place(), QRect(195, 300, 9150, 6435));
    const QRect place = form->place();
    form->setPlace(place.left(), place.top(), place.width(), place.height());
    EXPECT_EQ(form->place(), place);
}

TEST_F(FormLife, AWindowBeyondTheScreenIsMovedOntoItWhenItIsShown)
{
    auto *form = new RecordingForm;
    const QRect screen = form->screen()->availableGeometry();
    for (const QPoint &corner : {QPoint(60000, 45000), QPoint(-9000, -6000), QPoint(9000, 9000)}) {
        form->setPlace(corner.x(), corner.y(), 6000, 4500);
        form->show();
        EXPECT_TRUE(screen.contains(form->frameGeometry())) << form->x() << ' ' << form->y();
        form->hide();
    }
}

TEST_F(FormLife, AWindowBelowItsMinimumGrowsToIt)
{
    auto *form = new RecordingForm;
    form->setPlace(0, 0, 1500, 1500);
    form->setMinimumTwips(4000, 3000);
    EXPECT_EQ(form->size(), QSize(267, 200));
    form->setPlace(0, 0, 4500, 150);
    EXPECT_EQ(form->size(), QSize(300, 200));
}

TEST_F(FormLife, CentredOnItsScreen)
{
    auto *form = new RecordingForm;
    form->resize(200, 100);
    form->centreOnScreen();
    EXPECT_EQ(form->frameGeometry().center(), form->screen()->availableGeometry().center());
}
