#include "runtime/Conversions.h"

#include "runtime/Support.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

TEST(NumberToText, HasABlankOrTheMinusInTheFirstPlace)
{
    EXPECT_EQ(numberToText(1), u" 1"_s);
    EXPECT_EQ(numberToText(0), u" 0"_s);
    EXPECT_EQ(numberToText(-1), u"-1"_s);
    EXPECT_EQ(numberToText(1.0F), u" 1"_s);
    EXPECT_EQ(numberToText(-1.0F), u"-1"_s);
    EXPECT_EQ(numberToText(-0.0F), u" 0"_s);
}

TEST(NumberToText, AFractionHasNoZeroBeforeItsPoint)
{
    EXPECT_EQ(numberToText(0.5F), u" .5"_s);
    EXPECT_EQ(numberToText(-0.25F), u"-.25"_s);
    EXPECT_EQ(numberToText(2.5F), u" 2.5"_s);
}

TEST(NumberToText, IsTheSameInEveryLocale)
{
    for (const MachineLocale &locale : {commaLocale(), pointLocale()}) {
        const ScopedLocale scope(locale);
        EXPECT_EQ(numberToText(1234.5F), u" 1234.5"_s);
        EXPECT_EQ(numberToText(-1234.5F), u"-1234.5"_s);
    }
}

TEST(NumberToText, ASingleShowsSevenDigits)
{
    EXPECT_EQ(numberToText(1.0F / 3), u" .3333333"_s);
    EXPECT_EQ(numberToText(0.1F), u" .1"_s);
    EXPECT_EQ(numberToText(1234567.0F), u" 1234567"_s);
    EXPECT_EQ(numberToText(12345678.0F), u" 1.234568E+07"_s);
    EXPECT_EQ(numberToText(123456789.0F), u" 1.234568E+08"_s);
    EXPECT_EQ(numberToText(-123456789.0F), u"-1.234568E+08"_s);
    EXPECT_EQ(numberToText(10000000.0F), u" 1E+07"_s);
}

TEST(NumberToText, ASmallSingleGoesToExponentFormBeyondSevenPlaces)
{
    EXPECT_EQ(numberToText(0.0001234F), u" .0001234"_s);
    EXPECT_EQ(numberToText(0.00012345F), u" 1.2345E-04"_s);
    EXPECT_EQ(numberToText(0.0000001F), u" .0000001"_s);
    EXPECT_EQ(numberToText(-0.00000001F), u"-1E-08"_s);
}

TEST(NumberToText, WhatIsNoNumberRaisesOverflow)
{
    EXPECT_EQ(errorOf([] { (void)numberToText(std::nanf("")); }), 6);
    EXPECT_EQ(errorOf([] { (void)numberToText(HUGE_VALF); }), 6);
    EXPECT_EQ(errorOf([] { (void)numberToText(-HUGE_VALF); }), 6);
}

TEST(NumberToText, WholeNumbersAreExact)
{
    EXPECT_EQ(numberToText(kLargestCount), u" 9223372036854775807"_s);
    EXPECT_EQ(numberToText(kSmallestCount), u"-9223372036854775808"_s);
    EXPECT_EQ(numberToText(1000000), u" 1000000"_s);
}

TEST(NumberToText, AWholeSingleIsShownAsTheWholeNumber)
{
    EXPECT_EQ(numberToText(-0.0F), u" 0"_s);
    for (const int number : {0, 1, -1, 10, 100, -2500, 65536, 999'999, -999'999, 1'000'000,
                             -1'000'000, 1'000'001, 9'999'999}) {
        EXPECT_EQ(numberToText(float(number)), numberToText(number));
    }
    EXPECT_EQ(numberToText(100.5F), u" 100.5"_s);
}

TEST(NumberToText, IsReadBackByTheLeadingNumber)
{
    std::mt19937_64 generator(31); // a fixed start value
    int checked = 0;
    for (int i = 0; i < 50'000; ++i) {
        const auto number = std::bit_cast<float>(quint32(generator()));
        if (!std::isfinite(number) || std::fabs(number) > 1e37F || std::fabs(number) < 1e-37F)
            continue;
        ++checked;
        const double back = leadingNumber(numberToText(number));
        ASSERT_LE(std::fabs(back - double{number}), std::fabs(number) * 1e-6) << number;
        ASSERT_EQ(numberToText(float(back)), numberToText(number));
        const qint64 whole = static_cast<qint32>(generator());
        ASSERT_EQ(leadingNumber(numberToText(whole)), static_cast<double>(whole));
    }
    EXPECT_GT(checked, 40'000);
}

TEST(LeadingNumber, TakesTheLongestNumberAtTheStart)
{
    EXPECT_EQ(leadingNumber(u"1234 Askim"), 1234.0);
    EXPECT_EQ(leadingNumber(u"12.5kg"), 12.5);
    EXPECT_EQ(leadingNumber(u"1.2.3"), 1.2);
    EXPECT_EQ(leadingNumber(u"-7-8"), -7.0);
    EXPECT_EQ(leadingNumber(u"+7"), 7.0);
    EXPECT_EQ(leadingNumber(u".5"), 0.5);
    EXPECT_EQ(leadingNumber(u"-.5"), -0.5);
    EXPECT_EQ(leadingNumber(u"5."), 5.0);
}

TEST(LeadingNumber, StopsAtADecimalComma)
{
    for (const MachineLocale &locale : {commaLocale(), pointLocale()}) {
        const ScopedLocale scope(locale);
        EXPECT_EQ(leadingNumber(u"0,50"), 0.0);
        EXPECT_EQ(leadingNumber(u"1 234,50"), 1234.0);
        EXPECT_EQ(leadingNumber(u"- 100,00"), -100.0);
    }
}

TEST(LeadingNumber, SkipsBlanksTabsAndLineFeedsWhereverTheyStand)
{
    EXPECT_EQ(leadingNumber(u" \t\n1 2\t3\n. 5 "), 123.5);
    EXPECT_EQ(leadingNumber(u"- 1 e - 1 0"), -1e-10);
    EXPECT_EQ(leadingNumber(u"12\r3"), 12.0);
    EXPECT_EQ(leadingNumber(u"12\u00A03"), 12.0);
}

TEST(LeadingNumber, TakesAnExponent)
{
    EXPECT_EQ(leadingNumber(u"1e3"), 1000.0);
    EXPECT_EQ(leadingNumber(u"1d3"), 1000.0);
    EXPECT_EQ(leadingNumber(u"1.5E+3x"), 1500.0);
    EXPECT_EQ(leadingNumber(u"15D-1"), 1.5);
    EXPECT_EQ(leadingNumber(u".5e1"), 5.0);
}

TEST(LeadingNumber, AnUnfinishedExponentIsNoPartOfIt)
{
    EXPECT_EQ(leadingNumber(u"5 elg"), 5.0);
    EXPECT_EQ(leadingNumber(u"5e"), 5.0);
    EXPECT_EQ(leadingNumber(u"5e+"), 5.0);
    EXPECT_EQ(leadingNumber(u"5e+-3"), 5.0);
    EXPECT_EQ(leadingNumber(u"5e3.5"), 5000.0);
    EXPECT_EQ(leadingNumber(u"5e3e3"), 5000.0);
}

TEST(LeadingNumber, NoNumberGivesZero)
{
    for (const QString &text : {u""_s, u"abc"_s, u"-"_s, u"."_s, u"-."_s, u"--5"_s, u"+-5"_s,
                                u"e3"_s, u".e3"_s, u","_s, u"\u22125"_s, u"\u0661"_s})
        EXPECT_EQ(leadingNumber(text), 0.0) << text.toStdString();
}

TEST(LeadingNumber, OutsideTheRangeRaisesOverflow)
{
    EXPECT_EQ(errorOf([] { (void)leadingNumber(u"1e309"); }), 6);
    EXPECT_EQ(errorOf([] { (void)leadingNumber(u"-1e99999999999"); }), 6);
    EXPECT_EQ(errorOf([] { (void)leadingNumber(QString(200'000, u'9')); }), 6);
    EXPECT_EQ(leadingNumber(u"1e-400"), 0.0);
    EXPECT_EQ(leadingNumber(QString(300, u'0') + u'7'), 7.0);
}
