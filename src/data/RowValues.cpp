#include "data/RowValues.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kUsualPlace = 24; // characters of a column's name and its literal

} // namespace

QString insertStatement(const QString &table, const QString &columns, const QString &values)
{
    return u"INSERT INTO "_s + table + u" ("_s + columns + u") VALUES ("_s + values + u')';
}

RowValues &RowValues::add(QStringView column, QStringView literal)
{
    m_values.push_back({column, literal.toString()});
    return *this;
}

RowValues &RowValues::addText(QStringView column, const QString &text)
{
    m_values.push_back({column, u'\'' + text + u'\''});
    return *this;
}

template<class Part>
QString RowValues::joined(Part part) const
{
    QString text;
    text.reserve(qsizetype(m_values.size()) * kUsualPlace);
    for (const RowValue &value : m_values) {
        if (&value != &m_values.front())
            text += u',';
        part(text, value);
    }
    return text;
}

QString RowValues::insertInto(const QString &table) const
{
    return insertStatement(
        table, joined([](QString &text, const RowValue &value) { text += value.column; }),
        joined([](QString &text, const RowValue &value) { text += value.literal; }));
}

QString RowValues::update(const QString &table, const QString &where) const
{
    return u"UPDATE "_s + table + u" SET "_s + joined([](QString &text, const RowValue &value) {
               text += value.column;
               text += u'=';
               text += value.literal;
           }) +
           u" WHERE "_s + where;
}
