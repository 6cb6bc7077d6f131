#include "host/tasks/CopySchema.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

using ado::dialect::Catalog;
using ado::dialect::ColumnInfo;
using ado::dialect::TableInfo;

namespace {

constexpr int kWidestText = 255;

bool isNumbered(const Catalog &catalog, QStringView tableName)
{
    const TableInfo *table = catalog.table(tableName);
    const ColumnInfo *id = table ? table->column(u"ID") : nullptr;
    return id && id->key;
}

bool refersToOrdre(const TableInfo &table, const Catalog &catalog)
{
    return table.name == "OrdreLinjer"_L1 && table.column(u"OrdreID") &&
           isNumbered(catalog, u"Ordre");
}

QString bracketed(const QString &name)
{
    return u'[' + name + u']';
}

QString typeText(const ColumnInfo &column)
{
    switch (column.type) {
    case DataType::SmallInt:
        return u"SHORT"_s;
    case DataType::Integer:
        return u"LONG"_s;
    case DataType::Single:
        return u"SINGLE"_s;
    case DataType::Double:
        return u"DOUBLE"_s;
    case DataType::Currency:
        return u"CURRENCY"_s;
    case DataType::Date:
        return u"DATE"_s;
    case DataType::Boolean:
        return u"BIT"_s;
    case DataType::LongVarBinary:
        return u"LONGBINARY"_s;
    case DataType::VarWChar:
    case DataType::Empty:
        break;
    }
    const bool fits = column.width > 0 && column.width <= kWidestText;
    return u"TEXT(%1)"_s.arg(fits ? column.width : kWidestText);
}

} // namespace

std::vector<const TableInfo *> copyOrder(const Catalog &catalog)
{
    std::vector<const TableInfo *> order;
    for (const TableInfo &table : catalog.tables())
        order.push_back(&table);
    std::stable_partition(order.begin(), order.end(),
                          [&](const TableInfo *table) { return !refersToOrdre(*table, catalog); });
    return order;
}

QString createStatement(const TableInfo &table, const Catalog &catalog)
{
    QStringList key;
    for (const ColumnInfo &column : table.columns) {
        if (column.key)
            key += bracketed(column.name);
    }
    QStringList parts;
    bool keyIsCounter = false;
    for (const ColumnInfo &column : table.columns) {
        const QString name = bracketed(column.name);
        // The dialect has a counter only as a table's whole key.
        if (column.counter && column.key && key.size() == 1 && column.type == DataType::Integer) {
            keyIsCounter = true;
            parts += name + u" COUNTER CONSTRAINT "_s + name + u" PRIMARY KEY"_s;
        } else {
            parts += name + u' ' + typeText(column);
        }
    }
    if (!key.isEmpty() && !keyIsCounter)
        parts += u"PRIMARY KEY ("_s + key.join(u", "_s) + u')';
    if (table.name == "Ordre"_L1 && table.column(u"KlientNr") && table.column(u"OrdreNr"))
        parts += u"CONSTRAINT KlientOrdre UNIQUE (KlientNr, OrdreNr)"_s;
    if (refersToOrdre(table, catalog))
        parts += u"CONSTRAINT OrdreID FOREIGN KEY (OrdreID) REFERENCES Ordre (ID)"_s;
    return u"CREATE TABLE %1 (%2)"_s.arg(bracketed(table.name), parts.join(u", "_s));
}
