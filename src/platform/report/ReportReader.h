#pragma once

#include "platform/report/ReportFile.h"

#include <QByteArray>

#include <functional>

namespace report {

/// Parses the bytes of a report file. `path` is where they come from; `include` gives the bytes of
/// a file beside it by its plain name, and raises RunTimeError when there is none. kReportFile with
/// file, line and column for everything that is wrong in it.
[[nodiscard]] ReportFile readReport(const QByteArray &bytes, const QString &path,
                                    const std::function<QByteArray(const QString &name)> &include);

} // namespace report
