#pragma once

#include "posting/run/BokforTest.h"

/// Posting in processes of their own: the invoices that they have to post, and what each needs to
/// begin.
class BokforProsessTest : public BokforTest
{
protected:
    static constexpr int kFirst = 101; ///< number of the first invoice

    /// Makes that many invoices anew, none of them posted.
    void prepare(int invoices);
    /// The list as the screen would load it, everything marked.
    void loadList(NoterendeSkjerm &list);
    /// As after a new start of the program.
    void startAnew();
    /// Whether each of so many invoices is posted whole and once, or not at all, and nothing else
    /// is in the books.
    bool booksAreWhole(int invoices);
    /// Runs `work`, which tells a number below 100, in so many processes at once, and `meanwhile`
    /// in this one. As programs do, the processes go on until all have come to the end of their
    /// work. Returns what they told; no more than that of those that died.
    std::vector<int> inProcesses(
        int processes, const std::function<int()> &work,
        const std::function<void()> &meanwhile = [] {});
    int count(const QString &tableAndCondition)
    {
        return rows(QStringLiteral("SELECT COUNT (*) FROM ") + tableAndCondition).value(0).toInt();
    }
};
