#include "data/RowValues.h"

#include <QStringBuilder>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t kUsualColumns = 32;
constexpr qsizetype kUsualPlace = 24; // characters of a column's name and its literal

} // namespace

QString insertStatement(const QString &table, const QString &columns, const QString &values)
{
    return u"INSERT INTO " % table % u" (" % columns % u") VALUES (" % values % u')';
}

RowValues::RowValues()
{
    m_values.reserve(kUsualColumns);
}

RowValues &RowValues::add(QStringView column, QString literal)
{
    m_values.push_back({column, std::move(literal)});
    return *this;
}

RowValues &RowValues::addText(QStringView column, const QString &text)
{
    return add(column, u'\'' % text % u'\'');
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
    return u"UPDATE " % table % u" SET " % joined([](QString &text, const RowValue &value) {
               text += value.column;
               text += u'=';
               text += value.literal;
           }) %
           u" WHERE " % where;
}
