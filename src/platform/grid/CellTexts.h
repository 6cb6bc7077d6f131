#pragma once

#include <QStringView>

#include <memory>
#include <vector>

/// Text in large pieces of memory. What is appended stays where it is until the whole is dropped.
class TextArena
{
public:
    /// Copies `text` and returns its place, the argument of `at`.
    [[nodiscard]] quint32 append(QStringView text);
    [[nodiscard]] char16_t *at(quint32 place) const;
    /// UTF-16 units appended so far.
    [[nodiscard]] size_t size() const { return m_size; }

private:
    std::vector<std::unique_ptr<char16_t[]>> m_pieces;
    size_t m_used = 0;     ///< units taken of the last piece
    size_t m_capacity = 0; ///< units that the last piece has
    size_t m_size = 0;
};

/// The texts of a sheet's cells; columns and rows count from 0. A cell costs eight bytes beside its
/// text: all texts lie in one arena, which is packed anew when more than half of it is dead.
class CellTexts
{
public:
    [[nodiscard]] int columns() const { return m_columns; }
    [[nodiscard]] int rows() const { return m_rows; }
    /// Cells that fall away lose their text; new ones are empty.
    void resize(int columns, int rows);

    /// Valid until the next change; the place must lie on the sheet.
    [[nodiscard]] QStringView at(int column, int row) const;
    /// `text` must not be a part of these texts.
    void set(int column, int row, QStringView text);
    /// Empties the block between the two corners, both taken in.
    void clear(int column, int row, int lastColumn, int lastRow);

    /// The number of the last row that holds a text, counted from 1; 0 when none does.
    [[nodiscard]] int dataRows() const { return m_dataRows; }
    [[nodiscard]] bool isEmptyRow(int row) const;
    /// UTF-16 units that the arena holds, dead ones too; by that a test sees the packing.
    [[nodiscard]] size_t storedUnits() const { return m_arena.size(); }

    /// Puts the rows from `firstRow` on into a new order: the row that becomes number
    /// `firstRow + i` is the one that was number `order[i]`.
    void reorder(int firstRow, const std::vector<int> &order);

private:
    struct Slice
    {
        quint32 place = 0;
        quint32 length = 0;
    };

    [[nodiscard]] size_t index(int column, int row) const
    {
        return size_t(row) * size_t(m_columns) + size_t(column);
    }
    void drop(Slice &slice);
    void findDataRows();
    void pack();

    int m_columns = 0;
    int m_rows = 0;
    int m_dataRows = 0;
    size_t m_dead = 0; ///< units of the arena that no slice shows any more
    std::vector<Slice> m_slices;
    TextArena m_arena;
};
