#pragma once

#include <QString>

/// The transfer of invoices to the parent's ledger, apart from the screen that starts it.

/// The columns of the posting screen's list, counted from 1.
namespace bokforkolonne {
inline constexpr int kFakNr = 1;
inline constexpr int kKundeNr = 2;
inline constexpr int kKundeNavn = 3;
inline constexpr int kFakDato = 4;
inline constexpr int kForfall = 5;
inline constexpr int kBelop = 6;
inline constexpr int kBokfor = 7; ///< the mark
inline constexpr int kOrdreId = 8;
} // namespace bokforkolonne

/// The screen as the posting run sees it. Rows count from 1. None of these raises.
class BokforSkjerm
{
public:
    virtual ~BokforSkjerm() = default;

    [[nodiscard]] virtual int antallRader() const = 0; ///< rows that hold data
    [[nodiscard]] virtual bool erMerket(int rad) const = 0;
    [[nodiscard]] virtual QString celle(int kol, int rad) const = 0;
    /// The texts of the two combo boxes, as they stand.
    [[nodiscard]] virtual QString konto() const = 0;
    [[nodiscard]] virtual QString loyve() const = 0;

    /// `behandlet` of `merket` rows have been dealt with; told before the first and after each.
    virtual void framdrift(int behandlet, int merket) = 0;
    /// Shows a message and waits for the user; `stil` is the message box's.
    virtual void melding(const QString &tekst, int stil) = 0;
    /// Loads the list anew.
    virtual void lesFakturaer() = 0;
    /// Runs a report, as SkrivRapport.
    virtual void skrivRapport(const QString &rapport, qint16 modus, const QString &utvalg,
                              const QString &formel1, const QString &formel2) = 0;
    /// Lets all pending events run.
    virtual void slippHendelser() = 0;
};

/// Posts the marked invoices of the active client that are "Fakturert" still: for each a voucher
/// with its lines and a row in tmpTbl, which is made anew, and the status "Bokført". An invoice
/// dated outside the active year ends the run with a warning. Otherwise the list is loaded anew,
/// and if anything was posted the number is told and the two journals are run. Before its first
/// statement a run waits for its turn in the database (Bokfortur.h).
///
/// Errors are passed over, statement by statement, and each statement commits by itself: what fails
/// is missing, and the invoice counts as posted all the same. Account, permit, the mark of a credit
/// note and the rounding are carried from one invoice to the next.
void BokforMerkede(BokforSkjerm &skjerm);

/// The next voucher number of the active client in that calendar year as text: "1" for the first
/// one and after a failed read, later ones with a leading blank. It reserves nothing: two callers
/// may get the same number.
[[nodiscard]] QString NyttBilagnr(qint16 aar);
