#pragma once

#include "platform/ado/Recordset.h"
#include "platform/report/Formula.h"

namespace report {

/// The rows that a report is about, read at once and kept detached from the database.
class Rows
{
public:
    /// Runs `statement` on the data source. kDataSource with the database's number and text when
    /// that fails.
    Rows(const QString &connectionString, const QString &statement);

    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] Type type(int column) const { return typeOf(m_set.field(column).type); }
    /// Row and column count from 0.
    [[nodiscard]] Value value(int row, int column);

private:
    ado::Recordset m_set;
    int m_count = 0;
    int m_row = -1; ///< the current one of the set
};

} // namespace report
