#include "host/demo/Insert.h"

#include "runtime/Format.h"

using namespace Qt::StringLiterals;

namespace {

QString withPoint(QString number)
{
    return number.replace(u',', u'.');
}

} // namespace

Insert::Insert(QStringView table) : m_table(table.toString()) {}

Insert &Insert::number(QStringView column, int value)
{
    return add(column, QString::number(value));
}

Insert &Insert::quantity(QStringView column, Currency value)
{
    return add(column, withPoint(Format(value, u"#0.0")));
}

Insert &Insert::amount(QStringView column, Currency value)
{
    return add(column, withPoint(Format(value, u"#0.00")));
}

Insert &Insert::text(QStringView column, const QString &value)
{
    return add(column, textLiteral(value));
}

Insert &Insert::date(QStringView column, QDate value)
{
    return add(column, Format(value, u"\\#mm\\/dd\\/yyyy\\#"));
}

QString Insert::statement() const
{
    return u"INSERT INTO "_s + m_table + u" ("_s + m_columns + u") VALUES ("_s + m_values + u')';
}

Insert &Insert::add(QStringView column, const QString &literal)
{
    if (!m_columns.isEmpty()) {
        m_columns += u',';
        m_values += u',';
    }
    m_columns += column;
    m_values += literal;
    return *this;
}

QString textLiteral(const QString &value)
{
    return u'\'' + QString(value).replace(u'\'', u"''"_s) + u'\'';
}
