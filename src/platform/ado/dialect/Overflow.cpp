#include "platform/ado/dialect/Overflow.h"

#include "platform/ado/dialect/ErrorNumbers.h"
#include "platform/ado/dialect/Writer.h"

using namespace Qt::StringLiterals;

namespace ado::dialect {

namespace {

constexpr QLatin1StringView kSuffix(" range"); // behind the column's name

} // namespace

QByteArray rangeCheck(QStringView column, const QByteArray &condition)
{
    return " CONSTRAINT " + Writer::name(column.toString() + kSuffix) + " CHECK (" + condition +
           ')';
}

std::optional<RunTimeError> brokenRange(const QString &constraint)
{
    if (!constraint.endsWith(kSuffix))
        return std::nullopt;
    return RunTimeError(errors::kOutOfRange, u"Tallet er for stort for feltet «%1»."_s.arg(
                                                 constraint.chopped(kSuffix.size())));
}

RunTimeError computedOverflow()
{
    return {errors::kOutOfRange, u"Et beregnet tall er for stort."_s};
}

} // namespace ado::dialect
