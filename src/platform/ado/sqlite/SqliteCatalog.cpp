#include "platform/ado/sqlite/SqliteCatalog.h"

#include "platform/ado/sqlite/SqliteStatement.h"

#include <algorithm>

using namespace Qt::StringLiterals;

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

// By its name first: that of nearly every column is the dialect's own.
DataType typeOf(QStringView declaration)
{
    for (const TypeName &known : kTypeNames) {
        if (declaration.compare(known.name, Qt::CaseInsensitive) == 0)
            return known.type;
    }
    return byAffinity(declaration);
}

/// A single key declared exactly as INTEGER is the row number itself, which SQLite hands out; one
/// of several is not.
dialect::TableInfo withCounter(dialect::TableInfo table)
{
    if (std::ranges::count(table.columns, true, &dialect::ColumnInfo::key) != 1) {
        for (dialect::ColumnInfo &column : table.columns)
            column.counter = false;
    }
    return table;
}

} // namespace

DeclaredType declaredType(QStringView declaration)
{
    const qsizetype bracket = declaration.indexOf(u'(');
    const QStringView name =
        declaration.first(bracket < 0 ? declaration.size() : bracket).trimmed();
    DeclaredType result{typeOf(name), 0};
    if (result.type == DataType::VarWChar && bracket >= 0) {
        const QStringView inside = declaration.sliced(bracket + 1);
        const qsizetype end = inside.indexOf(u')');
        result.width = std::max(0, inside.first(end < 0 ? inside.size() : end).trimmed().toInt());
    }
    return result;
}

dialect::Catalog readCatalog(sqlite3 *database)
{
    // One row a column. Each table's columns are asked for once, since each such question is a
    // statement of its own to SQLite.
    SqliteStatement columns(
        database, "SELECT t.name, c.name, c.type, c.pk, t.wr, c.hidden"
                  " FROM pragma_table_list AS t CROSS JOIN sqlite_schema AS s ON s.name = t.name"
                  " CROSS JOIN pragma_table_xinfo(t.name) AS c"
                  " WHERE t.schema = 'main' AND t.type = 'table' AND s.type = 'table'"
                  " AND t.name NOT LIKE 'sqlite\\_%' ESCAPE '\\'"
                  " ORDER BY s.rowid, c.cid");
    dialect::Catalog catalog;
    dialect::TableInfo table;
    const auto finish = [&] {
        if (!table.columns.empty())
            catalog.add(withCounter(std::move(table)));
        table = {};
    };
    while (columns.step()) {
        const QString tableName = columns.text(0);
        const bool hasRowNumbers = columns.integer(4) == 0;
        if (tableName != table.name) {
            finish();
            table.name = tableName;
            table.hasLookups = hasRowNumbers;
        }
        const QString name = columns.text(1);
        // The word would name the column then, and not the row's number.
        if (name.compare("_rowid_"_L1, Qt::CaseInsensitive) == 0)
            table.hasLookups = false;
        if (columns.integer(5) != 0)
            continue;
        const QString declaration = columns.text(2);
        const DeclaredType declared = declaredType(declaration);
        dialect::ColumnInfo info;
        info.name = name;
        info.type = declared.type;
        info.width = declared.width;
        info.key = columns.integer(3) > 0;
        info.counter = info.key && hasRowNumbers &&
                       declaration.compare("INTEGER"_L1, Qt::CaseInsensitive) == 0;
        // A column without any type keeps numbers as they come.
        info.textOnly = info.type == DataType::VarWChar && !declaration.isEmpty();
        table.columns.push_back(std::move(info));
    }
    finish();
    return catalog;
}

} // namespace ado
