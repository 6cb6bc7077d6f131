#pragma once

#include <functional>

namespace report {

/// Passed again and again on the way to a report, each time that some of the work is done. What it
/// raises ends the work; nothing is left of that.
using Checkpoint = std::function<void()>;

} // namespace report
