#pragma once

#include "runtime/Currency.h"

#include <QDateTime>
#include <QString>
#include <QStringView>

/// Conversions between text and values. Those "by the machine's locale" read what a user types:
/// the locale's decimal mark, groups parted by blanks (U+0020, U+00A0, U+202F), a leading '-' or
/// U+2212 (or '+'), blanks around the number and its sign, an exponent ("1,5E+08"), and every form
/// of a number that Format writes. A group blank may stand between any two whole digits, since
/// "# ##0.00" writes "1234 567,00". A "." or "," that is not the locale's decimal mark, a currency
/// sign and a percent sign make the text no number. They raise error 13 for text that is no number
/// (the empty text too) and error 6 for a number outside the range.

/// The number-to-text form: plain decimal digits with "." as the decimal point in every locale, one
/// blank before a non-negative number and the minus sign in that place before a negative one. A
/// fraction has no zero before its point (" .5"). A single shows up to 7 significant digits, in
/// exponent form ("1.234568E+08") where more would be needed before or behind the point. Error 6
/// for NaN and the infinities.
[[nodiscard]] QString numberToText(qint64 number);
[[nodiscard]] inline QString numberToText(int number)
{
    return numberToText(qint64{number});
}
[[nodiscard]] QString numberToText(float number);

/// The leading-number value: the longest number at the start of `text` with "." as the decimal
/// point; blanks, tabs and line feeds are skipped wherever they stand; reading stops at the first
/// other character. No number gives 0. An exponent ("1e3", "1d3") is part of a number. Error 6 for
/// a number outside the range.
[[nodiscard]] double leadingNumber(QStringView text);

/// By the machine's locale.
[[nodiscard]] double toDouble(QStringView text);
[[nodiscard]] Currency toCurrency(QStringView text);
/// Signed 32-bit, a fraction rounded half to even.
[[nodiscard]] qint32 toLong(QStringView text);
/// A date such as "9.3.2014", "09.03.14", "2014-03-09" or the machine's short form, with or without
/// a time "hh:mm[:ss]"; two digits of a year below 30 are 20xx, the others 19xx. Error 13 for text
/// that is no date. The three numbers are parted by ".", "/" or "-", the same mark twice, and are
/// read in the machine's order of day and month unless four digits stand first. The result carries
/// no time zone (UTC as a neutral one).
[[nodiscard]] QDateTime toDate(QStringView text);
/// True when toDate would not raise.
[[nodiscard]] bool isDate(QStringView text);

/// Rounds half to even; error 6 outside the range or for NaN.
[[nodiscard]] qint32 toLong(double number);
[[nodiscard]] qint16 toInteger(double number);

/// The day that a date of value 0 shows: 30 December 1899, midnight.
[[nodiscard]] QDateTime dateZero();

/// Cuts blanks (U+0020 only) at both ends, or at the left.
[[nodiscard]] QString trimBlanks(QStringView text);
[[nodiscard]] QString trimLeftBlanks(QStringView text);
