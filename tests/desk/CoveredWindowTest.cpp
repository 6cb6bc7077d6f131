#include "desk/DeskTest.h"

#include "presentation/screens/Timeglass.h"
#include "support/StandingClock.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>

namespace {

/// A window of one colour, of which no manager knows.
class Patch : public QWidget
{
public:
    Patch(QRect place, QColor colour)
        : QWidget(nullptr, Qt::BypassWindowManagerHint), m_colour(colour)
    {
        setGeometry(place);
        show();
    }
    int painted = 0;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(rect(), m_colour);
        ++painted;
    }

private:
    const QColor m_colour;
};

using CoveredWindowTest = DeskTest;

} // namespace

TEST_F(CoveredWindowTest, WorkThatHoldsTheWindowsShowsWhatWasCovered)
{
    constexpr QPoint place(700, 500);
    const auto seen = [&] {
        return QApplication::primaryScreen()
            ->grabWindow(0, place.x(), place.y(), 1, 1)
            .toImage()
            .pixelColor(0, 0);
    };
    Patch window(QRect(600, 400, 200, 200), Qt::red);
    ASSERT_TRUE(comes([&] { return seen() == Qt::red; }));
    Patch cover(QRect(650, 450, 100, 100), Qt::blue);
    ASSERT_TRUE(comes([&] { return seen() == Qt::blue; }));
    const int painted = window.painted;
    cover.hide();
    ASSERT_NE(seen(), Qt::red) << "nothing shows it again by itself";

    StandingClock clock;
    Timeglass hourglass;
    const auto work = [&] {
        for (int i = 0; i < 1000; ++i)
            hourglass.holdVinduene();
    };
    work();
    EXPECT_EQ(seen(), Qt::red);
    EXPECT_EQ(window.painted, painted);

    cover.show();
    ASSERT_TRUE(comes([&] { return seen() == Qt::blue; }));
    cover.hide();
    work();
    EXPECT_NE(seen(), Qt::red) << "not before some time has gone";
    clock.sleep(500);
    work();
    EXPECT_EQ(seen(), Qt::red);
}
