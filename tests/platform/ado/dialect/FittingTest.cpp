#include "platform/ado/dialect/Fitting.h"

#include "platform/ado/dialect/Fixture.h"
#include "runtime/Moment.h"

namespace ado::dialect::test {

TEST(Fitting, TextIsCutByCharacters)
{
    EXPECT_EQ(cutText(u"Bjørnåsen"_s, 5), u"Bjørn"_s);
    EXPECT_EQ(cutText(u"Bjørn"_s, 5), u"Bjørn"_s);
    EXPECT_EQ(cutText(u"Bjørn"_s, 0), u"Bjørn"_s);
    EXPECT_EQ(cutText(u"\U0001F69A\U0001F69B\U0001F69C"_s, 2), u"\U0001F69A\U0001F69B"_s);
    EXPECT_EQ(cutText(u"\U0001F69A\U0001F69B"_s, 3), u"\U0001F69A\U0001F69B"_s);
    EXPECT_EQ(cutText(u"a\U0001F69Bb"_s, 2), u"a\U0001F69B"_s);
}

// The last half second of the calendar belongs to a day that it does not have.
TEST(Fitting, MomentIsTheNearestSecond)
{
    const auto second = [](double days) { return wholeSeconds(Value(days).toDate()); };
    const QDate last(9999, 12, 31);
    EXPECT_EQ(second(2958465.99998), utcMoment(last, QTime(23, 59, 58)));
    EXPECT_EQ(second(2958465.99999), utcMoment(last, QTime(23, 59, 59)));
    EXPECT_EQ(second(41706.9999999), utcMoment(QDate(2014, 3, 9)));
    EXPECT_EQ(second(-1.25), utcMoment(QDate(1899, 12, 29), QTime(6, 0)));
    EXPECT_EQ(passOver([&] { (void)second(2958465.9999999); }), ::errors::kOverflow);
    EXPECT_EQ(passOver([] { (void)wholeSeconds(QDateTime()); }), ::errors::kOverflow);
    const QDateTime early = utcMoment(QDate(99, 12, 31), QTime(23, 59, 59));
    EXPECT_EQ(passOver([&] { (void)wholeSeconds(early); }), ::errors::kOverflow);
}

} // namespace ado::dialect::test
