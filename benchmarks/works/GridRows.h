#pragma once

#include <QString>

namespace bench {

/// A grid's rows as the order overview fills them.
constexpr int kGridCols = 8;
constexpr int kAmountCol = 6;

/// The text of a cell; both count from 1.
[[nodiscard]] QString gridCell(int row, int col);
/// A whole row, its cells separated by tabs.
[[nodiscard]] QString gridRow(int row);

} // namespace bench
