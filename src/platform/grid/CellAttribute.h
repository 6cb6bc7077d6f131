#pragma once

#include "platform/grid/CellRange.h"

#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

/// One attribute of a sheet's cells. Most cells share the value of the sheet or of their column, so
/// only the cells that were given one of their own cost memory. What is written last holds: a value
/// for a column replaces those of its cells, a value for the sheet replaces all.
template<class T>
class CellAttribute
{
public:
    explicit CellAttribute(T value) : m_sheet(std::move(value)) {}

    /// The value in force at a cell.
    [[nodiscard]] const T &at(int col, int row) const
    {
        if (!m_cells.empty()) {
            if (const auto own = m_cells.find({col, row}); own != m_cells.end())
                return own->second;
        }
        if (col >= 0 && size_t(col) < m_columns.size()) {
            if (const std::optional<T> &column = m_columns[size_t(col)])
                return *column;
        }
        return m_sheet;
    }
    /// The value that rows without one of their own have in that column.
    [[nodiscard]] const T &atColumn(int col) const { return at(col, kAll); }

    /// Gives the block, on a sheet of `maxCols` by `maxRows`, that value.
    void set(const CellRange &range, int maxCols, int maxRows, const T &value)
    {
        if (range.hasAllRows() && range.hasAllCols()) {
            m_cells.clear();
            m_columns.clear();
            m_sheet = value;
            return;
        }
        const CellRange r = range.within(maxCols, maxRows);
        if (range.hasAllRows()) {
            std::erase_if(m_cells, [&](const auto &own) {
                return own.first.col >= r.col && own.first.col <= r.col2;
            });
            if (size_t(maxCols) >= m_columns.size())
                m_columns.resize(size_t(maxCols) + 1);
            for (int col = r.col; col <= r.col2; ++col)
                m_columns[size_t(col)] = value;
            return;
        }
        for (int row = r.row; row <= r.row2; ++row) {
            for (int col = r.col; col <= r.col2; ++col)
                m_cells.insert_or_assign({col, row}, value);
        }
    }

    /// Forgets the values of single cells beyond row `maxRows`.
    void cutRows(int maxRows)
    {
        std::erase_if(m_cells, [&](const auto &own) { return own.first.row > maxRows; });
    }

    /// The cells' own values go along when rows change places: `newRow(row)` is where it went.
    template<class NewRow>
    void moveRows(NewRow &&newRow)
    {
        if (m_cells.empty())
            return;
        Cells moved;
        for (auto &[place, value] : m_cells)
            moved.emplace(Place{place.col, newRow(place.row)}, std::move(value));
        m_cells.swap(moved);
    }

private:
    struct Place
    {
        int col;
        int row;
        friend bool operator==(Place, Place) = default;
    };
    struct Hash
    {
        size_t operator()(Place p) const noexcept { return size_t(p.row) * 1021u + size_t(p.col); }
    };
    using Cells = std::unordered_map<Place, T, Hash>;

    T m_sheet;
    std::vector<std::optional<T>> m_columns; ///< by column number
    Cells m_cells;
};
