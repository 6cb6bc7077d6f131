#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace ado::dialect {
struct Token;
}

namespace report {

/// The SELECT of a report file: what its columns are called in formulas, and the same statement
/// limited by one condition more.
class Query
{
public:
    /// One SELECT of the desktop dialect whose columns are named one by one. The dialect's own
    /// error for anything else, kReportFile for "*" and for a column that formulas could not name.
    explicit Query(const QString &statement);

    /// The column that "Tabell.Felt" or "Felt" means, counted from 0; -1 when there is none or the
    /// short name fits several. "Tabell" is a table of the query, or its alias where it has one.
    [[nodiscard]] int column(QStringView name) const;
    /// True when the query reads a table of that name or alias.
    [[nodiscard]] bool readsTable(QStringView name) const;
    [[nodiscard]] int columnCount() const { return int(m_columns.size()); }

    /// The statement for the rows that also meet `condition`; the statement itself when it is
    /// empty.
    [[nodiscard]] QString limitedBy(const QString &condition) const;

private:
    struct Column
    {
        QString table; ///< empty for a computed one
        QString name;
        QString alias; ///< may be empty
    };

    void findCondition(const std::vector<ado::dialect::Token> &tokens);

    QString m_statement;
    std::vector<Column> m_columns;
    std::vector<QString> m_tables;
    qsizetype m_conditionStart = 0; ///< where the WHERE's condition begins
    qsizetype m_conditionEnd = 0;   ///< where what follows the condition begins
    bool m_hasCondition = false;
};

} // namespace report
