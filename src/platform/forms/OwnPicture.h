#pragma once

#include <QIcon>
#include <QSize>
#include <QString>

/// A picture of the program's own, a resource, as an icon of `size` in device-independent pixels
/// that holds it for pixel ratios 1, 2 and 3. A picture of other proportions is centred. An SVG
/// file is drawn for each ratio, so it is crisp at any scale; any other should hold three pixels to
/// the device-independent one. The same picture is the same icon each time: what is drawn of it for
/// a button is kept by Qt for each icon.
[[nodiscard]] QIcon ownPicture(const QString &file, QSize size);
