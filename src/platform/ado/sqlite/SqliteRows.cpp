#include "platform/ado/sqlite/SqliteRows.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/RowSet.h"
#include "platform/ado/dialect/Overflow.h"
#include "platform/ado/sqlite/SqliteStatement.h"
#include "platform/ado/sqlite/StoredDate.h"

#include <sqlite3.h>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

/// One stored value on its way into a column.
class Cell
{
public:
    Cell(sqlite3_value *value, const dialect::ResultColumn &info) : m_value(value), m_info(info) {}

    void appendTo(ColumnStore &store, int storedType) const
    {
        switch (store.type()) {
        case DataType::SmallInt:
            return store.append(whole<qint16>(storedType));
        case DataType::Integer:
            return store.append(whole<qint32>(storedType));
        case DataType::Currency:
            return store.append(whole<qint64>(storedType));
        case DataType::Single:
            return store.append(single(storedType));
        case DataType::Double:
            return store.append(finite(storedType));
        case DataType::Boolean:
            return store.append(real(storedType) != 0);
        case DataType::Date:
            return store.append(date(storedType));
        case DataType::LongVarBinary:
            require(storedType == SQLITE_BLOB);
            return appendBytes(store, sqlite3_value_blob(m_value));
        case DataType::VarWChar:
        case DataType::Empty:
            break;
        }
        require(storedType != SQLITE_BLOB);
        const unsigned char *text = sqlite3_value_text(m_value);
        if (!text)
            raiseOutOfMemory();
        appendBytes(store, text);
    }

private:
    void require(bool fits) const
    {
        if (!fits)
            throw RunTimeError(
                errors::kTypeMismatch,
                u"Databasen holder en verdi i feltet «%1» som ikke passer til feltets "
                "type."_s.arg(m_info.name));
    }

    [[nodiscard]] bool isComputed() const { return m_info.baseColumn.isEmpty(); }

    [[noreturn]] void raiseOverflow() const
    {
        if (isComputed())
            throw dialect::computedOverflow();
        throw RunTimeError(::errors::kOverflow,
                           u"Databasen holder et tall i feltet «%1» som er for stort for feltets "
                           "type."_s.arg(m_info.name));
    }
    [[noreturn]] static void raiseOutOfMemory()
    {
        throw RunTimeError(errors::kUnspecified, u"Det er ikke nok minne."_s);
    }

    template<class Number>
    Number whole(int storedType) const
    {
        if (storedType != SQLITE_INTEGER) {
            // A whole number may lie stored as a real one; nothing else passes.
            require(storedType == SQLITE_FLOAT);
            const double number = sqlite3_value_double(m_value);
            constexpr double limit = 9223372036854775808.0; // 2 to the power of 63
            if (isComputed() && std::abs(number) >= limit)
                raiseOverflow();
            require(number < limit && number == double(sqlite3_value_int64(m_value)));
        }
        const qint64 number = sqlite3_value_int64(m_value);
        if (number < std::numeric_limits<Number>::min() ||
            number > std::numeric_limits<Number>::max())
            raiseOverflow();
        return static_cast<Number>(number);
    }

    float single(int storedType) const
    {
        // Rounded first: the shortest decimal form of the largest single lies above it.
        const double number = real(storedType);
        const auto rounded = float(number);
        if (std::isinf(rounded))
            raiseOverflow();
        return rounded;
    }

    double finite(int storedType) const
    {
        const double number = real(storedType);
        if (std::isinf(number))
            raiseOverflow();
        return number;
    }

    double real(int storedType) const
    {
        require(storedType == SQLITE_FLOAT || storedType == SQLITE_INTEGER);
        return sqlite3_value_double(m_value);
    }

    qint64 date(int storedType) const
    {
        require(storedType == SQLITE_TEXT);
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(m_value));
        if (!text)
            raiseOutOfMemory();
        const auto size = size_t(sqlite3_value_bytes(m_value));
        const std::optional<qint64> moment = millisecondsOf({text, size});
        require(moment.has_value());
        return *moment;
    }

    void appendBytes(ColumnStore &store, const void *bytes) const
    {
        const auto count = size_t(sqlite3_value_bytes(m_value));
        if (!bytes && count > 0)
            raiseOutOfMemory();
        store.appendBytes(static_cast<const char *>(bytes), count);
    }

    sqlite3_value *m_value;
    const dialect::ResultColumn &m_info;
};

} // namespace

void readRows(SqliteStatement &statement, RowSet &rows)
{
    sqlite3_stmt *row = statement.handle();
    const int count = rows.columnCount();
    while (statement.step()) {
        for (int column = 0; column < count; ++column) {
            ColumnStore &store = rows.store(column);
            // Asked once and looked at in place, which is allowed where one thread uses the session
            // and spares the checks that each sqlite3_column function makes.
            sqlite3_value *value = sqlite3_column_value(row, column);
            const int storedType = sqlite3_value_type(value);
            if (storedType == SQLITE_NULL)
                store.appendNull();
            else
                Cell(value, rows.columns()[size_t(column)]).appendTo(store, storedType);
        }
        rows.closeRow();
    }
    rows.shrink();
}

} // namespace ado
