#include "host/demo/Insert.h"

#include "data/mFaktura.h"
#include "runtime/Format.h"

using namespace Qt::StringLiterals;

Insert::Insert(QStringView table) : m_table(table.toString()) {}

Insert &Insert::number(QStringView column, int value)
{
    return add(column, QString::number(value));
}

Insert &Insert::quantity(QStringView column, Currency value)
{
    return add(column, BelopTilSql(value, u"#0.0"));
}

Insert &Insert::amount(QStringView column, Currency value)
{
    return add(column, BelopTilSql(value, u"#0.00"));
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
    return m_row.insertInto(m_table);
}

Insert &Insert::add(QStringView column, const QString &literal)
{
    m_row.add(column, literal);
    return *this;
}

QString textLiteral(const QString &value)
{
    return u'\'' + QString(value).replace(u'\'', u"''"_s) + u'\'';
}
