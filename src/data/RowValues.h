#pragma once

#include <QString>
#include <QStringView>

#include <vector>

/// "INSERT INTO table (columns) VALUES (values)"; columns and literals are joined with "," already.
[[nodiscard]] QString insertStatement(const QString &table, const QString &columns,
                                      const QString &values);

/// The values of one row for the statement that stores it, in the order in which they are added.
class RowValues
{
public:
    RowValues();

    /// The literal goes into the statement as it stands. The column's name must outlive this
    /// object.
    RowValues &add(QStringView column, QString literal);
    /// Between apostrophes. One in the text itself is not doubled, and makes the statement fail.
    RowValues &addText(QStringView column, const QString &text);

    [[nodiscard]] QString insertInto(const QString &table) const;
    /// `where` is the condition, without the word WHERE.
    [[nodiscard]] QString update(const QString &table, const QString &where) const;

private:
    struct RowValue
    {
        QStringView column;
        QString literal;
    };
    /// What `part` appends of each value, joined with ",".
    template<class Part>
    [[nodiscard]] QString joined(Part part) const;

    std::vector<RowValue> m_values;
};
