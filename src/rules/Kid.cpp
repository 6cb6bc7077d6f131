#include "rules/Kid.h"

#include "runtime/Conversions.h"
#include "runtime/Format.h"

using namespace Qt::StringLiterals;

namespace {

/// The sum of `term(digit)` over the digits of `text` from the last to the first, kept in 16 bits.
template<class Term>
int digitSum(const QString &text, Term term)
{
    int sum = 0;
    for (auto c = text.crbegin(); c != text.crend(); ++c) {
        if (*c < u'0' || *c > u'9')
            continue;
        sum += term(c->unicode() - u'0');
        if (sum > std::numeric_limits<qint16>::max())
            throw RunTimeError(errors::kOverflow);
    }
    return sum;
}

double tall(const Innstilling &innstilling, const QString &key, const QString &standard)
{
    return leadingNumber(innstilling(key, standard));
}

QString medNuller(const QString &nummer, double lengde)
{
    const qint16 antall = toInteger(lengde);
    if (antall < 0)
        throw RunTimeError(errors::kInvalidCall);
    return Format(nummer, QString(antall, u'0'));
}

} // namespace

QString Modulus10(const QString &text)
{
    int weight = 2;
    const int sum = digitSum(text, [&](int digit) {
        const int product = digit * weight;
        weight = weight > 1 ? 1 : 2;
        return product > 9 ? product - 10 + product / 10 : product;
    });
    // 10 stays 10: the references that are stored and printed end so.
    return text + QString::number(10 - sum % 10);
}

QString Modulus11(const QString &text)
{
    int weight = 2;
    const int sum = digitSum(text, [&](int digit) {
        const int product = digit * weight;
        weight = weight == 7 ? 2 : weight + 1;
        return product;
    });
    const int check = (11 - sum % 11) % 11;
    return check == 10 ? text + u'-' : text + QString::number(check);
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
