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

QString ConnectionString::normalized() const
{
    QString text;
    for (const auto &[keyword, value] : m_pairs.asKeyValueRange())
        text += keyword + u'=' + value + u';';
    return text;
}

} // namespace ado
