#include "host/demo/DemoTable.h"

#include "runtime/Conversions.h"
#include "runtime/RunTimeError.h"

#include <QFile>

#include <utility>

using namespace Qt::StringLiterals;

DemoTable::Row::Row(const DemoTable &table, QStringList fields)
    : m_table(&table), m_fields(std::move(fields))
{
}

QString DemoTable::Row::text(QStringView column) const
{
    const auto found = m_table->m_columns.constFind(column.toString());
    if (found == m_table->m_columns.constEnd() || *found >= m_fields.size())
        throw RunTimeError(errors::kInvalidCall, u"ukjent kolonne i demodata: %1"_s.arg(column));
    return m_fields[*found];
}

int DemoTable::Row::integer(QStringView column) const
{
    return toLong(leadingNumber(text(column)));
}

Currency DemoTable::Row::amount(QStringView column) const
{
    return Currency::fromDouble(leadingNumber(text(column)));
}

DemoTable::DemoTable(const QString &name)
{
    QFile file(u":/demo/%1.tsv"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly))
        throw RunTimeError(errors::kInvalidCall, u"ukjente demodata: "_s + name);

    const QStringList columns = QString::fromUtf8(file.readLine().chopped(1)).split(u'\t');
    for (qsizetype i = 0; i < columns.size(); ++i)
        m_columns.insert(columns[i], int(i));
    while (!file.atEnd())
        m_rows.push_back(Row(*this, QString::fromUtf8(file.readLine().chopped(1)).split(u'\t')));
}
