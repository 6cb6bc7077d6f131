#pragma once

#include "runtime/Value.h"

#include <QByteArrayView>

#include <cstdint>
#include <variant>
#include <vector>

namespace ado {

/// The values of one column, one after another in their own width: numbers and dates in an array,
/// truth values as bits, texts (UTF-8) and bytes behind each other in one block. Rows are only
/// appended, so a value that was read stands as it was read.
class ColumnStore
{
public:
    /// So many rows have their room from the beginning, and it is not worth giving back.
    static constexpr std::size_t kFirstRows = 16;

    explicit ColumnStore(DataType type);

    [[nodiscard]] DataType type() const { return m_type; }
    [[nodiscard]] std::size_t size() const;

    void appendNull();
    /// `number` must be of the column's own width: qint16 for SmallInt, qint32 for Integer, float,
    /// double, bool, and qint64 for Currency (ten-thousandths) and Date (milliseconds since 1970,
    /// no zone).
    template<class Number>
    void append(Number number)
    {
        std::get<std::vector<Number>>(m_cells).push_back(number);
        if (!m_nulls.empty())
            m_nulls.push_back(false);
    }
    /// The UTF-8 of a text or the bytes of a binary value. Error 7 beyond 4 GB in one column.
    void appendBytes(const char *bytes, std::size_t count);
    /// A value of the column's own type, or Null.
    void append(const Value &value);

    /// Gives back the memory that was taken ahead for growing.
    void shrink();

    [[nodiscard]] bool isNull(std::size_t row) const { return !m_nulls.empty() && m_nulls[row]; }
    [[nodiscard]] Value value(std::size_t row) const;

    /// Without the detour over a Value; the row must not be Null and the type must be the right
    /// one.
    template<class Number>
    [[nodiscard]] Number number(std::size_t row) const
    {
        return std::get<std::vector<Number>>(m_cells)[row];
    }
    /// Valid until the next append.
    [[nodiscard]] QByteArrayView bytes(std::size_t row) const;

private:
    struct Blocks
    {
        std::vector<char> bytes;
        std::vector<std::uint32_t> ends; // where each row's bytes end
    };
    using Cells = std::variant<std::vector<qint16>, std::vector<qint32>, std::vector<qint64>,
                               std::vector<float>, std::vector<double>, std::vector<bool>, Blocks>;
    static Cells cellsFor(DataType type);

    DataType m_type;
    Cells m_cells;
    std::vector<bool> m_nulls; // empty until the first Null
};

} // namespace ado
