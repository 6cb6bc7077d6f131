#pragma once

#include "runtime/Currency.h"

#include <QString>
#include <QStringView>
#include <QVarLengthArray>

#include <optional>

/// A number as decimal digits, the common ground of Format and of the conversions to and from
/// text: ± 0.d1d2d3… times ten to the power `exponent`. Exact, so nothing is rounded twice.
struct Decimal
{
    /// The number itself when it is whole and small, as most quantities and rates are. What can be
    /// done with it then need not take it apart into digits.
    [[nodiscard]] static std::optional<qint64> smallWhole(double number);

    using Digits = QVarLengthArray<char, 32>;

    bool negative = false; ///< never set for zero
    Digits digits;         ///< '0' to '9', first and last one not '0'; none for zero
    int exponent = 0;      ///< count of digits before the decimal point; 0 and less for fractions

    [[nodiscard]] bool isZero() const { return digits.isEmpty(); }

    [[nodiscard]] static Decimal fromInteger(qint64 number);
    [[nodiscard]] static Decimal fromCurrency(Currency amount);
    /// The nearest number of at most `significant` digits; error 6 for NaN and the infinities.
    [[nodiscard]] static Decimal fromDouble(double number, int significant);

    /// Reads the whole of `text` as a user's number (the form is told in Conversions.h); nothing
    /// if it is none. Text of more than 100000 digits is no number, and an exponent beyond ±100000
    /// counts as that.
    [[nodiscard]] static std::optional<Decimal> read(QStringView text, QChar decimalMark);

    /// The nearest double; error 6 beyond the range, 0 for what is too small.
    [[nodiscard]] double toDouble() const;
    /// True when toDouble would not raise.
    [[nodiscard]] bool fitsDouble() const;
    /// The nearest ten-thousandth, ties to even; error 6 outside the range.
    [[nodiscard]] Currency toCurrency() const;

    /// Rounds half away from zero to `decimals` digits behind the point.
    void roundTo(int decimals);

    /// The digits without a sign; in exponent form ("1.234568E+08") when the plain form would
    /// take more than `places` digits before or behind the point.
    [[nodiscard]] QString toText(int places, QChar decimalMark, bool zeroBeforeMark) const;

private:
    /// Cuts the zeros at both ends.
    void normalise();
    /// The nearest double, or nothing beyond the range.
    [[nodiscard]] std::optional<double> nearestDouble() const;
};

/// Significant digits that a single and a double show.
inline constexpr int kSingleDigits = 7;
inline constexpr int kDoubleDigits = 15;
/// Enough places for every whole number and every amount.
inline constexpr int kExactDigits = 19;
