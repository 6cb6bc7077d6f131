#pragma once

#include "host/tasks/Database.h"

#include <functional>

/// Copies every table of `from` to `to`, which must hold no table, in one transaction of each: what
/// others change in `from` meanwhile is not seen, and `to` gets all or nothing. Before the end the
/// counts and sums of both are compared. Tells a line for each table through `say`. One table at a
/// time is held in memory.
///
/// Raises HostError when `from` cannot be read or has no table, when `to` holds a table, is the
/// same database or refuses a value, when the copy differs, and when the user has ended it
/// (Progress.h); `to` is then as it was.
void copyDatabase(const database::Place &from, const database::Place &to,
                  const std::function<void(const QString &line)> &say);
