#pragma once

#include "runtime/Currency.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

/// One table of the demo company's data, compiled into the program: UTF-8 text, one row a line,
/// fields parted by tabs, the first line with the columns' names. Numbers have a decimal point.
class DemoTable
{
public:
    class Row
    {
    public:
        [[nodiscard]] QString text(QStringView column) const;
        /// An empty field is 0.
        [[nodiscard]] int integer(QStringView column) const;
        [[nodiscard]] Currency amount(QStringView column) const;

    private:
        friend class DemoTable;
        Row(const DemoTable &table, QStringList fields);

        const DemoTable *m_table;
        QStringList m_fields;
    };

    /// `name` is the file's name without ".tsv". A table or column that does not exist is an error
    /// of the program and raises error 5.
    explicit DemoTable(const QString &name);
    DemoTable(const DemoTable &) = delete;
    DemoTable &operator=(const DemoTable &) = delete;

    /// The rows refer to this table and live no longer than it.
    [[nodiscard]] const std::vector<Row> &rows() const { return m_rows; }

private:
    QHash<QString, int> m_columns;
    std::vector<Row> m_rows;
};
