#include "platform/ado/postgres/PostgresRows.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/RowSet.h"
#include "platform/ado/dialect/Overflow.h"
#include "platform/ado/postgres/Libpq.h"

#include <QtEndian>

#include <bit>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

// The binary forms are those of the types' send functions: whole numbers big-endian, reals as the
// bits of IEEE 754, a timestamp as microseconds since 2000-01-01.
namespace ado {

namespace {

constexpr qint64 kMillisecondsTo2000 = 946'684'800'000; // since 1970

[[noreturn]] void raiseUnfit(const dialect::ResultColumn &column)
{
    throw RunTimeError(errors::kTypeMismatch,
                       u"Databasen holder en verdi i feltet «%1» som ikke passer til feltets "
                       "type."_s.arg(column.name));
}

[[noreturn]] void raiseTooLarge(const dialect::ResultColumn &column)
{
    if (column.baseColumn.isEmpty())
        throw dialect::computedOverflow();
    throw RunTimeError(errors::kOutOfRange,
                       u"Beløpet i feltet «%1» er for stort."_s.arg(column.name));
}

/// A numeric: the count of its digits to the base of ten thousand, the power of the first one, the
/// sign, the decimals shown, and the digits, 16 bits each. The base is that of money.
qint64 tenThousandths(const char *bytes, const dialect::ResultColumn &column)
{
    constexpr quint16 kNegative = 0x4000;
    const auto part = [bytes](qsizetype index) {
        return qFromBigEndian<quint16>(bytes + 2 * index);
    };
    const int count = part(0);
    const int weight = qint16(part(1));
    const quint16 sign = part(2);
    if (sign != 0 && sign != kNegative)
        raiseUnfit(column); // no number
    qint64 amount = 0;
    for (int i = 0; i < weight + 2; ++i) { // down to the ten-thousandths
        const qint64 digit = i < count ? part(4 + i) : 0;
        if (qMulOverflow(amount, Currency::kScale, &amount) ||
            (sign == 0 ? qAddOverflow(amount, digit, &amount)
                       : qSubOverflow(amount, digit, &amount)))
            raiseTooLarge(column);
    }
    return amount;
}

qint64 milliseconds(const char *bytes, const dialect::ResultColumn &column)
{
    const auto microseconds = qFromBigEndian<qint64>(bytes);
    if (microseconds == std::numeric_limits<qint64>::max() ||
        microseconds == std::numeric_limits<qint64>::min())
        raiseUnfit(column);                           // infinity
    return microseconds / 1000 + kMillisecondsTo2000; // whole seconds by the type
}

/// The server knows more than numbers: the infinite and what is no number.
template<class Real>
Real finite(Real number, const dialect::ResultColumn &column)
{
    if (!std::isfinite(number))
        raiseUnfit(column);
    return number;
}

void appendValue(ColumnStore &store, const char *bytes, int count,
                 const dialect::ResultColumn &column)
{
    switch (store.type()) {
    case DataType::SmallInt:
        return store.append(qFromBigEndian<qint16>(bytes));
    case DataType::Integer:
        return store.append(qFromBigEndian<qint32>(bytes));
    case DataType::Single:
        return store.append(finite(std::bit_cast<float>(qFromBigEndian<quint32>(bytes)), column));
    case DataType::Double:
        return store.append(finite(std::bit_cast<double>(qFromBigEndian<quint64>(bytes)), column));
    case DataType::Currency:
        return store.append(tenThousandths(bytes, column));
    case DataType::Date:
        return store.append(milliseconds(bytes, column));
    case DataType::Boolean:
        return store.append(*bytes != 0);
    case DataType::VarWChar:
    case DataType::LongVarBinary:
    case DataType::Empty:
        break;
    }
    store.appendBytes(bytes, size_t(count));
}

} // namespace

void appendRow(const pg_result *result, RowSet &rows)
{
    for (int column = 0; column < rows.columnCount(); ++column) {
        ColumnStore &store = rows.store(column);
        if (PQgetisnull(result, 0, column) != 0)
            store.appendNull();
        else
            appendValue(store, PQgetvalue(result, 0, column), PQgetlength(result, 0, column),
                        rows.columns()[size_t(column)]);
    }
    rows.closeRow();
}

} // namespace ado
