#pragma once

#include "runtime/Currency.h"

#include <QDateTime>
#include <QString>
#include <QStringView>

/// Formats a value by one of the patterns that the module uses. Any other pattern raises error 5.
///
/// Numbers: "# ##0.00", "#0.00", "#0.0", "0.00", "#0", "0", a run of n zeros ("00", "000000000"),
/// and "00000\ ". The decimal mark is the machine's and the minus is the ASCII one, in front. The
/// blank of "# ##0.00" is a literal character: it stands before the last three whole digits,
/// whatever the size (" 5,00", "1 234,50", "1234 567,00", "- 5,00"). A value is rounded half away
/// from zero at the last shown digit, and a negative value that rounds to zero shows no minus.
/// Error 6 for NaN and the infinities.
[[nodiscard]] QString Format(Currency amount, QStringView pattern);
/// Rounds at the digits that the double shows (15 significant ones), so 0.285 is 0.29 by "0.00".
[[nodiscard]] QString Format(double number, QStringView pattern);
/// Rounds at the digits that the single shows (7 significant ones), so 0.35f is 0.4 by "#0.0".
[[nodiscard]] QString Format(float number, QStringView pattern);
[[nodiscard]] QString Format(qint64 number, QStringView pattern);
[[nodiscard]] inline QString Format(int number, QStringView pattern)
{
    return Format(qint64{number}, pattern);
}

/// Dates: "dd.mm.yyyy", "mm\/dd\/yyyy", "\#mm\/dd\/yyyy\#", and "short date" (the machine's form).
/// Error 13 for the invalid date.
[[nodiscard]] QString Format(const QDate &date, QStringView pattern);
[[nodiscard]] inline QString Format(const QDateTime &date, QStringView pattern)
{
    return Format(date.date(), pattern);
}

/// The same at the end of `text`, for rows that are made of many short texts.
void appendFormat(QString &text, Currency amount, QStringView pattern);
void appendFormat(QString &text, qint64 number, QStringView pattern);
void appendFormat(QString &text, const QDate &date, QStringView pattern);

/// Text: with "@@@\ @@@\ @@@" the characters fill the places from the right, places without a
/// character show a blank, and characters beyond the places stand in front. With a number or date
/// pattern, text that reads as a number (or date) by the machine's locale is formatted as one, and
/// any other text passes unchanged; a number is taken digit by digit, at any length. The empty
/// pattern, a run of no zeros, leaves every text as it is.
[[nodiscard]] QString Format(const QString &text, QStringView pattern);
