#pragma once

#include <QDateTime>
#include <QTimeZone>

/// A date and a time of day that belong to no place, which is all that the module stores and
/// computes with. They are kept as UTC, whose days all have 24 hours: no change of clocks can move
/// one to another day. The machine's own time is seen through Clock alone.
[[nodiscard]] inline QDateTime utcMoment(QDate date, QTime time = QTime(0, 0))
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    return {date, time, QTimeZone::UTC};
#else
    return {date, time, Qt::UTC};
#endif
}

/// The day of utcMoment(millisecondsSince1970), without making the moment.
[[nodiscard]] inline QDate utcDay(qint64 millisecondsSince1970)
{
    constexpr qint64 kMillisecondsOfDay = 86'400'000;
    constexpr qint64 kJulianDayOf1970 = 2'440'588;
    const bool before1970 = millisecondsSince1970 < 0;
    const qint64 days =
        (millisecondsSince1970 + (before1970 ? 1 : 0)) / kMillisecondsOfDay - (before1970 ? 1 : 0);
    return QDate::fromJulianDay(kJulianDayOf1970 + days);
}

/// The moment so many milliseconds behind 1 January 1970.
[[nodiscard]] inline QDateTime utcMoment(qint64 millisecondsSince1970)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    return QDateTime::fromMSecsSinceEpoch(millisecondsSince1970, QTimeZone::UTC);
#else
    return QDateTime::fromMSecsSinceEpoch(millisecondsSince1970, Qt::UTC);
#endif
}
