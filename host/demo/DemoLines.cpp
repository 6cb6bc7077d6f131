#include "host/demo/DemoLines.h"

#include "runtime/Conversions.h"
#include "runtime/Format.h"

using namespace Qt::StringLiterals;
using namespace linjekolonne;

void DemoLines::addText(const QString &text)
{
    m_rows.emplace_back();
    settTekst(kProduktNavn, antallRader(), text);
}

void DemoLines::addProduct(const QString &number, const QString &name, Currency quantity,
                           Currency price, Currency vatPercent)
{
    addText(name);
    const int row = antallRader();
    settTekst(kProduktNr, row, number);
    settTekst(kAntall, row, Format(quantity, u"#0.0"));
    settTekst(kPris, row, Format(price, u"#0.00"));
    settTekst(kMvaPst, row, Format(vatPercent, u"#0.0"));
    LinjeSum(*this, row);
}

void DemoLines::sumUp(const QString &rounding)
{
    const auto setting = [&](const QString &, const QString &) { return rounding; };
    BeregnSummer(*this, setting, *this);
}

QString DemoLines::tekst(int col, int row) const
{
    return m_rows.at(size_t(row - 1)).at(size_t(col - 1));
}

void DemoLines::settTekst(int col, int row, const QString &text)
{
    m_rows.at(size_t(row - 1)).at(size_t(col - 1)) = text;
}

Currency DemoLines::sum(SumFelt felt) const
{
    return toCurrency(m_sums.value(felt));
}
