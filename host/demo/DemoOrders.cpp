#include "host/demo/DemoOrders.h"

#include "host/demo/DemoTable.h"
#include "host/demo/DemoVouchers.h"
#include "host/demo/Insert.h"
#include "platform/ado/Connection.h"
#include "rules/Kid.h"
#include "rules/Ordre.h"

using namespace Qt::StringLiterals;
using namespace linjekolonne;

namespace {

/// A table whose rows are found by one column.
class Register
{
public:
    Register(const QString &name, QStringView key) : m_table(name)
    {
        for (const auto &row : m_table.rows())
            m_rows.insert(row.text(key), &row);
    }

    [[nodiscard]] const DemoTable::Row &row(const QString &key) const
    {
        const auto *found = m_rows.value(key);
        if (!found)
            throw RunTimeError(errors::kInvalidCall, u"ukjent nøkkel i demodata: "_s + key);
        return *found;
    }

private:
    DemoTable m_table;
    QHash<QString, const DemoTable::Row *> m_rows;
};

/// The firm's agreement with its bank: customer number, invoice number and MOD10.
QString kidSetting(const QString &key, const QString &standard)
{
    return key == u"KIDaktivert"_s || key == u"KIDoppbygning"_s ? u"1"_s : standard;
}

class OrderBook
{
public:
    OrderBook(ado::Connection &connection, qint16 client, qint16 year)
        : m_connection(connection), m_client(client), m_year(year), m_vouchers(connection, client)
    {
        const DemoTable lines(u"ordrelinjer"_s);
        for (const auto &row : lines.rows())
            addLine(m_lines[row.text(u"OrdreNr")], row);
    }

    void enter(const DemoTable::Row &order)
    {
        DemoLines &lines = m_lines[order.text(u"OrdreNr")];
        lines.sumUp(order.text(u"Avrunding"));
        enterHeader(order, lines);
        enterOrderLines(m_connection, lastIdentity(m_connection), lines);

        const QString status = order.text(u"OrdreStatus");
        if (status != ordrestatus::kBokfort && status != ordrestatus::kBetalt)
            return;
        const QString customer = order.text(u"KundeNr");
        m_vouchers.post({.number = order.text(u"OrdreNr"),
                         .customer = order.integer(u"KundeNr"),
                         .customerName = m_customers.row(customer).text(u"Navn"),
                         .invoiced = day(order, u"FakDato"),
                         .due = dueDay(order)},
                        lines);
    }

private:
    void addLine(DemoLines &lines, const DemoTable::Row &row) const
    {
        const QString number = row.text(u"ProduktNr");
        if (number.isEmpty()) {
            lines.addText(row.text(u"ProduktNavn"));
            return;
        }
        const DemoTable::Row &product = m_products.row(number);
        const Currency rate = product.amount(u"MvaSats");
        const Currency price = NettoPris(product.amount(u"UtPris"), float(rate.toDouble()),
                                         product.integer(u"BruttoPris"));
        lines.addProduct(number, product.text(u"ProduktNavn"), row.amount(u"Antall"), price, rate);
    }

    void enterHeader(const DemoTable::Row &order, const DemoLines &lines)
    {
        const DemoTable::Row &customer = m_customers.row(order.text(u"KundeNr"));
        const auto place = [&](const QString &code) {
            return code.isEmpty() ? QString() : m_places.row(code).text(u"PostSted");
        };
        const QString invoiceCode = customer.text(u"PostNr");
        // Blank for a customer with one address, as the customer picker leaves it.
        const QString deliveryCode = customer.text(u"LevPostNr");
        m_connection.execute(
            Insert(u"Ordre")
                .number(u"KlientNr", m_client)
                .number(u"OrdreNr", order.integer(u"OrdreNr"))
                .text(u"OrdreStatus", order.text(u"OrdreStatus"))
                .number(u"Betalt", 0) // the status alone tells that an invoice is paid
                .text(u"EgenRef", order.text(u"EgenRef"))
                .text(u"DeresRef", order.text(u"DeresRef"))
                .number(u"KundeNr", order.integer(u"KundeNr"))
                .text(u"KundeNavn", customer.text(u"Navn"))
                .text(u"FakAdresse1", customer.text(u"Adr1"))
                .text(u"FakAdresse2", customer.text(u"Adr2"))
                .text(u"FakPostNr", invoiceCode)
                .text(u"FakPoststed", place(invoiceCode))
                .text(u"LevAdresse1", customer.text(u"LevAdr1"))
                .text(u"LevAdresse2", customer.text(u"LevAdr2"))
                .text(u"LevPostNr", deliveryCode)
                .text(u"LevPoststed", place(deliveryCode))
                .text(u"KID", LagKID(kidSetting, order.text(u"OrdreNr"), order.text(u"KundeNr")))
                .number(u"BetBet", customer.integer(u"BetBet"))
                .date(u"OrdreDato", day(order, u"OrdreDato"))
                .date(u"FakDato", day(order, u"FakDato"))
                .date(u"ForfallDato", dueDay(order))
                .date(u"LevDato", day(order, u"LevDato"))
                .number(u"RabattPst", 0)
                .amount(u"MvaKr", lines.sum(SumFelt::MvaKr))
                .amount(u"SumNetto", lines.sum(SumFelt::SumNetto))
                .amount(u"SumBrutto", lines.sum(SumFelt::SumBrutto))
                .amount(u"Avrunding", lines.sum(SumFelt::Avrunding))
                .statement());
    }

    /// The table has "mm-dd", never 29 February, and the year's distance from the accounting year.
    [[nodiscard]] QDate day(const DemoTable::Row &order, QStringView column) const
    {
        const QString monthAndDay = order.text(column);
        return QDate(m_year + order.integer(u"Aar"), monthAndDay.left(2).toInt(),
                     monthAndDay.mid(3).toInt());
    }

    [[nodiscard]] QDate dueDay(const DemoTable::Row &order) const
    {
        const DemoTable::Row &customer = m_customers.row(order.text(u"KundeNr"));
        return day(order, u"FakDato").addDays(customer.integer(u"BetBet"));
    }

    ado::Connection &m_connection;
    qint16 m_client;
    qint16 m_year;
    DemoVouchers m_vouchers;
    Register m_products{u"produkt"_s, u"ProduktNr"};
    Register m_customers{u"kundelev"_s, u"KundeNr"};
    Register m_places{u"poststed"_s, u"PostNr"};
    QHash<QString, DemoLines> m_lines; // by order number
};

} // namespace

void enterOrderLines(ado::Connection &connection, int orderId, const DemoLines &lines)
{
    for (int row = 1; row <= lines.antallRader(); ++row) {
        connection.execute(Insert(u"OrdreLinjer")
                               .number(u"OrdreID", orderId)
                               .number(u"PosNr", row * 10)
                               .text(u"ProduktNr", lines.tekst(DemoLines::kProduktNr, row))
                               .text(u"ProduktNavn", lines.tekst(DemoLines::kProduktNavn, row))
                               .quantity(u"Antall", lines.amount(kAntall, row))
                               .amount(u"Pris", lines.amount(kPris, row))
                               .number(u"RabattPst", 0)
                               .number(u"RabattKr", 0)
                               .quantity(u"MvaPst", lines.amount(kMvaPst, row))
                               .amount(u"SumNetto", lines.amount(kSumNetto, row))
                               .amount(u"SumBrutto", lines.amount(kSumBrutto, row))
                               .statement());
    }
}

void fillOrders(ado::Connection &connection, qint16 client, qint16 year)
{
    OrderBook book(connection, client, year);
    const DemoTable orders(u"ordre"_s);
    for (const auto &order : orders.rows())
        book.enter(order);
}
