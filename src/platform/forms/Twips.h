#pragma once

#include <QRect>
#include <QtMath>

/// Screen lengths of the module are twips, 1440 to the inch. The logical resolution is always
/// 96 dots to the inch, so 15 twips are one device-independent pixel on every screen.
inline constexpr int kTwipsPerPixel = 15;

/// Rounded to the nearest pixel.
[[nodiscard]] inline int twipsToPixels(int twips)
{
    return qRound(double(twips) / kTwipsPerPixel);
}

[[nodiscard]] constexpr int pixelsToTwips(int pixels)
{
    return pixels * kTwipsPerPixel;
}

/// The pixel rectangle of a place given in twips, for QWidget::setGeometry. The four values are
/// rounded one by one, so that a control of a given width is equally wide wherever it stands.
[[nodiscard]] inline QRect twipsToPixels(int left, int top, int width, int height)
{
    return {twipsToPixels(left), twipsToPixels(top), twipsToPixels(width), twipsToPixels(height)};
}
