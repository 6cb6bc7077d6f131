#include "platform/forms/OptionWithBox.h"
#include "platform/forms/PictureButton.h"
#include "platform/help/HtmlHelp.h"
#include "shell/component/Screens.h"
#include "state/SharedState.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>

#include <map>

using namespace Qt::StringLiterals;

namespace {

/// The captions that stand on a page of the screen together: those of its tabs, its commands and
/// choices, and of its fields' labels.
QStringList captionsInSight(const QWidget &screen)
{
    QStringList captions;
    for (const auto *tabs : screen.findChildren<QTabWidget *>()) {
        for (int i = 0; i < tabs->count(); ++i)
            captions += tabs->tabText(i);
    }
    for (const auto *button : screen.findChildren<QAbstractButton *>()) {
        if (button->isVisibleTo(&screen))
            captions += button->text();
    }
    for (const auto *label : screen.findChildren<QLabel *>()) {
        if (label->isVisibleTo(&screen) && label->buddy())
            captions += label->text();
    }
    return captions;
}

/// Calls `look` on each page of a screen with tabs, and once on a screen without.
template<class Look>
void onEachPage(QWidget &screen, Look look)
{
    auto *tabs = screen.findChild<QTabWidget *>();
    for (int i = 0; i < (tabs ? tabs->count() : 1); ++i) {
        if (tabs)
            tabs->setCurrentIndex(i);
        look();
    }
}

class ScreenKeysTest : public ModuleTest, public ::testing::WithParamInterface<Screen>
{
protected:
    void SetUp() override
    {
        makeParentTables();
        ASSERT_EQ(startModule(), 1);
        unloadForms();
        runEvents();
    }
    void TearDown() override
    {
        unloadForms();
        runEvents();
        HtmlHelpA(nullptr, {}, HH_CLOSE_ALL, {});
    }
};

TEST_P(ScreenKeysTest, EveryCommandAndChoiceShowsItsLetter)
{
    const std::unique_ptr<QWidget> screen = GetParam().make();
    onEachPage(*screen, [&] {
        for (const auto *button : screen->findChildren<QAbstractButton *>()) {
            // Tool bars and pictures have keys of their own; boxes in a caption have the Tab key.
            const bool hasCaption = !qobject_cast<const QToolButton *>(button) ||
                                    qobject_cast<const PictureButton *>(button);
            if (!hasCaption || qobject_cast<const OptionWithBox *>(button) ||
                button->text().isEmpty() || !button->isVisibleTo(screen.get()))
                continue;
            EXPECT_FALSE(QKeySequence::mnemonic(button->text()).isEmpty())
                << button->objectName().toStdString();
        }
    });
}

TEST_P(ScreenKeysTest, NoLetterStandsForTwoThings)
{
    const std::unique_ptr<QWidget> screen = GetParam().make();
    onEachPage(*screen, [&] {
        std::map<QString, QString> owners;
        for (const QString &caption : captionsInSight(*screen)) {
            const QString letter = QKeySequence::mnemonic(caption).toString();
            if (letter.isEmpty())
                continue;
            const auto [owner, isNew] = owners.emplace(letter, caption);
            EXPECT_TRUE(isNew) << letter.toStdString() << " is the letter of "
                               << owner->second.toStdString() << " and of "
                               << caption.toStdString();
        }
    });
}

TEST_P(ScreenKeysTest, F1ShowsItsPage)
{
    const std::map<QString, QString> pages{
        {u"frmRegningsdel"_s, u"intro1"_s},
        {u"frmProdukt"_s, u"produkt"_s},
        {u"frmKalkyle"_s, u"kalkyle"_s},
        {u"frmOrdre"_s, u"ordre"_s},
        {u"frmKunder"_s, u"kunder"_s},
        {u"frmOversikt"_s, u"oversikt"_s},
        {u"frmOrdreSkriv"_s, u"lister"_s},
        {u"frmBokfor"_s, u"bokfor"_s},
        {u"frmOptions"_s, u"innstillinger"_s},
        {u"frmUtskrift"_s, u"utskrift"_s},
        {u"frmTMsgBox"_s, {}}, // goes by itself
        {u"Forhandsvisning"_s, u"forhandsvisning"_s},
    };
    const std::unique_ptr<QWidget> screen = GetParam().make();
    screen->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    gHelpTopic.clear();
    QTest::keyClick(screen.get(), Qt::Key_F1);
    const QString &page = pages.at(GetParam().name);
    EXPECT_EQ(gHelpTopic, page.isEmpty() ? QString() : u"html\\"_s + page + u".htm"_s);
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenKeysTest, ::testing::ValuesIn(kScreens),
                         [](const auto &screen) { return screen.param.name.toStdString(); });

/// The keys of the commands that stand on several screens.
TEST(ScreenKeys, OneCommandHasOneKey)
{
    const std::map<QString, QString> keys{{u"btnNew"_s, u"Ctrl+N"_s},
                                          {u"btnSave"_s, u"Ctrl+S"_s},
                                          {u"btnPrint"_s, u"Ctrl+P"_s},
                                          {u"btnRefresh"_s, u"F5"_s},
                                          {u"cmdApply"_s, u"Ctrl+S"_s}};
    std::map<QString, int> found;
    for (const Screen &made : kScreens) {
        const std::unique_ptr<QWidget> screen = made.make();
        for (const auto *button : screen->findChildren<QPushButton *>()) {
            const auto key = keys.find(button->objectName());
            if (key == keys.end())
                continue;
            ++found[key->first];
            EXPECT_EQ(button->toolTip(), key->second)
                << made.name.toStdString() << ' ' << key->first.toStdString();
        }
    }
    EXPECT_EQ(found, (std::map<QString, int>{{u"btnNew"_s, 2},
                                             {u"btnSave"_s, 2},
                                             {u"btnPrint"_s, 2},
                                             {u"btnRefresh"_s, 2},
                                             {u"cmdApply"_s, 1}}));
}

} // namespace
