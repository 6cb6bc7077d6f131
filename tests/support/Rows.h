#pragma once

#include <QStringList>

/// The rows of a query past gDB, their values as text with "|" between them and Null as "Null".
/// Raises what the database refuses.
[[nodiscard]] QStringList rowsOf(const QString &connectionString, const QString &statement);
