#pragma once

namespace ado {

/// A single as it lies in a SQLite file, which knows doubles only: the double of its shortest
/// decimal form, 0.1 and not 0.10000000149011612, so that every tool shows what was written and
/// equal singles are equal there.
[[nodiscard]] double storedSingle(float number);

} // namespace ado
