#include "platform/pictures/PictureFile.h"

#include "platform/pictures/Metafile.h"
#include "runtime/RunTimeError.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QTemporaryFile>
#include <QtEndian>

#include <algorithm>

namespace {

constexpr int kInvalidPropertyValue = 380;
constexpr int kInvalidPicture = 481;

/// What `reader` finds at its place; a null image where that is no picture or too large a one.
QImage readBounded(QImageReader &reader)
{
    // A drawing may name other files and takes any time to draw.
    if (reader.format().startsWith("svg"))
        return {};
    // A bitmap whose rows go from the top down has a negative height.
    const qint64 width = reader.size().width();
    const qint64 height = qAbs(qint64{reader.size().height()});
    if (width <= 0 || height == 0 || height > kMostPixels || width * height > kMostPixels)
        return {};
    reader.setAutoTransform(true);
    return reader.read();
}

constexpr qsizetype kFileHeader = 14; // the letters BM, the file's size, the place of the rows
constexpr qsizetype kCoreHeader = 12; // the oldest form
constexpr qsizetype kInfoHeader = 40;
constexpr int kRunLength8 = 1; // compressions
constexpr int kRunLength4 = 2;
constexpr int kBitFields = 3;

/// Whether the rows of a bitmap, whose info header stands at `info`, go beyond the end of the file.
/// Qt's reader does not mind and leaves the rest of the picture to chance. In one piece, in the
/// order of the header's fields, each of which says where the next one lies.
bool isCutBitmap(QIODevice &file, qsizetype info)
{
    const QByteArray header = file.peek(info + kInfoHeader);
    if (header.size() < info + kCoreHeader)
        return true;
    const auto at = [&](qsizetype place) {
        return qFromLittleEndian<qint32>(header.constData() + info + place);
    };
    const auto shortAt = [&](qsizetype place) {
        return qFromLittleEndian<quint16>(header.constData() + info + place);
    };
    const bool isCore = at(0) == kCoreHeader;
    if (!isCore && header.size() < info + kInfoHeader)
        return true;
    if (!isCore && at(0) < kInfoHeader)
        return false;
    const qint64 width = isCore ? shortAt(4) : qAbs(qint64{at(4)});
    const qint64 height = isCore ? shortAt(6) : qAbs(qint64{at(8)});
    const qint64 bits = shortAt(isCore ? 10 : 14);
    const int compression = isCore ? 0 : at(16);
    if (width * height > kMostPixels)
        return true; // no file here holds it, and its size in bytes may be beyond counting

    qint64 rows = at(0);
    if (info == kFileHeader)
        rows = qFromLittleEndian<quint32>(header.constData() + 10);
    else if (bits <= 8)
        rows += isCore ? 3ll << bits : 4 * (at(32) > 0 ? qint64{at(32)} : 1ll << bits);
    else if (compression == kBitFields && at(0) == kInfoHeader)
        rows += 12;
    const bool isRunLength = compression == kRunLength8 || compression == kRunLength4;
    const qint64 bytes = isRunLength ? std::max(at(20), 0) : (width * bits + 31) / 32 * 4 * height;
    return rows + bytes > file.size();
}

/// The picture in `file`, which is no metafile; a null image where there is none.
QImage readRaster(QIODevice &file)
{
    QImage picture;
    if (!file.peek(2).startsWith("BM") || !isCutBitmap(file, kFileHeader)) {
        QImageReader reader(&file);
        reader.setDecideFormatFromContent(true);
        picture = readBounded(reader);
    }
    if (picture.isNull() && file.seek(0) && !isCutBitmap(file, 0)) {
        QImageReader reader(&file, "dib");
        reader.setAutoDetectImageFormat(false);
        picture = readBounded(reader);
    }
    return picture;
}

} // namespace

QImage loadPicture(const QString &systemPath)
{
    if (systemPath.isEmpty())
        return {};
    QFile file(systemPath);
    // Not a folder, and nothing that would be waited for.
    if (!QFileInfo(systemPath).isFile() || !file.open(QIODevice::ReadOnly))
        throw RunTimeError(errors::kFileNotFound);
    QImage picture =
        isMetafile(file.peek(kFileHeader)) ? drawMetafile(systemPath) : readRaster(file);
    if (picture.isNull())
        throw RunTimeError(kInvalidPicture);
    return picture;
}

QImage pictureFromBytes(const QByteArray &bytes)
{
    if (isMetafile(bytes)) {
        QTemporaryFile file; // the converter reads files alone
        const bool written = file.open() && file.write(bytes) == bytes.size() && file.flush();
        return written ? drawMetafile(file.fileName()) : QImage();
    }
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return readRaster(buffer);
}

void savePicture(const QImage &picture, const QString &systemPath)
{
    using namespace Qt::StringLiterals;
    if (picture.isNull())
        throw RunTimeError(kInvalidPropertyValue, u"Ugyldig egenskapsverdi"_s);
    QImage onPaper = picture.convertToFormat(QImage::Format_RGB32);
    // A name that ends with "@2x" makes Qt's reader take the pixels for half ones.
    onPaper.setDevicePixelRatio(1);
    if (picture.hasAlphaChannel()) {
        onPaper.fill(Qt::white);
        QPainter(&onPaper).drawImage(onPaper.rect(), picture);
    }
    QFile file(systemPath);
    // Without the flush nobody would notice that the end of it found no room on the disk.
    if (!file.open(QIODevice::WriteOnly) || !onPaper.save(&file, "BMP") || !file.flush())
        throw RunTimeError(errors::kPathAccess);
}
