#include "platform/ado/ConnectionString.h"

#include "platform/ado/AdoTypes.h"

#include <QStringTokenizer>

using namespace Qt::StringLiterals;

namespace ado {

ConnectionString::ConnectionString(QStringView text)
{
    for (const QStringView element : QStringTokenizer(text, u';')) {
        const QStringView pair = element.trimmed();
        if (pair.isEmpty())
            continue;
        const qsizetype mark = pair.indexOf(u'=');
        if (mark <= 0)
            throw RunTimeError(errors::kUnspecified,
                               u"Tilkoblingsstrengen har et ledd som ikke er «nøkkelord=verdi»."_s);
        setValue(pair.first(mark).trimmed(), pair.sliced(mark + 1).trimmed().toString());
    }
}

QString ConnectionString::value(QStringView keyword) const
{
    for (const auto &[name, value] : m_pairs) {
        if (name.compare(keyword, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

void ConnectionString::setValue(QStringView keyword, const QString &value)
{
    const QString name = keyword.toString().toLower();
    const auto place = std::lower_bound(
        m_pairs.begin(), m_pairs.end(), name,
        [](const auto &pair, const QString &wanted) { return pair.first < wanted; });
    if (place != m_pairs.end() && place->first == name)
        place->second = value;
    else
        m_pairs.insert(place, {name, value});
}

QString ConnectionString::normalized() const
{
    QString text;
    for (const auto &[name, value] : m_pairs)
        text += name + u'=' + value + u';';
    return text;
}

} // namespace ado
