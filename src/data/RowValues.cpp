#include "data/RowValues.h"

using namespace Qt::StringLiterals;

QString insertStatement(const QString &table, const QString &columns, const QString &values)
{
    return u"INSERT INTO "_s + table + u" ("_s + columns + u") VALUES ("_s + values + u')';
}

RowValues &RowValues::add(QStringView column, QStringView literal)
{
    if (!m_columns.isEmpty()) {
        for (QString *list : {&m_columns, &m_literals, &m_assignments})
            *list += u',';
    }
    m_columns += column;
    m_literals += literal;
    m_assignments += column;
    m_assignments += u'=';
    m_assignments += literal;
    return *this;
}

RowValues &RowValues::addText(QStringView column, const QString &text)
{
    return add(column, u'\'' + text + u'\'');
}

QString RowValues::insertInto(const QString &table) const
{
    return insertStatement(table, m_columns, m_literals);
}

QString RowValues::update(const QString &table, const QString &where) const
{
    return u"UPDATE "_s + table + u" SET "_s + m_assignments + u" WHERE "_s + where;
}
