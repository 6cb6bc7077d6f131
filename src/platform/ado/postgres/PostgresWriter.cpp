#include "platform/ado/postgres/PostgresWriter.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/dialect/Overflow.h"

using namespace Qt::StringLiterals;

namespace ado {

using dialect::Aggregate;
using dialect::DatePart;

namespace {

constexpr qsizetype kLongestName = 63; // bytes of UTF-8
constexpr char kCollate[] = " COLLATE \"norsk\"";

/// The type in which values of a dialect type are computed and leave the database.
const char *typeName(DataType type)
{
    switch (type) {
    case DataType::SmallInt:
        return "int2";
    case DataType::Integer:
        return "int4";
    case DataType::Single:
        return "float4";
    case DataType::Double:
        return "float8";
    case DataType::Currency:
        return "numeric(19,4)";
    case DataType::Date:
        return "timestamp(0)";
    case DataType::Boolean:
        return "bool";
    case DataType::LongVarBinary:
        return "bytea";
    case DataType::VarWChar:
    case DataType::Empty:
        break;
    }
    return "text";
}

QByteArray cast(const QByteArray &operand, const char *type)
{
    return '(' + operand + "::" + type + ')';
}

/// The double of a SINGLE's shortest decimal form: 0.1 and not 0.10000000149011612.
QByteArray shortestDouble(const QByteArray &single)
{
    return cast(single, "text::float8");
}

/// The text between apostrophes.
QByteArray literal(const QByteArray &text)
{
    return '\'' + QByteArray(text).replace('\'', "''") + '\'';
}

/// The sequence behind a counter.
QByteArray sequenceOf(QStringView table, QStringView counter)
{
    return "pg_get_serial_sequence(" + literal(dialect::Writer::name(table)) + ", " +
           literal(counter.toUtf8()) + ')';
}

QByteArray isAhead(const QByteArray &number, const QByteArray &sequence)
{
    return number + " > COALESCE(pg_sequence_last_value(" + sequence + "), 0)";
}

} // namespace

bool PostgresWriter::needsCollation(const QByteArray &sql)
{
    return sql.contains(kCollate);
}

QByteArray PostgresWriter::column(QStringView alias, QStringView column, DataType type) const
{
    QByteArray sql = Writer::column(alias, column, type) + "::" + typeName(type);
    if (type == DataType::VarWChar)
        sql += kCollate;
    return '(' + sql + ')';
}

QByteArray PostgresWriter::placeHolder(int number, DataType type) const
{
    QByteArray sql = '$' + QByteArray::number(number) + "::" + typeName(type);
    if (type == DataType::VarWChar)
        sql += kCollate;
    return '(' + sql + ')';
}

QByteArray PostgresWriter::null(DataType type) const
{
    return cast("NULL", typeName(type));
}

QByteArray PostgresWriter::truth(bool value) const
{
    return value ? "TRUE" : "FALSE";
}

QByteArray PostgresWriter::convert(const QByteArray &operand, DataType from, DataType to) const
{
    if (to == DataType::Boolean)
        return '(' + operand + " <> 0)";
    if (from == DataType::Boolean) {
        const QByteArray number = "(-" + cast(operand, "int4") + ')';
        return to == DataType::Integer ? number : convert(number, DataType::Integer, to);
    }
    const bool fromReal = from == DataType::Single || from == DataType::Double;
    // float8 goes to the nearest whole number, a half to the even one; numeric away from zero.
    if (to == DataType::Currency && fromReal) {
        const QByteArray real = from == DataType::Single ? shortestDouble(operand) : operand;
        return cast("((" + real + " * 10000)::int8 * 0.0001)", typeName(to));
    }
    if (from == DataType::Currency && (to == DataType::Integer || to == DataType::SmallInt))
        return cast(cast(operand, "float8"), typeName(to));
    if (from == DataType::Single && to == DataType::Double)
        return shortestDouble(operand);
    // What is nearer to 0 than to the least single is an error in a cast.
    if (from == DataType::Double && to == DataType::Single)
        return "(CASE WHEN ABS(" + operand + ") <= 7.006492321624085e-46 THEN 0 ELSE " + operand +
               " END::float4)";
    return cast(operand, typeName(to));
}

QByteArray PostgresWriter::cut(const QByteArray &operand, int width) const
{
    return "left(" + operand + ", " + QByteArray::number(width) + ')';
}

// A numeric has room for more than 64 bits of ten-thousandths.
QByteArray PostgresWriter::exact(const QByteArray &reckoned, DataType type) const
{
    return type == DataType::Currency ? "((" + reckoned + ") * 10000)::int8 * 0.0001" : reckoned;
}

QByteArray PostgresWriter::datePart(DatePart part, const QByteArray &operand) const
{
    const char *const field = part == DatePart::Year    ? "YEAR"
                              : part == DatePart::Month ? "MONTH"
                                                        : "DAY";
    return cast(QByteArray("EXTRACT(") + field + " FROM " + cast(operand, "timestamp") + ')',
                "int4");
}

QByteArray PostgresWriter::aggregate(Aggregate function, const QByteArray &operand,
                                     DataType type) const
{
    const auto call = [&](const char *name) { return QByteArray(name) + '(' + operand + ')'; };
    switch (function) {
    case Aggregate::Count:
        return cast(call("COUNT"), "int4");
    case Aggregate::Sum:
    case Aggregate::Avg: {
        const char *const name = function == Aggregate::Sum ? "SUM" : "AVG";
        if (type == DataType::Currency && function == Aggregate::Sum)
            return '(' + exact(call(name), type) + ')';
        if (type == DataType::Currency)
            return convert(cast(call(name), "float8"), DataType::Double, type);
        const QByteArray real =
            type == DataType::Single ? shortestDouble(operand) : cast(operand, "float8");
        return QByteArray(name) + '(' + real + ')';
    }
    case Aggregate::Max:
        return call("MAX");
    case Aggregate::Min:
        break;
    }
    return call("MIN");
}

QByteArray PostgresWriter::collated(const QByteArray &text) const
{
    return text; // is so from its columns and place holders on
}

QByteArray PostgresWriter::orderItem(const QByteArray &operand, bool descending) const
{
    return operand + (descending ? " DESC NULLS LAST" : " NULLS FIRST");
}

QByteArray PostgresWriter::resultItem(const QByteArray &operand, DataType type) const
{
    return cast(operand, typeName(type));
}

QByteArray PostgresWriter::identityQuery() const
{
    return {};
}

QByteArray PostgresWriter::counterResult(QStringView table, QStringView counter, bool given) const
{
    const QByteArray number = name(counter);
    QByteArray returned = " RETURNING " + number;
    if (!given)
        return returned;
    // A number given by the statement moves the sequence on, so that it is not handed out again.
    const QByteArray sequence = sequenceOf(table, counter);
    return returned + ", CASE WHEN " + isAhead(number, sequence) + " THEN setval(" + sequence +
           ", " + number + ") END";
}

QByteArray PostgresWriter::knowsRelation(const QByteArray &quotedName)
{
    return "SELECT to_regclass(" + literal(quotedName) + ") IS NOT NULL";
}

QByteArray PostgresWriter::counterBehindRows(QStringView table, QStringView counter)
{
    const QByteArray sequence = sequenceOf(table, counter);
    return "SELECT setval(" + sequence + ", t.largest) FROM (SELECT MAX(" + name(counter) +
           ") AS largest FROM " + name(table) + ") AS t WHERE " + isAhead("t.largest", sequence);
}

void PostgresWriter::requireShortNames(const QByteArray &definition)
{
    qsizetype begin = 0;
    while ((begin = definition.indexOf('"', begin)) >= 0) {
        qsizetype end = definition.indexOf('"', ++begin);
        while (end >= 0 && definition.mid(end + 1, 1) == "\"")
            end = definition.indexOf('"', end + 2);
        const QByteArray name = definition.mid(begin, end - begin).replace("\"\"", "\"");
        if (name.size() > kLongestName)
            throw RunTimeError(
                errors::kSyntax,
                u"Navnet «%1» er for langt for databasetjeneren."_s.arg(QString::fromUtf8(name)));
        begin = end + 1;
    }
}

QByteArray PostgresWriter::counterBehind(QStringView table, QStringView counter, qint64 number)
{
    const QByteArray sequence = sequenceOf(table, counter);
    const QByteArray behind = QByteArray::number(number);
    return "SELECT setval(" + sequence + ", " + behind + ") WHERE " + isAhead(behind, sequence);
}

QByteArray PostgresWriter::lastNumber(QStringView table, QStringView counter)
{
    // Who may read the table alone does not get to know it.
    const QByteArray sequence = sequenceOf(table, counter);
    return "SELECT CASE WHEN has_sequence_privilege(" + sequence +
           ", 'USAGE, SELECT') THEN COALESCE(pg_sequence_last_value(" + sequence +
           "), 0) ELSE 0 END";
}

QByteArray PostgresWriter::columnType(QStringView column, DataType type, int width) const
{
    switch (type) {
    case DataType::SmallInt:
        return "smallint";
    case DataType::Integer:
        return "integer";
    case DataType::Single:
        return "real";
    case DataType::Double:
        return "double precision";
    case DataType::Currency:
        // The ends of 64 bits; nineteen digits reach a little farther.
        return "numeric(19,4)" +
               dialect::rangeCheck(column, name(column) + " BETWEEN -922337203685477.5808 AND "
                                                          "922337203685477.5807");
    case DataType::Date:
        return "timestamp(0) without time zone";
    case DataType::Boolean:
        return "boolean DEFAULT FALSE";
    case DataType::LongVarBinary:
        return "bytea";
    case DataType::VarWChar:
    case DataType::Empty:
        break;
    }
    return "varchar(" + QByteArray::number(width) + ')' + kCollate;
}

QByteArray PostgresWriter::counterType(const QByteArray &constraintName) const
{
    const QByteArray type = "integer GENERATED BY DEFAULT AS IDENTITY ";
    return type + (constraintName.isEmpty() ? "" : "CONSTRAINT " + constraintName + ' ') +
           "PRIMARY KEY";
}

QByteArray PostgresWriter::addedNotNull(DataType type) const
{
    switch (type) {
    case DataType::Boolean:
        return " NOT NULL"; // has its default already
    case DataType::VarWChar:
    case DataType::LongVarBinary:
        return " NOT NULL DEFAULT ''";
    case DataType::Date:
        return " NOT NULL DEFAULT '1899-12-30'"; // the date of number 0
    default:
        return " NOT NULL DEFAULT 0";
    }
}

// A key's constraint makes an index of its name, which is the only one in the whole schema.
QByteArray PostgresWriter::constraintName(QStringView table, QStringView constraint) const
{
    return name(table.toString() + u'.' + constraint.toString());
}

} // namespace ado
