#include "support/TestApplication.h"

#include "platform/forms/Forms.h"

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// The application object of the whole test program; made after the command line has been read, so
/// that listing the tests needs none.
class ApplicationEnvironment : public ::testing::Environment
{
public:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        m_application = std::make_unique<QApplication>(m_argc, m_argv);
        QApplication::setQuitOnLastWindowClosed(false);
    }
    void TearDown() override
    {
        // Forms that are left when the program ends go with the application, without events.
        auto *loaded = new RecordingForm(u"frmA"_s);
        loaded->load();
        loaded->duringUnload = [] { ADD_FAILURE() << "no events at the end"; };
        new RecordingForm(u"frmB"_s);
        RecordingForm::deleted = 0;
        m_application.reset();
        EXPECT_EQ(RecordingForm::deleted, 2);
    }

private:
    int m_argc = 1;
    char m_name[11] = "forms_test";
    char *m_argv[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};

[[maybe_unused]] auto *const environment =
    ::testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

} // namespace

void runEvents()
{
    // A second round for what the first has posted.
    for (int round = 0; round < 2; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void unloadForms()
{
    for (const QPointer<Form> &form : Forms::loaded()) {
        if (form)
            form->unload();
    }
}

void FormsFixture::TearDown()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const std::vector<QPointer<QWidget>> snapshot(windows.begin(), windows.end());
    for (const QPointer<QWidget> &window : snapshot) {
        if (auto *recording = qobject_cast<RecordingForm *>(window))
            recording->refuses = false;
        if (auto *form = qobject_cast<Form *>(window))
            form->unload();
    }
    runEvents();
    EXPECT_TRUE(Forms::loaded().empty());
}

void RecordingForm::onLoad()
{
    events << u"load"_s;
    if (duringLoad)
        duringLoad();
}

void RecordingForm::onQueryUnload(bool &cancel, UnloadMode mode)
{
    events << u"query %1"_s.arg(int(mode));
    lastMode = mode;
    if (duringQueryUnload)
        duringQueryUnload();
    cancel = refuses;
}

void RecordingForm::onUnload()
{
    events << u"unload"_s;
    if (duringUnload)
        duringUnload();
}

bool RecordingForm::onKeyDown(Qt::Key key, Qt::KeyboardModifiers shift)
{
    events << u"key"_s;
    return duringKeyDown && duringKeyDown(key, shift);
}
