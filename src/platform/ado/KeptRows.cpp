#include "platform/ado/KeptRows.h"

namespace ado {

namespace {

constexpr int kFewestRows = 200;     // a shorter list is read as fast
constexpr int kMostValues = 500'000; // of all columns: some megabytes, for as long as the session

bool isWorthKeeping(const RowSet &rows)
{
    return rows.rowCount() >= kFewestRows && rows.rowCount() <= kMostValues / rows.columnCount();
}

} // namespace

const RowSet *KeptRows::answerTo(QStringView statement)
{
    if (m_statement.isEmpty() || statement != m_statement)
        return nullptr;
    QByteArray now = m_moment();
    if (m_rows && !now.isEmpty() && now == m_readAt)
        return &*m_rows;
    m_readAt = std::move(now);
    m_rows.reset();
    return nullptr;
}

void KeptRows::take(QStringView statement, const RowSet &rows)
{
    if (!isWorthKeeping(rows))
        return;
    if (statement == m_statement) {
        m_rows = rows;
    } else {
        forget();
        m_statement = statement.toString();
    }
}

void KeptRows::forget()
{
    m_statement.clear();
    m_rows.reset();
}

} // namespace ado
