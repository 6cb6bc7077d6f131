#include "rules/Beregning.h"

#include "rules/Kid.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"

#include <QStringList>

#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace linjekolonne;

namespace {

constexpr QStringView kBelopsformat = u"# ##0.00";

const Currency kHundre = Currency::fromTenThousandths(100 * Currency::kScale);

enum { kAvrundTilHele = 1, kKuttTilHele = 2 }; // values of the setting "Avrunding"

} // namespace

Currency CelleBelop(const OrdreCeller &celler, int kol, int rad)
{
    QString tekst = celler.tekst(kol, rad);
    if (trimBlanks(tekst).isEmpty())
        tekst = u"0"_s;
    return toCurrency(tekst);
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

QString MvaSatser()
{
    return QStringList{gMva0, gMva10, gMva15, gMva25}.join(u'\t');
}

void LinjeSum(OrdreCeller &celler, int rad)
{
    Currency pris;
    Currency mva;
    Currency antall;
    passOver([&] { pris = CelleBelop(celler, kPris, rad); });
    passOver([&] { mva = CelleBelop(celler, kMvaPst, rad); });
    passOver([&] { antall = CelleBelop(celler, kAntall, rad); });
    passOver([&] { celler.settTekst(kSumNetto, rad, Format(pris * antall, kBelopsformat)); });
    passOver([&] {
        const double faktor = (kHundre + mva).toDouble() / 100.0;
        celler.settTekst(kSumBrutto, rad,
                         Format((pris * antall).toDouble() * faktor, kBelopsformat));
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
    for (int rad = 1; rad <= rader; ++rad) {
        const auto belop = [&](int kol) { return CelleBelop(celler, kol, rad); };
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
    if (avrunding == kAvrundTilHele)
        passOver([&] { rest = netto + mva - (netto + mva).roundToWhole(); });
    else if (avrunding == kKuttTilHele)
        passOver([&] { rest = netto + mva - (netto + mva).cut(); });
    Currency brutto;
    passOver([&] { brutto = netto + mva - rest; });

    const auto skriv = [&](SumFelt felt, Currency belop, QStringView format) {
        passOver([&] { summer.settTekst(felt, Format(belop, format)); });
    };
    skriv(SumFelt::SumNetto, netto, kBelopsformat);
    skriv(SumFelt::MvaKr, mva, kBelopsformat);
    skriv(SumFelt::SumBrutto, brutto, kBelopsformat);
    passOver([&] {
        summer.settTekst(SumFelt::Kontrollsiffer,
                         Modulus10(Format(brutto * kHundre, u"0")).last(1));
    });
    skriv(SumFelt::Avrunding, -rest, u"0.00");
}
