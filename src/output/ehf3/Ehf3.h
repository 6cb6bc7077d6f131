#pragma once

#include "output/ehf3/Grunnlag.h"

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

/// Makes the documents of a client's orders: a credit note where what is to be paid is negative,
/// else an invoice. Reads through gDB, and the active client does not matter. Who wants many asks
/// for them by rising number, and has them read a block at a time. Nothing of an order changes.
class Ehf3Skriver
{
public:
    explicit Ehf3Skriver(qint16 klient, qint32 blokk = 1) : m_klient(klient), m_leser(klient, blokk)
    {
    }

    /// Raises nothing.
    [[nodiscard]] Ehf3 lag(qint32 ordreNr);
    /// Writes it to `fil` and returns what is missing, as above, or why the file could not be
    /// written; empty when it is. The file comes to be whole or not at all, and replaces one that
    /// is there.
    [[nodiscard]] QString skriv(qint32 ordreNr, const QString &fil);

private:
    qint16 m_klient;
    ehf3::Grunnlagsleser m_leser;
};
