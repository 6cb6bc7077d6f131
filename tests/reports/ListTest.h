#pragma once

#include "reports/InvoiceTest.h"
#include "runtime/Clock.h"

/// The demo company on 1 September 2014, and what the lists make of its orders.
class ListTest : public InvoiceTest
{
protected:
    ListTest();

    /// Lays out a list of the build's folder of report files.
    report::Document list(const QString &file, const QString &selection);
    /// The list with all its pages' texts one behind the other.
    QStringList textsOfList(const QString &file, const QString &selection);
    /// The client's part of every selection, as the callers write it.
    const QString kClient = QStringLiteral("{Klient.KlientNr}= 1");

    /// Posts those invoices, which have to be "Fakturert", in this order and in one run. `account`
    /// is the text of the posting screen's account, `permit` that of its permit.
    void post(const QList<int> &orders, const QString &account = QStringLiteral("3000"),
              const QString &permit = QStringLiteral("<nei>"));

    /// The one value of a query, an amount as the lists write it.
    QString amount(const QString &query);

private:
    class FixedClock : public Clock
    {
    public:
        [[nodiscard]] QDateTime now() const override { return {QDate(2014, 9, 1), QTime(12, 0)}; }
    };
    FixedClock m_clock;
    ScopedClock m_scope{m_clock};
};

/// The texts that end at that distance from the paper's left edge in mm, from the top down: a
/// column of right-aligned texts with its heading.
QStringList columnOf(const report::Page &page, double rightEdge);
/// The texts of the line at that distance from the paper's upper edge in mm, from left to right.
QStringList lineAt(const report::Page &page, double baseline);
/// The texts of the lowest line above the foot.
QStringList lastLineOf(const report::Page &page);
/// Expects that the texts are within the margins of the lists, and nothing amiss with any page.
void expectTidy(const report::Document &document);
