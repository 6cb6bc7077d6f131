#include "platform/ado/sqlite/StoredDate.h"

#include <chrono>

namespace ado {

namespace {

/// The number of `count` digits from `begin` on, or -1.
int digits(std::string_view text, std::size_t begin, std::size_t count)
{
    int number = 0;
    for (const char c : text.substr(begin, count)) {
        if (c < '0' || c > '9')
            return -1;
        number = number * 10 + (c - '0');
    }
    return number;
}

void writeDigits(char *place, int number, int count)
{
    for (char *digit = place + count; digit != place; number /= 10)
        *--digit = char('0' + number % 10);
}

} // namespace

QByteArray storedDate(const QDateTime &date)
{
    const QDate day = date.date();
    const QTime time = date.time();
    const bool hasTime = time.hour() != 0 || time.minute() != 0 || time.second() != 0;
    QByteArray text(hasTime ? "0000-00-00 00:00:00" : "0000-00-00");
    char *place = text.data();
    writeDigits(place, day.year(), 4);
    writeDigits(place + 5, day.month(), 2);
    writeDigits(place + 8, day.day(), 2);
    if (hasTime) {
        writeDigits(place + 11, time.hour(), 2);
        writeDigits(place + 14, time.minute(), 2);
        writeDigits(place + 17, time.second(), 2);
    }
    return text;
}

std::optional<qint64> millisecondsOf(std::string_view text)
{
    if ((text.size() != 10 && text.size() != 19) || text[4] != '-' || text[7] != '-')
        return {};
    const int year = digits(text, 0, 4);
    const std::chrono::year_month_day day{std::chrono::year(year),
                                          std::chrono::month(unsigned(digits(text, 5, 2))),
                                          std::chrono::day(unsigned(digits(text, 8, 2)))};
    if (year < 1 || !day.ok()) // the standard's calendar has a year 0, Qt's none
        return {};
    const std::chrono::sys_days midnight = day;
    const qint64 start = std::chrono::milliseconds(midnight.time_since_epoch()).count();
    if (text.size() == 10)
        return start;
    if ((text[10] != ' ' && text[10] != 'T') || text[13] != ':' || text[16] != ':')
        return {};
    const QTime time(digits(text, 11, 2), digits(text, 14, 2), digits(text, 17, 2));
    if (!time.isValid())
        return {};
    return start + time.msecsSinceStartOfDay();
}

} // namespace ado
