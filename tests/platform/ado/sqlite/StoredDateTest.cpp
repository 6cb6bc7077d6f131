#include "platform/ado/sqlite/StoredDate.h"

#include "platform/ado/Support.h"
#include "runtime/Moment.h"

namespace ado::test {

TEST(StoredDate, DayAloneAndDayWithTime)
{
    EXPECT_EQ(storedDate(utcMoment(QDate(2014, 3, 9))), "2014-03-09");
    EXPECT_EQ(storedDate(utcMoment(QDate(899, 12, 30), QTime(7, 5, 9, 900))),
              "0899-12-30 07:05:09");
}

TEST(StoredDate, ReadsWhatItWrites)
{
    for (const QDateTime &date :
         {utcMoment(QDate(1970, 1, 1)), utcMoment(QDate(1899, 12, 30), QTime(23, 59, 59)),
          utcMoment(QDate(9999, 12, 31), QTime(1, 0, 0)),
          utcMoment(QDate(2000, 2, 29), QTime(0, 0, 1))})
        EXPECT_EQ(millisecondsOf(storedDate(date).toStdString()), date.toMSecsSinceEpoch());
}

TEST(StoredDate, ReadsEveryDayOfTheCalendarAndNoOther)
{
    const auto text = [](int year, int month, int day) {
        const auto digits = [](int number, int count) {
            return QByteArray::number(number).rightJustified(count, '0');
        };
        return (digits(year, 4) + '-' + digits(month, 2) + '-' + digits(day, 2)).toStdString();
    };
    for (const int year : {0, 1, 4, 99, 100, 400, 1583, 1899, 1900, 1969, 1970, 2000, 2014, 9999}) {
        for (int month = 0; month <= 13; ++month) {
            for (int day = 0; day <= 32; ++day) {
                const QDate date(year, month, day);
                const std::optional<qint64> read = millisecondsOf(text(year, month, day));
                ASSERT_EQ(read.has_value(), date.isValid()) << text(year, month, day);
                if (read) {
                    ASSERT_EQ(*read, utcMoment(date).toMSecsSinceEpoch()) << text(year, month, day);
                }
            }
        }
    }
}

TEST(StoredDate, TimeMayBePartedByT)
{
    EXPECT_EQ(millisecondsOf("1970-01-02T00:00:01"), 86'401'000);
}

TEST(StoredDate, OtherTextsAreNoDates)
{
    for (const char *text : {"", "2014", "09.03.2014", "2014-13-01", "2014-02-29", "2014-03-9",
                             "2014-03-09 25:00:00", "2014-03-09 12.00.00", "2014-03-09 12:00",
                             "2o14-03-09", "2014/03/09", "2014-03-09x00:00:00"})
        EXPECT_FALSE(millisecondsOf(text)) << text;
}

} // namespace ado::test
