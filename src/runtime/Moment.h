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

/// The moment so many milliseconds behind 1 January 1970.
[[nodiscard]] inline QDateTime utcMoment(qint64 millisecondsSince1970)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    return QDateTime::fromMSecsSinceEpoch(millisecondsSince1970, QTimeZone::UTC);
#else
    return QDateTime::fromMSecsSinceEpoch(millisecondsSince1970, Qt::UTC);
#endif
}
