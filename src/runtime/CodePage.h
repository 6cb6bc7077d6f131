#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

/// The system's 8-bit code page, Windows-1252 (mapping table: the Unicode consortium's CP1252).
namespace codepage {

/// The replacement code of a character that the code page lacks ('?').
inline constexpr char kReplacement = '?';

/// The code of one UTF-16 unit, or kReplacement. A half of a surrogate pair is a character that the
/// code page lacks.
[[nodiscard]] char fromUnicode(QChar character);

/// One byte for each UTF-16 unit of `text`.
[[nodiscard]] QByteArray encode(QStringView text);

/// One character for each byte; the five codes that the page leaves open become U+FFFD.
[[nodiscard]] QString decode(QByteArrayView bytes);

} // namespace codepage
