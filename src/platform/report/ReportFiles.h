#pragma once

#include "platform/report/ReportFile.h"

namespace report {

/// Reads a report file and the files that it includes. kFileNotFound when `path` is not there,
/// kReportFile with file, line and column for everything that is wrong in it. The one that was read
/// last is not parsed again as long as it and the files that it includes hold the same bytes.
[[nodiscard]] ReportFile readReportFile(const QString &path);

} // namespace report
