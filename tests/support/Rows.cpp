#include "support/Rows.h"

#include "platform/ado/Recordset.h"

using namespace Qt::StringLiterals;

QStringList rowsOf(const QString &connectionString, const QString &statement)
{
    QStringList result;
    ado::Recordset set;
    set.setActiveConnection(connectionString);
    set.setSource(statement);
    for (set.open(); !set.eof(); set.moveNext()) {
        QStringList values;
        for (int i = 0; i < set.fieldCount(); ++i)
            values += set.isNull(i) ? u"Null"_s : set.text(i);
        result += values.join(u'|');
    }
    return result;
}
