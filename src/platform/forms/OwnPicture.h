#pragma once

#include <QIcon>
#include <QSize>
#include <QString>

/// A picture of the program's own, a resource, as an icon of `size` in device-independent pixels,
/// for pixel ratios up to 3. A picture of other proportions is centred. It is drawn when it is
/// shown, in the pixels that it takes there, so an SVG file is crisp at any scale; any other should
/// hold three pixels to the device-independent one. The same picture is the same icon each time:
/// what is drawn of it is kept with the icon.
[[nodiscard]] QIcon ownPicture(const QString &file, QSize size);
