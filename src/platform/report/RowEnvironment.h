#pragma once

#include "platform/report/Checkpoint.h"
#include "platform/report/Evaluator.h"
#include "platform/report/Groups.h"
#include "platform/report/Rows.h"

#include <QDateTime>

namespace report {

/// Stands for the number of pages in a text until that is known; no character that text may hold.
inline constexpr QChar kTotalPagesMark = QChar(u'\ufdd0');

/// What formulas are worked out on while pages are filled: one row, the rows of the band, the page.
/// Sums are kept from one use to the next, so that a sum that runs through the report costs one
/// look at each row.
class RowEnvironment : public Environment
{
public:
    /// Rows and groups are not owned. `slotCount` is the number of aggregates in the report.
    /// Whoever goes from row to row passes the checkpoint, which may be empty.
    RowEnvironment(Rows &rows, const Groups &groups, int slotCount, Checkpoint checkpoint);

    void setRow(int row)
    {
        pass();
        m_row = row;
    }
    [[nodiscard]] int row() const { return m_row; }
    /// The rows of the band in hand.
    void setOwnSpan(const Span &span) { m_own = span; }
    /// From 1.
    void setPageNumber(int page) { m_page = page; }

    [[nodiscard]] Value field(int column) override { return m_rows.value(m_row, column); }
    [[nodiscard]] Value aggregate(const Expr &expr) override;
    [[nodiscard]] Value special(Special special) override;

private:
    /// An aggregate over the rows of a span up to but not including `next`.
    struct Total
    {
        Span span{-1, -1, nullptr, nullptr, 0};
        int next = 0; ///< row number, or index among the picked rows
        int count = 0;
        Value sum; ///< the least or the greatest one for Min and Max
    };

    void pass();
    void advance(Total &total, const Expr &expr, int end);
    void take(Total &total, const Expr &expr);

    Rows &m_rows;
    const Groups &m_groups;
    std::vector<Total> m_totals; // by slot
    Span m_own;
    int m_row = 0;
    int m_page = 1;
    QDateTime m_now; // of the report
    const Checkpoint m_checkpoint;
    unsigned m_looks = 0; // at rows
};

} // namespace report
