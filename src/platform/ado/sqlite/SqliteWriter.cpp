#include "platform/ado/sqlite/SqliteWriter.h"

#include "platform/ado/dialect/Overflow.h"
#include "platform/ado/sqlite/SqliteFunctions.h"

namespace ado {

using dialect::Aggregate;
using dialect::DatePart;

namespace {

bool isWhole(DataType type)
{
    return type == DataType::SmallInt || type == DataType::Integer;
}

QByteArray call(const char *function, const QByteArray &operands)
{
    return QByteArray(function).append('(').append(operands).append(')');
}

bool isReal(DataType type)
{
    return type == DataType::Single || type == DataType::Double;
}

QByteArray castTo(const char *type, const QByteArray &operand)
{
    return QByteArray("CAST(").append(operand).append(" AS ").append(type).append(')');
}

/// The nearest whole number of a real, a half to the even one; ROUND alone goes away from zero.
QByteArray nearestEven(const QByteArray &real)
{
    // The cast would bring a number beyond 64 bits to the nearest end; it stays real, and the
    // column's range check refuses it.
    const QByteArray whole = castTo("INTEGER", "CASE WHEN ABS(" + real + " - CAST(" + real +
                                                   " AS INTEGER)) = 0.5 THEN 2 * ROUND(" + real +
                                                   " / 2) ELSE ROUND(" + real + ") END");
    return "(CASE WHEN ABS(" + real + ") < 9223372036854775807 THEN " + whole + " ELSE " + real +
           " END)";
}

/// Both names are quoted within the name, so that no two columns share one.
QByteArray lookupName(QStringView tableOrAlias, QStringView column)
{
    using dialect::Writer;
    return Writer::name(QString::fromUtf8(Writer::name(tableOrAlias) + '.' + Writer::name(column)));
}

} // namespace

QByteArray SqliteWriter::lookupTable(QStringView table, QStringView column)
{
    return "temp." + lookupName(table, column);
}

QByteArray SqliteWriter::placeHolder(int number, DataType) const
{
    return '?' + QByteArray::number(number);
}

QByteArray SqliteWriter::truth(bool value) const
{
    return value ? "1" : "0";
}

QByteArray SqliteWriter::convert(const QByteArray &operand, DataType from, DataType to) const
{
    if (to == DataType::Boolean)
        return '(' + operand + " <> 0)";
    if (from == DataType::Boolean) {
        const QByteArray number = "(-(" + operand + "))";
        return to == DataType::Integer ? number : convert(number, DataType::Integer, to);
    }
    if (to == DataType::Currency)
        return isWhole(from) ? '(' + operand + " * 10000)"
                             : nearestEven('(' + operand + " * 10000.0)");
    if (from == DataType::Currency) {
        const QByteArray kroner = '(' + operand + " / 10000.0)";
        return isWhole(to)              ? nearestEven(kroner)
               : to == DataType::Single ? call(functions::kSingle, kroner)
                                        : kroner;
    }
    if (to == DataType::Single)
        return call(functions::kSingle, operand);
    if (to == DataType::Double)
        return castTo("REAL", operand); // a column declared SINGLE stores 25.0 as a whole number
    return isReal(from) ? nearestEven(operand) : operand;
}

QByteArray SqliteWriter::cut(const QByteArray &operand, int width) const
{
    return "substr(" + operand + ", 1, " + QByteArray::number(width) + ')';
}

QByteArray SqliteWriter::quotient(const QByteArray &left, const QByteArray &right) const
{
    return call(functions::kQuotient, left + ", " + right);
}

QByteArray SqliteWriter::exact(const QByteArray &reckoned, DataType type) const
{
    return call(type == DataType::Currency ? functions::kExact : functions::kLong, reckoned);
}

QByteArray SqliteWriter::datePart(DatePart part, const QByteArray &operand) const
{
    const char *const place = part == DatePart::Year    ? ", 1, 4)"
                              : part == DatePart::Month ? ", 6, 2)"
                                                        : ", 9, 2)";
    return castTo("INTEGER", "substr(" + operand + place);
}

QByteArray SqliteWriter::aggregate(Aggregate function, const QByteArray &operand,
                                   DataType type) const
{
    switch (function) {
    case Aggregate::Count:
        return "COUNT(" + operand + ')';
    case Aggregate::Sum:
        return type == DataType::Currency ? "SUM(" + operand + ')'
                                          : castTo("REAL", "SUM(" + operand + ')');
    case Aggregate::Avg:
        return type == DataType::Currency ? nearestEven("AVG(" + operand + ')')
                                          : "AVG(" + operand + ')';
    case Aggregate::Max:
    case Aggregate::Min:
        break;
    }
    return (function == Aggregate::Max ? "MAX(" : "MIN(") +
           (type == DataType::VarWChar ? collated(operand) : operand) + ')';
}

QByteArray SqliteWriter::collated(const QByteArray &text) const
{
    return text + " COLLATE " + kCollation;
}

QByteArray SqliteWriter::orderItem(const QByteArray &operand, bool descending) const
{
    return descending ? operand + " DESC" : operand;
}

QByteArray SqliteWriter::resultItem(const QByteArray &operand, DataType) const
{
    return operand;
}

// What the lookup finds is compared all the same, since it may hold more than the table does. The
// plus keeps SQLite from making an index of its own for that comparison at every run.
QByteArray SqliteWriter::lookup(const QByteArray &text, QStringView alias, QStringView table,
                                QStringView column) const
{
    const QByteArray joined = name(alias) + '.';
    return collated(text) + " = +" + joined + name(column) + " AND " + joined +
           "_rowid_ IN (SELECT number FROM " + lookupTable(table, column) +
           " WHERE text = " + text + ')';
}

// SQLite makes a table of its own of what is asked for in the way above, anew for each row; a
// joined table it reads in place. A cross join is an inner one whose tables it takes in the written
// order.
QByteArray SqliteWriter::lookupJoin(QStringView alias, QStringView table, QStringView column) const
{
    return " CROSS JOIN " + lookupTable(table, column) + " AS " + lookupName(alias, column) +
           " CROSS JOIN ";
}

QByteArray SqliteWriter::joinedLookup(const QByteArray &text, QStringView alias,
                                      QStringView column) const
{
    const QByteArray joined = name(alias) + '.';
    const QByteArray lookup = lookupName(alias, column) + '.';
    return lookup + "text = " + text + " AND " + joined + "_rowid_ = " + lookup + "number AND " +
           collated(text) + " = +" + joined + name(column);
}

QByteArray SqliteWriter::identityQuery() const
{
    return "SELECT last_insert_rowid()";
}

QByteArray SqliteWriter::columnType(QStringView column, DataType type, int width) const
{
    const auto checked = [&](const char *declared, const QByteArray &condition) {
        return declared + dialect::rangeCheck(column, condition);
    };
    const auto whole = [&](const char *declared, const char *limits) {
        return checked(declared, name(column) + " BETWEEN " + limits);
    };
    const auto real = [&](const char *declared, const char *limit) {
        return checked(declared, "ABS(" + name(column) + ") < " + limit);
    };
    switch (type) {
    case DataType::SmallInt:
        return whole("SHORT", "-32768 AND 32767");
    case DataType::Integer:
        return whole("LONG", "-2147483648 AND 2147483647");
    case DataType::Single:
        return real("SINGLE", "3.4028235677973366e38"); // from there on no single is the nearest
    case DataType::Double:
        return real("DOUBLE", "9e999"); // which SQLite reads as the infinite
    case DataType::Currency:
        // A sum beyond 64 bits turns into a real number.
        return checked("CURRENCY", "typeof(" + name(column) + ") <> 'real'");
    case DataType::Date:
        return "DATE";
    case DataType::Boolean:
        return "BIT DEFAULT 0";
    case DataType::LongVarBinary:
        return "LONGBINARY";
    case DataType::VarWChar:
    case DataType::Empty:
        break;
    }
    return "TEXT(" + QByteArray::number(width) + ')';
}

QByteArray SqliteWriter::counterType(const QByteArray &constraintName) const
{
    const QByteArray key = "PRIMARY KEY AUTOINCREMENT";
    return constraintName.isEmpty() ? "INTEGER " + key
                                    : "INTEGER CONSTRAINT " + constraintName + ' ' + key;
}

QByteArray SqliteWriter::addedNotNull(DataType type) const
{
    switch (type) {
    case DataType::Boolean:
        return " NOT NULL"; // has its default already
    case DataType::VarWChar:
        return " NOT NULL DEFAULT ''";
    case DataType::Date:
        return " NOT NULL DEFAULT '1899-12-30'"; // the date of number 0
    case DataType::LongVarBinary:
        return " NOT NULL DEFAULT x''";
    default:
        return " NOT NULL DEFAULT 0";
    }
}

QByteArray SqliteWriter::constraintName(QStringView, QStringView constraint) const
{
    return name(constraint);
}

} // namespace ado
