#include "reports/InvoiceTest.h"

#include "host/demo/DemoLines.h"
#include "host/demo/DemoOrders.h"
#include "host/demo/DemoVouchers.h"
#include "host/demo/Insert.h"
#include "platform/ado/Connection.h"
#include "platform/report/Report.h"
#include "rules/Kid.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace linjekolonne;

namespace {

/// The demo company's agreement with its bank: customer number, invoice number and MOD10.
QString kidSetting(const QString &key, const QString &standard)
{
    return key == u"KIDaktivert"_s || key == u"KIDoppbygning"_s ? u"1"_s : standard;
}

Currency amountOf(const QString &text)
{
    return Currency::fromDouble(text.toDouble());
}

QString insertOf(const invoice::Head &head, int order, const DemoLines &cells)
{
    const QString number = QString::number(order);
    return Insert(u"Ordre")
        .number(u"KlientNr", 1)
        .number(u"OrdreNr", order)
        .text(u"OrdreStatus", u"Ordre"_s)
        .text(u"EgenRef", head.ourReference)
        .text(u"DeresRef", head.theirReference)
        .number(u"KundeNr", head.customer)
        .text(u"KundeNavn", head.name)
        .text(u"FakAdresse1", head.address1)
        .text(u"FakAdresse2", head.address2)
        .text(u"FakPostNr", head.postcode)
        .text(u"FakPoststed", head.place)
        .text(u"LevAdresse1", head.delivery1)
        .text(u"LevAdresse2", head.delivery2)
        .text(u"LevPostNr", head.deliveryPostcode)
        .text(u"LevPoststed", head.deliveryPlace)
        .text(u"KID", LagKID(kidSetting, number, QString::number(head.customer)))
        .number(u"BetBet", head.days)
        .date(u"FakDato", head.invoiced)
        .date(u"ForfallDato", head.invoiced.addDays(head.days))
        .date(u"LevDato", head.invoiced.addDays(-2))
        .amount(u"MvaKr", cells.sum(SumFelt::MvaKr))
        .amount(u"SumNetto", cells.sum(SumFelt::SumNetto))
        .amount(u"SumBrutto", cells.sum(SumFelt::SumBrutto))
        .amount(u"Avrunding", cells.sum(SumFelt::Avrunding))
        .statement();
}

} // namespace

InvoiceTest::InvoiceTest()
{
    makeDemoDatabase(connectionString());
}

std::vector<InvoiceTest::Line> InvoiceTest::hours(int count)
{
    std::vector<Line> lines;
    for (int i = 1; i <= count; ++i)
        lines.push_back({u"T100"_s, u"Kjøring uke %1"_s.arg(i), QString::number(i), u"1150"_s});
    return lines;
}

int InvoiceTest::enterOrder(const std::vector<Line> &lines, const QString &rounding,
                            const invoice::Head &head)
{
    DemoLines cells;
    for (const Line &line : lines) {
        if (line.quantity.isEmpty())
            cells.addText(line.name);
        else
            cells.addProduct(line.number, line.name, amountOf(line.quantity), amountOf(line.price),
                             amountOf(line.rate));
    }
    cells.sumUp(rounding);
    const int order = ++m_lastOrder;
    try {
        ado::Connection connection;
        connection.open(connectionString());
        connection.beginTrans();
        connection.execute(insertOf(head, order, cells));
        enterOrderLines(connection, lastIdentity(connection), cells);
        connection.commitTrans();
    } catch (const RunTimeError &error) {
        ADD_FAILURE() << "order " << order << ": " << error.what();
    }
    return order;
}

void InvoiceTest::change(int order, const QString &assignments)
{
    run(u"UPDATE Ordre SET %1 WHERE KlientNr=1 AND OrdreNr=%2"_s.arg(assignments).arg(order));
}

report::Document InvoiceTest::print(const QString &form, int order, int fakType,
                                    const QString &note)
{
    std::vector<QString> formulas{u"FakType=%1"_s.arg(fakType)};
    if (!note.isEmpty())
        formulas.push_back(u"Note='%1'"_s.arg(note));
    return report::makeReport({QStringLiteral(REPORT_FOLDER "/") + form, connectionString(),
                               u"{Ordre.KlientNr}= 1 and {Ordre.OrdreNr}=%1"_s.arg(order),
                               formulas});
}

report::Document InvoiceTest::print(int order, int fakType, const QString &note)
{
    return print(u"Fak-mgiro-ulogo.rpt"_s, order, fakType, note);
}

QStringList textsOf(const report::Page &page)
{
    QStringList texts;
    for (const report::TextCommand &text : page.texts)
        texts += QString(text.text()).replace(u'\u00a0', u' ');
    return texts;
}

report::TextCommand textOn(const report::Page &page, const QString &text)
{
    const qsizetype index = textsOf(page).indexOf(text);
    if (index < 0) {
        ADD_FAILURE() << "no text " << text.toStdString();
        return {{}, 0, 0, {}};
    }
    return page.texts[static_cast<size_t>(index)];
}

QStringList rowAt(const report::Page &page, double baseline)
{
    constexpr double kSameLine = 0.5; // mm
    std::vector<report::TextCommand> found;
    for (const report::TextCommand &command : page.texts) {
        if (std::abs(command.baseline.y() - baseline) < kSameLine)
            found.push_back(command);
    }
    std::sort(found.begin(), found.end(),
              [](const auto &a, const auto &b) { return a.baseline.x() < b.baseline.x(); });
    QStringList texts;
    for (const report::TextCommand &command : found)
        texts += QString(command.text()).replace(u'\u00a0', u' ');
    return texts;
}

QStringList rowOf(const report::Page &page, const QString &text)
{
    return rowAt(page, textOn(page, text).baseline.y());
}

QString factOn(const report::Page &page, const QString &label)
{
    const QStringList row = rowOf(page, label);
    return row.value(row.indexOf(label) + 1);
}
