#include "rules/Forfall.h"

#include "runtime/Conversions.h"
#include "runtime/Format.h"

#include <cmath>

namespace {

constexpr int kForsteAar = 100;
constexpr int kSisteAar = 9999;
// More days than there are from the first day to the last one.
constexpr double kFlestDager = 3'700'000;

} // namespace

QString ForfallsDato(QDate fra, const QString &betBet)
{
    const double dager = std::floor(toDouble(betBet));
    if (!fra.isValid())
        throw RunTimeError(errors::kTypeMismatch);
    if (std::abs(dager) > kFlestDager)
        throw RunTimeError(errors::kOverflow);
    const QDate dag = fra.addDays(qint64(dager));
    if (dag.year() < kForsteAar || dag.year() > kSisteAar)
        throw RunTimeError(errors::kOverflow);
    return Format(dag, u"dd.mm.yyyy");
}
