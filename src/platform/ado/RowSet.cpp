#include "platform/ado/RowSet.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/dialect/Fitting.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

Value converted(const Value &value, DataType type)
{
    switch (type) {
    case DataType::SmallInt:
        return Value(value.toInteger());
    case DataType::Integer:
        return Value(value.toLong());
    case DataType::Single:
        return Value(value.toSingle());
    case DataType::Double:
        return Value(value.toDouble());
    case DataType::Currency:
        return Value(value.toCurrency());
    case DataType::Date:
        return Value(dialect::wholeSeconds(value.toDate()));
    case DataType::Boolean:
        return Value(value.toBoolean());
    case DataType::LongVarBinary:
        return Value(value.toBytes());
    case DataType::VarWChar:
    case DataType::Empty:
        break;
    }
    return Value(value.toText());
}

} // namespace

Value fitted(const Value &value, const dialect::ResultColumn &column)
{
    if (value.isNull()) // a truth value never is
        return column.type == DataType::Boolean ? Value(false) : value;
    try {
        if (column.type == DataType::VarWChar)
            return Value(dialect::cutText(value.toText(), column.width));
        return converted(value, column.type);
    } catch (const RunTimeError &error) {
        if (error.number() == ::errors::kOverflow)
            throw RunTimeError(errors::kOutOfRange,
                               u"Verdien er for stor for feltet «%1»."_s.arg(column.name));
        throw RunTimeError(errors::kTypeMismatch,
                           u"Verdien passer ikke til typen av feltet «%1»."_s.arg(column.name));
    }
}

RowSet::RowSet(std::vector<dialect::ResultColumn> columns, QString baseTable)
    : m_columns(std::move(columns)), m_baseTable(std::move(baseTable)),
      m_stores(std::make_shared<std::vector<ColumnStore>>())
{
    m_stores->reserve(m_columns.size());
    for (const dialect::ResultColumn &column : m_columns)
        m_stores->emplace_back(column.type);
}

void RowSet::closeRow()
{
    if (m_readRows == std::numeric_limits<int>::max())
        throw RunTimeError(errors::kUnspecified, u"Resultatet er for stort for minnet."_s);
    ++m_readRows;
}

void RowSet::shrink()
{
    if (m_readRows <= int(ColumnStore::kFirstRows))
        return;
    for (ColumnStore &store : *m_stores)
        store.shrink();
}

const RowSet::Cell *RowSet::cell(int row, int column) const
{
    const auto change = m_changes.find(row);
    if (change == m_changes.end())
        return nullptr;
    const auto found = change->second.cells.find(column);
    return found == change->second.cells.end() ? nullptr : &found->second;
}

const ColumnStore *RowSet::unchangedBesideChanges(int row, int column) const
{
    if (row >= m_readRows || cell(row, column))
        return nullptr;
    return &(*m_stores)[size_t(column)];
}

Value RowSet::readValue(int row, int column) const
{
    if (row >= m_readRows)
        return {};
    return (*m_stores)[size_t(column)].value(size_t(row));
}

bool RowSet::isNull(int row, int column) const
{
    if (const ColumnStore *store = unchanged(row, column))
        return store->isNull(size_t(row));
    return value(row, column).isNull();
}

Value RowSet::value(int row, int column) const
{
    const Cell *changed = cell(row, column);
    return changed ? changed->now : readValue(row, column);
}

Value RowSet::storedValue(int row, int column) const
{
    const Cell *changed = cell(row, column);
    return changed ? changed->stored : readValue(row, column);
}

void RowSet::setValue(int row, int column, const Value &value)
{
    const dialect::ResultColumn &info = m_columns[size_t(column)];
    if (info.baseColumn.isEmpty())
        throw RunTimeError(errors::kReadOnlySet,
                           u"Feltet «%1» er beregnet og kan ikke endres."_s.arg(info.name));
    Value now = fitted(value, info);
    const auto [place, fresh] = m_changes[row].cells.try_emplace(column);
    if (fresh)
        place->second.stored = readValue(row, column);
    place->second.now = std::move(now);
    place->second.pending = true;
}

int RowSet::addRow()
{
    const int row = rowCount();
    m_changes[row].isNew = true;
    ++m_addedRows;
    return row;
}

std::vector<int> RowSet::changedRows() const
{
    std::vector<int> rows;
    for (const auto &[row, change] : m_changes) {
        if (change.isNew || !changedColumns(row).empty())
            rows.push_back(row);
    }
    return rows;
}

bool RowSet::isNew(int row) const
{
    const auto change = m_changes.find(row);
    return change != m_changes.end() && change->second.isNew;
}

std::vector<int> RowSet::changedColumns(int row) const
{
    std::vector<int> columns;
    const auto change = m_changes.find(row);
    if (change == m_changes.end())
        return columns;
    for (const auto &[column, cell] : change->second.cells) {
        if (cell.pending)
            columns.push_back(column);
    }
    return columns;
}

void RowSet::accept(int row)
{
    const auto change = m_changes.find(row);
    if (change == m_changes.end())
        return;
    change->second.isNew = false;
    for (auto &[column, cell] : change->second.cells) {
        cell.stored = cell.now;
        cell.pending = false;
    }
}

} // namespace ado
