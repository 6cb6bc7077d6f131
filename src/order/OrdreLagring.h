#pragma once

#include "data/RowValues.h"
#include "order/OrdreTilstand.h"

class OrdreKnapper;

/// Saves what the order screen shows: the checks, the statements, and what the user is told. Text
/// goes into the statements as it stands, so an apostrophe in a field makes one fail. Everything
/// here passes over.
///
/// Nothing holds the statements of one save together: each of them runs on a connection of its own
/// and is committed when it returns, whatever is begun and rolled back on gConn around them.
class OrdreLagring : private OrdreRom
{
public:
    OrdreLagring(const OrdreRom &rom, OrdreKnapper &knapper);

    /// The save command. Pending events run while the user is told of a success, so the screen may
    /// be gone when it returns.
    void btnSave_Click();

private:
    /// The faults that keep the order from being saved, a line each; empty for none.
    [[nodiscard]] QString feil() const;
    /// 0, or the row of the first line that has an amount and neither product number nor name.
    [[nodiscard]] int SjekkLinjer() const;
    [[nodiscard]] RowValues hode(OrdreModus modus) const;
    /// Stores header and lines; 1 on success, 0 on failure. `id` is the row to update, and takes
    /// that of an inserted one.
    int LagreOrdre(OrdreModus modus, const QString &tabell, qint32 &id) const;
    /// Stores the lines anew. A line that fails is lost without a word. False without an order.
    bool LagreLinjer(qint32 ordreId) const;

    OrdreKnapper &m_knapper;
    bool m_lagrer = false; ///< the user is being told how the save went
};
