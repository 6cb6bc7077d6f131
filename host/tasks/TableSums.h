#pragma once

#include <QString>

#include <vector>

namespace ado {
class RowSet;
}

/// What a table's rows come to, column by column, independent of their order: enough to tell
/// whether two tables hold the same.
class TableSums
{
public:
    explicit TableSums(const ado::RowSet &rows);

    [[nodiscard]] int rowCount() const { return m_rowCount; }
    /// What differs, as a few words in Norwegian; empty when nothing does.
    [[nodiscard]] QString difference(const TableSums &copy) const;

private:
    struct Column
    {
        QString name;
        int values = 0; // that are not Null
        // Sums modulo 2^64: whole numbers, ten-thousandths of money, milliseconds, the bytes of
        // texts, and the bit patterns of reals, whose own sum would depend on the order.
        quint64 sum = 0;
    };

    int m_rowCount;
    std::vector<Column> m_columns;
};
