#include "platform/registry/IniFile.h"

#include "runtime/CodePage.h"

#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace registry {

namespace {

const QString kUnnamed = u"@"_s;

QString decoded(const QByteArray &raw)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless); // drops its mark
    QString text = utf8(raw);
    if (utf8.hasError())
        text = codepage::decode(raw);
    return text;
}

QByteArray entryLine(const QString &name, const StoredValue &value)
{
    const QString left = name.isEmpty() ? kUnnamed : escapedName(name);
    return (left + u'=' + valueText(value)).toUtf8();
}

} // namespace

IniFile::Line IniFile::parsed(const QByteArray &raw, const Line *previous)
{
    Line line;
    line.raw = raw;
    if (previous) {
        line.section = previous->section;
        line.isReachable = previous->isReachable;
    }
    const QString all = decoded(raw);
    const QStringView text = QStringView(all).trimmed();
    if (text.startsWith(u'[')) {
        const qsizetype close = text.indexOf(u']');
        line.kind = Line::Kind::Section;
        line.isReachable = close > 0;
        if (line.isReachable)
            line.section = unescapedName(text.sliced(1, close - 1)).toCaseFolded();
        return line;
    }
    const qsizetype equals = text.indexOf(u'=');
    if (equals <= 0 || text.startsWith(u';') || text.startsWith(u'#'))
        return line;
    const QStringView name = text.first(equals).trimmed();
    line.kind = Line::Kind::Entry;
    line.name = name == kUnnamed ? QString() : unescapedName(name).toCaseFolded();
    line.text = text.sliced(equals + 1).trimmed().toString();
    return line;
}

IniFile::Line IniFile::head(const QString &key)
{
    return parsed((u'[' + escapedName(key) + u']').toUtf8(), nullptr);
}

IniFile IniFile::fromBytes(const QByteArray &bytes)
{
    IniFile file;
    for (qsizetype at = 0; at < bytes.size();) {
        qsizetype end = bytes.indexOf('\n', at);
        if (end < 0)
            end = bytes.size();
        const Line *previous = file.m_lines.empty() ? nullptr : &file.m_lines.back();
        file.m_lines.push_back(parsed(bytes.mid(at, end - at), previous));
        at = end + 1;
    }
    return file;
}

QByteArray IniFile::toBytes() const
{
    QByteArray bytes;
    for (const Line &line : m_lines)
        bytes += line.raw + '\n';
    return bytes;
}

bool IniFile::hasKey(const QString &key) const
{
    const QString folded = key.toCaseFolded();
    return folded.isEmpty() || hasSubkeys(key) ||
           std::any_of(m_lines.begin(), m_lines.end(), [&](const Line &line) {
               return line.kind == Line::Kind::Section && line.isIn(folded);
           });
}

bool IniFile::hasSubkeys(const QString &key) const
{
    const QString folded = key.toCaseFolded();
    return std::any_of(m_lines.begin(), m_lines.end(), [&](const Line &line) {
        if (line.kind != Line::Kind::Section || !line.isReachable || line.section.isEmpty())
            return false;
        return folded.isEmpty() ||
               (line.section.size() > folded.size() && line.section.startsWith(folded) &&
                line.section[folded.size()] == u'\\');
    });
}

std::optional<StoredValue> IniFile::value(const QString &key, const QString &name) const
{
    const QString folded = key.toCaseFolded();
    const QString foldedName = name.toCaseFolded();
    const auto found = std::find_if(m_lines.rbegin(), m_lines.rend(), [&](const Line &line) {
        return line.isEntry(folded, foldedName);
    });
    return found == m_lines.rend() ? std::nullopt : valueFromText(found->text);
}

void IniFile::addKey(const QString &key)
{
    if (hasKey(key))
        return;
    if (!m_lines.empty() && !m_lines.back().raw.trimmed().isEmpty())
        m_lines.push_back(parsed({}, &m_lines.back()));
    m_lines.push_back(head(key));
}

void IniFile::setValue(const QString &key, const QString &name, const StoredValue &value)
{
    const QString folded = key.toCaseFolded();
    const QString foldedName = name.toCaseFolded();
    const QByteArray raw = entryLine(name, value);

    const auto existing = std::find_if(m_lines.rbegin(), m_lines.rend(), [&](const Line &line) {
        return line.isEntry(folded, foldedName);
    });
    if (existing != m_lines.rend()) {
        *existing = parsed(raw, &*existing);
        return;
    }

    // A new value goes behind the last line of the key's last section that is not empty.
    auto place = m_lines.begin();
    bool hasSection = folded.isEmpty();
    for (auto line = m_lines.begin(); line != m_lines.end(); ++line) {
        if (!line->isIn(folded) ||
            (line->kind == Line::Kind::Other && line->raw.trimmed().isEmpty()))
            continue;
        hasSection = true;
        place = std::next(line);
    }
    if (!hasSection) {
        if (!m_lines.empty() && !m_lines.back().raw.trimmed().isEmpty())
            m_lines.push_back(parsed({}, &m_lines.back()));
        m_lines.push_back(head(key));
        place = m_lines.end();
    }
    Line section;
    section.section = folded;
    m_lines.insert(place, parsed(raw, &section));
}

bool IniFile::removeValue(const QString &key, const QString &name)
{
    const QString folded = key.toCaseFolded();
    const QString foldedName = name.toCaseFolded();
    return std::erase_if(m_lines,
                         [&](const Line &line) { return line.isEntry(folded, foldedName); }) > 0;
}

void IniFile::removeKey(const QString &key)
{
    const QString folded = key.toCaseFolded();
    std::erase_if(m_lines, [&](const Line &line) { return line.isIn(folded); });
}

} // namespace registry
