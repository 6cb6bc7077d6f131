#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

namespace registry {

/// A value as the registry keeps it.
struct StoredValue
{
    quint32 type = 0;
    QByteArray data; ///< text with its closing zero bytes

    friend bool operator==(const StoredValue &, const StoredValue &) = default;
};

/// The characters of a name given as bytes of the code page. The five bytes that the page leaves
/// open become the characters U+0081 and so on, so that no two names fall together.
[[nodiscard]] QString nameFromBytes(QByteArrayView bytes);

/// A name as it may stand in a file's section head, before its "=", or as the name of a file:
/// "%" and two hexadecimal digits for "%", "/", "=", "[", "]", ";", "#", control characters, and
/// for white space, a full stop or "@" where they stand first or last. The empty name is "%00".
[[nodiscard]] QString escapedName(QStringView name);
/// The name behind an escaped one. A "%" without two digits stands for itself.
[[nodiscard]] QString unescapedName(QStringView text);

/// A value as it stands after its "=". REG_SZ is plain text with the escapes \\ \n \r \t \0 and
/// \xHH, in quotation marks where blanks at its ends, an empty text or a type mark would mislead;
/// the others carry a mark: expand:"text", multi:"a\0b", dword:0000000a, hex:01,02 (REG_BINARY) and
/// hex(n):01,02 for any other type n or for data that does not fit its type.
[[nodiscard]] QString valueText(const StoredValue &value);
/// The value behind such a text; nothing when the digits of a type mark do not read. An unknown
/// escape stands for itself, a character that the code page lacks becomes '?'.
[[nodiscard]] std::optional<StoredValue> valueFromText(QStringView text);

} // namespace registry
