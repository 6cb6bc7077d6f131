#pragma once

#include <QByteArray>
#include <QString>

/// Runs one statement in the desktop dialect through gDB and returns its rows as UTF-8 text: a line
/// of "name:type code" for each column, then a line for each row, fields parted by tabs. A
/// statement without rows gives no text. Raises HostError with LastError when the database refuses.
[[nodiscard]] QByteArray runStatement(const QString &statement);
