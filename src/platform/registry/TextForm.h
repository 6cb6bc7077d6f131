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

/// A name as it may stand in a file's section head, before its "=", or as the name of a file:
/// "%" and two hexadecimal digits for "%", "/", "=", "[", "]", ";", "#", control characters, and
/// for white space, a full stop, "@" or a quotation mark where they stand first or last.
[[nodiscard]] QString escapedName(QStringView name);
/// The name behind an escaped one. A "%" without two digits stands for itself.
[[nodiscard]] QString unescapedName(QStringView text);

/// A value as it stands after its "=". REG_SZ is plain text with "\" doubled, in quotation marks
/// where it would be taken for something else. Text with control characters and every other type n
/// are bytes, hex(n):01,02.
[[nodiscard]] QString valueText(const StoredValue &value);
/// The value behind such a text; nothing when the digits of a type mark do not read. Older files
/// and hands also write expand:"text", multi:"a\0b", dword:0000000a and hex:01,02, and in text the
/// escapes \n \r \t \0 \" and \xHH. An unknown escape stands for itself, a character that the code
/// page lacks becomes '?'.
[[nodiscard]] std::optional<StoredValue> valueFromText(QStringView text);

} // namespace registry
