#pragma once

#include "output/ehf3/Ehf3.h"

#include <QByteArray>
#include <QString>

/// Writes the order as EHF 3.0 to `target`. The file comes to be whole or not at all, and nothing
/// of the order changes. Raises HostError when something is missing for it, with all that is, when
/// `target` must not be written (see checkTarget), or when it cannot be.
void writeEhf3(Ehf3Skriver &writer, int orderNumber, const QString &target, bool replace);
/// The same for an order of the active client, alone; raises HostError also when there is none.
void writeEhf3(int orderNumber, const QString &target, bool replace);

/// The document alone; raises HostError for the first of these reasons.
[[nodiscard]] QByteArray ehf3Document(int orderNumber);
