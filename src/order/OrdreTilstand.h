#pragma once

#include "platform/ado/Recordset.h"
#include "runtime/Ref.h"

#include <functional>

class OrdreFelter;
namespace Ui {
class frmOrdre;
}

/// What the order screen does with the order that it shows; an order is stored by the number.
enum class OrdreModus { Visning = 0, Ny = 1, Endre = 2 };

/// What the rooms of the order screen share: its mode and the orders that it browses.
struct OrdreTilstand
{
    /// The order on the screen; 0 for none, and 1 after any save.
    qint32 AktivID = 0;
    /// The one order to open; 0 for all of the client's.
    qint32 InnID = 0;
    /// The next print is an original whatever the order's status says.
    bool TvingOriginal = false;
    /// The orders being browsed, detached; no object before the first load and after a failed one.
    Ref<ado::Recordset> rsOrdre;
    /// Runs when a mode has been entered or left; set by the header, whose fields it locks.
    std::function<void()> vedModus;

    /// A new order or a copy is being entered.
    [[nodiscard]] bool ErNy() const { return m_modus == OrdreModus::Ny; }
    /// The order on the screen is being changed.
    [[nodiscard]] bool ErEndre() const { return m_modus == OrdreModus::Endre; }
    [[nodiscard]] bool iModus() const { return m_modus != OrdreModus::Visning; }
    void settModus(OrdreModus modus)
    {
        m_modus = modus;
        if (vedModus)
            vedModus();
    }
    /// Makes the record on which the set stands the order on the screen. Not trapped.
    void lesAktivID() { AktivID = rsOrdre->integer(u"ID"); }

private:
    OrdreModus m_modus = OrdreModus::Visning;
};

/// What every room of the order screen works on. All of it is the screen's and outlives the rooms.
struct OrdreRom
{
    Ui::frmOrdre &m_ui;
    OrdreTilstand &m_tilstand;
    const OrdreFelter &m_felter;
};
