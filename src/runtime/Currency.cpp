#include "runtime/Currency.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

// The pragma-free way to say "not ISO C++, on purpose".
__extension__ using Int128 = __int128;

[[noreturn]] void overflow()
{
    throw RunTimeError(errors::kOverflow);
}

qint64 narrowed(Int128 count)
{
    if (count > std::numeric_limits<qint64>::max() || count < std::numeric_limits<qint64>::min())
        overflow();
    return qint64(count);
}

/// `dividend` / `divisor` to the nearest whole number, ties to even. `divisor` is positive and
/// at most half of the 128-bit range.
Int128 dividedHalfToEven(Int128 dividend, Int128 divisor)
{
    Int128 quotient = dividend / divisor;
    const Int128 rest = dividend % divisor;
    const Int128 twice = 2 * (rest < 0 ? -rest : rest);
    if (twice > divisor || (twice == divisor && quotient % 2 != 0))
        quotient += dividend < 0 ? -1 : 1;
    return quotient;
}

} // namespace

Currency Currency::fromInteger(qint64 kroner)
{
    return fromTenThousandths(narrowed(Int128{kroner} * kScale));
}

Currency Currency::fromDouble(double kroner)
{
    // The first power of two beyond the range; NaN fails the comparison too.
    constexpr double kBeyond = 0x1p50;
    if (!(std::fabs(kroner) < kBeyond))
        overflow();
    // kroner is exactly mantissa / 2^shift, with shift > 0 below the bound. The product is exact
    // as well, so the one rounding is the last step.
    int exponent = 0;
    const auto mantissa = qint64(std::ldexp(std::frexp(kroner, &exponent), 53));
    const int shift = 53 - exponent;
    if (shift > 70) // below half a ten-thousandth
        return {};
    return fromTenThousandths(
        narrowed(dividedHalfToEven(Int128{mantissa} * kScale, Int128{1} << shift)));
}

double Currency::toDouble() const
{
    // Up to 2^53 the count is exact as a double and the quotient is rounded once.
    constexpr qint64 kExact = qint64{1} << 53;
    if (m_count >= -kExact && m_count <= kExact)
        return double(m_count) / kScale;
    // A larger quotient is first rounded to the 53 bits that a double holds. (A long double is no
    // help: how many bits it has depends on the machine.)
    const auto whole = quint64(std::abs(m_count / kScale));
    const int shift = 53 - int(std::bit_width(whole));
    const Int128 mantissa = dividedHalfToEven(Int128{m_count} << shift, kScale);
    return std::ldexp(double(mantissa), -shift);
}

Currency Currency::abs() const
{
    return isNegative() ? -*this : *this;
}

Currency Currency::roundToWhole() const
{
    return fromTenThousandths(narrowed(dividedHalfToEven(m_count, kScale) * kScale));
}

Currency Currency::cut() const
{
    return fromTenThousandths(m_count - m_count % kScale);
}

Currency Currency::operator-() const
{
    return Currency{} - *this;
}

Currency &Currency::operator+=(Currency other)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(m_count, other.m_count, &sum))
        overflow();
    m_count = sum;
    return *this;
}

Currency &Currency::operator-=(Currency other)
{
    qint64 difference = 0;
    if (__builtin_sub_overflow(m_count, other.m_count, &difference))
        overflow();
    m_count = difference;
    return *this;
}

Currency Currency::product(Currency a, Currency b)
{
    return fromTenThousandths(narrowed(dividedHalfToEven(Int128{a.m_count} * b.m_count, kScale)));
}
