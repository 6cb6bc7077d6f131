#include "benchmarks/support/Growth.h"

#include <cmath>
#include <cstdio>

namespace bench {

namespace {

constexpr size_t kMostSizes = 4;
constexpr double kMillisecond = 1e-3;

/// A little above 0 and 1, for what grows beside it, such as the depth of an index; n log n alone
/// is 1.13 from a hundred to a hundred thousand.
double aimOf(Reads reads)
{
    switch (reads) {
    case Reads::ItsOwn:
        return 0.1;
    case Reads::Everything:
        return 1.1;
    case Reads::InOrder:
        break;
    }
    return 1.25;
}

} // namespace

double fittedExponent(const std::vector<SizeAndCost> &points)
{
    const double count = double(points.size());
    double sizes = 0, costs = 0, products = 0, squares = 0;
    for (const SizeAndCost &point : points) {
        const double x = std::log(point.size);
        const double y = std::log(point.seconds);
        sizes += x;
        costs += y;
        products += x * y;
        squares += x * x;
    }
    return (count * products - sizes * costs) / (count * squares - sizes * sizes);
}

void reportGrowth(const std::string &what, const std::vector<SizeAndCost> &points, Reads reads)
{
    std::printf("%-50s", what.c_str());
    for (size_t i = 0; i < kMostSizes; ++i) {
        char text[64] = "";
        if (i < points.size())
            std::snprintf(text, sizeof text, "%.0f: %.3g", points[i].size,
                          points[i].seconds / kMillisecond);
        std::printf(" | %14s", text);
    }
    const double exponent = fittedExponent(points);
    const double aim = aimOf(reads);
    std::printf(" | %5.2f | %g%s\n", exponent, aim, exponent > aim ? " !" : "");
    std::fflush(stdout);
}

} // namespace bench
