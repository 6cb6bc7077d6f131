#pragma once

#include "platform/ado/Recordset.h"
#include "runtime/Ref.h"

#include <functional>

/// What the rooms of the order screen share: its mode and the orders that it browses.
struct OrdreTilstand
{
    // The mode; set by settModus.
    bool ErNy = false;    ///< a new order or a copy is being entered
    bool ErEndre = false; ///< the order on the screen is being changed
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

    [[nodiscard]] bool iModus() const { return ErNy || ErEndre; }
    void settModus(bool ny, bool endre)
    {
        ErNy = ny;
        ErEndre = endre;
        if (vedModus)
            vedModus();
    }
};
