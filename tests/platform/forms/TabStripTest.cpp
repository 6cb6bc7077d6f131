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
        for (const QString &caption : {u"KID"_s, u"Logo"_s, u"Faktura"_s})
            strip->addTab(new QWidget, caption);
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

TEST_F(Strip, TheFirstTabIsSelected)
{
    TabStrip fresh;
    EXPECT_EQ(fresh.selected(), 0);
    fresh.addTab(new QWidget, u"A"_s);
    fresh.addTab(new QWidget, u"B"_s);
    EXPECT_EQ(fresh.selected(), 1);
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
    unseen.addTab(new QWidget, strip->tabText(0));
    unseen.addTab(new QWidget, strip->tabText(1));
    unseen.setGeometry(10, 20, 300, 200);
    EXPECT_EQ(unseen.clientArea(), shown);
}
