#pragma once

#include "posting/BokforTest.h"

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
    int count(const QString &tableAndCondition)
    {
        return rows(QStringLiteral("SELECT COUNT (*) FROM ") + tableAndCondition).value(0).toInt();
    }
};
