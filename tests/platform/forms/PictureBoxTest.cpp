#include "platform/forms/PictureBox.h"

#include <gtest/gtest.h>

namespace {

QImage colour(QSize size, QColor colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

/// The rectangle of a colour on the painted box.
QRect painted(PictureBox &box, QColor wanted)
{
    const QImage image = box.grab().toImage();
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == wanted)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

} // namespace

TEST(PictureBoxTest, StandsEmptyAtFirst)
{
    PictureBox box;
    EXPECT_TRUE(box.picture().isNull());
    box.resize(50, 40);
    EXPECT_EQ(painted(box, box.palette().color(QPalette::Base)), box.contentsRect());
}

TEST(PictureBoxTest, ASmallPictureStandsInTheMiddleInItsOwnSize)
{
    PictureBox box;
    box.resize(100, 60);
    box.setPicture(colour(QSize(20, 10), Qt::red));
    const QRect place = painted(box, Qt::red);
    EXPECT_EQ(place.size(), QSize(20, 10));
    EXPECT_LE((place.center() - box.contentsRect().center()).manhattanLength(), 1);
}

TEST(PictureBoxTest, ALargePictureIsReducedInItsProportionsAndKept)
{
    PictureBox box;
    const int frame = 2 * box.frameWidth();
    box.resize(100 + frame, 60 + frame);
    box.setPicture(colour(QSize(400, 100), Qt::red));
    EXPECT_EQ(painted(box, Qt::red).size(), QSize(100, 25));
    EXPECT_EQ(box.picture().size(), QSize(400, 100));
    box.setPicture(colour(QSize(100, 600), Qt::blue));
    EXPECT_EQ(painted(box, Qt::blue).size(), QSize(10, 60));
    EXPECT_TRUE(painted(box, Qt::red).isNull());
}

TEST(PictureBoxTest, CanBeEmptied)
{
    PictureBox box;
    box.resize(100, 60);
    box.setPicture(colour(QSize(20, 10), Qt::red));
    box.setPicture(QImage());
    EXPECT_TRUE(painted(box, Qt::red).isNull());
}
