#pragma once

#include "platform/ado/dialect/Catalog.h"

#include <functional>
#include <vector>

namespace ado {

class RowSet;

namespace dialect {
class Writer;
}

/// Writes the changes of a row set to its base table: a statement a row, changed columns only, rows
/// found by their key, or by all that was read of them where the key is not shown. Rows and writer
/// must outlive it.
class WriteBack
{
public:
    /// What one INSERT or UPDATE did.
    struct Outcome
    {
        qint64 rows = 0;   ///< how many rows it hit
        qint32 number = 0; ///< in the counter of an inserted row
    };
    /// Runs a statement in the database's own language.
    using Runner = std::function<Outcome(const QByteArray &sql, const std::vector<Value> &values)>;

    /// `table` is the base table of `rows`, or null when there is none. Raises kSyntax then, and
    /// when `rows` shows none of the table's columns.
    WriteBack(const RowSet &rows, const dialect::TableInfo *table, const dialect::Writer &writer,
              Runner run);

    /// Raises kRowNotFound for a changed row that is gone, and kIntegrity for one that is not to be
    /// told from others, all of which have been changed by then: the caller rolls back. The rows
    /// keep their changes as pending.
    void write(const std::vector<int> &changedRows);
    /// The changes are there to stay: marks them so, and gives added rows the numbers that the
    /// database gave them.
    void accept(RowSet &rows) const;

private:
    struct Written
    {
        int row;
        bool isNew;
        qint32 number;
    };
    bool findByKey();
    void findByContent();
    qint32 insert(int row) const;
    void update(int row) const;

    const RowSet &m_rows;
    dialect::TableInfo m_table; // its catalogue may be read anew meanwhile
    const dialect::Writer &m_writer;
    Runner m_run;
    std::vector<int> m_findingColumns;
    bool m_byContent = false;
    int m_counterColumn = -1; // none
    std::vector<Written> m_written;
};

} // namespace ado
