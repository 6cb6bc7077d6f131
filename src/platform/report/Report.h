#pragma once

#include "platform/report/Checkpoint.h"
#include "platform/report/Document.h"

#include <QString>

#include <vector>

namespace report {

/// What a report is made from.
struct Request
{
    QString file;                  ///< path of the report file, in the system's own form
    QString connectionString;      ///< of the data source
    QString selection;             ///< in the selection language; empty for all rows
    std::vector<QString> formulas; ///< "Name=expression", in place of the file's own
};

/// Reads the file, asks the data source for the selected rows, and lays out the pages, past the
/// checkpoint. Raises a number of report::errors.
[[nodiscard]] Document makeReport(const Request &request, const Checkpoint &checkpoint = {});

} // namespace report
