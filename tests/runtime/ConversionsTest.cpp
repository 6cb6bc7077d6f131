#include "runtime/Conversions.h"

#include "runtime/Support.h"
#include "runtime/Value.h"

#include <cmath>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

namespace {

class ConversionsTest : public testing::Test
{
    ScopedLocale m_comma{commaLocale()};
};

const std::vector<QString> kNoNumbers = {
    u""_s,      u" "_s,      u"-"_s,      u","_s,   u"-,"_s,  u"abc"_s,   u"12 stk"_s,
    u"1,2,3"_s, u"1  234"_s, u"5-"_s,     u"--5"_s, u"+-5"_s, u"e3"_s,    u"1e"_s,
    u"1e+"_s,   u"1e3,5"_s,  u"kr 5"_s,   u"5 %"_s, u"5%"_s,  u"(5)"_s,   u"0x10"_s,
    u"1,5 0"_s, u"1\t2"_s,   u"\u0661"_s, u"inf"_s, u"nan"_s, u"1_000"_s, u"5,-"_s};

} // namespace

TEST_F(ConversionsTest, ReadsTheLocalesDecimalMark)
{
    EXPECT_EQ(toDouble(u"1,5"), 1.5);
    EXPECT_EQ(toDouble(u",5"), 0.5);
    EXPECT_EQ(toDouble(u"5,"), 5.0);
    EXPECT_EQ(toDouble(u"-0,285"), -0.285);
    const ScopedLocale point(pointLocale());
    EXPECT_EQ(toDouble(u"1.5"), 1.5);
    EXPECT_EQ(toCurrency(u"1 234.50"), tenThousandths(12345000));
}

TEST_F(ConversionsTest, TheOtherMarkIsNoNumber)
{
    EXPECT_EQ(errorOf([] { (void)toDouble(u"1.5"); }), 13);
    EXPECT_EQ(errorOf([] { (void)toCurrency(u"1.234,50"); }), 13);
    const ScopedLocale point(pointLocale());
    EXPECT_EQ(errorOf([] { (void)toDouble(u"1,5"); }), 13);
    EXPECT_EQ(errorOf([] { (void)toCurrency(u"1,234.50"); }), 13);
}

TEST_F(ConversionsTest, ReadsGroupsPartedByBlanks)
{
    for (const QString &blank : {u" "_s, u"\u00A0"_s, u"\u202F"_s}) {
        EXPECT_EQ(toDouble(u"1"_s + blank + u"234,50"_s), 1234.5);
        EXPECT_EQ(toCurrency(u"-1"_s + blank + u"234"_s + blank + u"567,8"_s),
                  tenThousandths(-12345678000));
        EXPECT_EQ(toDouble(blank + u"7"_s + blank), 7.0);
    }
    EXPECT_EQ(toCurrency(u"1234 567,00"), Currency::fromInteger(1234567));
    EXPECT_EQ(toCurrency(u" 100,00"), Currency::fromInteger(100));
}

TEST_F(ConversionsTest, ReadsTheSignsOfUsersAndOfFormat)
{
    EXPECT_EQ(toDouble(u"-5"), -5.0);
    EXPECT_EQ(toDouble(u"\u22125,5"), -5.5);
    EXPECT_EQ(toDouble(u"- 5"), -5.0);
    EXPECT_EQ(toDouble(u" - 100,00 "), -100.0);
    EXPECT_EQ(toDouble(u"+5"), 5.0);
    EXPECT_EQ(toDouble(u"1e\u22122"), 0.01);
}

TEST_F(ConversionsTest, ReadsAnExponent)
{
    EXPECT_EQ(toDouble(u"1,234568E+08"), 123456800.0);
    EXPECT_EQ(toDouble(u"1e3"), 1000.0);
    EXPECT_EQ(toDouble(u"1d-3"), 0.001);
    EXPECT_EQ(toCurrency(u"12345e-3"), tenThousandths(123450));
}

TEST_F(ConversionsTest, OtherTextRaisesTypeMismatch)
{
    for (const QString &text : kNoNumbers) {
        EXPECT_EQ(errorOf([&] { (void)toDouble(text); }), 13) << text.toStdString();
        EXPECT_EQ(errorOf([&] { (void)toCurrency(text); }), 13) << text.toStdString();
        EXPECT_EQ(errorOf([&] { (void)toLong(text); }), 13) << text.toStdString();
    }
}

TEST_F(ConversionsTest, ADoubleIsTheNearest)
{
    EXPECT_EQ(toDouble(u"0,1"), 0.1);
    EXPECT_EQ(toDouble(u"179769313486231570e291"), std::numeric_limits<double>::max());
    EXPECT_EQ(toDouble(u"5e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(toDouble(u"1e-400"), 0.0);
    EXPECT_EQ(toDouble(u"0e999"), 0.0);
    EXPECT_EQ(toDouble(QString(5000, u'0') + u'2'), 2.0);
    EXPECT_EQ(toDouble(u"0,"_s + QString(400, u'0') + u"1e401"_s), 1.0);
}

TEST_F(ConversionsTest, ADoubleOutsideTheRangeRaisesOverflow)
{
    EXPECT_EQ(errorOf([] { (void)toDouble(u"1e309"); }), 6);
    EXPECT_EQ(errorOf([] { (void)toDouble(u"-1e99999999999999"); }), 6);
}

TEST_F(ConversionsTest, AnAmountIsTheNearestTenThousandthTiesToEven)
{
    EXPECT_EQ(toCurrency(u"1,00005"), tenThousandths(10000));
    EXPECT_EQ(toCurrency(u"1,00015"), tenThousandths(10002));
    EXPECT_EQ(toCurrency(u"-1,00015"), tenThousandths(-10002));
    EXPECT_EQ(toCurrency(u"1,000050000000000000000001"), tenThousandths(10001));
    EXPECT_EQ(toCurrency(u"1,00014999999999999999999"), tenThousandths(10001));
    EXPECT_EQ(toCurrency(u"0,00005"), Currency());
    EXPECT_EQ(toCurrency(u"0,00006"), tenThousandths(1));
    EXPECT_EQ(toCurrency(u"0,000009"), Currency());
}

TEST_F(ConversionsTest, AmountsAtTheEndsOfTheRange)
{
    EXPECT_EQ(toCurrency(u"922 337 203 685 477,5807"), tenThousandths(kLargestCount));
    EXPECT_EQ(toCurrency(u"-922337203685477,5808"), tenThousandths(kSmallestCount));
    EXPECT_EQ(toCurrency(u"922337203685477,58074"), tenThousandths(kLargestCount));
    for (const QString &text :
         {u"922337203685477,5808"_s, u"-922337203685477,5809"_s, u"922337203685477,58075"_s,
          u"1e15"_s, u"-1e15"_s, u"1e300"_s, u"999999999999999,99999"_s, u"1e999999"_s})
        EXPECT_EQ(errorOf([&] { (void)toCurrency(text); }), 6) << text.toStdString();
}

TEST_F(ConversionsTest, AmountsComeBackFromTheirText)
{
    std::mt19937_64 generator(12); // a fixed start value
    for (int i = 0; i < 50'000; ++i) {
        const auto count = static_cast<qint64>(generator()) >> (i % 64);
        const Currency amount = tenThousandths(count);
        ASSERT_EQ(toCurrency(Value(amount).toText()), amount) << count;
        const ScopedLocale scope(pointLocale());
        ASSERT_EQ(toCurrency(Value(amount).toText()), amount) << count;
    }
}

TEST_F(ConversionsTest, WholeNumbersRoundHalfToEven)
{
    EXPECT_EQ(toLong(u"2,5"), 2);
    EXPECT_EQ(toLong(u"3,5"), 4);
    EXPECT_EQ(toLong(u"-2,5"), -2);
    EXPECT_EQ(toLong(u"2,51"), 3);
    EXPECT_EQ(toInteger(1.5), 2);
    EXPECT_EQ(toLong(2.5), 2);
    EXPECT_EQ(toLong(-3.5), -4);
    EXPECT_EQ(toInteger(-0.5), 0);
    EXPECT_EQ(toInteger(2.4999), 2);
}

TEST_F(ConversionsTest, WholeNumbersAtTheEndsOfTheirRange)
{
    EXPECT_EQ(toLong(u"2147483647"), 2147483647);
    EXPECT_EQ(toLong(2147483647.4), 2147483647);
    EXPECT_EQ(toLong(-2147483648.5), std::numeric_limits<qint32>::min());
    EXPECT_EQ(toInteger(32767.4), 32767);
    EXPECT_EQ(toInteger(-32768.5), -32768);
    for (const double number :
         {2147483647.5, 2147483648.0, -2147483649.0, 1e300, -HUGE_VAL, std::nan("")})
        EXPECT_EQ(errorOf([=] { (void)toLong(number); }), 6) << number;
    for (const double number : {32767.5, -32769.0, 40000.0, HUGE_VAL, std::nan("")})
        EXPECT_EQ(errorOf([=] { (void)toInteger(number); }), 6) << number;
    EXPECT_EQ(errorOf([] { (void)toLong(u"3000000000"); }), 6);
}

TEST(TrimBlanks, CutsOnlyTheBlankU0020)
{
    EXPECT_EQ(trimBlanks(u"  a b  "), u"a b"_s);
    EXPECT_EQ(trimBlanks(u"\ta\u00A0"), u"\ta\u00A0"_s);
    EXPECT_EQ(trimBlanks(u"   "), QString());
    EXPECT_EQ(trimBlanks(u""), QString());
    EXPECT_EQ(trimLeftBlanks(u"  a b  "), u"a b  "_s);
    EXPECT_EQ(trimLeftBlanks(u"\n a"), u"\n a"_s);
    EXPECT_EQ(trimLeftBlanks(u"   "), QString());
}
