#pragma once

#include "platform/ado/ColumnStore.h"
#include "platform/ado/dialect/Translator.h"

#include <map>
#include <memory>
#include <vector>

namespace ado {

/// What has been changed in one row, cell by cell.
struct RowChange
{
    struct Cell
    {
        Value now;
        Value stored;        ///< what the database holds
        bool pending = true; ///< `now` is not written yet
    };
    bool isNew = false;
    std::map<int, Cell> cells; ///< by column
};
using RowChanges = std::map<int, RowChange>;

/// The rows of one query: the values as they were read, column by column, and over them the changes
/// that have been made in memory since. Rows are numbered from 0; rows added in memory stand behind
/// the read ones. Row and column numbers are the caller's to keep within range. Copies share the
/// values that were read, so a set is copied when all its rows are in.
class RowSet
{
public:
    /// A set without columns: what a statement without rows gives.
    RowSet() = default;
    /// An empty set. `baseTable` is the one table that the columns come from, or empty.
    explicit RowSet(std::vector<dialect::ResultColumn> columns, QString baseTable = {});

    [[nodiscard]] const std::vector<dialect::ResultColumn> &columns() const { return m_columns; }
    [[nodiscard]] const QString &baseTable() const { return m_baseTable; }
    [[nodiscard]] int columnCount() const { return int(m_columns.size()); }
    [[nodiscard]] int rowCount() const { return m_readRows + m_addedRows; }

    /// For the provider that fills the set: one value is appended to each column, then the row is
    /// closed. An exception in between leaves a set that can only be thrown away.
    [[nodiscard]] ColumnStore &store(int column) { return (*m_stores)[size_t(column)]; }
    void closeRow();
    /// All rows are in.
    void shrink();

    [[nodiscard]] bool isNull(int row, int column) const;
    [[nodiscard]] Value value(int row, int column) const;
    /// The value's column as it was read, or nullptr when the value has been set in memory or
    /// belongs to an added row. The way to typed reading without a Value.
    [[nodiscard]] const ColumnStore *unchanged(int row, int column) const
    {
        return m_changes.empty() ? &(*m_stores)[size_t(column)]
                                 : unchangedBesideChanges(row, column);
    }

    /// Sets a value in memory; it takes the column's type, and text is cut to the column's width.
    /// Raises kTypeMismatch, kOutOfRange, and kReadOnlySet for a computed column.
    void setValue(int row, int column, const Value &value);
    /// Adds a row of Nulls and returns its number.
    int addRow();

    /// What is to be written back.
    [[nodiscard]] std::vector<int> changedRows() const;
    [[nodiscard]] bool isNew(int row) const;
    [[nodiscard]] std::vector<int> changedColumns(int row) const;
    /// The value that the database holds, for finding the row by its key.
    [[nodiscard]] Value storedValue(int row, int column) const;
    /// The row stands in the database as it stands here.
    void accept(int row);

    /// The changes as they stand now, and the way back to them.
    [[nodiscard]] const RowChanges &changes() const { return m_changes; }
    void takeBack(RowChanges changes) { m_changes = std::move(changes); }

private:
    using Cell = RowChange::Cell;

    [[nodiscard]] const Cell *cell(int row, int column) const;
    [[nodiscard]] const ColumnStore *unchangedBesideChanges(int row, int column) const;
    [[nodiscard]] Value readValue(int row, int column) const;

    std::vector<dialect::ResultColumn> m_columns;
    QString m_baseTable;
    std::shared_ptr<std::vector<ColumnStore>> m_stores; // none without columns
    int m_readRows = 0;
    int m_addedRows = 0;
    RowChanges m_changes; // by row; every added row has one
};

/// `value` as the column holds it: of its type, text cut to its width. Null stays Null, but is
/// false in a BIT. Raises kTypeMismatch or kOutOfRange, naming the column.
[[nodiscard]] Value fitted(const Value &value, const dialect::ResultColumn &column);

} // namespace ado
