#pragma once

#include "platform/report/ReportFile.h"

#include <QByteArray>

#include <functional>

namespace report {

/// Reads a report file and the files that it includes. kFileNotFound when `path` is not there,
/// kReportFile with file, line and column for everything that is wrong in it.
[[nodiscard]] ReportFile readReportFile(const QString &path);

/// As readReportFile, with the file's bytes given. `include` gives the bytes of a file beside it by
/// its plain name, and raises RunTimeError when there is none.
[[nodiscard]] ReportFile readReport(const QByteArray &bytes, const QString &path,
                                    const std::function<QByteArray(const QString &name)> &include);

} // namespace report
