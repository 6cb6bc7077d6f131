#pragma once

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

// Pictures as their files' bytes.

/// A green picture of that size in pixels, in a format that Qt writes.
inline QByteArray greenPicture(const QSize &size, const char *format)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(image.save(&buffer, format));
    return bytes;
}

// Those that follow are in formats that Qt does not write.

/// A drawing of 2370 by 760 units, red on the left and blue on the right, as a metafile.
inline const QByteArray kMetafile = QByteArray::fromHex(
    "d7cdc69a0000000000004209f802a005000000000b59"     // its size, 1440 units to the inch
    "010009000003460000000300080000000000"             // the header proper
    "050000000b0200000000050000000c02f8024209"         // the units of the drawing
    "07000000fc020000ff0000000000040000002d010000"     // a red brush
    "08000000fa0205000000000000000000040000002d010100" // no pen
    "070000001b04f802a10400000000"                     // the left half
    "07000000fc0200000000ff000000040000002d010200"     // a blue brush
    "070000001b04f80242090000a104030000000000");       // the right half, and the end

/// One pixel, red, as a GIF file.
inline const QByteArray kGif = QByteArray::fromHex("47494638396101000100800000ff0000000000"
                                                   "2c00000000010001000002024401003b");
