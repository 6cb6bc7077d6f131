#pragma once

#include <QByteArray>
#include <QDateTime>

#include <optional>
#include <string_view>

/// Dates as they lie in a SQLite file: the text "yyyy-MM-dd", with " HH:mm:ss" behind it when there
/// is a time of day. It sorts as text and every tool reads it. No time zone is meant.
namespace ado {

/// Parts of a second are cut off.
[[nodiscard]] QByteArray storedDate(const QDateTime &date);

/// Milliseconds since the start of 1970; none when `text` is no such date. "T" may part the time
/// from the day.
[[nodiscard]] std::optional<qint64> millisecondsOf(std::string_view text);

} // namespace ado
