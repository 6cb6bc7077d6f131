#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

/// Pictures that are drawings (WMF), which no reader of Qt's knows.

/// Whether a file that begins with these bytes, 6 at least, is a metafile, with the header that
/// gives it a size or without.
[[nodiscard]] bool isMetafile(const QByteArray &beginning);

/// Draws the metafile, at 1200 pixels on its longer side. It is drawn by the converter that comes
/// with libwmf, in a process of its own with bounded memory and time: what an odd file does to it
/// does not touch this program. What the drawing leaves free of its own frame is not kept. A null
/// image where it cannot be drawn within `patience` milliseconds or there is no converter.
[[nodiscard]] QImage drawMetafile(const QString &systemPath, int patience = 10'000);
