#pragma once

#include "runtime/RunTimeError.h"

#include <QtGlobal>

#include <compare>

/// Fixed-point money: a signed 64-bit count of ten-thousandths of a krone, so from
/// -922 337 203 685 477.5808 to 922 337 203 685 477.5807. There is no implicit conversion from or
/// to a number. Every operation whose result does not fit raises error 6 (overflow).
class Currency
{
public:
    /// Ten-thousandths in one krone.
    static constexpr qint64 kScale = 10000;

    constexpr Currency() = default;

    [[nodiscard]] static constexpr Currency fromTenThousandths(qint64 count)
    {
        Currency c;
        c.m_count = count;
        return c;
    }
    /// Whole kroner; error 6 outside the range.
    [[nodiscard]] static Currency fromInteger(qint64 kroner);
    /// The nearest ten-thousandth, ties to even; error 6 outside the range and for NaN.
    [[nodiscard]] static Currency fromDouble(double kroner);

    [[nodiscard]] constexpr qint64 tenThousandths() const { return m_count; }
    [[nodiscard]] double toDouble() const;
    [[nodiscard]] constexpr bool isZero() const { return m_count == 0; }
    [[nodiscard]] constexpr bool isNegative() const { return m_count < 0; }

    [[nodiscard]] Currency abs() const;
    /// The nearest whole krone, a half to the even one.
    [[nodiscard]] Currency roundToWhole() const;
    /// Whole kroner with the fraction cut off, towards zero.
    [[nodiscard]] Currency cut() const;

    Currency operator-() const;
    Currency &operator+=(Currency other);
    Currency &operator-=(Currency other);
    friend Currency operator+(Currency a, Currency b) { return a += b; }
    friend Currency operator-(Currency a, Currency b) { return a -= b; }
    /// The product through a 128-bit intermediate, rounded to the nearest ten-thousandth with
    /// ties to even.
    friend Currency operator*(Currency a, Currency b) { return product(a, b); }

    friend constexpr auto operator<=>(Currency, Currency) = default;

private:
    static Currency product(Currency a, Currency b);

    qint64 m_count = 0;
};
