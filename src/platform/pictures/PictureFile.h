#pragma once

#include <QImage>
#include <QString>

/// The most pixels that a picture may have to be loaded. At four bytes each they stay within the
/// memory that Qt's readers allow a picture.
inline constexpr qint64 kMostPixels = 32'000'000;

/// Loads the picture in a file, whatever its name says of its format: BMP, a bitmap without file
/// header (DIB), GIF (the first picture), JPEG, WMF (Metafile.h) and what else Qt reads, but for
/// SVG. An empty path gives the empty picture, a null image. Error 53 when there is no such file,
/// 481 when what is in it cannot be read as a picture or has more than kMostPixels, which is judged
/// before any memory is taken for them.
[[nodiscard]] QImage loadPicture(const QString &systemPath);

/// The same of a file's bytes in memory; a null image where loadPicture would raise error 481.
[[nodiscard]] QImage pictureFromBytes(const QByteArray &bytes);

/// Writes the picture as a BMP file of 24 bits a pixel, over a file of that name; what is
/// transparent becomes white. Error 380 for the empty picture, 75 when the file cannot be written.
void savePicture(const QImage &picture, const QString &systemPath);
