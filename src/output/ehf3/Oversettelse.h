#pragma once

#include <QByteArray>

namespace ehf3 {

struct Dokument;

/// The document as XML: UBL 2.1 as EHF Billing 3.0 has it, an invoice or a credit note. Which
/// element holds what stands in one table. Nothing is checked.
[[nodiscard]] QByteArray skrivXml(const Dokument &dokument);

} // namespace ehf3
