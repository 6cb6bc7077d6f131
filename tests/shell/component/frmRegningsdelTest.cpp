#include "shell/component/frmRegningsdel.h"

#include "platform/ado/Connection.h"
#include "platform/forms/Forms.h"
#include "platform/forms/Image.h"
#include "platform/forms/MsgBox.h"
#include "platform/forms/PictureButton.h"
#include "presentation/screens/Skjerm.h"
#include "shell/component/Main.h"
#include "shell/component/clsFaktura.h"
#include "state/Messages.h"
#include "state/SharedState.h"
#include "support/Caption.h"
#include "support/Control.h"
#include "support/ModuleTest.h"
#include "support/TestApplication.h"

#include <QLabel>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

/// The main menu in a module that is started on a database of its own.
class FrmRegningsdelTest : public ModuleTest
{
protected:
    FrmRegningsdelTest() { makeParentTables(); }

    void TearDown() override
    {
        unloadForms();
        runEvents();
    }

    static frmRegningsdel *menu() { return SharedForm<frmRegningsdel>::existing(); }
    template<class Control>
    static Control *control(const QString &name)
    {
        return &controlOf<Control>(menu(), name);
    }
    static PictureButton *button(const QString &name) { return control<PictureButton>(name); }
    static QStringList loadedForms()
    {
        QStringList names;
        for (const QPointer<Form> &form : Forms::loaded())
            names += form->objectName();
        return names;
    }
    /// Loads a form of that name, which notes when it is unloaded.
    RecordingForm *loadForm(const QString &name)
    {
        auto *form = new RecordingForm(name);
        form->duringUnload = [this, name] { unloaded += name; };
        form->load();
        return form;
    }

    QStringList unloaded;
};

const QStringList kClosedWithMenu{u"frmBokfor"_s,   u"frmKalkyle"_s,   u"frmKunder"_s,
                                  u"frmOptions"_s,  u"frmOrdre"_s,     u"frmProdukt"_s,
                                  u"frmUtskrift"_s, u"frmInvisible"_s, u"frmDummy"_s};

TEST_F(FrmRegningsdelTest, TheStartShowsTheMenuAndReturns)
{
    EXPECT_EQ(startModule(), 1);
    ASSERT_NE(menu(), nullptr);
    EXPECT_TRUE(menu()->isVisible());
    EXPECT_FALSE(menu()->isModal());
    EXPECT_EQ(menu()->parentWidget(), nullptr);
    EXPECT_EQ(menu()->objectName(), u"frmRegningsdel"_s);
    EXPECT_EQ(menu()->windowTitle(), u"Strekkbok - Faktura"_s);
}

TEST_F(FrmRegningsdelTest, AFailedStartShowsNothing)
{
    run(u"DROP TABLE Hovedbok"_s);
    EXPECT_EQ(startModule(), 0);
    EXPECT_EQ(menu(), nullptr);
    EXPECT_TRUE(Forms::loaded().empty());
}

TEST_F(FrmRegningsdelTest, ASecondStartShowsTheSameMenuOnceMore)
{
    EXPECT_EQ(startModule(), 1);
    reload();
    EXPECT_EQ(startModule(), 1);
    const frmRegningsdel *first = menu();
    menu()->hide();
    EXPECT_EQ(startModule(), 1);
    EXPECT_EQ(menu(), first);
    EXPECT_TRUE(menu()->isVisible());
    EXPECT_EQ(loadedForms().count(u"frmRegningsdel"_s), 1);
}

/// Counts the paintings of a widget.
class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget &widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

TEST_F(FrmRegningsdelTest, TheStartHasPaintedTheMenuWhenItReturns)
{
    EXPECT_EQ(startModule(), 1);
    reload();
    EXPECT_EQ(startModule(), 1);
    runEvents();
    // What is shown already is painted once more, and not only when the parent's events go on.
    const PaintCount paintings(*menu());
    EXPECT_EQ(startModule(), 1);
    EXPECT_GT(paintings.count, 0);
}

TEST_F(FrmRegningsdelTest, ThePrivateInstancesFailureIsACriticalBoxWithOkAlone)
{
    Main();
    const auto instance = Ref<clsFaktura>::make();
    instance->setModuleInit(0);
    bool shown = false;
    onNextModal<QMessageBox>([&](QMessageBox &box) {
        shown = true;
        EXPECT_EQ(box.text(), u"Initiering av Regningsdel feilet!, - Programmet avslutter!"_s);
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        EXPECT_EQ(box.windowTitle(), applicationTitle());
        ASSERT_EQ(box.buttons().size(), 1);
        EXPECT_EQ(box.buttons().constFirst()->text(), u"OK"_s);
        box.buttons().constFirst()->click();
    });
    TaImot(instance);
    EXPECT_TRUE(shown);
}

TEST_F(FrmRegningsdelTest, UnloadingTheComponentTakesTheMenuDown)
{
    EXPECT_EQ(startModule(), 1);
    const QPointer<frmRegningsdel> before = menu();
    Unload();
    EXPECT_TRUE(before.isNull());
    EXPECT_TRUE(Forms::loaded().empty());
}

TEST_F(FrmRegningsdelTest, TheButtonsHaveTheirTexts)
{
    startModule();
    const QStringList texts[] = {
        {u"Command2"_s, u"Produkt"_s, u"Produkt regisrering og oppdatering"_s},
        {u"Command3"_s, u"Ordre/Faktura"_s, u"Registrering av Ordre/Faktura og utskrift"_s},
        {u"Command5"_s, u"Oversikt"_s, u"Oversikt over ordre/faktura"_s},
        {u"Command7"_s, u"Innstillinger"_s, u"Faste innstillinger for regningsdelen"_s},
        {u"Command8"_s, u"Bokfør"_s, u"Bokfør fakturaer i regnskapet"_s},
    };
    for (const QStringList &text : texts) {
        const PictureButton *found = button(text[0]);
        EXPECT_EQ(captionOf(*found), text[1]);
        EXPECT_EQ(found->toolTip(), text[2]);
        EXPECT_FALSE(found->icon().isNull());
        EXPECT_TRUE(found->isEnabled());
        EXPECT_GE(found->width(), found->sizeHint().width());
    }
}

TEST_F(FrmRegningsdelTest, TabGoesThroughTheButtonsInOrder)
{
    startModule();
    runEvents();
    QStringList names;
    for (int i = 0; i < 5; ++i) {
        names += menu()->focusWidget()->objectName();
        QTest::keyClick(menu()->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(names, QStringList({u"Command2"_s, u"Command3"_s, u"Command5"_s, u"Command7"_s,
                                  u"Command8"_s}));
}

/// Notes which forms come up, and in which order they are put on top.
class StackOrder : public QObject
{
public:
    StackOrder() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (qobject_cast<Form *>(watched) == nullptr)
            return false;
        if (event->type() == QEvent::Show)
            seen += u"vis "_s + watched->objectName();
        else if (event->type() == QEvent::ZOrderChange)
            seen += u"øverst "_s + watched->objectName();
        return false;
    }
    QStringList seen;
};

const std::pair<QString, QString> kScreens[] = {{u"Command2"_s, u"frmProdukt"_s},
                                                {u"Command3"_s, u"frmOrdre"_s},
                                                {u"Command5"_s, u"frmOversikt"_s},
                                                {u"Command7"_s, u"frmOptions"_s},
                                                {u"Command8"_s, u"frmBokfor"_s}};

TEST_F(FrmRegningsdelTest, AButtonOpensItsScreenAndTheMenuStaysAboveIt)
{
    startModule();
    for (const auto &[name, screen] : kScreens) {
        SCOPED_TRACE(screen.toStdString());
        const StackOrder order;
        QTest::mouseClick(button(name), Qt::LeftButton);
        Form *opened = Forms::byName(screen);
        ASSERT_NE(opened, nullptr);
        EXPECT_TRUE(opened->isVisible());
        EXPECT_FALSE(opened->isModal());
        EXPECT_EQ(opened->parentWidget(), nullptr);
        EXPECT_LT(order.seen.indexOf(u"vis "_s + screen), order.seen.size() - 1);
        EXPECT_EQ(order.seen.last(), u"øverst frmRegningsdel"_s);
        runEvents();
        EXPECT_EQ(QApplication::activeWindow(), opened) << "on top, but without the focus";
    }
}

TEST_F(FrmRegningsdelTest, AButtonPressedTwiceBringsTheSameScreenUpAgain)
{
    startModule();
    for (const auto &[name, screen] : kScreens) {
        SCOPED_TRACE(screen.toStdString());
        QTest::mouseClick(button(name), Qt::LeftButton);
        const QPointer<Form> first = Forms::byName(screen);
        first->setState(FormState::Minimised);
        const StackOrder order;
        QTest::mouseClick(button(name), Qt::LeftButton);
        EXPECT_EQ(Forms::byName(screen), first);
        EXPECT_EQ(loadedForms().count(screen), 1);
        EXPECT_EQ(first->state(), FormState::Normal);
        EXPECT_EQ(order.seen.filter(u"øverst"_s),
                  QStringList({u"øverst "_s + screen, u"øverst frmRegningsdel"_s}));
        // A closed one is made anew.
        first->unload();
        runEvents();
        QTest::mouseClick(button(name), Qt::LeftButton);
        EXPECT_EQ(loadedForms().count(screen), 1);
        EXPECT_TRUE(Forms::byName(screen)->isVisible());
    }
}

TEST_F(FrmRegningsdelTest, TheBuildTextIsTheThirdPartOfTheVersion)
{
    startModule();
    const auto *label = control<QLabel>(u"Label1"_s);
    EXPECT_EQ(label->text(), u"Build "_s + QStringLiteral(FAKTURA_VERSION).section(u'.', 2, 2));
    EXPECT_EQ(label->font().family(), u"Verdana"_s);
    EXPECT_EQ(label->font().pointSizeF(), 6.0);
}

TEST_F(FrmRegningsdelTest, TheHelpImageIsDressed)
{
    startModule();
    const auto *image = control<Image>(u"imgF1"_s);
    EXPECT_EQ(image->toolTip(), u" Vis hjelp for dette skjermbildet (F1)"_s);
    EXPECT_EQ(image->size(), QSize(24, 24));
    EXPECT_TRUE(ErFormLastet(u"frmInvisible"_s));
}

TEST_F(FrmRegningsdelTest, F1AnywhereAsksForTheMenusTopic)
{
    startModule();
    gHelpTopic = u"html\\ordre.htm"_s;
    QTest::keyClick(button(u"Command7"_s), Qt::Key_F1);
    EXPECT_EQ(gHelpTopic, u"html\\intro1.htm"_s);
}

TEST_F(FrmRegningsdelTest, F1WithoutAHelpFileShowsNothing)
{
    startModule();
    gHelpFile = u"\\finnes\\ikke.chm"_s;
    QTest::keyClick(menu(), Qt::Key_F1);
    for (const QWidget *window : QApplication::topLevelWidgets())
        EXPECT_TRUE(window == menu() || !window->isVisible());
}

TEST_F(FrmRegningsdelTest, TheHelpImageTakesTheSamePathAsTheKey)
{
    startModule();
    runEvents();
    gHelpTopic.clear();
    QTest::mouseClick(control<Image>(u"imgF1"_s), Qt::LeftButton);
    EXPECT_EQ(gHelpTopic, QString()) << "the key comes from the event loop";
    runEvents();
    EXPECT_EQ(gHelpTopic, u"html\\intro1.htm"_s);
}

TEST_F(FrmRegningsdelTest, OtherKeysAskForNoHelp)
{
    startModule();
    QTest::keyClick(menu(), Qt::Key_F2);
    QTest::keyClick(menu(), Qt::Key_Escape);
    EXPECT_EQ(gHelpTopic, QString());
    EXPECT_TRUE(menu()->isVisible());
}

TEST_F(FrmRegningsdelTest, ClosingTakesTheOthersDownInOrder)
{
    startModule();
    Forms::byName(u"frmInvisible"_s)->unload(); // the help image has loaded it
    runEvents();
    for (const QString &name :
         {u"frmDummy"_s, u"frmInvisible"_s, u"frmUtskrift"_s, u"frmProdukt"_s, u"frmOrdre"_s,
          u"frmOptions"_s, u"frmKunder"_s, u"frmKalkyle"_s, u"frmBokfor"_s})
        loadForm(name);
    menu()->close();
    EXPECT_EQ(unloaded, kClosedWithMenu);
    EXPECT_EQ(menu(), nullptr);
    EXPECT_TRUE(Forms::loaded().empty());
}

TEST_F(FrmRegningsdelTest, ThreeFormsStayWhenTheMenuCloses)
{
    startModule();
    for (const QString &name : {u"frmOversikt"_s, u"frmOrdreSkriv"_s, u"frmTMsgBox"_s})
        loadForm(name)->show();
    loadForm(u"frmOrdre"_s);
    menu()->close();
    EXPECT_EQ(unloaded, QStringList({u"frmOrdre"_s}));
    EXPECT_EQ(loadedForms(), QStringList({u"frmOversikt"_s, u"frmOrdreSkriv"_s, u"frmTMsgBox"_s}));
    EXPECT_TRUE(Forms::byName(u"frmOversikt"_s)->isVisible());
}

TEST_F(FrmRegningsdelTest, ClosingCannotBeRefusedByAnother)
{
    startModule();
    RecordingForm *refusing = loadForm(u"frmOrdre"_s);
    refusing->refuses = true;
    loadForm(u"frmDummy"_s);
    menu()->close();
    EXPECT_EQ(menu(), nullptr);
    EXPECT_EQ(unloaded, QStringList({u"frmDummy"_s}));
    refusing->refuses = false;
}

TEST_F(FrmRegningsdelTest, ClosingEndsNoConnection)
{
    startModule();
    menu()->close();
    ASSERT_TRUE(gConn);
    EXPECT_EQ(gConn->state(), ado::ObjectState::Open);
}

TEST_F(FrmRegningsdelTest, LogOffClosesEverything)
{
    startModule();
    EXPECT_TRUE(Forms::instance().logOff());
    EXPECT_EQ(menu(), nullptr);
    EXPECT_TRUE(Forms::loaded().empty());
}

TEST_F(FrmRegningsdelTest, MessagesOfTheLowerFloorsComeUpAsBoxes)
{
    Main();
    onNextModal<QMessageBox>([](QMessageBox &box) {
        EXPECT_EQ(box.text(), u"Prøve"_s);
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        EXPECT_EQ(box.windowTitle(), applicationTitle());
        QTest::keyClick(&box, Qt::Key_Return);
    });
    messages::show(u"Prøve"_s, messages::kCritical);
}

} // namespace
