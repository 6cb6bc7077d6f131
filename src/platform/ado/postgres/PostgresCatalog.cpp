#include "platform/ado/postgres/PostgresCatalog.h"

#include "platform/ado/postgres/Libpq.h"
#include "platform/ado/postgres/PostgresLink.h"

#include <string_view>

namespace ado {

namespace {

// One row a column.
constexpr char kColumns[] =
    "SELECT c.oid, c.relname, a.attname, t.typname, a.atttypmod,"
    " COALESCE(a.attnum = ANY(i.indkey), FALSE),"
    " a.attidentity <> '' OR COALESCE(pg_get_expr(d.adbin, d.adrelid) LIKE 'nextval(%', FALSE)"
    " FROM pg_catalog.pg_class AS c"
    " JOIN pg_catalog.pg_namespace AS n ON n.oid = c.relnamespace"
    " JOIN pg_catalog.pg_attribute AS a ON a.attrelid = c.oid"
    " JOIN pg_catalog.pg_type AS t ON t.oid = a.atttypid"
    " LEFT JOIN pg_catalog.pg_index AS i ON i.indrelid = c.oid AND i.indisprimary"
    " LEFT JOIN pg_catalog.pg_attrdef AS d ON d.adrelid = c.oid AND d.adnum = a.attnum"
    " WHERE n.nspname = ANY(current_schemas(FALSE)) AND pg_table_is_visible(c.oid)"
    " AND c.relkind IN ('r', 'p') AND a.attnum > 0 AND NOT a.attisdropped"
    " ORDER BY c.oid, a.attnum";

constexpr int kHeader = 4; // of a type modifier, which counts itself

struct TypeName
{
    std::string_view name;
    DataType type;
};

constexpr TypeName kTypeNames[] = {
    {"int2", DataType::SmallInt}, {"int4", DataType::Integer},
    {"float4", DataType::Single}, {"float8", DataType::Double},
    {"int8", DataType::Double},   {"timestamp", DataType::Date},
    {"date", DataType::Date},     {"timestamptz", DataType::Date},
    {"bool", DataType::Boolean},  {"bytea", DataType::LongVarBinary},
};

/// Money, unless it may hold more decimals or larger numbers than that.
DataType numericType(int modifier)
{
    if (modifier < kHeader)
        return DataType::Double;
    const int precision = (modifier - kHeader) >> 16;
    const int scale = (modifier - kHeader) & 0x7ff;
    return scale <= 4 && precision - scale <= 15 ? DataType::Currency : DataType::Double;
}

dialect::ColumnInfo columnOf(std::string_view type, int modifier)
{
    dialect::ColumnInfo info;
    if (type == "numeric")
        info.type = numericType(modifier);
    for (const TypeName &known : kTypeNames) {
        if (known.name == type)
            info.type = known.type;
    }
    if ((type == "varchar" || type == "bpchar") && modifier > kHeader)
        info.width = modifier - kHeader;
    return info;
}

} // namespace

dialect::Catalog readCatalog(PostgresLink &link)
{
    const PostgresResult result = link.run(kColumns);
    const auto text = [&](int row, int column) { return PQgetvalue(result.get(), row, column); };
    const auto truth = [&](int row, int column) { return *text(row, column) == 't'; };

    dialect::Catalog catalog;
    dialect::TableInfo table;
    const int count = PQntuples(result.get());
    for (int row = 0; row < count; ++row) {
        table.name = QString::fromUtf8(text(row, 1));
        dialect::ColumnInfo info = columnOf(text(row, 3), QByteArray(text(row, 4)).toInt());
        info.name = QString::fromUtf8(text(row, 2));
        info.key = truth(row, 5);
        info.counter = truth(row, 6);
        table.columns.push_back(std::move(info));
        const bool last = row + 1 == count || qstrcmp(text(row, 0), text(row + 1, 0)) != 0;
        if (last)
            catalog.add(std::exchange(table, {}));
    }
    return catalog;
}

} // namespace ado
