#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <string>
#include <vector>

/// What the measurements share: taking time and memory, and printing a result as one row of the
/// table what | value | yardstick of the same run | ratio | aim.
namespace bench {

/// Seconds that `work` takes, by a clock that only goes forward.
template<class Work>
[[nodiscard]] double secondsOf(Work &&work)
{
    const auto start = std::chrono::steady_clock::now();
    std::forward<Work>(work)();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Bytes that the program has allocated and not yet freed.
[[nodiscard]] inline double bytesInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// The middle one of a non-empty list, the upper of two middle ones.
[[nodiscard]] inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// A number with its unit, such as "118.3 ms".
[[nodiscard]] inline std::string amount(double number, const char *unit)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.1f %s", number, unit);
    return text;
}

/// One row; `ratio` is value to yardstick, and `aim` is told as it is to be shown.
inline void report(const std::string &what, const std::string &value, const std::string &yardstick,
                   double ratio, const std::string &aim)
{
    std::printf("%-58s | %12s | %12s | %6.2f | %s\n", what.c_str(), value.c_str(),
                yardstick.c_str(), ratio, aim.c_str());
    std::fflush(stdout);
}

} // namespace bench
