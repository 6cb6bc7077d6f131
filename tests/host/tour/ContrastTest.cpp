#include "host/tour/Contrast.h"
#include "host/tour/DesktopTest.h"
#include "platform/forms/OwnPicture.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The colours of a desktop.
struct Desktop
{
    const char *name;
    QRgb window;
    QRgb base;
    QRgb button;
    QRgb text;
    QRgb highlight;
    QRgb highlightedText;
    QRgb link;
};

void PrintTo(const Desktop &desktop, std::ostream *out)
{
    *out << desktop.name;
}

const Desktop kDesktops[] = {
    {"Light", 0xefefef, 0xffffff, 0xefefef, 0x000000, 0x1d6fa5, 0xffffff, 0x0057ae},
    {"Dark", 0x31363b, 0x232629, 0x31363b, 0xeff0f1, 0x1d6fa5, 0xffffff, 0x6cb8f0},
    {"HighContrast", 0x000000, 0x000000, 0x000000, 0xffffff, 0xffff00, 0x000000, 0x80ffff},
};

QPalette paletteOf(const Desktop &desktop)
{
    QPalette palette(QColor(desktop.button), QColor(desktop.window));
    palette.setColor(QPalette::Base, QColor(desktop.base));
    palette.setColor(QPalette::AlternateBase, QColor(desktop.button));
    palette.setColor(QPalette::ToolTipBase, QColor(desktop.window));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, QColor(desktop.text));
    palette.setColor(QPalette::Highlight, QColor(desktop.highlight));
    palette.setColor(QPalette::HighlightedText, QColor(desktop.highlightedText));
    palette.setColor(QPalette::Link, QColor(desktop.link));
    palette.setColor(QPalette::LinkVisited, QColor(desktop.link));
    return palette;
}

class ContrastTest : public DesktopTest, public ::testing::WithParamInterface<Desktop>
{
protected:
    ContrastTest() { QApplication::setPalette(paletteOf(GetParam())); }
};

TEST_P(ContrastTest, EveryTextOfTheTourCanBeRead)
{
    int looked = 0;
    const QStringList found = foundOnTour([&](QWidget &window) {
        looked += textsIn(window);
        return hardToRead(window);
    });
    EXPECT_TRUE(found.isEmpty()) << found.join(u'\n').toStdString();
    EXPECT_GT(looked, 1000);
}

TEST_P(ContrastTest, EveryPictureOfACommandCanBeSeen)
{
    constexpr double kSeen = 3; // what is larger than letters needs less
    for (const QString &name : {u"forste"_s, u"forrige"_s, u"neste"_s, u"siste"_s, u"opp"_s,
                                u"ned"_s, u"zoominn"_s, u"zoomut"_s, u"skriver"_s, u"pdf"_s}) {
        const QIcon icon = ownPicture(u":/faktura/"_s + name + u".svg"_s, {16, 16});
        const QImage picture = icon.pixmap(QSize(16, 16), 1.0).toImage();
        double most = 1;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (qAlpha(picture.pixel(x, y)) == 255)
                    most = std::max(most, contrast(picture.pixel(x, y), GetParam().button));
            }
        }
        EXPECT_GE(most, kSeen) << name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Desktops, ContrastTest, ::testing::ValuesIn(kDesktops),
                         [](const auto &desktop) { return desktop.param.name; });

} // namespace
