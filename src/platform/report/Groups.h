#pragma once

#include <cstddef>
#include <vector>

namespace report {

/// Some of a report's rows: those from `first` up to but not including `end`, or of these the
/// `picked` ones.
struct Span
{
    int first = 0;
    int end = 0;
    const std::vector<int> *picked = nullptr; ///< not owned
    /// What running sums are over: the picked rows and those picked before them. Not owned.
    const std::vector<int> *running = nullptr;
    int serial = 0; ///< tells one set of picked rows from the next
};

/// Where the groups of a report begin. Group 0 is the outermost; a group that begins lets all
/// within it begin too.
class Groups
{
public:
    Groups(int groups, int rows) : m_starts(size_t(groups)), m_rows(rows) {}

    /// The next row begins the groups from number `level` on; the count of groups begins none.
    /// Told of every row in turn; the first row begins all.
    void add(int level);

    [[nodiscard]] int count() const { return int(m_starts.size()); }
    [[nodiscard]] int rowCount() const { return m_rows; }
    /// The outermost group that begins at `row`; count() when none does. 0 behind the last row.
    [[nodiscard]] int levelAt(int row) const;
    /// The rows of group `group` to which `row` belongs.
    [[nodiscard]] Span span(int group, int row) const;
    [[nodiscard]] Span whole() const { return {0, m_rows, nullptr, nullptr, 0}; }

private:
    std::vector<std::vector<int>> m_starts; // first rows, by group
    int m_rows;
    int m_added = 0;
};

} // namespace report
