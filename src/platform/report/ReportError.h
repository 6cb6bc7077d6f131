#pragma once

#include "runtime/RunTimeError.h"

#include <QString>

/// The errors of the report engine. Each has a Norwegian text; those of a report file name the
/// file, the line and the column.
namespace report {

namespace errors {
inline constexpr int kFileNotFound = 20507; ///< the report file is not there
inline constexpr int kReportFile = 20509;   ///< the report file cannot be read, or has a fault
inline constexpr int kFormula = 20515;      ///< a formula or the selection is broken
inline constexpr int kNoData = 20518;       ///< the selection leaves no rows
inline constexpr int kDataSource = 20536;   ///< the data source, or the query on it, failed
inline constexpr int kOutput = 20545;       ///< nothing to show or print, or the output failed
inline constexpr int kCancelled = 20546;    ///< the user wants no more of it; nothing to be told
} // namespace errors

[[noreturn]] void raise(int number, const QString &text);

} // namespace report
