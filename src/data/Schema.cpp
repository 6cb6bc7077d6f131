#include "data/Schema.h"

#include "data/clsAdoUtils.h"
#include "runtime/Conversions.h"
#include "state/Messages.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

std::vector<SchemaCol> gSchema;

namespace {

/// The catalogue's rows go into gSchema; without rows it stays unfilled.
void readSchema()
{
    Ref<ado::Recordset> columns;
    passOver([&] { columns = gConn->openSchema(ado::SchemaList::Columns); });
    int count = 0;
    passOver([&] { count = columns->recordCount(); });
    if (count == 0)
        return;

    gSchema.assign(size_t(count) + 1, {});
    for (size_t i = 1; i < gSchema.size() && !columns->eof(); ++i) {
        passOver([&] { gSchema[i].table = columns->text(u"TABLE_NAME"); });
        passOver([&] { gSchema[i].column = columns->text(u"COLUMN_NAME"); });
        passOver([&] { gSchema[i].dataType = columns->value(u"Data_Type").toInteger(); });
        columns->moveNext();
    }
    columns->close();
}

QString typeText(FieldType type)
{
    switch (type) {
    case FieldType::Bit:
        return u"BIT"_s;
    case FieldType::Counter:
        return u"COUNTER"_s;
    case FieldType::Currency:
        return u"CURRENCY"_s;
    case FieldType::DateTime:
        return u"DATETIME"_s;
    case FieldType::Double:
        return u"DOUBLE"_s;
    case FieldType::Long:
        return u"LONG NULL"_s;
    case FieldType::Short:
        return u"SHORT NULL"_s;
    case FieldType::Single:
        return u"SINGLE"_s;
    case FieldType::Text:
        return u"TEXT"_s;
    case FieldType::LongBinary:
        return u"LONGBINARY NULL"_s;
    }
    throw RunTimeError(errors::kInvalidCall);
}

} // namespace

bool FieldExists(const QString &table, const QString &column, qint16 &dataType, bool tableOnly)
{
    if (gSchema.size() < 2)
        readSchema();

    const QString wantedTable = trimBlanks(table);
    const QString wantedColumn = trimBlanks(column);
    for (const SchemaCol &known : gSchema) {
        if (trimBlanks(known.table) != wantedTable)
            continue;
        if (tableOnly)
            return true;
        if (trimBlanks(known.column) == wantedColumn) {
            dataType = known.dataType;
            return true;
        }
    }
    return false;
}

bool TableExists(const QString &table)
{
    qint16 unused = 0;
    return FieldExists(table, QString(), unused, true);
}

bool AddField(const QString &table, const QString &column, FieldType type, qint16 width)
{
    try {
        QString text = typeText(type);
        qint16 unused = 0;
        if (FieldExists(table, column, unused, false))
            return true;
        if (type == FieldType::Text)
            text += u'(' + QString::number(width) + u')';
        return gDB->Execute(u"ALTER TABLE "_s + table + u" ADD COLUMN "_s + column + u' ' + text);
    } catch (const RunTimeError &error) {
        messages::show(QString::number(error.number()) + u' ' + error.description());
        return false;
    }
}

bool DropField(const QString &table, const QString &column)
{
    qint16 unused = 0;
    if (!FieldExists(table, column, unused, false))
        return true;
    return gDB->Execute(u"ALTER TABLE "_s + table + u" DROP COLUMN "_s + column);
}
