#pragma once

#include <QString>

class fpSpread;

/// Makes the grid the list of invoices that two screens show, locked and in small letters: number,
/// customer, dates and amount, a seventh column of the screen's own, and the hidden ID of the
/// order.
void LagFakturaliste(fpSpread &grid, const QString &egenKolonne);
