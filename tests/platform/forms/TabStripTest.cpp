#include "platform/forms/TabStrip.h"

#include "runtime/RunTimeError.h"
#include "support/TestApplication.h"

#include <QSignalSpy>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace {

class Strip : public FormsFixture
{
protected:
    void SetUp() override
    {
        form = new RecordingForm;
        form->setPlace(200, 200, 9000, 6000);
        strip = new TabStrip(form);
        strip->setGeometry(4, 68, 500, 300);
        strip->addTab(u"KID"_s, u"Group1"_s, u"Innstillinger for bruk av KID"_s);
        strip->addTab(u"Logo"_s, u"Group20"_s);
        strip->addTab(u"Faktura"_s, u"Group3"_s);
        form->show();
        clicks = std::make_unique<QSignalSpy>(strip, &TabStrip::clicked);
    }
    void TearDown() override
    {
        clicks.reset();
        FormsFixture::TearDown();
    }

    void clickTab(int number) const
    {
        QTabBar *bar = strip->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(number - 1).center());
    }

    RecordingForm *form = nullptr;
    TabStrip *strip = nullptr;
    std::unique_ptr<QSignalSpy> clicks;
};

} // namespace

TEST_F(Strip, TabsHaveCaptionKeyAndToolTip)
{
    EXPECT_EQ(strip->count(), 3);
    EXPECT_EQ(strip->tabText(1), u"Logo"_s);
    EXPECT_EQ(strip->key(2), u"Group20"_s);
    EXPECT_EQ(strip->key(0), QString());
    EXPECT_EQ(strip->key(4), QString());
    EXPECT_EQ(strip->tabToolTip(0), u"Innstillinger for bruk av KID"_s);
}

TEST_F(Strip, TheFirstTabIsSelectedWithoutAClick)
{
    TabStrip fresh;
    const QSignalSpy spy(&fresh, &TabStrip::clicked);
    EXPECT_EQ(fresh.selected(), 0);
    fresh.addTab(u"A"_s, u"a"_s);
    fresh.addTab(u"B"_s, u"b"_s);
    EXPECT_EQ(fresh.selected(), 1);
    EXPECT_EQ(spy.count(), 0);
}

TEST_F(Strip, AClickWithTheMouseSelectsAndTells)
{
    int selected = 0;
    QObject::connect(strip, &TabStrip::clicked, strip, [&] { selected = strip->selected(); });
    clickTab(3);
    EXPECT_EQ(selected, 3) << "the new tab is selected when the event runs";
    EXPECT_EQ(clicks->count(), 1);
}

TEST_F(Strip, AClickOnTheSelectedTabTellsToo)
{
    clickTab(1);
    EXPECT_EQ(strip->selected(), 1);
    EXPECT_EQ(clicks->count(), 1);
}

TEST_F(Strip, SelectingByCodeTellsNothing)
{
    strip->select(2);
    EXPECT_EQ(strip->selected(), 2);
    EXPECT_EQ(clicks->count(), 0);
    EXPECT_EQ(passOver([&] { strip->select(0); }), 35600);
    EXPECT_EQ(passOver([&] { strip->select(4); }), 35600);
    EXPECT_EQ(strip->selected(), 2);
}

TEST_F(Strip, ArrowKeysClick)
{
    strip->tabBar()->setFocus();
    QTest::keyClick(strip->tabBar(), Qt::Key_Right);
    EXPECT_EQ(strip->selected(), 2);
    EXPECT_EQ(clicks->count(), 1);
}

TEST_F(Strip, TheNextTabComesAfterTheLastOneAtTheFirst)
{
    strip->clickNext();
    EXPECT_EQ(strip->selected(), 2);
    strip->clickNext();
    strip->clickNext();
    EXPECT_EQ(strip->selected(), 1);
    EXPECT_EQ(clicks->count(), 3);
}

TEST_F(Strip, TheClientAreaLiesBelowTheTabsInsideTheStrip)
{
    const QRect area = strip->clientArea();
    EXPECT_TRUE(strip->geometry().contains(area));
    EXPECT_GE(area.top(), strip->y() + strip->tabBar()->height());
    EXPECT_GT(area.height(), strip->height() / 2);
    EXPECT_GT(area.width(), strip->width() * 9 / 10);
}

TEST_F(Strip, TheClientAreaIsKnownBeforeTheStripIsSeen)
{
    strip->setGeometry(10, 20, 300, 200);
    const QRect shown = strip->clientArea();
    TabStrip unseen;
    unseen.addTab(strip->tabText(0), u"a"_s);
    unseen.addTab(strip->tabText(1), u"b"_s);
    unseen.setGeometry(10, 20, 300, 200);
    EXPECT_EQ(unseen.clientArea(), shown);
}
