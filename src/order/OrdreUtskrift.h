#pragma once

#include <QString>

#include <functional>

/// What the order screen hands to the print dialog.
struct OrdreUtskrift
{
    bool ErKreditnota = false; ///< the amount to pay is below 0
    QString fakID;             ///< the order's ID
    QString fakNr;             ///< the order number as the screen shows it
    bool original = true;      ///< original chosen; otherwise copy, and original cannot be chosen
};

/// Shows the print dialog, without modality.
using UtskriftApner = std::function<void(const OrdreUtskrift &)>;
