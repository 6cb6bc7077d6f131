#include "benchmarks/works/Posting.h"

#include "benchmarks/support/Company.h"

using namespace Qt::StringLiterals;

namespace bench {

QString MarkedInvoices::celle(int col, int row) const
{
    switch (col) {
    case bokforkolonne::kFakNr:
    case bokforkolonne::kOrdreId:
        return QString::number(row);
    case bokforkolonne::kKundeNr:
        return u"10001"_s;
    case bokforkolonne::kKundeNavn:
        return u"Ærlig Øl AS"_s;
    case bokforkolonne::kFakDato:
        return u"09.03.2014"_s;
    case bokforkolonne::kForfall:
        return u"23.03.2014"_s;
    default:
        return {};
    }
}

void MarkedInvoices::melding(const QString &text, int)
{
    if (text != u" %1 fakturaer er bokført."_s.arg(m_count))
        qFatal("the run told: %s", qPrintable(text));
}

Work posting(Company &company, int invoices)
{
    return {.name = "posting",
            .unit = "invoice",
            .units = invoices,
            .run =
                [invoices] {
                    MarkedInvoices marked(invoices);
                    BokforMerkede(marked);
                },
            .prepare = [&company, invoices] { company.setStatus("Fakturert", invoices); }};
}

} // namespace bench
