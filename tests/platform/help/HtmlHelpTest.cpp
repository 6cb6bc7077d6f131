#include "platform/help/HtmlHelp.h"

#include "runtime/Paths.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>
#include <QWindow>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class HtmlHelpTest : public ::testing::Test
{
protected:
    ~HtmlHelpTest() override { HtmlHelpA(nullptr, {}, HH_CLOSE_ALL, {}); }

    static QString helpFileIn(const QString &folder)
    {
        return paths::toModule(folder) + u"\\Regningsdel.chm"_s;
    }
    static QString helpFile() { return helpFileIn(QStringLiteral(HELP_FOLDER)); }
    static QWidget *show(const QString &topic)
    {
        return HtmlHelpA(nullptr, helpFile(), HH_DISPLAY_TOPIC, topic);
    }
    static QTextBrowser *pages(QWidget *window) { return window->findChild<QTextBrowser *>(); }
    static bool nothingVisible()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        return std::none_of(windows.begin(), windows.end(),
                            [](const QWidget *window) { return window->isVisible(); });
    }
    static QToolButton *tool(QWidget *window, const QString &text)
    {
        for (auto *button : window->findChildren<QToolButton *>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }
};

const QStringList kTopics{u"html\\intro1.htm"_s, u"html\\ordre.htm"_s,   u"html\\produkt.htm"_s,
                          u"html\\bokfor.htm"_s, u"html\\kalkyle.htm"_s, u"html\\oversikt.htm"_s,
                          u"html\\taster.htm"_s};
const QStringList kTitles{u"Hovedmeny"_s, u"Ordre og faktura"_s, u"Produkt"_s, u"Bokfør"_s,
                          u"Kalkyle"_s,   u"Oversikt"_s,         u"Taster"_s};

TEST_F(HtmlHelpTest, EachTopicHasItsPage)
{
    for (qsizetype i = 0; i < kTopics.size(); ++i) {
        QWidget *window = show(kTopics[i]);
        ASSERT_NE(window, nullptr) << kTopics[i].toStdString();
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(window->windowTitle(), u"Hjelp - "_s + kTitles[i]);
        EXPECT_TRUE(pages(window)->toPlainText().contains(kTitles[i]));
    }
}

TEST_F(HtmlHelpTest, TheWindowIsUsedAgain)
{
    const QWidget *first = show(kTopics[0]);
    EXPECT_EQ(first->objectName(), u"HtmlHelp"_s);
    EXPECT_TRUE(first->isWindow());
    EXPECT_EQ(show(kTopics[1]), first);
}

TEST_F(HtmlHelpTest, AClosedWindowComesUpAgain)
{
    show(kTopics[0])->close();
    EXPECT_TRUE(nothingVisible());
    EXPECT_TRUE(show(kTopics[0])->isVisible());
}

TEST_F(HtmlHelpTest, AMinimisedWindowComesUpAgain)
{
    show(kTopics[0])->showMinimized();
    EXPECT_FALSE(show(kTopics[0])->isMinimized());
}

TEST_F(HtmlHelpTest, AMissingFileShowsNothing)
{
    EXPECT_EQ(
        HtmlHelpA(nullptr, u"\\finnes\\ikke\\Regningsdel.chm"_s, HH_DISPLAY_TOPIC, kTopics[0]),
        nullptr);
    EXPECT_EQ(HtmlHelpA(nullptr, {}, HH_DISPLAY_TOPIC, kTopics[0]), nullptr);
    EXPECT_TRUE(nothingVisible());
}

TEST_F(HtmlHelpTest, AMissingTopicShowsNothing)
{
    EXPECT_EQ(show(u"html\\finnes-ikke.htm"_s), nullptr);
    EXPECT_EQ(show({}), nullptr);
    EXPECT_TRUE(nothingVisible());
}

TEST_F(HtmlHelpTest, AnotherCommandShowsNothing)
{
    EXPECT_EQ(HtmlHelpA(nullptr, helpFile(), 1, kTopics[0]), nullptr);
    EXPECT_TRUE(nothingVisible());
}

TEST_F(HtmlHelpTest, ASpoiltFileShowsNothingAndTheFormerStaysOpen)
{
    const QTemporaryDir folder;
    QFile spoilt(folder.filePath(u"Regningsdel.rcc"_s));
    ASSERT_TRUE(spoilt.open(QIODevice::WriteOnly));
    spoilt.write("dette er ingen hjelpefil");
    spoilt.close();
    EXPECT_EQ(HtmlHelpA(nullptr, helpFileIn(folder.path()), HH_DISPLAY_TOPIC, kTopics[0]), nullptr);
    EXPECT_TRUE(nothingVisible());

    QWidget *window = show(kTopics[0]);
    EXPECT_EQ(HtmlHelpA(nullptr, helpFileIn(folder.path()), HH_DISPLAY_TOPIC, kTopics[1]), nullptr);
    EXPECT_EQ(window->windowTitle(), u"Hjelp - Hovedmeny"_s);
    EXPECT_EQ(show(kTopics[1])->windowTitle(), u"Hjelp - Ordre og faktura"_s);
}

TEST_F(HtmlHelpTest, AFolderWithDotsAndBlanksWillDo)
{
    const QTemporaryDir folder(QDir::tempPath() + u"/hjelp v1.2 XXXXXX"_s);
    ASSERT_TRUE(QFile::copy(QStringLiteral(HELP_FOLDER "/Regningsdel.rcc"),
                            folder.filePath(u"Regningsdel.rcc"_s)));
    EXPECT_NE(HtmlHelpA(nullptr, helpFileIn(folder.path()), HH_DISPLAY_TOPIC, kTopics[0]), nullptr);
    HtmlHelpA(nullptr, {}, HH_CLOSE_ALL, {});
}

TEST_F(HtmlHelpTest, CloseAllDeletesTheWindow)
{
    const QPointer<QWidget> window = show(kTopics[0]);
    EXPECT_EQ(HtmlHelpA(nullptr, {}, HH_CLOSE_ALL, {}), nullptr);
    EXPECT_TRUE(window.isNull());
    EXPECT_FALSE(QFile::exists(u":/hjelp/html/intro1.htm"_s)) << "the file is still open";
    EXPECT_EQ(HtmlHelpA(nullptr, {}, HH_CLOSE_ALL, {}), nullptr);
}

TEST_F(HtmlHelpTest, EscapeClosesTheWindow)
{
    QWidget *window = show(kTopics[0]);
    QTest::keyClick(pages(window), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(HtmlHelpTest, BackAndForwardFollowTheWayTaken)
{
    QWidget *window = show(kTopics[0]);
    pages(window)->clearHistory();
    QToolButton *back = tool(window, u"Tilbake"_s);
    QToolButton *forward = tool(window, u"Fram"_s);
    ASSERT_NE(back, nullptr);
    ASSERT_NE(forward, nullptr);
    EXPECT_FALSE(back->isEnabled());
    show(kTopics[1]);
    EXPECT_TRUE(back->isEnabled());
    QTest::mouseClick(back, Qt::LeftButton);
    EXPECT_EQ(window->windowTitle(), u"Hjelp - Hovedmeny"_s);
    QTest::mouseClick(forward, Qt::LeftButton);
    EXPECT_EQ(window->windowTitle(), u"Hjelp - Ordre og faktura"_s);
    EXPECT_FALSE(forward->isEnabled());
}

TEST_F(HtmlHelpTest, TheWindowStaysAboveItsOwner)
{
    QWidget owner;
    owner.show();
    QWidget *window = HtmlHelpA(&owner, helpFile(), HH_DISPLAY_TOPIC, kTopics[0]);
    EXPECT_EQ(window->windowHandle()->transientParent(), owner.windowHandle());
    show(kTopics[0]);
    EXPECT_EQ(window->windowHandle()->transientParent(), nullptr);
}

TEST_F(HtmlHelpTest, AModalWindowDoesNotKeepTheUserFromIt)
{
    QWidget *window = show(kTopics[0]);
    QWidget modal;
    modal.setWindowModality(Qt::ApplicationModal);
    modal.show();
    show(kTopics[1]);
    EXPECT_EQ(window->windowHandle()->transientParent(), modal.windowHandle());
    QTest::keyClick(window->windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(HtmlHelpTest, AnOwnerThatIsNotOnTheScreenWillDo)
{
    QWidget owner;
    EXPECT_NE(HtmlHelpA(&owner, helpFile(), HH_DISPLAY_TOPIC, kTopics[0]), nullptr);
}

TEST_F(HtmlHelpTest, ThePageShowsItsPicture)
{
    const QTextDocument *page = pages(show(kTopics[0]))->document();
    const QVariant picture =
        page->resource(QTextDocument::ImageResource, QUrl(u"bilder/hovedmeny.png"_s));
    EXPECT_GT(picture.value<QPixmap>().width(), 400);
}

} // namespace
