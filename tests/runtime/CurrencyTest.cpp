#include "runtime/Currency.h"

#include "runtime/Support.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <random>

namespace {

__extension__ using Int128 = __int128;

const Currency kLargest = tenThousandths(kLargestCount);
const Currency kSmallest = tenThousandths(kSmallestCount);

Currency kroner(qint64 whole)
{
    return Currency::fromInteger(whole);
}

/// Numbers of all sizes: as many bits as drawn, then as many as that of noise.
class Counts
{
public:
    explicit Counts(unsigned start) : m_generator(start) {}
    qint64 operator()()
    {
        const int bits = std::uniform_int_distribution<int>(0, 63)(m_generator);
        const auto magnitude = static_cast<qint64>(m_generator() >> 1 >> (63 - bits));
        return m_generator() % 2 == 0 ? magnitude : -magnitude;
    }

private:
    std::mt19937_64 m_generator;
};

/// The nearest whole quotient, ties to even, counted from the whole number below.
Int128 nearestQuotient(Int128 dividend, Int128 divisor)
{
    const Int128 rest = (dividend % divisor + divisor) % divisor;
    const Int128 below = (dividend - rest) / divisor;
    if (2 * rest == divisor)
        return below % 2 == 0 ? below : below + 1;
    return 2 * rest < divisor ? below : below + 1;
}

bool fits(Int128 count)
{
    return count >= kSmallestCount && count <= kLargestCount;
}

} // namespace

TEST(Currency, StartsAtZero)
{
    EXPECT_EQ(Currency().tenThousandths(), 0);
    EXPECT_TRUE(Currency().isZero());
    EXPECT_FALSE(Currency().isNegative());
    EXPECT_TRUE(tenThousandths(-1).isNegative());
}

TEST(Currency, FromIntegerCountsWholeKroner)
{
    EXPECT_EQ(kroner(3).tenThousandths(), 30000);
    EXPECT_EQ(kroner(-3).tenThousandths(), -30000);
    EXPECT_EQ(kroner(922337203685477).tenThousandths(), 9223372036854770000);
    EXPECT_EQ(errorOf([] { (void)kroner(922337203685478); }), 6);
    EXPECT_EQ(errorOf([] { (void)kroner(-922337203685478); }), 6);
    EXPECT_EQ(errorOf([] { (void)kroner(kSmallestCount); }), 6);
}

TEST(Currency, FromDoubleTakesTheNearestByTheDoublesExactValue)
{
    // The double 1.00025 lies above the tie and 0.00035 below it, though both times 10000 come out
    // as the tie itself in double arithmetic.
    EXPECT_EQ(Currency::fromDouble(1.00025).tenThousandths(), 10003);
    EXPECT_EQ(Currency::fromDouble(0.00035).tenThousandths(), 3);
    EXPECT_EQ(Currency::fromDouble(1.00005).tenThousandths(), 10001);
    EXPECT_EQ(Currency::fromDouble(0.1).tenThousandths(), 1000);
    EXPECT_EQ(Currency::fromDouble(-1250.5).tenThousandths(), -12505000);
    EXPECT_EQ(Currency::fromDouble(0.0).tenThousandths(), 0);
    EXPECT_EQ(Currency::fromDouble(-0.0).tenThousandths(), 0);
}

TEST(Currency, FromDoubleRoundsTiesToEven)
{
    EXPECT_EQ(Currency::fromDouble(0.03125).tenThousandths(), 312); // 312.5
    EXPECT_EQ(Currency::fromDouble(0.09375).tenThousandths(), 938); // 937.5
    EXPECT_EQ(Currency::fromDouble(-0.03125).tenThousandths(), -312);
    EXPECT_EQ(Currency::fromDouble(-0.09375).tenThousandths(), -938);
    EXPECT_EQ(Currency::fromDouble(std::nextafter(0.03125, 1.0)).tenThousandths(), 313);
    EXPECT_EQ(Currency::fromDouble(std::nextafter(0.09375, 0.0)).tenThousandths(), 937);
}

TEST(Currency, FromDoubleOfVerySmallNumbersIsZero)
{
    EXPECT_TRUE(Currency::fromDouble(0.00004).isZero());
    EXPECT_EQ(Currency::fromDouble(0.00006).tenThousandths(), 1);
    EXPECT_TRUE(Currency::fromDouble(std::numeric_limits<double>::denorm_min()).isZero());
    EXPECT_TRUE(Currency::fromDouble(-1e-300).isZero());
}

TEST(Currency, FromDoubleRaisesOverflowOutsideTheRange)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double number : {1e15, -1e15, 922337203685478.0, -922337203685478.0, 1e300, infinity,
                                -infinity, std::nan("")})
        EXPECT_EQ(errorOf([=] { (void)Currency::fromDouble(number); }), 6) << number;
    EXPECT_EQ(Currency::fromDouble(922337203685477.5).tenThousandths(), 9223372036854775000);
    EXPECT_EQ(Currency::fromDouble(-922337203685477.5).tenThousandths(), -9223372036854775000);
}

TEST(Currency, FromDoubleAgreesWithExactArithmetic)
{
    std::mt19937_64 generator(20140309); // a fixed start value
    for (int i = 0; i < 100'000; ++i) {
        // An exact number of 2^-20ths, so its ten-thousandths are a fraction of whole numbers.
        const auto parts = static_cast<qint64>(generator() >> 11) - (qint64{1} << 52);
        const double number = std::ldexp(static_cast<double>(parts), -20);
        const Int128 expected = nearestQuotient(Int128{parts} * 10000, Int128{1} << 20);
        ASSERT_EQ(Currency::fromDouble(number).tenThousandths(), static_cast<qint64>(expected))
            << parts;
    }
}

TEST(Currency, ToDoubleIsTheNearestDouble)
{
    EXPECT_EQ(tenThousandths(12345).toDouble(), 1.2345);
    EXPECT_EQ(tenThousandths(-2850).toDouble(), -0.285);
    // The first one whose count is no double, and that a second rounding would move.
    EXPECT_EQ(tenThousandths(9'007'199'254'740'995).toDouble(), 900719925474.0995);
    EXPECT_EQ(kLargest.toDouble(), 922337203685477.5807);
    EXPECT_EQ(kSmallest.toDouble(), -922337203685477.5808);
}

TEST(Currency, ToDoubleIsTheNearestDoubleOfAnyLargeCount)
{
    std::mt19937_64 generator(97); // a fixed start value
    for (int i = 0; i < 100'000; ++i) {
        const auto count = static_cast<qint64>(generator()) >> (i % 11);
        // The decimals as text, which the library reads as the nearest double.
        const QByteArray text = QByteArray::number(count) + "e-4";
        double nearest = 0;
        ASSERT_EQ(std::from_chars(text.begin(), text.end(), nearest).ec, std::errc());
        ASSERT_EQ(tenThousandths(count).toDouble(), nearest) << count;
    }
}

TEST(Currency, ComesBackFromADoubleUpTo15Digits)
{
    std::mt19937_64 generator(4711); // a fixed start value
    std::uniform_int_distribution<qint64> counts(-999'999'999'999'999, 999'999'999'999'999);
    for (int i = 0; i < 100'000; ++i) {
        const Currency amount = tenThousandths(counts(generator));
        ASSERT_EQ(Currency::fromDouble(amount.toDouble()), amount);
    }
}

TEST(Currency, SumsAndDifferencesAgreeWith128Bits)
{
    Counts counts(1); // a fixed start value
    for (int i = 0; i < 100'000; ++i) {
        const qint64 a = counts();
        const qint64 b = counts();
        const auto check = [](Int128 expected, auto &&operation) {
            qint64 outcome = 0;
            const int error = errorOf([&] { outcome = operation().tenThousandths(); });
            if (fits(expected))
                return error == 0 && outcome == static_cast<qint64>(expected);
            return error == 6;
        };
        ASSERT_TRUE(check(Int128{a} + b, [=] { return tenThousandths(a) + tenThousandths(b); }))
            << a << " + " << b;
        ASSERT_TRUE(check(Int128{a} - b, [=] { return tenThousandths(a) - tenThousandths(b); }))
            << a << " - " << b;
    }
}

TEST(Currency, ProductsAgreeWith128Bits)
{
    Counts counts(2); // a fixed start value
    int inRange = 0;
    for (int i = 0; i < 100'000; ++i) {
        const qint64 a = counts();
        const qint64 b = counts();
        const Int128 expected = nearestQuotient(Int128{a} * b, 10000);
        qint64 outcome = 0;
        const int error =
            errorOf([&] { outcome = (tenThousandths(a) * tenThousandths(b)).tenThousandths(); });
        if (fits(expected)) {
            ++inRange;
            ASSERT_EQ(error, 0) << a << " * " << b;
            ASSERT_EQ(outcome, static_cast<qint64>(expected)) << a << " * " << b;
        } else {
            ASSERT_EQ(error, 6) << a << " * " << b;
        }
    }
    EXPECT_GT(inRange, 50'000);
}

TEST(Currency, ProductsRoundTiesToEven)
{
    const auto halfOf = [](qint64 count) {
        return (tenThousandths(count) * tenThousandths(5000)).tenThousandths();
    };
    EXPECT_EQ(halfOf(1), 0);
    EXPECT_EQ(halfOf(3), 2);
    EXPECT_EQ(halfOf(5), 2);
    EXPECT_EQ(halfOf(-1), 0);
    EXPECT_EQ(halfOf(-3), -2);
    EXPECT_EQ(halfOf(-5), -2);
}

TEST(Currency, ProductsAtTheEndsOfTheRange)
{
    EXPECT_EQ(kLargest * kroner(1), kLargest);
    EXPECT_EQ(kSmallest * kroner(1), kSmallest);
    EXPECT_EQ(kLargest * kroner(-1), tenThousandths(-kLargestCount));
    EXPECT_EQ(errorOf([] { (void)(kSmallest * kroner(-1)); }), 6);
    EXPECT_EQ(errorOf([] { (void)(kSmallest * kSmallest); }), 6);
    EXPECT_EQ(errorOf([] { (void)(kLargest * tenThousandths(10001)); }), 6);
}

TEST(Currency, AFailedSumLeavesTheAmountAsItWas)
{
    Currency amount = kLargest;
    EXPECT_EQ(errorOf([&] { amount += tenThousandths(1); }), 6);
    EXPECT_EQ(amount, kLargest);
    amount = kSmallest;
    EXPECT_EQ(errorOf([&] { amount -= tenThousandths(1); }), 6);
    EXPECT_EQ(amount, kSmallest);
}

TEST(Currency, NegationAndAbsoluteValue)
{
    EXPECT_EQ(-tenThousandths(15), tenThousandths(-15));
    EXPECT_EQ(tenThousandths(-15).abs(), tenThousandths(15));
    EXPECT_EQ(tenThousandths(15).abs(), tenThousandths(15));
    EXPECT_EQ(-kLargest, tenThousandths(-kLargestCount));
    EXPECT_EQ(errorOf([] { (void)-kSmallest; }), 6);
    EXPECT_EQ(errorOf([] { (void)kSmallest.abs(); }), 6);
}

TEST(Currency, RoundToWholeTakesAHalfToTheEvenKrone)
{
    EXPECT_EQ(tenThousandths(25000).roundToWhole(), kroner(2));
    EXPECT_EQ(tenThousandths(35000).roundToWhole(), kroner(4));
    EXPECT_EQ(tenThousandths(-25000).roundToWhole(), kroner(-2));
    EXPECT_EQ(tenThousandths(-35000).roundToWhole(), kroner(-4));
    EXPECT_EQ(tenThousandths(25001).roundToWhole(), kroner(3));
    EXPECT_EQ(tenThousandths(1026000).roundToWhole(), kroner(103));
    EXPECT_EQ(tenThousandths(-1026000).roundToWhole(), kroner(-103));
    EXPECT_EQ(tenThousandths(4999).roundToWhole(), Currency());
    EXPECT_EQ(errorOf([] { (void)kLargest.roundToWhole(); }), 6);
    EXPECT_EQ(errorOf([] { (void)kSmallest.roundToWhole(); }), 6);
}

TEST(Currency, CutGoesTowardsZero)
{
    EXPECT_EQ(tenThousandths(1026000).cut(), kroner(102));
    EXPECT_EQ(tenThousandths(-1026000).cut(), kroner(-102));
    EXPECT_EQ(tenThousandths(-9999).cut(), Currency());
    EXPECT_EQ(kLargest.cut(), kroner(922337203685477));
    EXPECT_EQ(kSmallest.cut(), kroner(-922337203685477));
}

TEST(Currency, IsOrderedByItsCount)
{
    EXPECT_LT(kSmallest, tenThousandths(-1));
    EXPECT_LT(tenThousandths(-1), Currency());
    EXPECT_GT(kLargest, tenThousandths(1));
    EXPECT_EQ(tenThousandths(10000), kroner(1));
}
