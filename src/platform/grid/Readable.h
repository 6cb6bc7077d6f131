#pragma once

#include <QColor>

/// How far two colours stand apart to the eye: 1 for the same one, 21 for black and white.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

/// The colour for a text on that ground: `wished` where it can be read there, else black or white.
[[nodiscard]] QColor readable(const QColor &wished, const QColor &ground);
