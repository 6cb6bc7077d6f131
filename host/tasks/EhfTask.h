#pragma once

#include <QByteArray>
#include <QString>

/// Writes the EHF document of order `orderNumber` of the active client to `target` through the
/// module's own writers. The file comes to be whole or not at all: it is composed beside its place
/// and moved there at the end. Raises HostError when there is no such order, when its document
/// cannot be composed, when `target` exists and `replace` is false, or when the file cannot be
/// written.
void writeEhf(int orderNumber, const QString &target, bool replace);

/// The document alone; raises HostError for the first two of these reasons.
[[nodiscard]] QByteArray ehfDocument(int orderNumber);
