#include "platform/ado/WriteBack.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/RowSet.h"
#include "platform/ado/dialect/Writer.h"

#include <QByteArrayList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

const dialect::TableInfo &required(const dialect::TableInfo *table)
{
    if (!table)
        throw RunTimeError(errors::kSyntax,
                           u"Postsettet kan ikke lagres: det hører ikke til én tabell."_s);
    return *table;
}

/// The parts of one statement, with its parameters in the order in which they were asked for.
class Statement
{
public:
    Statement(const RowSet &rows, const dialect::Writer &writer) : m_rows(rows), m_writer(writer) {}

    QByteArray name(int column) const { return dialect::Writer::name(info(column).baseColumn); }
    QByteArray place(int column, const Value &value)
    {
        m_values.push_back(value);
        return m_writer.placeHolder(int(m_values.size()), info(column).type);
    }
    const std::vector<Value> &values() const { return m_values; }

private:
    const dialect::ResultColumn &info(int column) const { return m_rows.columns()[size_t(column)]; }

    const RowSet &m_rows;
    const dialect::Writer &m_writer;
    std::vector<Value> m_values;
};

} // namespace

WriteBack::WriteBack(const RowSet &rows, const dialect::TableInfo *table,
                     const dialect::Writer &writer, Runner run)
    : m_rows(rows), m_table(required(table)), m_writer(writer), m_run(std::move(run))
{
    if (!findByKey())
        findByContent();
    if (m_findingColumns.empty())
        throw RunTimeError(
            errors::kSyntax,
            u"Postsettet kan ikke lagres: det viser ingen felt fra tabellen «%1»."_s.arg(
                m_table.name));
}

/// False when the rows do not show the whole key, or the table has none.
bool WriteBack::findByKey()
{
    const auto &columns = m_rows.columns();
    std::vector<int> shownKeys;
    for (const dialect::ColumnInfo &key : m_table.columns) {
        if (!key.key)
            continue;
        const auto shown = std::find_if(columns.begin(), columns.end(), [&](const auto &column) {
            return column.baseColumn == key.name;
        });
        if (shown == columns.end())
            return false;
        shownKeys.push_back(int(shown - columns.begin()));
        if (key.counter)
            m_counterColumn = shownKeys.back();
    }
    m_findingColumns = std::move(shownKeys);
    return !m_findingColumns.empty();
}

/// By all that was read of them. What a unique key tells apart is told apart by this too.
void WriteBack::findByContent()
{
    m_byContent = true;
    m_counterColumn = -1;
    for (int column = 0; column < m_rows.columnCount(); ++column) {
        if (!m_rows.columns()[size_t(column)].baseColumn.isEmpty())
            m_findingColumns.push_back(column);
    }
}

void WriteBack::write(const std::vector<int> &changedRows)
{
    for (const int row : changedRows) {
        if (m_rows.isNew(row)) {
            m_written.push_back({row, true, insert(row)});
        } else {
            update(row);
            m_written.push_back({row, false, 0});
        }
    }
}

qint32 WriteBack::insert(int row) const
{
    Statement statement(m_rows, m_writer);
    QByteArrayList names;
    QByteArrayList places;
    bool numberGiven = false;
    for (const int column : m_rows.changedColumns(row)) {
        names += statement.name(column);
        places += statement.place(column, m_rows.value(row, column));
        numberGiven = numberGiven || column == m_counterColumn;
    }
    QByteArray sql = "INSERT INTO " + dialect::Writer::name(m_table.name);
    sql += names.isEmpty() ? QByteArray(" DEFAULT VALUES")
                           : " (" + names.join(", ") + ") VALUES (" + places.join(", ") + ')';
    if (m_counterColumn >= 0)
        sql += m_writer.counterResult(
            m_table.name, m_rows.columns()[size_t(m_counterColumn)].baseColumn, numberGiven);
    return m_run(sql, statement.values()).number;
}

void WriteBack::update(int row) const
{
    Statement statement(m_rows, m_writer);
    QByteArrayList changes;
    for (const int column : m_rows.changedColumns(row))
        changes +=
            statement.name(column) + " = " + statement.place(column, m_rows.value(row, column));
    QByteArrayList tests;
    for (const int column : m_findingColumns)
        tests += statement.name(column) + (m_byContent ? " IS NOT DISTINCT FROM " : " = ") +
                 statement.place(column, m_rows.storedValue(row, column));
    const QByteArray sql = "UPDATE " + dialect::Writer::name(m_table.name) + " SET " +
                           changes.join(", ") + " WHERE " + tests.join(" AND ");
    const qint64 hit = m_run(sql, statement.values()).rows;
    if (hit > 1)
        throw RunTimeError(errors::kIntegrity,
                           u"Posten som skulle endres i tabellen «%1», er ikke til å skille fra "
                           "andre."_s.arg(m_table.name));
    if (hit == 0)
        throw RunTimeError(
            errors::kRowNotFound,
            u"Posten som skulle endres i tabellen «%1», finnes ikke lenger."_s.arg(m_table.name));
}

void WriteBack::accept(RowSet &rows) const
{
    for (const Written &written : m_written) {
        if (written.isNew && m_counterColumn >= 0)
            rows.setValue(written.row, m_counterColumn, Value(written.number));
        rows.accept(written.row);
    }
}

} // namespace ado
