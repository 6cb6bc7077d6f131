#pragma once

#include "runtime/Value.h"

#include <QHash>
#include <QString>
#include <QStringView>

#include <vector>

namespace ado::dialect {

/// A column as the database's catalogue tells it.
struct ColumnInfo
{
    QString name; ///< in the case in which it was created
    DataType type = DataType::VarWChar;
    int width = 0;         ///< characters of a text column; 0 for no limit
    bool counter = false;  ///< numbered by the database
    bool key = false;      ///< part of the primary key
    bool textOnly = false; ///< a text column that makes text of numbers
};

struct TableInfo
{
    QString name; ///< in the case in which it was created
    std::vector<ColumnInfo> columns;
    bool hasLookups = false; ///< sessions keep lookups (Translator.h) of its texts by need

    /// The column of that name without regard to case, or nullptr.
    [[nodiscard]] const ColumnInfo *column(QStringView columnName) const;
    /// The column that the database numbers, or nullptr.
    [[nodiscard]] const ColumnInfo *counter() const;
};

/// The tables of one database at one moment. Names are found without regard to case.
class Catalog
{
public:
    void add(TableInfo table);
    /// Null when there is no such table. The pointer is valid while the catalogue is unchanged.
    [[nodiscard]] const TableInfo *table(QStringView name) const;
    [[nodiscard]] const std::vector<TableInfo> &tables() const { return m_tables; }

private:
    std::vector<TableInfo> m_tables;
    QHash<QString, int> m_byFoldedName;
};

} // namespace ado::dialect
