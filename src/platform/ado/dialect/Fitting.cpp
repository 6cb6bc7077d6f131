#include "platform/ado/dialect/Fitting.h"

#include "runtime/RunTimeError.h"

namespace ado::dialect {

namespace {

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

} // namespace

QString cutText(QString text, int width)
{
    if (width <= 0 || text.size() <= width)
        return text;
    qsizetype end = 0;
    for (int characters = 0; characters < width && end < text.size(); ++characters) {
        const bool pair = text.at(end).isHighSurrogate() && end + 1 < text.size() &&
                          text.at(end + 1).isLowSurrogate();
        end += pair ? 2 : 1;
    }
    text.truncate(end);
    return text;
}

QDateTime wholeSeconds(const QDateTime &moment)
{
    constexpr qint64 half = 500;
    QDateTime second = moment.addMSecs(half);
    second = second.addMSecs(-second.time().msec());
    const int year = second.date().year();
    if (!second.isValid() || year < kFirstYear || year > kLastYear)
        throw RunTimeError(errors::kOverflow);
    return second;
}

} // namespace ado::dialect
