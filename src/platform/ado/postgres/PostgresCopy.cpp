#include "platform/ado/postgres/PostgresCopy.h"

#include "platform/ado/RowSet.h"
#include "platform/ado/dialect/Writer.h"
#include "platform/ado/postgres/PostgresParameters.h"

#include <QByteArrayList>

namespace ado {

namespace {

QByteArray escaped(QByteArray text)
{
    return text.replace('\\', "\\\\")
        .replace('\t', "\\t")
        .replace('\n', "\\n")
        .replace('\r', "\\r");
}

QByteArray field(const Value &value)
{
    switch (value.type()) {
    case DataType::Empty:
        return "\\N";
    case DataType::VarWChar:
        return escaped(postgresText(value));
    case DataType::LongVarBinary:
        return "\\\\x" + value.toBytes().toHex();
    default:
        return postgresText(value);
    }
}

} // namespace

QByteArray copyStatement(const dialect::TableInfo &table,
                         const std::vector<dialect::ResultColumn> &columns)
{
    QByteArrayList names;
    for (const dialect::ResultColumn &column : columns)
        names += dialect::Writer::name(column.name);
    return "COPY " + dialect::Writer::name(table.name) + " (" + names.join(", ") + ") FROM STDIN";
}

QByteArray copyLine(const RowSet &rows, int row)
{
    QByteArray line;
    for (int column = 0; column < rows.columnCount(); ++column) {
        line += field(rows.value(row, column));
        line += column + 1 < rows.columnCount() ? '\t' : '\n';
    }
    return line;
}

} // namespace ado
