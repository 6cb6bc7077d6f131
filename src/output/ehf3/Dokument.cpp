#include "output/ehf3/Dokument.h"

#include "output/ehf3/Belop.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

using namespace ehf3;

constexpr Currency kEttOere = Currency::fromTenThousandths(Currency::kScale / 100);
/// Receivers show so much of a name.
constexpr qsizetype kNavnelengde = 40;

/// By the rules two øre may part them.
bool erProduktet(Currency antall, Currency pris, Currency netto)
{
    return (antall * pris - netto).abs() < kEttOere + kEttOere;
}

/// The order screen takes a quantity of two decimals, computes the line with it and stores it with
/// one. So where the stored one does not make up the line's net, it is worked back from that, among
/// those that would have been stored so.
Currency antallI(const Ordrelinje &linje, Currency netto)
{
    const Currency antall = fraSingle(linje.antall);
    if (linje.pris.isZero() || erProduktet(antall, linje.pris, netto))
        return antall;
    // A half tenth is stored as the one that is farther from nought.
    const Currency fem = kEttOere * Currency::fromInteger(5);
    const Currency fire = fem - kEttOere;
    const bool erOver = !antall.isZero() && !antall.isNegative();
    const Currency regnet =
        std::clamp(tilHundredel(forhold(netto, linje.pris)), antall - (erOver ? fem : fire),
                   antall + (antall.isNegative() ? fem : fire));
    return erProduktet(regnet, linje.pris, netto) ? regnet : antall;
}

/// At most so much of the text as a name has room for, up to a blank where there is one.
QString navnAv(const QString &tekst)
{
    if (tekst.size() <= kNavnelengde)
        return tekst;
    const qsizetype blank = tekst.lastIndexOf(u' ', kNavnelengde);
    qsizetype lengde = blank > 0 ? blank : kNavnelengde;
    if (tekst[lengde - 1].isHighSurrogate())
        --lengde;
    return tekst.first(lengde).trimmed();
}

Dokumentlinje lagLinje(const Ordrelinje &linje, int nr, bool snu)
{
    const QString tekst = linje.tekst.isEmpty() ? linje.varenr : linje.tekst;
    const QString navn = navnAv(tekst);
    const Currency netto = tilHundredel(linje.netto);
    const Currency antall = antallI(linje, netto);
    return {.nr = nr,
            .navn = navn,
            .beskrivelse = navn == tekst ? QString() : tekst,
            .varenr = linje.varenr,
            .enhet = linje.enhet,
            .antall = linje.pris.isNegative() != snu ? -antall : antall,
            .pris = linje.pris.abs(),
            .sats = fraSingle(linje.sats),
            .netto = snu ? -netto : netto};
}

} // namespace

Dokument ehf3::lagDokument(const Grunnlag &ordre)
{
    Dokument dokument(ordre);
    dokument.aBetale = tilHundredel(ordre.aBetale.abs());

    std::map<Currency, Currency> grunnlag;
    for (const Ordrelinje &linje : ordre.linjer) {
        const int nr = int(dokument.linjer.size()) + 1;
        dokument.linjer.push_back(lagLinje(linje, nr, dokument.erKreditnota));
        const Dokumentlinje &ny = dokument.linjer.back();
        grunnlag[ny.sats] += ny.netto;
        dokument.netto += ny.netto;
    }
    for (const auto &[sats, sum] : grunnlag) {
        dokument.mvagrupper.push_back({sats, sum, prosentAv(sum, sats)});
        dokument.mva += dokument.mvagrupper.back().mva;
    }
    dokument.brutto = dokument.netto + dokument.mva;
    dokument.avrunding = dokument.aBetale - dokument.brutto;
    return dokument;
}

bool ehf3::gaarOpp(const Dokumentlinje &linje)
{
    return erProduktet(linje.antall, linje.pris, linje.netto);
}

bool ehf3::gaarOpp(const Dokument &dokument)
{
    const Currency tilKroner = dokument.ordre.avrunding.value_or(Currency());
    const Currency resten = dokument.avrunding - (dokument.erKreditnota ? -tilKroner : tilKroner);
    // A line's net and its VAT are each rounded once more than in the order's sums.
    const qint64 oere = 2 * qint64(dokument.linjer.size()) + (dokument.ordre.avrunding ? 0 : 100);
    return resten.abs() <= kEttOere * Currency::fromInteger(oere);
}
