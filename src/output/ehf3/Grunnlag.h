#pragma once

#include "runtime/Currency.h"

#include <QDate>
#include <QString>

#include <map>
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
    bool finnes = false; ///< in the register
    QString navn;
    Adresse adresse;
    QString telefon;
    QString orgNr; ///< nothing but the number, as all numbers of this kind
    QString konto;
};

struct Kunde
{
    qint32 nummer = 0;
    bool finnes = false; ///< in the register
    QString navn;
    Adresse adresse;
    QString orgNr;
};

struct Ordrelinje
{
    QString varenr, tekst, enhet;
    float antall = 0;
    float sats = 0;
    Currency pris, netto;
};

struct Grunnlag
{
    qint32 ordreNr = 0;
    QString status;
    Selger selger;
    Kunde kunde;
    Adresse levering;
    QString varRef, deresRef, kid;
    std::optional<qint32> betalingsfrist; ///< in days
    QDate fakturert, forfall, levert;
    Currency aBetale;
    std::optional<Currency> avrunding; ///< in `aBetale`; orders of earlier versions do not tell
    std::vector<Ordrelinje> linjer;    ///< in the order of the screen
};

/// Reads orders of a client through gDB, a block of numbers that follow each other at a time: the
/// one that is asked for and those behind it, so that many are best asked for by rising number. The
/// client is read with the first block. The active client does not matter.
class Grunnlagsleser
{
public:
    explicit Grunnlagsleser(qint16 klient, qint32 blokk = 1) : m_klient(klient), m_blokk(blokk) {}

    /// Lives until the next one is asked for; nothing when there is no such order. Raises what the
    /// database refuses.
    [[nodiscard]] const Grunnlag *les(qint32 ordreNr);

private:
    void lesBlokk(qint32 fra, qint32 antall);
    void lesSelger();
    void lesHoder(const QString &utvalg);
    void lesLinjer(const QString &utvalg);

    qint16 m_klient;
    qint32 m_blokk;
    std::optional<Selger> m_selger;
    qint64 m_fra = 0; ///< the block in hand: the first number, and the one behind the last
    qint64 m_til = 0;
    std::map<qint32, Grunnlag> m_ordrer;
};

} // namespace ehf3
