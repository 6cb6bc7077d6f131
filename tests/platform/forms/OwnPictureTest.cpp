#include "platform/forms/OwnPicture.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class OwnPictures : public ::testing::Test
{
protected:
    /// A red picture of `width` by `height` units.
    [[nodiscard]] QString svg(int width, int height) const
    {
        const QString path = folder.filePath(u"%1x%2.svg"_s.arg(width).arg(height));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(u"<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 %1 %2'>"
                   "<rect width='%1' height='%2' fill='#ff0000'/></svg>"_s.arg(width)
                       .arg(height)
                       .toUtf8());
        return path;
    }

    QTemporaryDir folder;
};

/// The picture of 32 by 32 for a screen of that pixel ratio.
QPixmap pictureOf(const QString &file, qreal ratio = 1)
{
    return ownPicture(file, {32, 32}).pixmap(QSize(32, 32), ratio);
}

QColor colourAt(const QPixmap &pixmap, int x, int y)
{
    return pixmap.toImage().pixelColor(x, y);
}

} // namespace

TEST_F(OwnPictures, AreDrawnForTheResolutionOfTheScreen)
{
    const QString file = svg(16, 16);
    EXPECT_EQ(pictureOf(file).size(), QSize(32, 32));
    const QPixmap twice = pictureOf(file, 2);
    EXPECT_EQ(twice.size(), QSize(64, 64));
    EXPECT_EQ(twice.devicePixelRatio(), 2.0);
    EXPECT_EQ(twice.deviceIndependentSize(), QSizeF(32, 32));
    EXPECT_EQ(colourAt(twice, 63, 63), QColor(Qt::red));
    EXPECT_EQ(ownPicture(file, {32, 32}).availableSizes().size(), 3);
}

TEST_F(OwnPictures, AreDrawnOnceWhenTheyAreShown)
{
    const QString file = folder.filePath(u"16x16.svg"_s);
    const QIcon icon = ownPicture(file, {32, 32});
    ASSERT_EQ(svg(16, 16), file);
    EXPECT_EQ(colourAt(icon.pixmap(32, 32), 16, 16), QColor(Qt::red)) << "it was not drawn before";
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_EQ(colourAt(icon.pixmap(32, 32), 16, 16), QColor(Qt::red)) << "it is not drawn again";
    EXPECT_EQ(colourAt(ownPicture(file, {32, 32}).pixmap(32, 32), 16, 16), QColor(Qt::red));
}

TEST_F(OwnPictures, HaveTheScreensOwnPixelsAtAnyScale)
{
    EXPECT_EQ(pictureOf(svg(16, 16), 1.25).size(), QSize(40, 40));
    EXPECT_EQ(pictureOf(svg(16, 16), 4).size(), QSize(96, 96)) << "no more than threefold";
}

TEST_F(OwnPictures, OfADisabledButtonAreGrey)
{
    const QIcon icon = ownPicture(svg(16, 16), {32, 32});
    const QColor colour = colourAt(icon.pixmap({32, 32}, QIcon::Disabled), 16, 16);
    EXPECT_LT(colour.saturation(), 60) << colour.name().toStdString();
}

TEST_F(OwnPictures, OfOtherProportionsAreCentred)
{
    const QPixmap picture = pictureOf(svg(32, 16));
    EXPECT_EQ(colourAt(picture, 16, 16), QColor(Qt::red));
    EXPECT_EQ(colourAt(picture, 16, 2).alpha(), 0);
    EXPECT_EQ(colourAt(picture, 16, 29).alpha(), 0);
}

TEST_F(OwnPictures, FromOtherFilesAreScaledIntoTheSize)
{
    const QString file = folder.filePath(u"r.png"_s);
    QImage image(192, 96, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(file));
    EXPECT_EQ(pictureOf(file).size(), QSize(32, 32));
    EXPECT_EQ(colourAt(pictureOf(file), 16, 16), QColor(Qt::red));
    // Twice as wide as high, so in the middle of the height.
    EXPECT_EQ(colourAt(pictureOf(file), 16, 6).alpha(), 0);
    EXPECT_EQ(colourAt(pictureOf(file), 16, 10), QColor(Qt::red));
    const QPixmap twice = pictureOf(file, 2);
    EXPECT_EQ(twice.size(), QSize(64, 64));
    EXPECT_EQ(colourAt(twice, 0, 32), QColor(Qt::red));
}

TEST_F(OwnPictures, AreTheSameIconEachTime)
{
    // Screens come and go.
    const QString own = u":/qt-project.org/styles/commonstyle/images/up-32.png"_s;
    EXPECT_EQ(ownPicture(own, {16, 16}).cacheKey(), ownPicture(own, {16, 16}).cacheKey());
    EXPECT_NE(ownPicture(own, {16, 16}).cacheKey(), ownPicture(own, {32, 32}).cacheKey());
}
