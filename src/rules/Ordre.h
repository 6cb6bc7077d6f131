#pragma once

#include <QString>
#include <QStringView>

/// What an order is. A row of Ordre with its rows of OrdreLinjer is order and invoice in one: only
/// OrdreStatus tells them apart, and only a negative SumBrutto makes it a credit note.

/// The values of OrdreStatus.
namespace ordrestatus {
inline constexpr QStringView kOrdre = u"Ordre";
inline constexpr QStringView kFakturert = u"Fakturert";
inline constexpr QStringView kBokfort = u"Bokført";
inline constexpr QStringView kBetalt = u"Betalt";
} // namespace ordrestatus

/// The active client's next order number: one above the highest in use, and for a first order
/// FirstFakNr of the client or 1, whichever is greater. It reserves nothing: two callers may get
/// the same number, and the constraint KlientOrdre then refuses the second insert.
/// Not trapped: errors 91 and 3021 after a failed read.
[[nodiscard]] qint32 NyttOrdreNr();

/// "OrdreStatus='...'", which as a condition finds the rows in that status and as an assignment
/// puts them in it.
[[nodiscard]] QString StatusLik(QStringView status);

/// Whether a saved row in `status` may be changed. Blanks around the status do not count.
[[nodiscard]] bool KanEndres(QStringView status);
/// Whether a row in `status` may be marked as paid.
[[nodiscard]] bool KanMerkesBetalt(QStringView status);

/// The statements that move the status. They look at no old status, so a copy printed of a paid
/// invoice makes it "Fakturert" again. `ordreNr` and `id` given as text go in as they stand.

/// After print on paper. Without a client condition: it hits the number under every client.
[[nodiscard]] QString FakturertSqlForOrdreNr(const QString &ordreNr);
/// After an EHF file.
[[nodiscard]] QString FakturertSql(const QString &id);
/// After posting.
[[nodiscard]] QString BokfortSql(const QString &id);
/// After the user's yes to payment. The column Betalt stays as it is: the status alone tells.
[[nodiscard]] QString BetaltSql(qint32 id);

/// The condition by which posting selects an order that is "Fakturert" still, to follow another
/// one.
[[nodiscard]] QString ErFakturertVilkar(const QString &id);
