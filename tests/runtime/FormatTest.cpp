#include "runtime/Format.h"

#include "runtime/Conversions.h"
#include "runtime/Support.h"

#include <cmath>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

namespace {

const std::vector<QString> kNumberPatterns = {u"# ##0.00"_s,  u"#0.00"_s,     u"#0.0"_s, u"0.00"_s,
                                              u"#0"_s,        u"0"_s,         u"00"_s,   u"0000"_s,
                                              u"000000000"_s, uR"(00000\ )"_s};
const std::vector<QString> kDatePatterns = {u"dd.mm.yyyy"_s, uR"(mm\/dd\/yyyy)"_s,
                                            uR"(\#mm\/dd\/yyyy\#)"_s, u"short date"_s};
const QString kPlaces = uR"(@@@\ @@@\ @@@)"_s;

/// A whole number by ten to the power of four, rounded to `decimals` half away from zero.
qint64 roundedCount(qint64 count, int decimals)
{
    const qint64 unit = decimals == 2 ? 100 : decimals == 1 ? 1000 : 10000;
    const qint64 magnitude = (std::abs(count) + unit / 2) / unit * unit;
    return count < 0 ? -magnitude : magnitude;
}

/// All digits of an amount, by the comma.
QString amountText(qint64 count)
{
    const bool negative = count < 0;
    QString text = QString::number(count).sliced(negative ? 1 : 0).rightJustified(5, u'0');
    text.insert(text.size() - 4, u',');
    return negative ? u'-' + text : text;
}

class FormatTest : public testing::Test
{
    ScopedLocale m_comma{commaLocale()};
};

} // namespace

TEST_F(FormatTest, AmountsWithTwoDecimals)
{
    for (const QString &pattern : {u"#0.00"_s, u"0.00"_s}) {
        EXPECT_EQ(Format(Currency(), pattern), u"0,00"_s);
        EXPECT_EQ(Format(tenThousandths(12500000), pattern), u"1250,00"_s);
        EXPECT_EQ(Format(tenThousandths(-5000), pattern), u"-0,50"_s);
        EXPECT_EQ(Format(tenThousandths(10050), pattern), u"1,01"_s);
        EXPECT_EQ(Format(tenThousandths(10049), pattern), u"1,00"_s);
        EXPECT_EQ(Format(tenThousandths(-10050), pattern), u"-1,01"_s);
        EXPECT_EQ(Format(tenThousandths(9999950), pattern), u"1000,00"_s);
        EXPECT_EQ(Format(tenThousandths(50), pattern), u"0,01"_s);
    }
}

TEST_F(FormatTest, TheBlankStandsBeforeTheLastThreeWholeDigitsOnly)
{
    EXPECT_EQ(Format(tenThousandths(12345000), u"# ##0.00"), u"1 234,50"_s);
    EXPECT_EQ(Format(tenThousandths(1000000), u"# ##0.00"), u" 100,00"_s);
    EXPECT_EQ(Format(Currency::fromInteger(1234567), u"# ##0.00"), u"1234 567,00"_s);
    EXPECT_EQ(Format(Currency(), u"# ##0.00"), u" 0,00"_s);
    EXPECT_EQ(Format(Currency::fromInteger(-12), u"# ##0.00"), u"- 12,00"_s);
    EXPECT_EQ(Format(Currency::fromInteger(-1234), u"# ##0.00"), u"-1 234,00"_s);
    EXPECT_EQ(Format(tenThousandths(9999999), u"# ##0.00"), u"1 000,00"_s);
}

TEST_F(FormatTest, OneDecimalAndNone)
{
    EXPECT_EQ(Format(Currency::fromInteger(25), u"#0.0"), u"25,0"_s);
    EXPECT_EQ(Format(0, u"#0.0"), u"0,0"_s);
    EXPECT_EQ(Format(tenThousandths(12500), u"#0.0"), u"1,3"_s);
    EXPECT_EQ(Format(tenThousandths(5000), u"#0"), u"1"_s);
    EXPECT_EQ(Format(tenThousandths(4999), u"0"), u"0"_s);
    EXPECT_EQ(Format(tenThousandths(25000), u"0"), u"3"_s);
    EXPECT_EQ(Format(-14, u"#0"), u"-14"_s);
}

TEST_F(FormatTest, RunsOfZerosFillUpAndNeverCut)
{
    EXPECT_EQ(Format(7, u"00"), u"07"_s);
    EXPECT_EQ(Format(2014, u"0000"), u"2014"_s);
    EXPECT_EQ(Format(12345, u"000000000"), u"000012345"_s);
    EXPECT_EQ(Format(12345, u"000"), u"12345"_s);
    EXPECT_EQ(Format(0, u"0000"), u"0000"_s);
    EXPECT_EQ(Format(-7, u"00"), u"-07"_s);
    EXPECT_EQ(Format(7, QString(40, u'0')), QString(39, u'0') + u'7');
}

TEST_F(FormatTest, FiveZerosAndALiteralBlank)
{
    EXPECT_EQ(Format(123, uR"(00000\ )"), u"00123 "_s);
    EXPECT_EQ(Format(1234567, uR"(00000\ )"), u"1234567 "_s);
    EXPECT_EQ(Format(-12, uR"(00000\ )"), u"-00012 "_s);
}

TEST_F(FormatTest, DoublesRoundTheDigitsThatTheyShow)
{
    EXPECT_EQ(Format(0.285, u"0.00"), u"0,29"_s);
    EXPECT_EQ(Format(1.005, u"0.00"), u"1,01"_s);
    EXPECT_EQ(Format(-1.005, u"0.00"), u"-1,01"_s);
    EXPECT_EQ(Format(2.675, u"0.00"), u"2,68"_s);
    EXPECT_EQ(Format(1.004, u"0.00"), u"1,00"_s);
    // 0.1 * 1.15 is a little below 0.115, in the 17th digit.
    EXPECT_EQ(Format(0.1 * 1.15, u"0.00"), u"0,12"_s);
    EXPECT_EQ(Format(0.5, u"0"), u"1"_s);
    EXPECT_EQ(Format(0.4999, u"0"), u"0"_s);
    EXPECT_EQ(Format(9.995, u"0.00"), u"10,00"_s);
}

TEST_F(FormatTest, DoublesOfEverySize)
{
    EXPECT_EQ(Format(1e20, u"0"), u"1"_s + QString(20, u'0'));
    EXPECT_EQ(Format(-1.5e17, u"# ##0.00"), u"-150000000000000 000,00"_s);
    EXPECT_EQ(Format(1e-300, u"0.00"), u"0,00"_s);
    EXPECT_EQ(Format(std::numeric_limits<double>::max(), u"0").size(), 309);
    EXPECT_EQ(Format(-0.0, u"0.00"), u"0,00"_s);
}

TEST_F(FormatTest, SinglesRoundTheDigitsThatTheyShow)
{
    EXPECT_EQ(Format(0.35F, u"#0.0"), u"0,4"_s);
    EXPECT_EQ(Format(0.25F, u"#0.0"), u"0,3"_s);
    EXPECT_EQ(Format(-2.5F, u"#0.0"), u"-2,5"_s);
    EXPECT_EQ(Format(25.0F, u"#0.0"), u"25,0"_s);
    EXPECT_EQ(Format(1.005F, u"0.00"), u"1,01"_s);
    EXPECT_EQ(Format(0.1F, u"# ##0.00"), u" 0,10"_s);
}

TEST_F(FormatTest, WhatIsNoNumberRaisesOverflow)
{
    EXPECT_EQ(errorOf([] { (void)Format(std::nan(""), u"0"); }), 6);
    EXPECT_EQ(errorOf([] { (void)Format(HUGE_VAL, u"0.00"); }), 6);
    EXPECT_EQ(errorOf([] { (void)Format(-HUGE_VALF, u"#0.0"); }), 6);
}

TEST_F(FormatTest, ANegativeValueThatRoundsToZeroShowsNoMinus)
{
    EXPECT_EQ(Format(tenThousandths(-49), u"0.00"), u"0,00"_s);
    EXPECT_EQ(Format(tenThousandths(-49), u"# ##0.00"), u" 0,00"_s);
    EXPECT_EQ(Format(-0.04, u"#0.0"), u"0,0"_s);
    EXPECT_EQ(Format(-0.4F, u"000"), u"000"_s);
    EXPECT_EQ(Format(u"-0,001"_s, u"0.00"), u"0,00"_s);
}

TEST_F(FormatTest, TheEndsOfTheRange)
{
    EXPECT_EQ(Format(tenThousandths(kLargestCount), u"0.00"), u"922337203685477,58"_s);
    EXPECT_EQ(Format(tenThousandths(kSmallestCount), u"# ##0.00"), u"-922337203685 477,58"_s);
    EXPECT_EQ(Format(tenThousandths(kSmallestCount), u"0"), u"-922337203685478"_s);
    EXPECT_EQ(Format(kSmallestCount, u"0"), u"-9223372036854775808"_s);
    EXPECT_EQ(Format(kLargestCount, u"0.00"), u"9223372036854775807,00"_s);
}

TEST_F(FormatTest, TheDecimalMarkIsTheMachines)
{
    const ScopedLocale point(pointLocale());
    EXPECT_EQ(Format(tenThousandths(12345000), u"# ##0.00"), u"1 234.50"_s);
    EXPECT_EQ(Format(0.285, u"0.00"), u"0.29"_s);
    EXPECT_EQ(Format(-2.5F, u"#0.0"), u"-2.5"_s);
    EXPECT_EQ(Format(u"1.5"_s, u"0.00"), u"1.50"_s);
    EXPECT_EQ(Format(u"1,5"_s, u"0.00"), u"1,5"_s);
}

TEST_F(FormatTest, WritesAsciiOnlyAndIsReadBack)
{
    std::mt19937_64 generator(99); // a fixed start value
    std::uniform_int_distribution<qint64> counts(-99'999'999'999, 99'999'999'999);
    for (const bool comma : {true, false}) {
        const ScopedLocale scope(comma ? commaLocale() : pointLocale());
        for (int i = 0; i < 5'000; ++i) {
            const qint64 count = counts(generator) >> (i % 36);
            for (const QString &pattern : kNumberPatterns) {
                const QString text = Format(tenThousandths(count), pattern);
                const int decimals = pattern.contains(u".00") ? 2 : pattern.contains(u'.') ? 1 : 0;
                for (const QChar c : text)
                    ASSERT_LT(c.unicode(), 128) << text.toStdString();
                ASSERT_EQ(toCurrency(text), tenThousandths(roundedCount(count, decimals)))
                    << count << " by " << pattern.toStdString();
            }
        }
    }
}

TEST_F(FormatTest, NumbersAndTheTextOfTheirDigitsAgree)
{
    std::mt19937_64 generator(101); // a fixed start value
    std::vector<qint64> counts{0,
                               1,
                               -1,
                               49,
                               -49,
                               50,
                               -50,
                               4999,
                               5000,
                               -5000,
                               99499,
                               99'999'995,
                               kLargestCount,
                               kSmallestCount};
    for (int i = 0; i < 10'000; ++i)
        counts.push_back(qint64(generator()) >> (i % 64));
    for (const qint64 count : counts) {
        for (const QString &pattern : kNumberPatterns) {
            ASSERT_EQ(Format(tenThousandths(count), pattern), Format(amountText(count), pattern))
                << count << " by " << pattern.toStdString();
            ASSERT_EQ(Format(count, pattern), Format(QString::number(count), pattern))
                << count << " by " << pattern.toStdString();
        }
    }
}

TEST_F(FormatTest, DoublesAndAmountsOfTheSameDigitsAgree)
{
    std::mt19937_64 generator(100); // a fixed start value
    std::uniform_int_distribution<qint64> counts(-999'999'999'999, 999'999'999'999);
    for (int i = 0; i < 20'000; ++i) {
        const Currency amount = tenThousandths(counts(generator));
        const QString &pattern = kNumberPatterns[static_cast<std::size_t>(i) % 6];
        ASSERT_EQ(Format(amount.toDouble(), pattern), Format(amount, pattern));
    }
}

TEST_F(FormatTest, Dates)
{
    const QDate date(2014, 3, 9);
    EXPECT_EQ(Format(date, u"dd.mm.yyyy"), u"09.03.2014"_s);
    EXPECT_EQ(Format(date, uR"(mm\/dd\/yyyy)"), u"03/09/2014"_s);
    EXPECT_EQ(Format(date, uR"(\#mm\/dd\/yyyy\#)"), u"#03/09/2014#"_s);
    EXPECT_EQ(Format(date, u"short date"), u"09.03.2014"_s);
    EXPECT_EQ(Format(QDateTime(date, QTime(23, 59)), u"dd.mm.yyyy"), u"09.03.2014"_s);
    EXPECT_EQ(Format(QDate(100, 12, 31), u"dd.mm.yyyy"), u"31.12.0100"_s);
}

TEST_F(FormatTest, OnlyTheShortDateFollowsTheMachine)
{
    const ScopedLocale point(pointLocale());
    const QDate date(2014, 3, 9);
    EXPECT_EQ(Format(date, u"short date"), u"3/9/2014"_s);
    EXPECT_EQ(Format(date, u"dd.mm.yyyy"), u"09.03.2014"_s);
    EXPECT_EQ(Format(date, uR"(mm\/dd\/yyyy)"), u"03/09/2014"_s);
}

TEST_F(FormatTest, TheInvalidDateRaisesTypeMismatch)
{
    for (const QString &pattern : kDatePatterns) {
        EXPECT_EQ(errorOf([&] { (void)Format(QDate(), pattern); }), 13);
        EXPECT_EQ(errorOf([&] { (void)Format(QDateTime(), pattern); }), 13);
    }
}

TEST_F(FormatTest, TextFillsThePlacesFromTheRight)
{
    EXPECT_EQ(Format(u"987654321"_s, kPlaces), u"987 654 321"_s);
    EXPECT_EQ(Format(u"4321"_s, kPlaces), u"      4 321"_s);
    EXPECT_EQ(Format(u""_s, kPlaces), QString(11, u' '));
    EXPECT_EQ(Format(u"1987654321"_s, kPlaces), u"1987 654 321"_s);
    EXPECT_EQ(Format(u"NO987654321MVA"_s, kPlaces), u"NO987654 321 MVA"_s);
}

TEST_F(FormatTest, TextThatReadsAsANumberIsFormattedAsOne)
{
    EXPECT_EQ(Format(u"12345"_s, u"000000000"), u"000012345"_s);
    EXPECT_EQ(Format(u" 1 234,555"_s, u"# ##0.00"), u"1 234,56"_s);
    EXPECT_EQ(Format(u"-7"_s, u"#0.0"), u"-7,0"_s);
    EXPECT_EQ(Format(u"1e3"_s, u"0"), u"1000"_s);
}

TEST_F(FormatTest, TextIsTakenDigitByDigitAtAnyLength)
{
    const QString digits = u"12345678901234567890123456789012345678901"_s;
    EXPECT_EQ(Format(digits, u"0000"), digits);
    EXPECT_EQ(Format(u"0000000000123"_s, u"00000"), u"00123"_s);
}

TEST_F(FormatTest, OtherTextPassesUnchanged)
{
    for (const QString &text : {u""_s, u"abc"_s, u"12 stk"_s, u"1.5"_s, u"1e99999"_s, u"1e309"_s}) {
        for (const QString &pattern : kNumberPatterns)
            EXPECT_EQ(Format(text, pattern), text);
    }
    for (const QString &pattern : kDatePatterns) {
        EXPECT_EQ(Format(u"31.02.2014"_s, pattern), u"31.02.2014"_s);
        EXPECT_EQ(Format(u""_s, pattern), u""_s);
    }
}

TEST_F(FormatTest, TextThatReadsAsADateIsFormattedAsOne)
{
    EXPECT_EQ(Format(u"9.3.14"_s, u"dd.mm.yyyy"), u"09.03.2014"_s);
    EXPECT_EQ(Format(u"31.12.2014"_s, uR"(\#mm\/dd\/yyyy\#)"), u"#12/31/2014#"_s);
}

TEST_F(FormatTest, TheEmptyPatternLeavesTextAsItIs)
{
    EXPECT_EQ(Format(u"00123"_s, u""), u"00123"_s);
    EXPECT_EQ(Format(u"abc"_s, u""), u"abc"_s);
}

TEST_F(FormatTest, AnyOtherPatternRaisesInvalidCall)
{
    for (const QString &pattern : {u"#,##0.00"_s, u"0.000"_s, u"General"_s, u"#"_s, u"0 "_s,
                                   u"##0.00"_s, u"yyyy"_s, u"Short Date"_s, u"@"_s}) {
        EXPECT_EQ(errorOf([&] { (void)Format(Currency(), pattern); }), 5);
        EXPECT_EQ(errorOf([&] { (void)Format(1.0, pattern); }), 5);
        EXPECT_EQ(errorOf([&] { (void)Format(1.0F, pattern); }), 5);
        EXPECT_EQ(errorOf([&] { (void)Format(1, pattern); }), 5);
        EXPECT_EQ(errorOf([&] { (void)Format(QDate(2014, 3, 9), pattern); }), 5);
        EXPECT_EQ(errorOf([&] { (void)Format(u"1"_s, pattern); }), 5);
    }
    EXPECT_EQ(errorOf([] { (void)Format(1, u""); }), 5);
}

TEST_F(FormatTest, APatternOfAnotherKindRaisesInvalidCall)
{
    for (const QString &pattern : kDatePatterns)
        EXPECT_EQ(errorOf([&] { (void)Format(1, pattern); }), 5);
    for (const QString &pattern : kNumberPatterns)
        EXPECT_EQ(errorOf([&] { (void)Format(QDate(2014, 3, 9), pattern); }), 5);
    EXPECT_EQ(errorOf([] { (void)Format(1, kPlaces); }), 5);
    EXPECT_EQ(errorOf([] { (void)Format(QDate(2014, 3, 9), kPlaces); }), 5);
}
