#pragma once

#include <QString>

#include <string_view>

namespace ehf3 {

/// The code of a product's unit by UN/ECE recommendations 20 and 21, whatever its case and its
/// points; "C62", one, for a unit that has none here.
[[nodiscard]] std::string_view enhetskode(const QString &enhet);

} // namespace ehf3
