#include "output/ehf3/Belop.h"

#include "runtime/Decimal.h"

#include <array>
#include <limits>

namespace {

// The pragma-free way to say "not ISO C++, on purpose".
__extension__ using Int128 = __int128;

constexpr qint64 kOere = Currency::kScale / 100; // in ten-thousandths
constexpr int kDesimaler = 4;

/// a * b / c to the nearest whole number, a half away from nought; `c` is not nought.
qint64 avrundet(qint64 a, qint64 b, qint64 c)
{
    const Int128 teller = c < 0 ? -(Int128{a} * b) : Int128{a} * b;
    const Int128 nevner = c < 0 ? -Int128{c} : Int128{c};
    const Int128 halv = teller < 0 ? -nevner : nevner;
    const Int128 svar = (2 * teller + halv) / (2 * nevner);
    if (svar > std::numeric_limits<qint64>::max() || svar < std::numeric_limits<qint64>::min())
        throw RunTimeError(errors::kOverflow);
    return qint64(svar);
}

Currency fraOere(qint64 oere)
{
    qint64 antall = 0;
    if (__builtin_mul_overflow(oere, kOere, &antall))
        throw RunTimeError(errors::kOverflow);
    return Currency::fromTenThousandths(antall);
}

} // namespace

Currency ehf3::fraSingle(float tall)
{
    return Decimal::fromDouble(double{tall}, kSingleDigits).toCurrency();
}

Currency ehf3::tilHundredel(Currency belop)
{
    return fraOere(avrundet(belop.tenThousandths(), 1, kOere));
}

Currency ehf3::prosentAv(Currency belop, Currency prosent)
{
    constexpr qint64 kHundre = 100 * Currency::kScale;
    return fraOere(avrundet(belop.tenThousandths(), prosent.tenThousandths(), kHundre * kOere));
}

Currency ehf3::forhold(Currency teller, Currency nevner)
{
    return Currency::fromTenThousandths(
        avrundet(teller.tenThousandths(), Currency::kScale, nevner.tenThousandths()));
}

QString ehf3::tall(Currency verdi, int desimaler)
{
    std::array<QChar, 24> tegn; // from the last one on
    auto ut = tegn.end();
    const qint64 antall = verdi.tenThousandths();
    quint64 rest = antall < 0 ? quint64{0} - quint64(antall) : quint64(antall);
    for (int sted = kDesimaler; sted > -1 || rest > 0; --sted, rest /= 10) {
        const auto siffer = char16_t(u'0' + rest % 10);
        const bool erDesimal = sted > 0;
        if (erDesimal && sted > desimaler && siffer == u'0' && ut == tegn.end())
            continue; // a decimal that nobody needs
        if (!erDesimal && sted == 0 && ut != tegn.end())
            *--ut = u'.';
        *--ut = siffer;
    }
    if (antall < 0)
        *--ut = u'-';
    return QString(ut, tegn.end() - ut);
}
