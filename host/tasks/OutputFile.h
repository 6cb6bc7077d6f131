#pragma once

#include <QString>

/// Raises HostError when no file is to be written to `target`: it is no plain file, it belongs to
/// the database in use, it exists and `replace` is false, or its folder does not exist.
void checkTarget(const QString &target, bool replace);
