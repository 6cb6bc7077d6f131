#pragma once

#include <QDate>
#include <QString>

/// The day that comes `betBet` days after `fra`, as "dd.mm.yyyy". `betBet` is the typed number of
/// days, read by the machine's locale; the fraction of a day does not reach the next one.
/// Not trapped: error 13 for text that is no number or an invalid date, 6 for a day outside the
/// years 100 to 9999.
[[nodiscard]] QString ForfallsDato(QDate fra, const QString &betBet);
