#pragma once

#include "host/tasks/Invoices.h"

#include <QString>

/// Writes the pages that the print dialog would print of the order, on the form of the settings, as
/// PDF: an original as long as the order is not issued, a copy from then on. The file comes to be
/// whole or not at all, and nothing of the order changes. Raises HostError when the pages cannot be
/// made, when `target` must not be written (see checkTarget), or when it cannot be.
void writeInvoicePdf(const Invoice &invoice, const QString &target, bool replace);
