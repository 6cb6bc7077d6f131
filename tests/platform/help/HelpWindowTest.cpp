#include "platform/help/HtmlHelp.h"
#include "runtime/Paths.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTreeWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The help of the module in its window, used by keys alone where nothing else is said.
class HelpWindowTest : public ::testing::Test
{
protected:
    HelpWindowTest()
        : m_window(HtmlHelpA(nullptr,
                             paths::toModule(QStringLiteral(HELP_FOLDER)) + u"\\Regningsdel.chm"_s,
                             HH_DISPLAY_TOPIC, u"html\\intro1.htm"_s))
    {
        m_window->resize(1100, 700);
        action(u"visInnhold"_s).setChecked(true);
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_window));
    }
    ~HelpWindowTest() override { HtmlHelpA(nullptr, {}, HH_CLOSE_ALL, {}); }

    template<class T = QWidget>
    [[nodiscard]] T &part(const QString &name) const
    {
        return *m_window->findChild<T *>(name);
    }
    [[nodiscard]] QAction &action(const QString &name) const { return part<QAction>(name); }
    [[nodiscard]] QTextBrowser &page() const { return part<QTextBrowser>(u"sider"_s); }
    [[nodiscard]] QString shownFile() const { return page().source().fileName(); }
    [[nodiscard]] QListWidget &keywords() const { return part<QListWidget>(u"stikkordListe"_s); }
    [[nodiscard]] QListWidget &found() const { return part<QListWidget>(u"sokListe"_s); }
    static QStringList linesOf(const QListWidget &list)
    {
        QStringList lines;
        for (int i = 0; i < list.count(); ++i)
            lines += list.item(i)->text();
        return lines;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void search(const QString &words) const
    {
        press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), words);
    }

    QWidget *m_window;
};

TEST_F(HelpWindowTest, TheContentsHaveThePagesAndTheirHeadings)
{
    const auto &contents = part<QTreeWidget>(u"innhold"_s);
    ASSERT_GE(contents.topLevelItemCount(), 12);
    EXPECT_EQ(contents.topLevelItem(0)->text(0), u"Innhold"_s);
    EXPECT_EQ(contents.topLevelItem(1)->text(0), u"Hovedmeny"_s);
    EXPECT_EQ(contents.topLevelItem(1)->child(0)->text(0), u"Knappene"_s);
    EXPECT_EQ(contents.currentItem(), contents.topLevelItem(1)) << "the page that is read";
}

TEST_F(HelpWindowTest, EnterInTheContentsOpensTheHeading)
{
    press(Qt::Key_I, Qt::AltModifier);
    auto &contents = part<QTreeWidget>(u"innhold"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return contents.hasFocus(); }));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(page().source().fragment(), u"veien"_s);
    EXPECT_TRUE(page().hasFocus());
    EXPECT_EQ(contents.currentItem()->text(0), u"Slik går en faktura fra ordre til betalt"_s);
}

TEST_F(HelpWindowTest, AHeadingIsScrolledTo)
{
    page().setSource(QUrl(u"qrc:/hjelp/html/ordre.htm#betalt"_s));
    const QTextCursor heading = page().document()->find(u"Merke som betalt"_s);
    EXPECT_TRUE(page().viewport()->rect().contains(page().cursorRect(heading)));
}

TEST_F(HelpWindowTest, TheIndexIsNarrowedByTypingAndOpenedByEnter)
{
    press(Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return part(u"stikkordFelt"_s).hasFocus(); }));
    const int all = keywords().count();
    QTest::keyClicks(QApplication::focusWidget(), u"PURRE"_s);
    EXPECT_EQ(linesOf(keywords()), QStringList{u"purreliste"_s});
    EXPECT_GT(all, 100);
    press(Qt::Key_Return);
    EXPECT_EQ(page().source().fileName() + u'#' + page().source().fragment(),
              u"lister.htm#purre"_s);
}

TEST_F(HelpWindowTest, EveryKeywordLeadsToItsHeading)
{
    for (int i = 0; i < keywords().count(); ++i) {
        keywords().setCurrentRow(i);
        Q_EMIT keywords().itemActivated(keywords().currentItem());
        const QUrl url = page().source();
        EXPECT_FALSE(page().document()->isEmpty()) << url.toString().toStdString();
    }
}

TEST_F(HelpWindowTest, TheSearchListsThePagesWithAllTheWords)
{
    search(u"modulus kontrollsiffer"_s);
    EXPECT_EQ(linesOf(found()), QStringList{u"Innstillinger"_s});
    search(u"hestehov"_s);
    EXPECT_EQ(linesOf(found()), QStringList{u"Ingen treff"_s});
    press(Qt::Key_Return);
    EXPECT_EQ(shownFile(), u"intro1.htm"_s) << "there is nothing to open";
}

TEST_F(HelpWindowTest, EnterOpensWhatIsChosenWithTheWordsMarked)
{
    search(u"giro logo"_s);
    const QStringList lines = linesOf(found());
    ASSERT_GT(lines.size(), 1);
    press(Qt::Key_Down);
    const QString chosen = found().currentItem()->text();
    EXPECT_EQ(chosen, lines[1]);
    press(Qt::Key_Return);
    EXPECT_EQ(m_window->windowTitle(), u"Hjelp - "_s + chosen);
    EXPECT_TRUE(page().hasFocus());
    QStringList marked;
    for (const QTextEdit::ExtraSelection &mark : page().extraSelections())
        marked += mark.cursor.selectedText().toLower();
    EXPECT_TRUE(marked.contains(u"giro"_s));
    EXPECT_TRUE(marked.contains(u"logo"_s));
    page().setSource(QUrl(u"qrc:/hjelp/html/ordre.htm"_s));
    EXPECT_TRUE(page().extraSelections().isEmpty()) << "the marks go with the page";
}

TEST_F(HelpWindowTest, TheFirstMarkIsOnTheScreen)
{
    search(u"partallet"_s);
    press(Qt::Key_Return);
    const QRect mark = page().cursorRect();
    EXPECT_TRUE(page().viewport()->rect().contains(mark));
    EXPECT_GT(page().textCursor().position(), 1000);
}

TEST_F(HelpWindowTest, EscapeGoesBackToThePageAndThenCloses)
{
    search(u"kid"_s);
    press(Qt::Key_Escape);
    EXPECT_TRUE(m_window->isVisible());
    EXPECT_TRUE(page().hasFocus());
    press(Qt::Key_Escape);
    EXPECT_FALSE(m_window->isVisible());
}

TEST_F(HelpWindowTest, ThePartsBesideThePageAreHiddenUntilTheSearchIsWanted)
{
    press(Qt::Key_F9);
    EXPECT_FALSE(part(u"innholdOgSok"_s).isVisible());
    search(u"kid"_s);
    EXPECT_TRUE(part(u"innholdOgSok"_s).isVisible());
    EXPECT_GT(found().count(), 2);
}

TEST_F(HelpWindowTest, WhereThereIsNoRoomForBothThePageTakesIt)
{
    m_window->resize(400, 400);
    search(u"bildepunkter"_s);
    EXPECT_TRUE(part(u"innholdOgSok"_s).isVisible());
    press(Qt::Key_Return);
    EXPECT_FALSE(part(u"innholdOgSok"_s).isVisible());
    EXPECT_TRUE(page().hasFocus());
    QCoreApplication::processEvents();
    EXPECT_TRUE(page().viewport()->rect().contains(page().cursorRect()));
}

TEST_F(HelpWindowTest, F1ShowsHowTheHelpIsUsed)
{
    press(Qt::Key_F1);
    EXPECT_EQ(shownFile(), u"innhold.htm"_s);
}

TEST_F(HelpWindowTest, TabGoesThroughTheLinksAndOnToTheParts)
{
    constexpr int kMore = 50; // than the page has links
    press(Qt::Key_Tab);
    EXPECT_EQ(page().textCursor().selectedText(), u"Produkt"_s) << "the first link";
    for (int i = 0; i < kMore && page().hasFocus(); ++i)
        press(Qt::Key_Tab);
    EXPECT_FALSE(page().hasFocus());
}

TEST_F(HelpWindowTest, WhatIsReadByAScreenReaderHasAName)
{
    for (const QString &name : {u"sider"_s, u"innhold"_s, u"stikkordFelt"_s, u"stikkordListe"_s,
                                u"sokFelt"_s, u"sokListe"_s})
        EXPECT_FALSE(part(name).accessibleName().isEmpty()) << name.toStdString();
}

} // namespace
