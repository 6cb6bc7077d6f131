#pragma once

#include <QFont>

namespace report {

/// Text is measured and drawn at one fixed size of unit, without hinting, so that a line takes the
/// same place on the screen, on every printer and in a PDF file.
/// The toolkit keeps the widths of letters up to some 300 units high, which are twelve points here;
/// those of larger ones it takes from the font file again for every text.
inline constexpr double kUnitsPerPoint = 24;
inline constexpr double kMmPerPoint = 25.4 / 72;
inline constexpr double kUnitsPerMm = kUnitsPerPoint / kMmPerPoint;

/// The font of a style, whose size is in points, in units.
[[nodiscard]] QFont fontInUnits(const QFont &font);

/// From one base line to the next, for a font in units. The gap between lines is read from the font
/// file: the toolkit's own measure holds it in some versions (6.4) and leaves it out in others
/// (6.8).
[[nodiscard]] double lineHeightInUnits(const QFont &font);

} // namespace report
