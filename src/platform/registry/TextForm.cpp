#include "platform/registry/TextForm.h"

#include "platform/registry/Registry.h"
#include "runtime/CodePage.h"

using namespace Qt::StringLiterals;

namespace registry {

namespace {

constexpr QStringView kAlwaysEscaped = u"%/=[];#";
constexpr auto kHexDigits = "0123456789abcdef";

bool isControl(QChar c)
{
    return c.unicode() < 0x20 || (c.unicode() >= 0x7f && c.unicode() < 0xa0);
}

void appendHex(QString &text, uchar byte)
{
    text += QLatin1Char(kHexDigits[byte >> 4]);
    text += QLatin1Char(kHexDigits[byte & 0xf]);
}

/// The number of exactly `digits` hexadecimal digits at `at`, or nothing.
std::optional<uint> hexAt(QStringView text, qsizetype at, int digits)
{
    if (at + digits > text.size())
        return std::nullopt;
    uint number = 0;
    for (QChar c : text.sliced(at, digits)) {
        const ushort u = c.unicode();
        const bool isDigit = u >= '0' && u <= '9';
        const ushort letter = u | 0x20;
        if (!isDigit && (letter < 'a' || letter > 'f'))
            return std::nullopt;
        number = number * 16 + uint(isDigit ? u - '0' : letter - 'a' + 10);
    }
    return number;
}

/// The zero bytes that close text of this type; 0 for a type that is no text.
int closingZeros(quint32 type)
{
    switch (type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
        return 1;
    case REG_MULTI_SZ:
        return 2;
    default:
        return 0;
    }
}

QString escapedText(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size());
    const QString characters = codepage::decode(bytes);
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const QChar c = characters[i];
        if (c == u'\\')
            text += "\\\\"_L1;
        else if (c == u'\n')
            text += "\\n"_L1;
        else if (c == u'\r')
            text += "\\r"_L1;
        else if (c == u'\t')
            text += "\\t"_L1;
        else if (c == QChar(0))
            text += "\\0"_L1;
        else if (isControl(c) || c == QChar::ReplacementCharacter) {
            text += "\\x"_L1;
            appendHex(text, uchar(bytes[i]));
        } else
            text += c;
    }
    return text;
}

QByteArray unescapedText(QStringView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar(u' ');
        if (text[i] != u'\\') {
            bytes += codepage::fromUnicode(text[i]);
            continue;
        }
        ++i;
        if (next == u'\\' || next == u'"')
            bytes += char(next.unicode());
        else if (next == u'n')
            bytes += '\n';
        else if (next == u'r')
            bytes += '\r';
        else if (next == u't')
            bytes += '\t';
        else if (next == u'0')
            bytes += '\0';
        else if (const auto code = hexAt(text, i + 1, 2); next == u'x' && code) {
            bytes += char(*code);
            i += 2;
        } else {
            bytes += '\\';
            --i; // what follows is text of its own
        }
    }
    return bytes;
}

bool isQuoted(QStringView text)
{
    return text.size() >= 2 && text.front() == u'"' && text.back() == u'"';
}

QString quoted(QString text)
{
    return u'"' + text.replace(u'"', "\\\""_L1) + u'"';
}

constexpr QLatin1StringView kDword("dword:");
constexpr QLatin1StringView kExpand("expand:");
constexpr QLatin1StringView kMulti("multi:");
constexpr QLatin1StringView kBinary("hex:");
constexpr QLatin1StringView kTypedBytes("hex(");

bool startsWithMark(QStringView text)
{
    for (const auto mark : {kDword, kExpand, kMulti, kBinary, kTypedBytes}) {
        if (text.startsWith(mark))
            return true;
    }
    return false;
}

QString hexText(const StoredValue &value)
{
    QString text = value.type == REG_BINARY ? QString(kBinary)
                                            : kTypedBytes + QString::number(value.type) + "):"_L1;
    for (qsizetype i = 0; i < value.data.size(); ++i) {
        if (i > 0)
            text += u',';
        appendHex(text, uchar(value.data[i]));
    }
    return text;
}

std::optional<QByteArray> bytesFromHex(QStringView text)
{
    QByteArray bytes;
    for (qsizetype at = 0; at < text.size(); at += 3) {
        const auto byte = hexAt(text, at, 2);
        const bool isLast = at + 2 == text.size();
        if (!byte || (!isLast && (text[at + 2] != u',' || at + 3 == text.size())))
            return std::nullopt;
        bytes += char(*byte);
    }
    return bytes;
}

StoredValue closedText(quint32 type, QStringView text)
{
    const QStringView content = isQuoted(text) ? text.sliced(1, text.size() - 2) : text;
    return {type, unescapedText(content) + QByteArray(closingZeros(type), '\0')};
}

} // namespace

QString nameFromBytes(QByteArrayView bytes)
{
    QString name = codepage::decode(bytes);
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (name[i] == QChar::ReplacementCharacter)
            name[i] = QChar(ushort(uchar(bytes[i])));
    }
    return name;
}

QString escapedName(QStringView name)
{
    if (name.isEmpty())
        return u"%00"_s;
    QString text;
    text.reserve(name.size());
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar c = name[i];
        const bool atEnd = i == 0 || i + 1 == name.size();
        if (kAlwaysEscaped.contains(c) || isControl(c) ||
            (atEnd && (c.isSpace() || c == u'.' || c == u'@' || c == u'"'))) {
            text += u'%';
            appendHex(text, uchar(c.unicode()));
        } else {
            text += c;
        }
    }
    return text;
}

QString unescapedName(QStringView text)
{
    if (text == "%00"_L1)
        return {};
    QString name;
    name.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto code = text[i] == u'%' ? hexAt(text, i + 1, 2) : std::nullopt;
        name += code ? QChar(ushort(*code)) : text[i];
        if (code)
            i += 2;
    }
    return name;
}

QString valueText(const StoredValue &value)
{
    const int zeros = closingZeros(value.type);
    if (value.type == REG_SZ && value.data.isEmpty())
        return {};
    if (zeros > 0 && value.data.endsWith(QByteArray(zeros, '\0'))) {
        const QString text = escapedText(QByteArrayView(value.data).chopped(zeros));
        if (value.type == REG_EXPAND_SZ)
            return kExpand + quoted(text);
        if (value.type == REG_MULTI_SZ)
            return kMulti + quoted(text);
        const bool misleads = text.isEmpty() || text.front().isSpace() || text.back().isSpace() ||
                              text.front() == u'"' || startsWithMark(text);
        return misleads ? quoted(text) : text;
    }
    if (value.type == REG_DWORD && value.data.size() == 4) {
        QString text = kDword;
        for (int i = 3; i >= 0; --i)
            appendHex(text, uchar(value.data[i]));
        return text;
    }
    return hexText(value);
}

std::optional<StoredValue> valueFromText(QStringView text)
{
    if (text.isEmpty())
        return StoredValue{REG_SZ, {}};
    if (text.startsWith(kExpand))
        return closedText(REG_EXPAND_SZ, text.sliced(kExpand.size()));
    if (text.startsWith(kMulti))
        return closedText(REG_MULTI_SZ, text.sliced(kMulti.size()));
    if (text.startsWith(kDword)) {
        QByteArray bytes;
        for (qsizetype i = 3; i >= 0; --i) {
            const auto byte = hexAt(text, kDword.size() + 2 * i, 2);
            if (!byte)
                return std::nullopt;
            bytes += char(*byte);
        }
        if (text.size() != kDword.size() + 8)
            return std::nullopt;
        return StoredValue{REG_DWORD, bytes};
    }
    quint32 type = REG_BINARY;
    qsizetype digitsAt = kBinary.size();
    if (text.startsWith(kTypedBytes)) {
        const qsizetype close = text.indexOf("):"_L1);
        bool isNumber = false;
        if (close > 0)
            type = text.sliced(kTypedBytes.size(), close - kTypedBytes.size()).toUInt(&isNumber);
        if (!isNumber)
            return std::nullopt;
        digitsAt = close + 2;
    } else if (!text.startsWith(kBinary)) {
        return closedText(REG_SZ, text);
    }
    auto bytes = bytesFromHex(text.sliced(digitsAt));
    if (!bytes)
        return std::nullopt;
    return StoredValue{type, std::move(*bytes)};
}

} // namespace registry
