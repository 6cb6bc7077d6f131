#pragma once

#include "platform/report/Checkpoint.h"
#include "platform/report/Document.h"

namespace report {

/// Writes all pages to a PDF file with the report's own paper size, in Norwegian, with title and
/// author, its letters as text and its fonts embedded as far as they are used. It has no tagged
/// structure and is no PDF/A, which the toolkit cannot write. The checkpoint is passed before each
/// page, and again for each when the file is completed. A file of that name is replaced, and only
/// once the new one is whole. `path` has the system's own form. kOutput when the file cannot be
/// written.
void writePdf(const Document &document, const QString &path, const Checkpoint &checkpoint = {});

} // namespace report
