#include "host/tasks/TableSums.h"

#include "platform/ado/RowSet.h"

#include <bit>

using namespace Qt::StringLiterals;

namespace {

/// What one value that is not Null adds to its column's sum.
quint64 addend(const ado::ColumnStore &store, std::size_t row)
{
    switch (store.type()) {
    case DataType::SmallInt:
        return quint64(store.number<qint16>(row));
    case DataType::Integer:
        return quint64(store.number<qint32>(row));
    case DataType::Currency:
    case DataType::Date:
        return quint64(store.number<qint64>(row));
    case DataType::Boolean:
        return store.number<bool>(row) ? 1 : 0;
    // Adding zero makes the two zeros one.
    case DataType::Single:
        return std::bit_cast<quint32>(store.number<float>(row) + 0.0F);
    case DataType::Double:
        return std::bit_cast<quint64>(store.number<double>(row) + 0.0);
    case DataType::VarWChar:
    case DataType::LongVarBinary:
    case DataType::Empty:
        break;
    }
    return quint64(store.bytes(row).size());
}

} // namespace

TableSums::TableSums(const ado::RowSet &rows) : m_rowCount(rows.rowCount())
{
    for (int column = 0; column < rows.columnCount(); ++column) {
        Column sums;
        sums.name = rows.columns()[size_t(column)].name;
        for (int row = 0; row < m_rowCount; ++row) {
            const ado::ColumnStore &store = *rows.unchanged(row, column);
            const auto place = size_t(row);
            if (store.isNull(place))
                continue;
            ++sums.values;
            sums.sum += addend(store, place);
        }
        m_columns.push_back(std::move(sums));
    }
}

QString TableSums::difference(const TableSums &copy) const
{
    if (m_rowCount != copy.m_rowCount)
        return u"%1 rader er blitt til %2"_s.arg(m_rowCount).arg(copy.m_rowCount);
    if (m_columns.size() != copy.m_columns.size())
        return u"antallet felt er et annet"_s;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const Column &one = m_columns[i];
        const Column &other = copy.m_columns[i];
        if (one.name != other.name)
            return u"feltet %1 er blitt til %2"_s.arg(one.name, other.name);
        if (one.values != other.values || one.sum != other.sum)
            return u"summen av feltet %1 er en annen"_s.arg(one.name);
    }
    return {};
}
