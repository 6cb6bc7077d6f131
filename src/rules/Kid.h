#pragma once

#include "rules/Innstilling.h"

#include <QString>

/// The payment reference (KID) and its check digits.

/// `tekst` with its check digit by modulus 10 appended: weights 2 and 1 in turn from the right, the
/// digits of two-digit products added up. Only the digits 0 to 9 count and use up a weight. A
/// digit sum that ends in 0 gives the two characters "10". Error 6 when the sum exceeds 16 bits.
/// Source: the algorithm of H. P. Luhn, but for "10" in place of its "0".
[[nodiscard]] QString Modulus10(const QString &tekst);

/// `tekst` with its check digit by modulus 11 appended: weights 2 to 7 in turn from the right over
/// the digits. "-" stands for the check value 10, "0" for 11. Error 6 when the sum exceeds 16 bits.
/// Source: the Norwegian banks' published rule for KID.
[[nodiscard]] QString Modulus11(const QString &tekst);

/// The payment reference of an order: its number, or the customer's number and its number, filled
/// up with zeros to the lengths in the settings (never cut), and the check digit. Empty when
/// "KIDaktivert" is not 1 or "KIDmodulus" is neither 10 nor 11. Longer results than the 25
/// characters of the column KID are not held back. A number of no length at all stands as it is.
/// Not trapped: error 5 for a negative length, 6 for a length beyond 16 bits.
[[nodiscard]] QString LagKID(const Innstilling &innstilling, const QString &ordreNr,
                             const QString &kundeNr);
