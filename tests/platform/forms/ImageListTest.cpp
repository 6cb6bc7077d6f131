#include "platform/forms/ImageList.h"

#include "runtime/RunTimeError.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class Pictures : public ::testing::Test
{
protected:
    /// A picture of `width` by `height` units, all of one colour.
    [[nodiscard]] QString svg(const QString &name, const QString &colour, int width = 16,
                              int height = 16) const
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(u"<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 %1 %2'>"
                   "<rect width='%1' height='%2' fill='%3'/></svg>"_s.arg(width)
                       .arg(height)
                       .arg(colour)
                       .toUtf8());
        return path;
    }

    QTemporaryDir folder;
    ImageList list{QSize(32, 32)};
};

QColor colourAt(const QPixmap &pixmap, int x, int y)
{
    return pixmap.toImage().pixelColor(x, y);
}

} // namespace

TEST_F(Pictures, AreFoundByKeyAndByIndexFromOne)
{
    list.add(u"Stop"_s, svg(u"r.svg"_s, u"#ff0000"_s));
    list.add(u"Info"_s, svg(u"b.svg"_s, u"#0000ff"_s));
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(colourAt(list.picture(1), 16, 16), QColor(Qt::red));
    EXPECT_EQ(colourAt(list.picture(u"Info"_s), 16, 16), QColor(Qt::blue));
}

TEST_F(Pictures, AreDrawnForTheResolutionOfTheScreen)
{
    list.add(u"Info"_s, svg(u"b.svg"_s, u"#0000ff"_s));
    EXPECT_EQ(list.picture(1).size(), QSize(32, 32));
    const QPixmap twice = list.picture(1, 2);
    EXPECT_EQ(twice.size(), QSize(64, 64));
    EXPECT_EQ(twice.devicePixelRatio(), 2.0);
    EXPECT_EQ(twice.deviceIndependentSize(), QSizeF(32, 32));
}

TEST_F(Pictures, OfOtherProportionsAreCentred)
{
    list.add(u"Bred"_s, svg(u"w.svg"_s, u"#ff0000"_s, 32, 16));
    const QPixmap picture = list.picture(1);
    EXPECT_EQ(colourAt(picture, 16, 16), QColor(Qt::red));
    EXPECT_EQ(colourAt(picture, 16, 2).alpha(), 0);
    EXPECT_EQ(colourAt(picture, 16, 29).alpha(), 0);
}

TEST_F(Pictures, IconsHoldThePictureForHigherResolutions)
{
    list.add(u"Info"_s, svg(u"b.svg"_s, u"#0000ff"_s));
    const QIcon icon = list.icon(u"Info"_s);
    EXPECT_EQ(icon.pixmap(QSize(32, 32), 2.0).size(), QSize(64, 64));
    EXPECT_EQ(list.icon(1).pixmap(QSize(32, 32), 1.0).size(), QSize(32, 32));
}

TEST_F(Pictures, WrongIndexesAndKeysAreErrors)
{
    list.add(u"Info"_s, svg(u"b.svg"_s, u"#0000ff"_s));
    list.add(QString(), svg(u"r.svg"_s, u"#ff0000"_s));
    EXPECT_EQ(passOver([&] { (void)list.picture(0); }), 35600);
    EXPECT_EQ(passOver([&] { (void)list.picture(3); }), 35600);
    EXPECT_EQ(passOver([&] { (void)list.picture(u"info"_s); }), 35601);
    EXPECT_EQ(passOver([&] { (void)list.picture(QString()); }), 35601);
    EXPECT_EQ(passOver([&] { (void)list.icon(u"Smile"_s); }), 35601);
}

TEST_F(Pictures, FromOtherFilesAreScaledIntoTheSize)
{
    QImage image(192, 96, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(folder.filePath(u"r.png"_s)));
    list.add(u"Rød"_s, folder.filePath(u"r.png"_s));
    EXPECT_EQ(list.picture(1).size(), QSize(32, 32));
    EXPECT_EQ(colourAt(list.picture(1), 16, 16), QColor(Qt::red));
    // Twice as wide as high, so in the middle of the height.
    EXPECT_EQ(colourAt(list.picture(1), 16, 6).alpha(), 0);
    EXPECT_EQ(colourAt(list.picture(1), 16, 10), QColor(Qt::red));
    const QPixmap twice = list.picture(u"Rød"_s, 2);
    EXPECT_EQ(twice.size(), QSize(64, 64));
    EXPECT_EQ(colourAt(twice, 0, 32), QColor(Qt::red));
}

TEST_F(Pictures, AddingWhatCannotBeShownIsAnError)
{
    const QString good = svg(u"b.svg"_s, u"#0000ff"_s);
    QFile bad(folder.filePath(u"x.svg"_s));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("ikke noe bilde");
    bad.close();
    list.add(u"Info"_s, good);
    EXPECT_EQ(passOver([&] { list.add(u"A"_s, folder.filePath(u"borte.svg"_s)); }), 53);
    EXPECT_EQ(passOver([&] { list.add(u"A"_s, bad.fileName()); }), 481);
    EXPECT_EQ(passOver([&] { list.add(u"Info"_s, good); }), 35602);
    EXPECT_EQ(list.count(), 1);
}

TEST_F(Pictures, TheProgramsOwnIconIsTheSameInAllLists)
{
    // Screens come and go with lists of their own.
    const QString own = u":/qt-project.org/styles/commonstyle/images/up-32.png"_s;
    const auto iconOf = [](const QString &file, QSize size) {
        ImageList other(size);
        other.add({}, file);
        return other.icon(1).cacheKey();
    };
    EXPECT_EQ(iconOf(own, {16, 16}), iconOf(own, {16, 16}));
    EXPECT_NE(iconOf(own, {16, 16}), iconOf(own, {32, 32}));
    const QString file = svg(u"r.svg"_s, u"#ff0000"_s);
    EXPECT_NE(iconOf(file, {16, 16}), iconOf(file, {16, 16})) << "it may be another picture by now";
}

TEST_F(Pictures, AnIconIsMadeOnce)
{
    list.add(u"Stop"_s, svg(u"r.svg"_s, u"#ff0000"_s));
    EXPECT_EQ(list.icon(1).cacheKey(), list.icon(1).cacheKey());
    EXPECT_EQ(list.icon(1).availableSizes().size(), 3);
}
