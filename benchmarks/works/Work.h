#pragma once

#include "benchmarks/support/Report.h"

#include <algorithm>
#include <functional>
#include <string>

namespace bench {

/// A work of the module on a company's database, as it is measured: a run of some units.
struct Work
{
    std::string name; ///< on the command line
    std::string unit; ///< what a run consists of
    int units = 1;
    std::function<void()> run;
    std::function<void()> prepare = [] {}; ///< before each run, and no part of it

    /// Of one run, for a unit.
    [[nodiscard]] double seconds() const
    {
        prepare();
        return secondsOf(run) / units;
    }
    [[nodiscard]] double cpuSeconds() const
    {
        prepare();
        return cpuSecondsOf(run) / units;
    }
};

} // namespace bench
