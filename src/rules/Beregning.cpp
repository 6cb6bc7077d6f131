#include "rules/Beregning.h"

#include "rules/Kid.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"

#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace linjekolonne;

namespace {

constexpr QStringView kAmountFormat = u"# ##0.00";

const Currency kHundred = Currency::fromTenThousandths(100 * Currency::kScale);

enum { RoundToWhole = 1, CutToWhole = 2 }; // values of the setting "Avrunding"

} // namespace

Currency CelleBelop(const OrdreCeller &celler, int col, int row)
{
    QString text = celler.text(col, row);
    if (trimBlanks(text).isEmpty())
        text = u"0"_s;
    return toCurrency(text);
}

Currency NettoPris(Currency utPris, float mvaSats, int bruttoPris)
{
    if (std::abs(bruttoPris) != 1)
        return utPris;
    const double divisor = double{mvaSats} + 100;
    if (divisor == 0)
        throw RunTimeError(errors::kDivisionByZero);
    return Currency::fromDouble(utPris.toDouble() / divisor * 100);
}

void LinjeSum(OrdreCeller &celler, int row)
{
    Currency pris;
    Currency mva;
    Currency antall;
    passOver([&] { pris = CelleBelop(celler, kPris, row); });
    passOver([&] { mva = CelleBelop(celler, kMvaPst, row); });
    passOver([&] { antall = CelleBelop(celler, kAntall, row); });
    passOver([&] { celler.setText(kSumNetto, row, Format(pris * antall, kAmountFormat)); });
    passOver([&] {
        const double factor = (kHundred + mva).toDouble() / 100.0;
        celler.setText(kSumBrutto, row, Format((pris * antall).toDouble() * factor, kAmountFormat));
    });
}

void BeregnSummer(const OrdreCeller &celler, const Innstilling &innstilling, OrdreSummer &summer)
{
    Currency netto;
    Currency mva;
    Currency linjeNetto; // these two keep the last line's value where a line does not read
    double linjeMva = 0;
    int rader = 0;
    passOver([&] { rader = celler.antallRader(); });
    for (int row = 1; row <= rader; ++row) {
        const auto belop = [&](int col) { return CelleBelop(celler, col, row); };
        passOver([&] { linjeNetto = belop(kAntall) * belop(kPris); });
        passOver([&] { netto += linjeNetto; });
        passOver([&] {
            linjeMva =
                (belop(kAntall) * belop(kPris)).toDouble() * (belop(kMvaPst).toDouble() / 100.0);
        });
        passOver([&] { mva += Currency::fromDouble(linjeMva); });
    }

    qint16 avrunding = 0;
    passOver([&] { avrunding = toInteger(leadingNumber(innstilling(u"Avrunding"_s, u"0"_s))); });
    Currency rest;
    if (avrunding == RoundToWhole)
        passOver([&] { rest = netto + mva - (netto + mva).roundToWhole(); });
    else if (avrunding == CutToWhole)
        passOver([&] { rest = netto + mva - (netto + mva).cut(); });
    Currency brutto;
    passOver([&] { brutto = netto + mva - rest; });

    const auto write = [&](SumFelt felt, Currency amount, QStringView format) {
        passOver([&] { summer.setText(felt, Format(amount, format)); });
    };
    write(SumFelt::SumNetto, netto, kAmountFormat);
    write(SumFelt::MvaKr, mva, kAmountFormat);
    write(SumFelt::SumBrutto, brutto, kAmountFormat);
    passOver([&] {
        summer.setText(SumFelt::Kontrollsiffer, Modulus10(Format(brutto * kHundred, u"0")).last(1));
    });
    write(SumFelt::Avrunding, -rest, u"0.00");
}
