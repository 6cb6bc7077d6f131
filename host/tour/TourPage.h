#pragma once

#include "host/guide/ScreenGuide.h"

#include <vector>

namespace screentour {

/// Writes "index.html" in the folder: the tour's pictures with their words, links to the documents
/// that it left there, and the rows that its invoices became in the ledger. Raises HostError when
/// it cannot be written or the ledger cannot be read.
void writeTourPage(const QString &folder, const std::vector<Guide::Picture> &pictures);

} // namespace screentour
