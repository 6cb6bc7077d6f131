#include "platform/ado/sqlite/SqliteCatalog.h"

#include "platform/ado/sqlite/SqliteStatement.h"

#include <string_view>

namespace ado {

namespace {

struct TypeName
{
    QLatin1StringView name;
    DataType type;
};

constexpr std::array kTypeNames{
    // The dialect's own.
    TypeName{QLatin1StringView("SHORT"), DataType::SmallInt},
    TypeName{QLatin1StringView("LONG"), DataType::Integer},
    TypeName{QLatin1StringView("INTEGER"), DataType::Integer},
    TypeName{QLatin1StringView("SINGLE"), DataType::Single},
    TypeName{QLatin1StringView("DOUBLE"), DataType::Double},
    TypeName{QLatin1StringView("CURRENCY"), DataType::Currency},
    TypeName{QLatin1StringView("DATE"), DataType::Date},
    TypeName{QLatin1StringView("BIT"), DataType::Boolean},
    TypeName{QLatin1StringView("TEXT"), DataType::VarWChar},
    TypeName{QLatin1StringView("LONGBINARY"), DataType::LongVarBinary},
    // Others, where affinity alone would tell too little.
    TypeName{QLatin1StringView("SMALLINT"), DataType::SmallInt},
    TypeName{QLatin1StringView("TINYINT"), DataType::SmallInt},
    TypeName{QLatin1StringView("INT2"), DataType::SmallInt},
    TypeName{QLatin1StringView("BIGINT"), DataType::Double},
    TypeName{QLatin1StringView("INT8"), DataType::Double},
    TypeName{QLatin1StringView("BOOLEAN"), DataType::Boolean},
    TypeName{QLatin1StringView("BOOL"), DataType::Boolean},
    TypeName{QLatin1StringView("DATETIME"), DataType::Date},
    TypeName{QLatin1StringView("TIMESTAMP"), DataType::Date},
};

/// The rules of "Determination of Column Affinity" in SQLite's documentation, in their order.
DataType byAffinity(QStringView declaration)
{
    const auto has = [declaration](QLatin1StringView part) {
        return declaration.contains(part, Qt::CaseInsensitive);
    };
    if (has(QLatin1StringView("INT")))
        return DataType::Integer;
    if (has(QLatin1StringView("CHAR")) || has(QLatin1StringView("CLOB")) ||
        has(QLatin1StringView("TEXT")))
        return DataType::VarWChar;
    if (has(QLatin1StringView("BLOB")))
        return DataType::LongVarBinary;
    // A column without any type takes whatever it is given; text can show all of it but bytes.
    return declaration.isEmpty() ? DataType::VarWChar : DataType::Double;
}

} // namespace

DeclaredType declaredType(QStringView declaration)
{
    const qsizetype bracket = declaration.indexOf(u'(');
    const QStringView name =
        declaration.first(bracket < 0 ? declaration.size() : bracket).trimmed();
    DeclaredType result{byAffinity(name), 0};
    for (const TypeName &known : kTypeNames) {
        if (name.compare(known.name, Qt::CaseInsensitive) == 0)
            result.type = known.type;
    }
    if (result.type == DataType::VarWChar && bracket >= 0) {
        const QStringView inside = declaration.sliced(bracket + 1);
        const qsizetype end = inside.indexOf(u')');
        result.width = std::max(0, inside.first(end < 0 ? inside.size() : end).trimmed().toInt());
    }
    return result;
}

dialect::Catalog readCatalog(sqlite3 *database)
{
    // One row a column, with the number of key columns of its table and whether it has a row
    // number.
    SqliteStatement columns(
        database, "SELECT t.name, c.name, c.type, c.pk,"
                  " (SELECT COUNT(*) FROM pragma_table_xinfo(t.name) AS k WHERE k.pk > 0), t.wr"
                  " FROM sqlite_schema AS s JOIN pragma_table_list(s.name) AS t"
                  " JOIN pragma_table_xinfo(t.name) AS c"
                  " WHERE s.type = 'table' AND s.name NOT LIKE 'sqlite\\_%' ESCAPE '\\'"
                  " AND t.schema = 'main' AND t.type = 'table' AND c.hidden = 0"
                  " ORDER BY s.rowid, c.cid");
    dialect::Catalog catalog;
    dialect::TableInfo table;
    const auto finish = [&] {
        if (!table.columns.empty())
            catalog.add(std::move(table));
        table = {};
    };
    while (columns.step()) {
        const QString tableName = columns.text(0);
        if (tableName != table.name) {
            finish();
            table.name = tableName;
        }
        const QString declaration = columns.text(2);
        const DeclaredType declared = declaredType(declaration);
        dialect::ColumnInfo info;
        info.name = columns.text(1);
        info.type = declared.type;
        info.width = declared.width;
        info.key = columns.integer(3) > 0;
        // The single key declared exactly so is the row number itself, which SQLite hands out.
        info.counter = info.key && columns.integer(4) == 1 && columns.integer(5) == 0 &&
                       declaration.compare(QLatin1StringView("INTEGER"), Qt::CaseInsensitive) == 0;
        table.columns.push_back(std::move(info));
    }
    finish();
    return catalog;
}

} // namespace ado
