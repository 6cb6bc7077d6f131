#include "platform/forms/Form.h"
#include "support/TestApplication.h"

#include <QAccessible>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

using FormKindTest = FormsFixture;

class Screen : public Form
{
    Q_OBJECT

public:
    using Form::Form;
};

QAccessible::Role roleOf(const QString &name, FormKind kind)
{
    auto *screen = new Screen(name, kind);
    screen->load();
    return QAccessible::queryAccessibleInterface(screen)->role();
}

const QWindow *ownerOf(const QWidget &window)
{
    return window.windowHandle()->transientParent();
}

TEST_F(FormKindTest, ScreenReadersKnowAScreenADialogAndANoteByTheirRoles)
{
    EXPECT_EQ(roleOf(u"frmScreen"_s, FormKind::Screen), QAccessible::Window);
    EXPECT_EQ(roleOf(u"frmDialog"_s, FormKind::Dialog), QAccessible::Dialog);
    EXPECT_EQ(roleOf(u"frmNote"_s, FormKind::Note), QAccessible::AlertMessage);
}

TEST_F(FormKindTest, AScreenStandsByItself)
{
    (new Form(u"frmFirst"_s))->show();
    auto *second = new Form(u"frmSecond"_s);
    second->show();
    EXPECT_EQ(second->windowType(), Qt::Window);
    EXPECT_EQ(ownerOf(*second), nullptr);
}

TEST_F(FormKindTest, ADialogBelongsToTheScreenThatIsActiveAndStandsOverIt)
{
    auto *screen = new Form(u"frmScreen"_s);
    screen->setPlace(1500, 1500, 6000, 6000);
    screen->show();
    auto *dialog = new Form(u"frmDialog"_s, FormKind::Dialog);
    dialog->resize(200, 100);
    dialog->show();
    EXPECT_EQ(dialog->windowType(), Qt::Dialog);
    EXPECT_EQ(ownerOf(*dialog), screen->windowHandle());
    // But for the frame, which the window system adds when the place is chosen.
    const QPoint beside = dialog->geometry().center() - screen->frameGeometry().center();
    EXPECT_LE(beside.manhattanLength(), 10);
}

TEST_F(FormKindTest, ADialogShownAgainBelongsToTheScreenThatIsActiveThen)
{
    auto *first = new Form(u"frmFirst"_s);
    first->show();
    auto *dialog = new Form(u"frmDialog"_s, FormKind::Dialog);
    dialog->show();
    dialog->hide();
    auto *second = new Form(u"frmSecond"_s);
    second->show();
    dialog->show();
    EXPECT_EQ(ownerOf(*dialog), second->windowHandle());
}

TEST_F(FormKindTest, AModalDialogBelongsToItsOpener)
{
    auto *opener = new Form(u"frmOpener"_s);
    opener->show();
    auto *dialog = new Form(u"frmDialog"_s, FormKind::Dialog);
    const QWindow *owner = nullptr;
    onNextModal<Form>([&](Form &modal) {
        owner = ownerOf(modal);
        modal.unload();
    });
    dialog->showModal();
    EXPECT_EQ(owner, opener->windowHandle());
}

} // namespace

#include "FormKindTest.moc"
