#include "platform/pictures/PictureFile.h"

#include "platform/pictures/Metafile.h"
#include "platform/pictures/PictureBytes.h"
#include "runtime/RunTimeError.h"
#include "support/FileSizeLimit.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

class PictureFiles : public ::testing::Test
{
protected:
    [[nodiscard]] QString path(const QString &name) const { return folder.filePath(name); }
    QString write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    [[nodiscard]] QByteArray content(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// A BMP file's bytes of a picture whose pixels all differ.
    QByteArray bitmap(int width, int height) const
    {
        QImage image(width, height, QImage::Format_RGB32);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x)
                image.setPixelColor(x, y, QColor(x % 256, y % 256, 7));
        }
        EXPECT_TRUE(image.save(path(u"tmp.bmp"_s), "BMP"));
        return content(u"tmp.bmp"_s);
    }
    /// A BMP file's header that promises a picture of that size, 24 bits a pixel.
    static QByteArray promise(qint32 width, qint32 height)
    {
        QByteArray header(54, '\0');
        header[0] = 'B';
        header[1] = 'M';
        const auto put = [&](int at, quint32 number) {
            qToLittleEndian(number, header.data() + at);
        };
        put(2, 54);
        put(10, 54);
        put(14, 40);
        put(18, quint32(width));
        put(22, quint32(height));
        put(26, 1 | 24 << 16);
        return header;
    }
    /// `count` bytes of a number, the lowest first.
    static QByteArray bytes(quint64 number, int count)
    {
        QByteArray result;
        for (int i = 0; i < count; ++i)
            result += char(number >> (8 * i));
        return result;
    }
    /// A BMP file of 20 by 10 pixels; `table` are its masks or colours.
    static QByteArray twentyByTen(int bits, int compression, const QByteArray &table,
                                  const QByteArray &pixels, int height = 10)
    {
        const quint64 start = 54 + quint64(table.size());
        return "BM" + bytes(start + quint64(pixels.size()), 4) + bytes(0, 4) + bytes(start, 4) +
               bytes(40, 4) + bytes(20, 4) + bytes(quint32(height), 4) + bytes(1, 2) +
               bytes(quint64(bits), 2) + bytes(quint64(compression), 4) +
               bytes(quint64(pixels.size()), 4) + bytes(0, 8) + bytes(compression == 1 ? 2 : 0, 4) +
               bytes(0, 4) + table + pixels;
    }
    static int refusal(const QString &file)
    {
        return passOver([&] { (void)loadPicture(file); });
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(PictureFiles, AnEmptyPathIsTheEmptyPicture)
{
    EXPECT_TRUE(loadPicture(QString()).isNull());
}

TEST_F(PictureFiles, ABitmapIsLoaded)
{
    const QImage picture = loadPicture(write(u"a.bmp"_s, bitmap(20, 10)));
    EXPECT_EQ(picture.size(), QSize(20, 10));
    EXPECT_EQ(picture.pixelColor(12, 8), QColor(12, 8, 7));
}

TEST_F(PictureFiles, ABitmapNamedDibIsLoadedWithItsFileHeaderAndWithout)
{
    const QByteArray whole = bitmap(20, 10);
    for (const QByteArray &bytes : {whole, whole.mid(14)}) {
        const QImage picture = loadPicture(write(u"a.dib"_s, bytes));
        EXPECT_EQ(picture.size(), QSize(20, 10));
        EXPECT_EQ(picture.pixelColor(12, 8), QColor(12, 8, 7));
    }
}

TEST_F(PictureFiles, ABitmapOfFewColoursIsLoadedWithItsTable)
{
    QImage image(9, 5, QImage::Format_Indexed8);
    image.setColorTable({qRgb(1, 2, 3), qRgb(200, 100, 50)});
    image.fill(1);
    ASSERT_TRUE(image.save(path(u"a.bmp"_s), "BMP"));
    const QByteArray whole = content(u"a.bmp"_s);
    for (const QByteArray &bytes : {whole, whole.mid(14)}) {
        const QImage picture = loadPicture(write(u"b.dib"_s, bytes));
        EXPECT_EQ(picture.size(), QSize(9, 5));
        EXPECT_EQ(picture.pixelColor(8, 4), QColor(200, 100, 50));
        EXPECT_EQ(refusal(write(u"b.dib"_s, bytes.chopped(1))), 481);
    }
}

TEST_F(PictureFiles, RareBitmapsAreLoadedAndRefusedWhenCut)
{
    const QByteArray masks16 = bytes(0xf800, 4) + bytes(0x07e0, 4) + bytes(0x001f, 4);
    const QByteArray masks32 = bytes(0xff0000, 4) + bytes(0x00ff00, 4) + bytes(0x0000ff, 4);
    const QByteArray colours = bytes(0x0000ff, 4) + bytes(0xff0000, 4); // blue and red
    const QByteArray runs = QByteArray("\x14\x01\x00\x00", 4).repeated(10) + bytes(0x0100, 2);
    const QByteArray core = bytes(12, 4) + bytes(20, 2) + bytes(10, 2) + bytes(1, 2) + bytes(24, 2);
    const QByteArray red = bytes(0xff0000, 3).repeated(20 * 10);
    for (const QByteArray &whole :
         {twentyByTen(16, 0, {}, bytes(0x7c00, 2).repeated(200)),
          twentyByTen(16, 3, masks16, bytes(0xf800, 2).repeated(200)),
          twentyByTen(32, 3, masks32, bytes(0xff0000, 4).repeated(200)),
          twentyByTen(8, 1, colours, runs), twentyByTen(24, 0, {}, red, -10),
          "BM" + bytes(626, 4) + bytes(0, 4) + bytes(26, 4) + core + red}) {
        const QImage picture = loadPicture(write(u"a.bmp"_s, whole));
        ASSERT_EQ(picture.size(), QSize(20, 10));
        EXPECT_GE(picture.pixelColor(19, 9).red(), 0xf8);
        EXPECT_EQ(picture.pixelColor(19, 9).blue(), 0);
        EXPECT_EQ(loadPicture(write(u"a.dib"_s, whole.mid(14))), picture);
        for (const QByteArray &cut : {whole.chopped(1), whole.chopped(20), whole.left(30)}) {
            EXPECT_EQ(refusal(write(u"kuttet.bmp"_s, cut)), 481) << cut.size();
            EXPECT_EQ(refusal(write(u"kuttet.dib"_s, cut.mid(14))), 481) << cut.size();
        }
    }
}

TEST_F(PictureFiles, ADrawingThatMayNameOtherFilesIsRefused)
{
    EXPECT_EQ(refusal(write(u"a.svg"_s, "<svg xmlns='http://www.w3.org/2000/svg' width='9' "
                                        "height='9'><rect width='9' height='9'/></svg>")),
              481);
}

TEST_F(PictureFiles, OfAMovingGifTheFirstPictureIsLoaded)
{
    const QByteArray frame = QByteArray::fromHex("2c0000000001000100");
    const QByteArray moving = kGif.chopped(1) + frame + QByteArray::fromHex("0002024c01003b");
    EXPECT_EQ(loadPicture(write(u"a.gif"_s, moving)).pixelColor(0, 0), QColor(Qt::red));
    QByteArray interlaced = kGif;
    interlaced[interlaced.indexOf(frame) + 9] = '\x40';
    EXPECT_EQ(loadPicture(write(u"b.gif"_s, interlaced)).pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(PictureFiles, AGifIsLoaded)
{
    const QImage picture = loadPicture(write(u"a.gif"_s, kGif));
    EXPECT_EQ(picture.size(), QSize(1, 1));
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(PictureFiles, AJpegIsLoaded)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(QColor(0, 120, 200));
    ASSERT_TRUE(image.save(path(u"a.jpg"_s), "JPG", 95));
    const QImage picture = loadPicture(path(u"a.jpg"_s));
    EXPECT_EQ(picture.size(), QSize(40, 30));
    EXPECT_NEAR(picture.pixelColor(20, 15).blue(), 200, 6);
}

TEST_F(PictureFiles, AMetafileIsDrawn)
{
    const QImage picture = loadPicture(write(u"a.wmf"_s, kMetafile));
    EXPECT_EQ(picture.width(), 1200);
    EXPECT_NEAR(picture.height(), 1200 * 760 / 2370, 8);
    savePicture(picture, path(u"ut.bmp"_s));
    const QImage onPaper = loadPicture(path(u"ut.bmp"_s));
    EXPECT_EQ(onPaper.pixelColor(300, 200), QColor(Qt::red));
    EXPECT_EQ(onPaper.pixelColor(900, 200), QColor(Qt::blue));
}

TEST_F(PictureFiles, AMetafileWithoutASizeIsDrawn)
{
    const QImage picture = loadPicture(write(u"a.wmf"_s, kMetafile.mid(22)));
    EXPECT_EQ(std::max(picture.width(), picture.height()), 1200);
}

TEST_F(PictureFiles, AMetafileThatCannotBeDrawnIsRefused)
{
    for (const qsizetype length : {qsizetype{6}, qsizetype{22}, qsizetype{40}, qsizetype{80}})
        EXPECT_EQ(refusal(write(u"kuttet.wmf"_s, kMetafile.left(length))), 481) << length;
    QByteArray odd = kMetafile;
    odd.replace(40, 60, QByteArray(60, '\xff'));
    EXPECT_EQ(refusal(write(u"rar.wmf"_s, odd)), 481);
}

TEST_F(PictureFiles, WithoutAConverterAMetafileIsRefused)
{
    const QString file = write(u"a.wmf"_s, kMetafile);
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", folder.path().toUtf8());
    EXPECT_EQ(refusal(file), 481);
    // One that dies is no converter either.
    const QString dying = write(u"wmf2gd"_s, "#!/bin/sh\nkill -SEGV $$\n");
    ::chmod(dying.toUtf8().constData(), 0700);
    EXPECT_EQ(refusal(file), 481);
    qputenv("PATH", before);
}

TEST_F(PictureFiles, AMetafileThatIsNeverDoneIsGivenUp)
{
    const QString file = write(u"a.wmf"_s, kMetafile);
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", folder.path().toUtf8());
    const QString endless = write(u"wmf2gd"_s, "#!/bin/sh\nwhile :; do :; done\n");
    ::chmod(endless.toUtf8().constData(), 0700);
    EXPECT_TRUE(drawMetafile(file, 50).isNull());
    qputenv("PATH", before);
    EXPECT_FALSE(drawMetafile(file).isNull());
}

TEST_F(PictureFiles, TheContentDecidesAndNotTheName)
{
    EXPECT_EQ(loadPicture(write(u"a.jpg"_s, kGif)).size(), QSize(1, 1));
    EXPECT_EQ(loadPicture(write(u"a.dib"_s, kGif)).size(), QSize(1, 1));
    EXPECT_EQ(loadPicture(write(u"uten-navn"_s, bitmap(2, 3))).size(), QSize(2, 3));
}

TEST_F(PictureFiles, WhatIsNoFileIsNotFound)
{
    EXPECT_EQ(refusal(path(u"borte.bmp"_s)), 53);
    EXPECT_EQ(refusal(folder.path()), 53);
    // Nobody writes into this one; opening it would wait for ever.
    ASSERT_EQ(::mkfifo(path(u"ror.bmp"_s).toUtf8().constData(), 0600), 0);
    EXPECT_EQ(refusal(path(u"ror.bmp"_s)), 53);
}

TEST_F(PictureFiles, WhatIsNoPictureIsRefused)
{
    EXPECT_EQ(refusal(write(u"tom.bmp"_s, {})), 481);
    EXPECT_EQ(refusal(write(u"brev.jpg"_s, "Kjære kunde, vedlagt følger")), 481);
    EXPECT_EQ(refusal(write(u"null.dib"_s, QByteArray(5000, '\0'))), 481);
    EXPECT_EQ(refusal(write(u"bm.bmp"_s, "BM")), 481);
}

TEST_F(PictureFiles, BytesAreJudgedAsTheirFile)
{
    EXPECT_EQ(pictureFromBytes(bitmap(2, 3)).size(), QSize(2, 3));
    EXPECT_EQ(pictureFromBytes(bitmap(2, 3).mid(14)).size(), QSize(2, 3)); // a DIB
    EXPECT_EQ(pictureFromBytes(kGif).size(), QSize(1, 1));
    EXPECT_EQ(pictureFromBytes(kMetafile).width(), 1200);
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("BM"), bitmap(60, 60).chopped(1), kMetafile.first(40),
          promise(20000, 10000), QByteArray("<svg xmlns='http://www.w3.org/2000/svg'/>")})
        EXPECT_TRUE(pictureFromBytes(bytes).isNull()) << bytes.toStdString();
}

TEST_F(PictureFiles, ACutPictureIsRefused)
{
    const QByteArray whole = bitmap(60, 60);
    for (const qsizetype length :
         {qsizetype{20}, qsizetype{53}, qsizetype{54}, whole.size() / 2, whole.size() - 1})
        EXPECT_EQ(refusal(write(u"kuttet.bmp"_s, whole.left(length))), 481) << length;
    for (const qsizetype length : {qsizetype{39}, qsizetype{40}, whole.size() - 15})
        EXPECT_EQ(refusal(write(u"kuttet.dib"_s, whole.mid(14, length))), 481) << length;
    for (qsizetype length = 1; length < 25; ++length)
        EXPECT_EQ(refusal(write(u"kuttet.gif"_s, kGif.left(length))), 481) << length;
}

TEST_F(PictureFiles, AHugePictureIsRefusedBeforeItTakesMemory)
{
    rusage before{};
    ::getrusage(RUSAGE_SELF, &before);
    // 200 million pixels that the file does hold, as a file with a hole.
    QFile whole(write(u"stor.bmp"_s, promise(20000, 10000)));
    ASSERT_TRUE(whole.open(QIODevice::ReadWrite));
    ASSERT_TRUE(whole.resize(54 + 20000ll * 10000 * 3));
    whole.close();
    EXPECT_EQ(refusal(whole.fileName()), 481);
    EXPECT_EQ(refusal(write(u"lovet.bmp"_s, promise(2000000000, 2000000000))), 481);
    EXPECT_EQ(refusal(write(u"lovet.dib"_s, promise(2000000000, 2000000000).mid(14))), 481);
    EXPECT_EQ(refusal(write(u"svg.bmp"_s, "<svg xmlns='http://www.w3.org/2000/svg' width='90000' "
                                          "height='90000'/>")),
              481);
    rusage after{};
    ::getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 64 * 1024); // kilobytes
}

TEST_F(PictureFiles, APictureOfAFewMillionPixelsIsLoaded)
{
    QImage image(2000, 1500, QImage::Format_RGB32);
    image.fill(Qt::cyan);
    savePicture(image, path(u"foto.bmp"_s));
    EXPECT_EQ(loadPicture(path(u"foto.bmp"_s)).size(), QSize(2000, 1500));
}

TEST_F(PictureFiles, IsSavedAsABitmapOfTwentyFourBits)
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(QColor(1, 2, 3));
    savePicture(image, path(u"ut.bin"_s));
    const QByteArray bytes = content(u"ut.bin"_s);
    EXPECT_EQ(bytes.size(), 54 + 2 * 12); // a row is filled up to four bytes
    EXPECT_TRUE(bytes.startsWith("BM"));
    EXPECT_EQ(int(bytes[28]), 24);
    EXPECT_EQ(bytes.mid(54, 3), QByteArray("\x03\x02\x01"));
}

TEST_F(PictureFiles, WhateverWasLoadedIsSavedInTheSameForm)
{
    QImage fewColours(1, 1, QImage::Format_Indexed8);
    fewColours.setColorTable({qRgb(1, 2, 3)});
    fewColours.fill(0);
    ASSERT_TRUE(fewColours.save(path(u"8.bmp"_s), "BMP"));
    ASSERT_LT(int(content(u"8.bmp"_s)[28]), 24);
    for (const QByteArray &bytes : {kGif, bitmap(1, 1), content(u"8.bmp"_s)}) {
        savePicture(loadPicture(write(u"inn"_s, bytes)), path(u"ut.bin"_s));
        EXPECT_EQ(content(u"ut.bin"_s).size(), 54 + 4);
        EXPECT_EQ(int(content(u"ut.bin"_s)[28]), 24);
    }
}

TEST_F(PictureFiles, TransparencyIsSavedAsWhite)
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, QColor(0, 0, 0, 0));
    image.setPixelColor(1, 0, QColor(10, 20, 30));
    savePicture(image, path(u"ut.bmp"_s));
    EXPECT_EQ(loadPicture(path(u"ut.bmp"_s)).pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(loadPicture(path(u"ut.bmp"_s)).pixelColor(1, 0), QColor(10, 20, 30));
}

TEST_F(PictureFiles, ATransparentPictureNamedForADenseScreenIsSavedWhole)
{
    QImage image(4, 2, QImage::Format_ARGB32);
    image.fill(Qt::blue);
    image.setPixelColor(3, 1, QColor(10, 20, 30));
    ASSERT_TRUE(image.save(path(u"logo@2x.png"_s), "PNG"));
    savePicture(loadPicture(path(u"logo@2x.png"_s)), path(u"ut.bmp"_s));
    const QImage saved = loadPicture(path(u"ut.bmp"_s));
    EXPECT_EQ(saved.size(), QSize(4, 2));
    EXPECT_EQ(saved.pixelColor(3, 1), QColor(10, 20, 30));
}

TEST_F(PictureFiles, SavingOverwrites)
{
    write(u"ut.bmp"_s, QByteArray(100000, 'x'));
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(Qt::black);
    savePicture(image, path(u"ut.bmp"_s));
    EXPECT_EQ(content(u"ut.bmp"_s).size(), 58);
}

TEST_F(PictureFiles, SavingWithoutRoomIsAnError)
{
    QImage image(60, 40, QImage::Format_RGB32);
    image.fill(Qt::red);
    savePicture(image, path(u"ut.bmp"_s));
    const qsizetype whole = content(u"ut.bmp"_s).size();
    for (qsizetype room = 0; room < whole; room += 333) {
        const FileSizeLimit limit(static_cast<rlim_t>(room));
        EXPECT_EQ(passOver([&] { savePicture(image, path(u"ut.bmp"_s)); }), 75) << room;
    }
    savePicture(image, path(u"ut.bmp"_s));
    EXPECT_EQ(content(u"ut.bmp"_s).size(), whole);
}

TEST_F(PictureFiles, WhatCannotBeSavedIsAnError)
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(Qt::black);
    EXPECT_EQ(passOver([&] { savePicture(QImage(), path(u"ut.bmp"_s)); }), 380);
    EXPECT_FALSE(QFile::exists(path(u"ut.bmp"_s)));
    EXPECT_EQ(passOver([&] { savePicture(image, path(u"borte/ut.bmp"_s)); }), 75);
    EXPECT_EQ(passOver([&] { savePicture(image, folder.path()); }), 75);
}
