#pragma once

#include "runtime/Currency.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

/// What the database tells of an order, before anything is asked of it or computed. Texts are
/// lawful in XML and have no blanks at their ends; a missing one is empty, a missing date invalid,
/// a missing number nought.
namespace ehf3 {

struct Adresse
{
    QString linje1, linje2, postNr, sted;

    [[nodiscard]] bool erTom() const
    {
        return linje1.isEmpty() && linje2.isEmpty() && postNr.isEmpty() && sted.isEmpty();
    }
};

struct Selger
{
    QString navn;
    Adresse adresse;
    QString telefon;
    QString orgNr; ///< nothing but the number, as all numbers of this kind
    QString konto;
};

struct Kunde
{
    qint32 nummer = 0;
    QString navn;
    Adresse adresse;
    QString orgNr;
};

struct Ordrelinje
{
    QString varenr, tekst, enhet;
    float antall = 0;
    Currency pris, sats, netto;
};

struct Grunnlag
{
    qint32 ordreNr = 0;
    Selger selger;
    Kunde kunde;
    Adresse levering;
    QString varRef, deresRef, kid;
    std::optional<qint32> betalingsfrist; ///< in days
    QDate fakturert, forfall, levert;
    Currency aBetale;
    std::vector<Ordrelinje> linjer; ///< in the order of the screen
};

/// Reads order `ordreNr` of client `klient` through gDB; nothing when there is none. The active
/// client does not matter. Raises what the database refuses.
[[nodiscard]] std::optional<Grunnlag> lesGrunnlag(qint16 klient, qint32 ordreNr);

} // namespace ehf3
