#pragma once

#include "runtime/Currency.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringView>

/// One invoice or credit note as an EHF document (UBL 2.0 XML), written as a fixed sequence of
/// tags.
///
/// The document is the four pieces EhfHode, EhfDokument, EhfLinjer and EhfSlutt in this order, each
/// passed through EhfTegn. Inside a piece a bare line feed parts the rows. `kreditnota` is 0 for an
/// invoice and 1 for a credit note; `ordreNr` is the number as the user's field shows it, and the
/// order is that of the active client. Values go in without any XML escaping, so an ampersand in a
/// name stands bare.
///
/// Nothing is trapped: a Null in a column read (error 94), a SumNetto of zero (error 11, or 6 when
/// the VAT is zero as well) and a failed read of the client or the order (error 91) end the piece.

/// From the prolog to ProfileID; needs no database. `stilark` is the style sheet's file name.
[[nodiscard]] QString EhfHode(int kreditnota, const QString &stilark);
/// From the document's ID to LegalMonetaryTotal.
[[nodiscard]] QString EhfDokument(int kreditnota, const QString &ordreNr);
/// All lines whose product stands in the client's register; empty when there are none. In the order
/// in which the database gives them.
[[nodiscard]] QString EhfLinjer(int kreditnota, const QString &ordreNr);
/// The closing tag.
[[nodiscard]] QString EhfSlutt(int kreditnota);

/// The text in 7-bit characters: each one above "z" becomes "&#x00" + its code in the system's
/// 8-bit code page as two upper-case hexadecimal digits + ";". All others pass unchanged.
[[nodiscard]] QByteArray EhfTegn(QStringView tekst);

/// Absolute value with two decimals and a point, rounded half away from zero: "1250.00".
/// Error 6 for the lowest amount, which has no absolute value.
[[nodiscard]] QString EhfBelop(Currency belop);
/// One decimal and a point, signed: "25.0".
[[nodiscard]] QString EhfProsent(float prosent);
/// Absolute value in plain digits.
[[nodiscard]] QString EhfHeltall(qint32 tall);
/// "2014-03-09".
[[nodiscard]] QString EhfDato(QDate dato);
