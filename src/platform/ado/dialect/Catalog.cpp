#include "platform/ado/dialect/Catalog.h"

#include <algorithm>
#include <utility>

namespace ado::dialect {

namespace {

QString folded(QStringView name)
{
    return name.toString().toCaseFolded();
}

} // namespace

const ColumnInfo *TableInfo::column(QStringView columnName) const
{
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const ColumnInfo &c) {
        return columnName.compare(c.name, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? nullptr : &*found;
}

const ColumnInfo *TableInfo::counter() const
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [](const ColumnInfo &column) { return column.counter; });
    return found == columns.end() ? nullptr : &*found;
}

void Catalog::add(TableInfo table)
{
    m_byFoldedName.insert(folded(table.name), int(m_tables.size()));
    m_tables.push_back(std::move(table));
}

const TableInfo *Catalog::table(QStringView name) const
{
    const auto found = m_byFoldedName.constFind(folded(name));
    return found == m_byFoldedName.constEnd() ? nullptr : &m_tables[size_t(*found)];
}

} // namespace ado::dialect
