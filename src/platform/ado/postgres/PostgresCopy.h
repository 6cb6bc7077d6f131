#pragma once

#include "platform/ado/dialect/Translator.h"

namespace ado {

class RowSet;

/// The COPY that adds rows of these columns to the table, each by its name.
[[nodiscard]] QByteArray copyStatement(const dialect::TableInfo &table,
                                       const std::vector<dialect::ResultColumn> &columns);

/// One row in the text format of COPY (PostgreSQL documentation, "COPY", "Text Format"), with its
/// line feed.
[[nodiscard]] QByteArray copyLine(const RowSet &rows, int row);

} // namespace ado
