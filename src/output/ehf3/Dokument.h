#pragma once

#include "output/ehf3/Grunnlag.h"

/// An order as the document tells it: its lines, sums and VAT. In a credit note all is turned
/// around, so that what the customer gets back is positive.
namespace ehf3 {

struct Dokumentlinje
{
    int nr = 0; ///< 1, 2, 3 … in the order of the lines
    QString navn, beskrivelse, varenr, enhet;
    Currency antall; ///< carries the sign
    Currency pris;   ///< never negative
    Currency sats, netto;
};

/// The lines of one rate.
struct Mvagruppe
{
    Currency sats, grunnlag, mva;
};

struct Dokument
{
    explicit Dokument(const Grunnlag &grunnlag)
        : ordre(grunnlag), erKreditnota(grunnlag.aBetale.isNegative())
    {
    }

    const Grunnlag &ordre;
    bool erKreditnota;
    std::vector<Dokumentlinje> linjer;
    std::vector<Mvagruppe> mvagrupper; ///< by rate
    Currency netto, mva, brutto;
    Currency avrunding; ///< from gross to what is to be paid
    Currency aBetale;
};

/// The document of an order, which has to outlive it.
[[nodiscard]] Dokument lagDokument(const Grunnlag &ordre);

/// Whether quantity times price is what the line costs, but for rounding.
[[nodiscard]] bool gaarOpp(const Dokumentlinje &linje);

/// Whether what parts the sums from what is to be paid is rounding: that of lines, and that to
/// whole kroner as the order tells it; for an order that does not tell, up to a krone.
[[nodiscard]] bool gaarOpp(const Dokument &dokument);

} // namespace ehf3
