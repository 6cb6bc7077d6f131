#include "platform/forms/Forms.h"

#include "support/TestApplication.h"

#include <QPushButton>
#include <QSessionManager>

using namespace Qt::StringLiterals;

namespace {

class FormsCollection : public FormsFixture
{
};

class frmEn : public RecordingForm
{
public:
    frmEn() : RecordingForm(u"frmEn"_s) {}
};

} // namespace

TEST_F(FormsCollection, HoldsLoadedFormsInTheOrderOfLoading)
{
    auto *first = new RecordingForm(u"frmA"_s);
    auto *second = new RecordingForm(u"frmB"_s);
    const std::unique_ptr<Form> unloaded(new RecordingForm(u"frmC"_s));
    second->load();
    first->load();
    const std::vector<QPointer<Form>> loaded = Forms::loaded();
    ASSERT_EQ(loaded.size(), 2u);
    EXPECT_EQ(loaded[0], second);
    EXPECT_EQ(loaded[1], first);
}

TEST_F(FormsCollection, NamesAreCaseSensitive)
{
    auto *form = new RecordingForm(u"frmOrdre"_s);
    EXPECT_EQ(Forms::byName(u"frmOrdre"_s), nullptr) << "not loaded yet";
    form->load();
    EXPECT_EQ(Forms::byName(u"frmOrdre"_s), form);
    EXPECT_EQ(Forms::byName(u"frmordre"_s), nullptr);
    EXPECT_EQ(form->objectName(), u"frmOrdre"_s);
}

TEST_F(FormsCollection, AnUnloadedFormLeavesAtOnce)
{
    auto *form = new RecordingForm(u"frmA"_s);
    form->load();
    form->unload();
    EXPECT_EQ(Forms::byName(u"frmA"_s), nullptr);
}

TEST_F(FormsCollection, TheSharedInstanceIsMadeOnFirstUseAndAnewAfterUnload)
{
    EXPECT_EQ(SharedForm<frmEn>::existing(), nullptr);
    frmEn &first = SharedForm<frmEn>::get();
    EXPECT_EQ(&SharedForm<frmEn>::get(), &first);
    EXPECT_EQ(SharedForm<frmEn>::existing(), &first);
    EXPECT_FALSE(first.isLoaded());
    first.show();
    first.unload();
    EXPECT_EQ(SharedForm<frmEn>::existing(), nullptr);
    frmEn &second = SharedForm<frmEn>::get();
    EXPECT_NE(&second, &first);
    second.unload();
}

TEST_F(FormsCollection, AButtonMayUnloadItsOwnForm)
{
    RecordingForm::deleted = 0;
    frmEn &form = SharedForm<frmEn>::get();
    auto *button = new QPushButton(&form);
    QObject::connect(button, &QPushButton::clicked, &form, [&form, button] {
        form.unload();
        EXPECT_TRUE(button->objectName().isEmpty()) << "the control outlives its handler";
        EXPECT_NE(&SharedForm<frmEn>::get(), &form);
    });
    form.show();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(RecordingForm::deleted, 0);
    runEvents();
    EXPECT_EQ(RecordingForm::deleted, 1);
    SharedForm<frmEn>::get().unload();
}

TEST_F(FormsCollection, LoggingOffUnloadsAllWithModeTwo)
{
    auto *first = new RecordingForm(u"frmA"_s);
    auto *second = new RecordingForm(u"frmB"_s);
    first->show();
    second->load();
    QList<UnloadMode> modes;
    first->duringUnload = [&] { modes << first->lastMode; };
    second->duringUnload = [&] { modes << second->lastMode; };
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_EQ(modes, (QList{UnloadMode::LoggingOff, UnloadMode::LoggingOff}));
    EXPECT_TRUE(Forms::loaded().empty());
}

TEST_F(FormsCollection, AFormThatRefusesStaysAndTheOthersGo)
{
    auto *first = new RecordingForm(u"frmA"_s);
    auto *second = new RecordingForm(u"frmB"_s);
    first->load();
    second->load();
    first->refuses = true;
    EXPECT_FALSE(Forms::instance().logOff());
    EXPECT_TRUE(first->isLoaded());
    EXPECT_EQ(Forms::byName(u"frmB"_s), nullptr);
}

TEST_F(FormsCollection, AFormMayUnloadOthersWhileLoggingOff)
{
    auto *first = new RecordingForm(u"frmA"_s);
    auto *second = new RecordingForm(u"frmB"_s);
    first->load();
    second->load();
    first->duringUnload = [&] { second->unload(); };
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_TRUE(Forms::loaded().empty());
}

TEST_F(FormsCollection, TheEndOfTheSessionLogsOff)
{
    auto *form = new RecordingForm(u"frmA"_s);
    form->show();
    UnloadMode mode = UnloadMode::User;
    form->duringUnload = [&] { mode = form->lastMode; };

    // A session manager can be made by the application alone; no receiver looks into this one.
    const QMetaMethod signal = QMetaMethod::fromSignal(&QGuiApplication::commitDataRequest);
    alignas(QSessionManager) std::byte manager[sizeof(QSessionManager)];
    void *arguments[] = {nullptr, manager};
    QMetaObject::activate(qApp, signal.methodIndex(), arguments);

    EXPECT_EQ(mode, UnloadMode::LoggingOff);
    EXPECT_TRUE(form->isUnloaded());
}
