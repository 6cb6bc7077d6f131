#pragma once

#include <QString>

/// What a picked customer is made of, in the order in which it is handed over. ForfallDato is
/// handed over ahead of FakturaType, and is the only one that may be left out.
enum class KundeFelt {
    KundeNr,
    KundeNavn,
    BetBet,
    FakAdresse1,
    FakAdresse2,
    FakPostNr,
    FakPostSted,
    LevAdresse1,
    LevAdresse2,
    LevPostNr,
    LevPostSted,
    OrganisasjonsNr,
    ForfallDato,
    FakturaType,
};

/// Takes the customer that the user picks in frmKunder. A RunTimeError out of any of these is
/// passed over, and the next field comes all the same.
class KundeMottaker
{
public:
    virtual ~KundeMottaker() = default;

    virtual void settKundefelt(KundeFelt felt, const QString &tekst) = 0;
    /// The mark "same delivery address", between OrganisasjonsNr and ForfallDato: 0 off, 1 on,
    /// 2 undecided; for any other value the receiver raises a RunTimeError.
    virtual void settSammeLevAdr(qint32 verdi) = 0;
    /// The days of BetBet as the receiver shows them by now; the due date is formed from it.
    [[nodiscard]] virtual QString betBet() const = 0;
};
