#include "runtime/Conversions.h"

#include "runtime/Format.h"
#include "runtime/Moment.h"
#include "runtime/Support.h"

using namespace Qt::StringLiterals;

namespace {

QDateTime moment(int year, int month, int day, QTime time = QTime(0, 0))
{
    return utcMoment(QDate(year, month, day), time);
}

class DateTextTest : public testing::Test
{
    ScopedLocale m_comma{commaLocale()};
};

} // namespace

TEST_F(DateTextTest, ReadsThreeNumbers)
{
    for (const QString &text : {u"9.3.2014"_s, u"09.03.2014"_s, u"09.03.14"_s, u"2014-03-09"_s,
                                u"9/3/2014"_s, u"9-3-14"_s, u"2014/3/9"_s, u"  9.3.2014  "_s})
        EXPECT_EQ(toDate(text), moment(2014, 3, 9)) << text.toStdString();
}

TEST_F(DateTextTest, TwoDigitsOfAYearBelow30AreOfThe2000s)
{
    EXPECT_EQ(toDate(u"1.1.00"), moment(2000, 1, 1));
    EXPECT_EQ(toDate(u"1.1.29"), moment(2029, 1, 1));
    EXPECT_EQ(toDate(u"1.1.30"), moment(1930, 1, 1));
    EXPECT_EQ(toDate(u"1.1.99"), moment(1999, 1, 1));
    EXPECT_EQ(toDate(u"1.1.4"), moment(2004, 1, 1));
}

TEST_F(DateTextTest, ReadsATime)
{
    EXPECT_EQ(toDate(u"9.3.2014 23:59"), moment(2014, 3, 9, QTime(23, 59)));
    EXPECT_EQ(toDate(u"2014-03-09 7:05:09"), moment(2014, 3, 9, QTime(7, 5, 9)));
    EXPECT_EQ(toDate(u"09.03.14   00:00:00 "), moment(2014, 3, 9));
}

TEST_F(DateTextTest, CarriesNoTimeZone)
{
    EXPECT_EQ(toDate(u"9.3.2014").timeSpec(), Qt::UTC);
    // Hours that a change to summer time leaves out in Oslo, New York, Auckland and Santiago.
    for (const QString &text : {u"30.3.2014 02:30"_s, u"9.3.2014 02:30"_s, u"28.9.2014 02:30"_s,
                                u"7.9.2014 00:30"_s, u"7.9.2014 00:00"_s}) {
        const QDateTime read = toDate(text);
        EXPECT_EQ(read.toString(u"d.M.yyyy hh:mm"), text);
        EXPECT_EQ(read.addDays(1).time(), read.time()) << text.toStdString();
    }
}

TEST_F(DateTextTest, OtherTextRaisesTypeMismatch)
{
    for (const QString &text : {u""_s,
                                u"abc"_s,
                                u"31.2.2014"_s,
                                u"29.2.2013"_s,
                                u"9.3"_s,
                                u"9.3."_s,
                                u"9.13.2014"_s,
                                u"0.3.2014"_s,
                                u"9.3.0014"_s,
                                u"9.3.201"_s,
                                u"9.3.20145"_s,
                                u"20145-3-9"_s,
                                u"9.3/2014"_s,
                                u"009.3.2014"_s,
                                u"9.003.2014"_s,
                                u"2014-03-009"_s,
                                u"2014-03-"_s,
                                u"9..2014"_s,
                                u".3.2014"_s,
                                u"9 3 2014"_s,
                                u"9.3.2014x"_s,
                                u"-9.3.2014"_s,
                                u"#09.03.2014#"_s,
                                u"9.3.2014 24:00"_s,
                                u"9.3.2014 12"_s,
                                u"9.3.2014 12:"_s,
                                u"9.3.2014 12:60"_s,
                                u"9.3.2014 12:00:61"_s,
                                u"9.3.2014 123:00"_s,
                                u"9.3.2014 1:2:3:4"_s,
                                u"9.3.2014 a:b"_s,
                                u"12:30"_s,
                                u"20140309"_s,
                                u"Null"_s}) {
        EXPECT_EQ(errorOf([&] { (void)toDate(text); }), 13) << text.toStdString();
        EXPECT_FALSE(isDate(text)) << text.toStdString();
    }
    EXPECT_TRUE(isDate(u"29.2.2012 12:00"));
}

TEST_F(DateTextTest, FollowsTheMachinesOrderOfDayAndMonth)
{
    EXPECT_EQ(toDate(u"3/9/2014"), moment(2014, 9, 3));
    const ScopedLocale point(pointLocale());
    EXPECT_EQ(toDate(u"3/9/2014"), moment(2014, 3, 9));
    EXPECT_EQ(toDate(u"2014-03-09"), moment(2014, 3, 9));
    EXPECT_EQ(errorOf([] { (void)toDate(u"31.12.2014"); }), 13);
}

TEST_F(DateTextTest, ReadsTheShortFormOfEveryMachine)
{
    for (const QString &name : {u"nb_NO"_s, u"en_US"_s, u"en_GB"_s, u"sv_SE"_s, u"cs_CZ"_s,
                                u"hu_HU"_s, u"ko_KR"_s, u"de_DE"_s, u"fr_CA"_s}) {
        const ScopedLocale scope(MachineLocale::fromName(name));
        for (QDate date(2013, 12, 1); date < QDate(2015, 1, 15); date = date.addDays(1)) {
            const QString text = Format(date, u"short date");
            ASSERT_EQ(toDate(text).date(), date) << name.toStdString() << ' ' << text.toStdString();
            ASSERT_EQ(toDate(text + u" 12:34:56"_s).time(), QTime(12, 34, 56));
        }
    }
}

TEST_F(DateTextTest, ReadsWhatTheDottedPatternWrites)
{
    for (QDate date(1930, 1, 1); date < QDate(2030, 1, 1); date = date.addDays(17)) {
        const QString text = Format(date, u"dd.mm.yyyy");
        ASSERT_EQ(toDate(text).date(), date);
        ASSERT_EQ(toDate(text.first(6) + text.last(2)).date(), date);
    }
}

TEST(DateZero, IsThe30thOfDecember1899)
{
    EXPECT_EQ(dateZero(), moment(1899, 12, 30));
    EXPECT_EQ(dateZero().timeSpec(), Qt::UTC);
}
