#include "platform/registry/IniFile.h"

#include "runtime/CodePage.h"

#include <QByteArrayList>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace registry {

namespace {

constexpr QLatin1StringView kUnnamed("@");
constexpr QByteArrayView kMark("\xef\xbb\xbf"); // of UTF-8; anywhere else it is a character

QString decoded(const QByteArray &line)
{
    using Flag = QStringConverter::Flag;
    QStringDecoder utf8(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    const QString text = utf8(line);
    return utf8.hasError() ? codepage::decode(line) : text;
}

} // namespace

IniFile IniFile::fromBytes(const QByteArray &bytes)
{
    IniFile file;
    Values *section = &file.m_keys[QString()]; // none below a broken head
    const QByteArray unmarked = bytes.sliced(bytes.startsWith(kMark) ? kMark.size() : 0);
    for (const QByteArray &raw : unmarked.split('\n')) {
        const QString all = decoded(raw);
        const QStringView line = QStringView(all).trimmed();
        const qsizetype equals = line.indexOf(u'=');
        if (line.startsWith(u'[')) {
            const qsizetype close = line.indexOf(u']');
            section = close > 0 ? &file.m_keys[unescapedName(line.sliced(1, close - 1))] : nullptr;
        } else if (section && equals > 0 && !line.startsWith(u';') && !line.startsWith(u'#')) {
            const QStringView name = line.first(equals).trimmed();
            if (const auto value = valueFromText(line.sliced(equals + 1).trimmed()))
                section->insert_or_assign(name == kUnnamed ? QString() : unescapedName(name),
                                          *value);
        }
    }
    return file;
}

QByteArray IniFile::toBytes() const
{
    QString text;
    for (const auto &[key, values] : m_keys) {
        if (!key.isEmpty())
            text += (text.isEmpty() ? "["_L1 : "\n["_L1) + escapedName(key) + "]\n"_L1;
        for (const auto &[name, value] : values)
            text += (name.isEmpty() ? QString(kUnnamed) : escapedName(name)) + u'=' +
                    valueText(value) + u'\n';
    }
    const QByteArray bytes = text.toUtf8();
    // The mark of a name that stands first would be taken for the file's.
    return bytes.startsWith(kMark) ? kMark.toByteArray() + bytes : bytes;
}

bool IniFile::hasKey(const QString &key) const
{
    return m_keys.contains(key) || hasSubkeys(key);
}

bool IniFile::hasSubkeys(const QString &key) const
{
    if (key.isEmpty())
        return m_keys.upper_bound(key) != m_keys.end();
    const QString prefix = key + u'\\';
    const auto next = m_keys.lower_bound(prefix);
    return next != m_keys.end() && next->first.startsWith(prefix, Qt::CaseInsensitive);
}

std::optional<StoredValue> IniFile::value(const QString &key, const QString &name) const
{
    const auto section = m_keys.find(key);
    if (section == m_keys.end())
        return std::nullopt;
    const auto found = section->second.find(name);
    return found == section->second.end() ? std::nullopt : std::optional(found->second);
}

void IniFile::addKey(const QString &key)
{
    m_keys[QString()];
    m_keys[key];
}

void IniFile::setValue(const QString &key, const QString &name, const StoredValue &value)
{
    addKey(key);
    Values &values = m_keys[key];
    values.erase(name); // the latest spelling counts
    values.emplace(name, value);
}

bool IniFile::removeValue(const QString &key, const QString &name)
{
    const auto section = m_keys.find(key);
    return section != m_keys.end() && section->second.erase(name) > 0;
}

void IniFile::removeKey(const QString &key)
{
    m_keys.erase(key);
}

} // namespace registry
