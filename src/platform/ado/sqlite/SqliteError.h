#pragma once

#include "runtime/RunTimeError.h"

#include <QString>

namespace ado {

/// The module's error for an extended result code of SQLite (its published list of result codes)
/// and the database's own message, which names table and columns of a broken constraint.
[[nodiscard]] RunTimeError sqliteError(int extendedCode, const QString &message);

} // namespace ado
