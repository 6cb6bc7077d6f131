#pragma once

#include "benchmarks/support/Aim.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <malloc.h>
#include <string>
#include <utility>
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

/// Seconds that the processors have spent on this program so far, whoever else had them meanwhile.
[[nodiscard]] inline double cpuSecondsSpent()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

/// Seconds that they spend on `work`.
template<class Work>
[[nodiscard]] double cpuSecondsOf(Work &&work)
{
    const double before = cpuSecondsSpent();
    std::forward<Work>(work)();
    return cpuSecondsSpent() - before;
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

/// The middle costs of two works, and the middle one of the rounds' ratios.
struct Pair
{
    double ours = 0;
    double plain = 0;
    double ratio = 0;
};

/// Runs the two in turn, round after round, so that a busy moment of the machine falls on both;
/// each goes first in every other round. Both return what they cost.
template<class Ours, class Plain>
[[nodiscard]] Pair inTurn(int rounds, Ours ours, Plain plain)
{
    std::vector<double> oursCosts, plainCosts, ratios;
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0)
            plainCosts.push_back(plain());
        oursCosts.push_back(ours());
        if (round % 2 != 0)
            plainCosts.push_back(plain());
        ratios.push_back(oursCosts.back() / plainCosts.back());
    }
    return {median(oursCosts), median(plainCosts), median(ratios)};
}

/// A number with its unit, such as "118.3 ms".
[[nodiscard]] inline std::string amount(double number, const char *unit)
{
    char text[64];
    std::snprintf(text, sizeof text, number < 10 ? "%.2f %s" : "%.1f %s", number, unit);
    return text;
}

/// One row of the table. A row that misses its aim ends with "!".
inline void report(const std::string &what, double value, double yardstick, const char *unit,
                   double ratio, const Aim &aim)
{
    std::printf("%-62s | %13s | %13s | %6.2f | %-12s%s\n", what.c_str(),
                amount(value, unit).c_str(), amount(yardstick, unit).c_str(), ratio,
                aim.text(unit).c_str(), aim.isMissed(value, ratio) ? " !" : "");
    std::fflush(stdout);
}
inline void report(const std::string &what, double value, double yardstick, const char *unit,
                   const Aim &aim)
{
    report(what, value, yardstick, unit, value / yardstick, aim);
}

} // namespace bench
