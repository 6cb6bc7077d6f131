#pragma once

#include "host/tasks/Invoices.h"

#include <QByteArray>
#include <QString>

/// Writes the order as EHF 3.0 to `target`. The file comes to be whole or not at all, and nothing
/// of the order changes. Raises HostError when something is missing for it, with all that is, when
/// `target` must not be written (see checkTarget), or when it cannot be.
void writeEhf3(const Invoice &invoice, const QString &target, bool replace);

/// The document alone; raises HostError for the first of these reasons.
[[nodiscard]] QByteArray ehf3Document(int orderNumber);
