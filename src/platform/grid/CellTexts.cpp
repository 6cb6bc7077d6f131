#include "platform/grid/CellTexts.h"

#include <algorithm>

namespace {

// A place is the number of a piece and an offset of 16 bits. A longer text has a piece of its own.
constexpr unsigned kOffsetBits = 16;
constexpr size_t kPieceUnits = size_t{1} << kOffsetBits;
constexpr size_t kFirstPieceUnits = 1024;

} // namespace

quint32 TextArena::append(QStringView text)
{
    const size_t length = size_t(text.size());
    if (m_pieces.empty() || length > m_capacity - m_used) {
        const size_t grown = std::min(kPieceUnits, std::max(kFirstPieceUnits, 2 * m_capacity));
        m_capacity = std::max(length, grown);
        m_pieces.push_back(std::make_unique_for_overwrite<char16_t[]>(m_capacity));
        m_used = 0;
    }
    std::copy_n(text.utf16(), length, m_pieces.back().get() + m_used);
    const quint32 place = quint32((m_pieces.size() - 1) << kOffsetBits | m_used);
    m_used += length;
    m_size += length;
    return place;
}

char16_t *TextArena::at(quint32 place) const
{
    return m_pieces[place >> kOffsetBits].get() + (place & (kPieceUnits - 1));
}

void CellTexts::resize(int columns, int rows)
{
    if (columns == m_columns) {
        for (size_t i = index(0, std::min(rows, m_rows)); i < m_slices.size(); ++i)
            m_dead += m_slices[i].length;
        m_slices.resize(size_t(rows) * size_t(columns));
    } else {
        std::vector<Slice> slices(size_t(rows) * size_t(columns));
        for (int row = 0; row < m_rows; ++row) {
            for (int column = 0; column < m_columns; ++column) {
                const Slice slice = m_slices[index(column, row)];
                if (row < rows && column < columns)
                    slices[size_t(row) * size_t(columns) + size_t(column)] = slice;
                else
                    m_dead += slice.length;
            }
        }
        m_slices.swap(slices);
    }
    m_columns = columns;
    m_rows = rows;
    m_dataRows = std::min(m_dataRows, rows);
    findDataRows();
    pack();
}

QStringView CellTexts::at(int column, int row) const
{
    const Slice slice = m_slices[index(column, row)];
    return slice.length == 0 ? QStringView()
                             : QStringView(m_arena.at(slice.place), qsizetype(slice.length));
}

void CellTexts::set(int column, int row, QStringView text)
{
    Slice &slice = m_slices[index(column, row)];
    if (text.isEmpty()) {
        if (slice.length == 0)
            return;
        drop(slice);
        if (row == m_dataRows - 1)
            findDataRows();
    } else if (size_t(text.size()) <= slice.length) {
        std::copy_n(text.utf16(), text.size(), m_arena.at(slice.place));
        m_dead += slice.length - size_t(text.size());
        slice.length = quint32(text.size());
    } else {
        drop(slice);
        slice = {m_arena.append(text), quint32(text.size())};
        m_dataRows = std::max(m_dataRows, row + 1);
    }
    if (m_dead != 0)
        pack();
}

void CellTexts::clear(int column, int row, int lastColumn, int lastRow)
{
    for (int r = row; r <= lastRow; ++r) {
        for (int c = column; c <= lastColumn; ++c)
            drop(m_slices[index(c, r)]);
    }
    findDataRows();
    pack();
}

bool CellTexts::isEmptyRow(int row) const
{
    const auto first = m_slices.begin() + std::ptrdiff_t(index(0, row));
    return std::all_of(first, first + m_columns, [](Slice s) { return s.length == 0; });
}

void CellTexts::reorder(int firstRow, const std::vector<int> &order)
{
    std::vector<Slice> rows(order.size() * size_t(m_columns));
    for (size_t i = 0; i < order.size(); ++i) {
        std::copy_n(m_slices.begin() + std::ptrdiff_t(index(0, order[i])), m_columns,
                    rows.begin() + std::ptrdiff_t(i * size_t(m_columns)));
    }
    std::copy(rows.begin(), rows.end(), m_slices.begin() + std::ptrdiff_t(index(0, firstRow)));
    m_dataRows = m_rows;
    findDataRows();
}

void CellTexts::drop(Slice &slice)
{
    m_dead += slice.length;
    slice = {};
}

void CellTexts::findDataRows()
{
    while (m_dataRows > 0 && isEmptyRow(m_dataRows - 1))
        --m_dataRows;
}

void CellTexts::pack()
{
    if (m_dead < kPieceUnits && m_dead != m_arena.size())
        return;
    if (m_dead * 2 <= m_arena.size())
        return;
    TextArena packed;
    for (Slice &slice : m_slices) {
        if (slice.length != 0)
            slice.place = packed.append({m_arena.at(slice.place), qsizetype(slice.length)});
    }
    m_arena = std::move(packed);
    m_dead = 0;
}
