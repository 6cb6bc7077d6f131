#pragma once

#include <QByteArray>
#include <QString>

/// An order as EHF Billing 3.0, the electronic invoice that Norwegian receivers take today. The
/// documents of output/ehf are apart from this.

/// A document, or why there is none.
struct Ehf3
{
    QByteArray dokument; ///< XML; empty when something is missing
    QString mangler;     ///< all that is missing, in Norwegian, a line each; empty for none
};

/// The document of order `ordreNr` of client `klient`: a credit note when what is to be paid is
/// negative, else an invoice. Reads through gDB; the active client does not matter. Raises nothing.
[[nodiscard]] Ehf3 LagEhf3(qint16 klient, qint32 ordreNr);

/// Writes it to `fil` and returns what is missing, as above, or why the file could not be written;
/// empty when it is. The file comes to be whole or not at all, and replaces one that is there.
/// Nothing of the order changes.
[[nodiscard]] QString SkrivEhf3(qint16 klient, qint32 ordreNr, const QString &fil);
