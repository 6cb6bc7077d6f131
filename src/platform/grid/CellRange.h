#pragma once

/// Stands for all columns or all rows wherever a grid column or row is asked for.
inline constexpr int kAll = -1;

/// A block of cells. Columns and rows count from 1; 0 is the headers; kAll in the first corner
/// means all of them, in the second corner up to the last one.
struct CellRange
{
    int col = 1;
    int row = 1;
    int col2 = 1;
    int row2 = 1;

    [[nodiscard]] static CellRange cell(int col, int row) { return {col, row, col, row}; }
    [[nodiscard]] static CellRange column(int col) { return {col, kAll, col, kAll}; }
    [[nodiscard]] static CellRange everything() { return {kAll, kAll, kAll, kAll}; }

    /// True when the block takes in every row, those that the sheet does not have yet too.
    [[nodiscard]] bool hasAllRows() const { return row == kAll || (row <= 1 && row2 == kAll); }
    [[nodiscard]] bool hasAllCols() const { return col == kAll || (col <= 1 && col2 == kAll); }

    /// The block's cells on a sheet of that size, in numbers from 1; the corners may come in any
    /// order. An empty block has its second corner before its first.
    [[nodiscard]] CellRange within(int maxCols, int maxRows) const
    {
        CellRange r = *this;
        clip(r.col, r.col2, maxCols);
        clip(r.row, r.row2, maxRows);
        return r;
    }

    friend bool operator==(const CellRange &, const CellRange &) = default;

private:
    static void clip(int &first, int &last, int max)
    {
        if (first == kAll || last == kAll) {
            first = first == kAll ? 1 : first;
            last = max;
        } else if (first > last) {
            const int swapped = first;
            first = last;
            last = swapped;
        }
        first = first < 1 ? 1 : first;
        last = last > max ? max : last;
    }
};
