#include "platform/grid/RowSearch.h"

#include "platform/grid/Sheet.h"
#include "runtime/Clock.h"

namespace {

constexpr qint64 kPause = 2000; // milliseconds

} // namespace

void RowSearch::ask()
{
    m_asked = true;
    m_text.clear();
}

void RowSearch::end()
{
    m_asked = false;
    m_text.clear();
}

void RowSearch::type(const QString &letters)
{
    const QDateTime now = Clock::current().now();
    if (!m_asked && qAbs(m_typedAt.msecsTo(now)) > kPause)
        m_text.clear();
    m_typedAt = now;
    m_text += letters;
}

std::optional<int> RowSearch::find(int first, const std::function<bool(int col)> &isSeen) const
{
    const int rows = m_sheet.dataRowCount();
    for (int col = 1; col <= m_sheet.maxCols(); ++col) {
        for (int step = 0; isSeen(col) && step < rows; ++step) {
            const int row = (first - 1 + step) % rows + 1;
            // The text stands behind a blank in some lists of numbers.
            if (m_sheet.text(col, row).trimmed().startsWith(m_text, Qt::CaseInsensitive))
                return row;
        }
    }
    return std::nullopt;
}
