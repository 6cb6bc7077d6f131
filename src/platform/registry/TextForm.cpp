#include "platform/registry/TextForm.h"

#include "platform/registry/Registry.h"
#include "runtime/CodePage.h"

#include <QtEndian>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace registry {

namespace {

constexpr QStringView kAlwaysEscaped = u"%/=[];#";
constexpr QStringView kEscapedAtEnds = u".@\"";

/// What may follow "\" in a text, and what it means.
constexpr QStringView kEscapes = u"\\\"nrt0";
constexpr QByteArrayView kMeanings("\\\"\n\r\t\0", 6);

bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control;
}

/// The number of two hexadecimal digits at `at`, or nothing.
std::optional<uchar> byteAt(QStringView text, qsizetype at)
{
    bool isNumber = false;
    const uint number = text.mid(at, 2).toUInt(&isNumber, 16);
    return isNumber && at + 2 <= text.size() ? std::optional(uchar(number)) : std::nullopt;
}

QByteArray unescapedText(QStringView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = text[i] == u'\\' && i + 1 < text.size() ? text[i + 1] : QChar();
        const qsizetype escape = next.isNull() ? -1 : kEscapes.indexOf(next);
        if (escape >= 0) {
            bytes += kMeanings[escape];
            i += 1;
        } else if (const auto code = byteAt(text, i + 2); next == u'x' && code) {
            bytes += char(*code);
            i += 3;
        } else {
            bytes += codepage::fromUnicode(text[i]);
        }
    }
    return bytes;
}

StoredValue closedText(quint32 type, QStringView text)
{
    const bool isQuoted = text.size() >= 2 && text.front() == u'"' && text.back() == u'"';
    const QStringView content = isQuoted ? text.sliced(1).chopped(1) : text;
    return {type, unescapedText(content) + QByteArray(type == REG_MULTI_SZ ? 2 : 1, '\0')};
}

std::optional<StoredValue> doubleWord(QStringView digits)
{
    bool isNumber = false;
    const uint number = digits.toUInt(&isNumber, 16);
    if (!isNumber || digits.size() != 8)
        return std::nullopt;
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return StoredValue{REG_DWORD, bytes};
}

std::optional<StoredValue> bytesOfType(quint32 type, QStringView digits)
{
    const QByteArray given = digits.toLatin1().toLower();
    const QByteArray bytes = QByteArray::fromHex(given);
    // What is no digit is left out there.
    return bytes.toHex(',') == given ? std::optional(StoredValue{type, bytes}) : std::nullopt;
}

} // namespace

QString escapedName(QStringView name)
{
    QString text;
    text.reserve(name.size());
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar c = name[i];
        const bool isEnd = i == 0 || i + 1 == name.size();
        if (kAlwaysEscaped.contains(c) || isControl(c) ||
            (isEnd && (c.isSpace() || kEscapedAtEnds.contains(c))))
            text += u"%%1"_s.arg(uint(c.unicode()), 2, 16, QChar(u'0'));
        else
            text += c;
    }
    return text;
}

QString unescapedName(QStringView text)
{
    QString name;
    name.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto code = text[i] == u'%' ? byteAt(text, i + 1) : std::nullopt;
        name += code ? QChar(ushort(*code)) : text[i];
        if (code)
            i += 2;
    }
    return name;
}

QString valueText(const StoredValue &value)
{
    if (value.type == REG_SZ && value.data.isEmpty())
        return {};
    const bool isClosed = value.type == REG_SZ && value.data.endsWith('\0');
    QString text = codepage::decode(QByteArrayView(value.data).chopped(isClosed ? 1 : 0));
    const bool isPrintable = std::none_of(text.cbegin(), text.cend(), [](QChar c) {
        return isControl(c) || c == QChar::ReplacementCharacter;
    });
    if (!isClosed || !isPrintable)
        return "hex(%1):%2"_L1.arg(QString::number(value.type),
                                   QString::fromLatin1(value.data.toHex(',')));
    text.replace(u'\\', "\\\\"_L1);
    if (valueFromText(QStringView(text).trimmed()) == value)
        return text;
    return u'"' + text.replace(u'"', "\\\""_L1) + u'"';
}

std::optional<StoredValue> valueFromText(QStringView text)
{
    if (text.isEmpty())
        return StoredValue{REG_SZ, {}};
    const qsizetype end = text.indexOf(u':') + 1;
    const QStringView mark = text.first(end);
    const QStringView content = text.sliced(end);
    if (mark == "expand:"_L1)
        return closedText(REG_EXPAND_SZ, content);
    if (mark == "multi:"_L1)
        return closedText(REG_MULTI_SZ, content);
    if (mark == "dword:"_L1)
        return doubleWord(content);
    if (mark == "hex:"_L1)
        return bytesOfType(REG_BINARY, content);
    if (mark.startsWith("hex("_L1) && mark.endsWith("):"_L1)) {
        bool isNumber = false;
        const uint type = mark.sliced(4).chopped(2).toUInt(&isNumber);
        return isNumber ? bytesOfType(type, content) : std::nullopt;
    }
    return closedText(REG_SZ, text);
}

} // namespace registry
