#include "platform/report/Groups.h"

#include <algorithm>

namespace report {

void Groups::add(int level)
{
    for (int group = level; group < count(); ++group)
        m_starts[size_t(group)].push_back(m_added);
    ++m_added;
}

int Groups::levelAt(int row) const
{
    if (row >= m_rows)
        return 0;
    for (int group = 0; group < count(); ++group) {
        if (span(group, row).first == row)
            return group;
    }
    return count();
}

Span Groups::span(int group, int row) const
{
    const std::vector<int> &starts = m_starts[size_t(group)];
    const auto next = std::upper_bound(starts.begin(), starts.end(), row);
    return {next[-1], next == starts.end() ? m_rows : *next, nullptr, nullptr, 0};
}

} // namespace report
