#pragma once

#include "benchmarks/works/Work.h"

namespace bench {

/// Statements that each have a transaction of their own, on a line of the first order.
[[nodiscard]] Work ownTransactions(int statements);

} // namespace bench
