#include "rules/Kid.h"

#include "runtime/Conversions.h"
#include "runtime/Format.h"

using namespace Qt::StringLiterals;

namespace {

/// The sum of `ledd(siffer)` over the digits of `tekst` from the last to the first, kept in 16
/// bits.
template<class Ledd>
int tverrsum(const QString &tekst, Ledd ledd)
{
    int sum = 0;
    for (auto tegn = tekst.crbegin(); tegn != tekst.crend(); ++tegn) {
        if (*tegn < u'0' || *tegn > u'9')
            continue;
        sum += ledd(tegn->unicode() - u'0');
        if (sum > std::numeric_limits<qint16>::max())
            throw RunTimeError(errors::kOverflow);
    }
    return sum;
}

double tall(const Innstilling &innstilling, const QString &nokkel, const QString &standard)
{
    return leadingNumber(innstilling(nokkel, standard));
}

QString medNuller(const QString &nummer, double lengde)
{
    const qint16 antall = toInteger(lengde);
    if (antall < 0)
        throw RunTimeError(errors::kInvalidCall);
    return Format(nummer, QString(antall, u'0'));
}

} // namespace

QString Modulus10(const QString &tekst)
{
    int vekt = 2;
    const int sum = tverrsum(tekst, [&](int siffer) {
        const int produkt = siffer * vekt;
        vekt = vekt > 1 ? 1 : 2;
        return produkt > 9 ? produkt - 10 + produkt / 10 : produkt;
    });
    // 10 stays 10: the references that are stored and printed end so.
    return tekst + QString::number(10 - sum % 10);
}

QString Modulus11(const QString &tekst)
{
    int vekt = 2;
    const int sum = tverrsum(tekst, [&](int siffer) {
        const int produkt = siffer * vekt;
        vekt = vekt == 7 ? 2 : vekt + 1;
        return produkt;
    });
    const int kontroll = (11 - sum % 11) % 11;
    return kontroll == 10 ? tekst + u'-' : tekst + QString::number(kontroll);
}

QString LagKID(const Innstilling &innstilling, const QString &ordreNr, const QString &kundeNr)
{
    if (tall(innstilling, u"KIDaktivert"_s, u"0"_s) != 1)
        return {};
    const double fakturaLengde = tall(innstilling, u"KIDlengdeFakturanr"_s, u"6"_s);
    const double kundeLengde = tall(innstilling, u"KIDlengdeKundenr"_s, u"6"_s);
    const double modulus = tall(innstilling, u"KIDmodulus"_s, u"10"_s);
    const double oppbygning = tall(innstilling, u"KIDoppbygning"_s, u"0"_s);

    const QString fakturadel = medNuller(ordreNr, fakturaLengde);
    const QString kundedel = medNuller(kundeNr, kundeLengde);
    const QString grunnlag = oppbygning == 0 ? fakturadel : kundedel + fakturadel;
    if (modulus == 10)
        return Modulus10(grunnlag);
    if (modulus == 11)
        return Modulus11(grunnlag);
    return {};
}
