#pragma once

#include <QDateTime>
#include <QString>

/// What a column takes of a value that is longer or finer than itself.
namespace ado::dialect {

/// The first `width` characters, 0 for no limit. A character beyond the first plane of Unicode
/// counts as one, as in the databases, and is never split.
[[nodiscard]] QString cutText(QString text, int width);

/// The nearest whole second. Error 6 outside the years 100 to 9999.
[[nodiscard]] QDateTime wholeSeconds(const QDateTime &moment);

} // namespace ado::dialect
