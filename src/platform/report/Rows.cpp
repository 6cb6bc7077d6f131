#include "platform/report/Rows.h"

#include "platform/report/ReportError.h"

using namespace Qt::StringLiterals;

namespace report {

Rows::Rows(const QString &connectionString, const QString &statement)
{
    try {
        m_set.setActiveConnection(connectionString);
        m_set.setSource(statement);
        m_set.open();
        m_set.clearActiveConnection();
    } catch (const RunTimeError &error) {
        raise(errors::kDataSource,
              u"%1 - %2"_s.arg(QString::number(error.number()), error.description()));
    }
    m_count = m_set.recordCount();
}

Value Rows::value(int row, int column)
{
    if (row != m_row) {
        m_set.setAbsolutePosition(row + 1);
        m_row = row;
    }
    return m_set.value(column);
}

} // namespace report
