#pragma once

#include <string>
#include <vector>

/// How the cost of a work follows the size of what it works in, as one row of the table what | cost
/// at each size | exponent | aim.
namespace bench {

struct SizeAndCost
{
    double size;
    double seconds;
};

/// The exponent e of the curve cost = c * size^e that fits best: the slope of the straight line
/// through the logarithms, by least squares. There must be two different sizes.
[[nodiscard]] double fittedExponent(const std::vector<SizeAndCost> &points);

/// What a work may need to look at.
enum class Reads {
    ItsOwn,     ///< so the size must not matter
    Everything, ///< so its cost may follow the size
    InOrder,    ///< so it compares each with some of the others
};

/// One row. A work that misses the aim of its kind ends with "!".
void reportGrowth(const std::string &what, const std::vector<SizeAndCost> &points, Reads reads);

} // namespace bench
