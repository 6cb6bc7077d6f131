#pragma once

#include "platform/report/Document.h"
#include "reports/DemoDatabase.h"
#include "support/ModuleTest.h"

#include <vector>

namespace faktype {
constexpr int kFaktura = 1;
constexpr int kFakturakopi = 0;
constexpr int kKreditnota = -1;
constexpr int kKreditnotakopi = -2;
} // namespace faktype

/// The demo company, client 1 in 2014, with orders of the tests' own; printed on the real forms.
class InvoiceTest : public ModuleTest
{
protected:
    InvoiceTest();

    /// A line as a user types it; one without a number is text alone. Price without VAT.
    struct Line
    {
        QString number;
        QString name;
        QString quantity;
        QString price;
        QString rate = QStringLiteral("25");
    };
    /// `count` hours of transport at 1150.00.
    static std::vector<Line> hours(int count);

    /// Saves an order to the demo company's customer 10001 with sums as the order screen forms
    /// them; `rounding` is a value of the setting "Avrunding". Returns its number.
    int enterOrder(const std::vector<Line> &lines, const QString &rounding = QStringLiteral("0"));
    /// Sets columns of the order, as in an UPDATE.
    void change(int order, const QString &assignments);
    /// The client's logo, as the bytes of a picture file.
    void storeLogo(const QByteArray &bytes) { storeDemoLogo(connectionString(), bytes); }

    /// The form in the build's folder of report files, as the print dialog asks for it.
    report::Document print(const QString &form, int order, int fakType = faktype::kFaktura,
                           const QString &note = {});
    /// On the form with giro slip and without logo.
    report::Document print(int order, int fakType = faktype::kFaktura, const QString &note = {});

private:
    int m_lastOrder = 5000;
};

/// The page's texts in the order of drawing, with plain blanks.
QStringList textsOf(const report::Page &page);
/// The first text of that content; fails the test when there is none.
report::TextCommand textOn(const report::Page &page, const QString &text);
/// All texts whose base lines are that far down, from left to right.
QStringList rowAt(const report::Page &page, double baseline);
/// Those beside the first text of that content, with itself.
QStringList rowOf(const report::Page &page, const QString &text);
/// What stands beside that label: the next text to the right on its line; empty for none.
QString factOn(const report::Page &page, const QString &label);
