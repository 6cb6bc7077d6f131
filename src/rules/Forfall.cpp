#include "rules/Forfall.h"

#include "runtime/Conversions.h"
#include "runtime/Format.h"

#include <cmath>

namespace {

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
// More days than there are from the first day to the last one.
constexpr double kMostDays = 3'700'000;

} // namespace

QString ForfallsDato(QDate fra, const QString &betBet)
{
    const double days = std::floor(toDouble(betBet));
    if (!fra.isValid())
        throw RunTimeError(errors::kTypeMismatch);
    if (std::abs(days) > kMostDays)
        throw RunTimeError(errors::kOverflow);
    const QDate day = fra.addDays(qint64(days));
    if (day.year() < kFirstYear || day.year() > kLastYear)
        throw RunTimeError(errors::kOverflow);
    return Format(day, u"dd.mm.yyyy");
}
