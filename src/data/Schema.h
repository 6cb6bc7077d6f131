#pragma once

#include <QString>

#include <vector>

/// One column of the database's catalogue.
struct SchemaCol
{
    QString table;
    QString column;
    qint16 dataType = 0; ///< a DataType code
};

/// The catalogue as it stood when a column was first asked for. Columns stand from index 1 on, and
/// index 0 is empty. It is filled once per load and never refreshed, so whatever the module itself
/// makes afterwards is not in it.
extern std::vector<SchemaCol> gSchema;

/// Types that AddField can give a column.
enum class FieldType : qint16 {
    Bit = 1,
    Counter = 2,
    Currency = 3,
    DateTime = 4,
    Double = 5,
    Long = 6,
    Short = 7,
    Single = 8,
    Text = 9,
    LongBinary = 10,
};

/// True when the catalogue holds the column; its type code then goes to `dataType`. With
/// `tableOnly` the table alone is looked for and `dataType` stays as it is. Names are compared
/// trimmed of blanks and with regard to case. A catalogue that cannot be read holds nothing and is
/// asked again next time. Never raises.
[[nodiscard]] bool FieldExists(const QString &table, const QString &column, qint16 &dataType,
                               bool tableOnly);

[[nodiscard]] bool TableExists(const QString &table);

/// Adds a column unless the catalogue holds it. `width` is in characters and read for Text only.
/// False when the database refuses (the reason is in gDB's LastError), and for a type that does not
/// exist, which a message box tells.
bool AddField(const QString &table, const QString &column, FieldType type, qint16 width = 0);

/// Drops a column if the catalogue holds it. False when the database refuses.
bool DropField(const QString &table, const QString &column);
