#include "host/demo/DemoVouchers.h"

#include "host/demo/Insert.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"

#include <map>

using namespace Qt::StringLiterals;

namespace {

/// Gross amount by VAT rate, without rates that sum to nothing.
std::map<Currency, Currency> grossByRate(const DemoLines &lines)
{
    std::map<Currency, Currency> groups;
    for (int row = 1; row <= lines.antallRader(); ++row) {
        groups[lines.amount(linjekolonne::kMvaPst, row)] +=
            lines.amount(linjekolonne::kSumBrutto, row);
    }
    std::erase_if(groups, [](const auto &group) { return group.second.isZero(); });
    return groups;
}

/// 0 for a rate without a code.
int vatCode(Currency rate, bool credit)
{
    static const std::map<Currency, int> sales{{Currency::fromInteger(25), 1},
                                               {Currency::fromInteger(10), 3},
                                               {Currency::fromInteger(15), 5}};
    const auto found = sales.find(rate);
    return found == sales.end() ? 0 : found->second + (credit ? 1 : 0);
}

} // namespace

DemoVouchers::DemoVouchers(ado::Connection &connection, qint16 client)
    : m_connection(connection), m_client(client)
{
}

void DemoVouchers::post(const PostedInvoice &invoice, const DemoLines &lines)
{
    const Currency payable = lines.sum(SumFelt::SumBrutto);
    const bool credit = payable.isNegative();
    const auto groups = grossByRate(lines);
    const int voucher = enterVoucher(invoice, credit, int(groups.size()));
    const QString text = (credit ? u"Kreditnota "_s : u"Kundefaktura "_s) + invoice.number;

    int account = 3000;
    for (const auto &[rate, gross] : groups) {
        const int code = vatCode(rate, credit);
        if (code == 0)
            account = 3100; // and so for the voucher's later groups, as in a posting run
        m_connection.execute(Insert(u"BilagLinjer")
                                 .number(u"BilagID", voucher)
                                 .number(u"Konto", account)
                                 .text(u"Tekst", text)
                                 .amount(u"Debet", credit ? gross.abs() : Currency())
                                 .amount(u"Kredit", credit ? Currency() : gross)
                                 .number(u"MVAkode", code)
                                 .text(u"Loyve", QString())
                                 .statement());
    }
    m_connection.execute(Insert(u"BilagLinjer")
                             .number(u"BilagID", voucher)
                             .number(u"Konto", 1500)
                             .text(u"Tekst", text)
                             .number(u"LevNr", invoice.customer)
                             .amount(u"Debet", credit ? Currency() : payable)
                             .amount(u"Kredit", credit ? payable.abs() : Currency())
                             .date(u"FaktDato", invoice.invoiced)
                             .date(u"FaktForfall", invoice.due)
                             .number(u"MVAkode", 0)
                             .text(u"cFaktNr", u'F' + invoice.number)
                             .text(u"Loyve", QString())
                             .statement());
    const Currency rounding = lines.sum(SumFelt::Avrunding);
    if (!rounding.isZero())
        enterRounding(voucher, rounding);
}

int DemoVouchers::enterVoucher(const PostedInvoice &invoice, bool credit, int groups)
{
    const int year = invoice.invoiced.year();
    const QString kind = credit ? u"Kreditnota "_s : u"Faktura "_s;
    m_connection.execute(Insert(u"Bilag")
                             .number(u"KlientNr", m_client)
                             .number(u"BilagNr", ++m_lastNumber[year])
                             .date(u"BilagDato", invoice.invoiced)
                             .text(u"Tekst", kind + invoice.customerName)
                             .text(u"BilagType", u"Faktura"_s)
                             .number(u"AntPost", groups)
                             .number(u"Aar", year)
                             .statement());
    return lastIdentity(m_connection);
}

void DemoVouchers::enterRounding(int voucher, Currency rounding)
{
    const bool less = rounding.isNegative();
    m_connection.execute(Insert(u"BilagLinjer")
                             .number(u"BilagID", voucher)
                             .number(u"Konto", 7395)
                             .text(u"Tekst", u"Øreavrunding"_s)
                             .amount(u"Debet", less ? rounding.abs() : Currency())
                             .amount(u"Kredit", less ? Currency() : rounding)
                             .number(u"MVAkode", 0)
                             .statement());
}

int lastIdentity(ado::Connection &connection)
{
    ado::Recordset identity;
    identity.setActiveConnection(connection);
    identity.setSource(u"SELECT @@IDENTITY"_s);
    identity.open();
    return identity.integer(0);
}
