#pragma once

#include "platform/report/Document.h"
#include "reports/DemoDatabase.h"
#include "support/ModuleTest.h"

#include <QDate>

#include <vector>

namespace faktype {
constexpr int kFaktura = 1;
constexpr int kFakturakopi = 0;
constexpr int kKreditnota = -1;
constexpr int kKreditnotakopi = -2;
} // namespace faktype

namespace invoice {

/// A line as a user types it; one without a quantity is text alone. Price without VAT.
struct Line
{
    QString number;
    QString name;
    QString quantity;
    QString price;
    QString rate = QStringLiteral("25");
};

/// What stands above the lines; by itself an order to the demo company's customer 10001.
struct Head
{
    int customer = 10001;
    QString name = QStringLiteral("Bjørkåsen Trelast AS");
    QString address1 = QStringLiteral("Postboks 12");
    QString address2 = QStringLiteral("Sagvegen 4");
    QString postcode = QStringLiteral("2406");
    QString place = QStringLiteral("Elverum");
    QString delivery1 = QStringLiteral("Byggeplass Øvre Ål");
    QString delivery2 = QStringLiteral("Tomt 4");
    QString deliveryPostcode = QStringLiteral("3570");
    QString deliveryPlace = QStringLiteral("Ål");
    QString ourReference = QStringLiteral("Åse Fjellstad");
    QString theirReference = QStringLiteral("Prosjekt 414");
    QDate invoiced{2014, 3, 9};
    int days = 14;
};

} // namespace invoice

/// The demo company, client 1 in 2014, with orders of the tests' own; printed on the real forms.
class InvoiceTest : public ModuleTest
{
protected:
    InvoiceTest();

    using Line = invoice::Line;
    /// `count` hours of transport at 1150.00.
    static std::vector<Line> hours(int count);

    /// Saves an order with sums as the order screen forms them; `rounding` is a value of the
    /// setting "Avrunding". Returns its number.
    int enterOrder(const std::vector<Line> &lines, const QString &rounding = QStringLiteral("0"),
                   const invoice::Head &head = {});
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
