#include "benchmarks/support/Growth.h"

#include <cmath>

namespace {

using bench::fittedExponent;
using bench::SizeAndCost;

constexpr double kExact = 1e-9;

std::vector<SizeAndCost> curve(double factor, double exponent)
{
    std::vector<SizeAndCost> points;
    for (const double size : {60.0, 600.0, 6'000.0, 60'000.0})
        points.push_back({size, factor * std::pow(size, exponent)});
    return points;
}

} // namespace

TEST(FittedExponent, APowerHasItsOwnWhateverItsFactor)
{
    for (const double exponent : {0.0, 0.5, 1.0, 2.0}) {
        EXPECT_NEAR(fittedExponent(curve(1, exponent)), exponent, kExact);
        EXPECT_NEAR(fittedExponent(curve(3e-6, exponent)), exponent, kExact);
    }
}

TEST(FittedExponent, TwoSizesAreEnough)
{
    EXPECT_NEAR(fittedExponent({{10, 2}, {1'000, 200}}), 1, kExact);
}

TEST(FittedExponent, OneSlowRunBendsItByItsShareOfTheLogarithms)
{
    // Sizes 1, 10, 100: the slope is (y3 - y1) / 2 in decades, so the middle one does not count.
    EXPECT_NEAR(fittedExponent({{1, 1}, {10, 50}, {100, 1}}), 0, kExact);
    EXPECT_NEAR(fittedExponent({{1, 1}, {10, 1}, {100, 10}}), 0.5, kExact);
}

TEST(FittedExponent, AFixedCostHidesTheGrowthOfSmallSizes)
{
    std::vector<SizeAndCost> points = curve(1e-6, 1);
    for (SizeAndCost &point : points)
        point.seconds += 1e-3;
    const double exponent = fittedExponent(points);
    EXPECT_GT(exponent, 0.3);
    EXPECT_LT(exponent, 0.9);
}
