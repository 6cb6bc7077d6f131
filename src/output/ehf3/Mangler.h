#pragma once

#include <QStringList>

namespace ehf3 {

struct Dokument;

/// Why the document must not be written, all reasons at once: what the format demands and the data
/// lack, with the place where it is filled in, and sums that do not hold. Norwegian lines without a
/// point at their ends; none for a document that keeps all rules.
[[nodiscard]] QStringList manglerI(const Dokument &dokument);

} // namespace ehf3
