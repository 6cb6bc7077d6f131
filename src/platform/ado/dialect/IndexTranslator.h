#pragma once

#include "platform/ado/dialect/Translator.h"

#include <QStringList>

#include <optional>

namespace ado::dialect {

/// The name of a table's index, quoted. It is the only one in the whole database.
[[nodiscard]] QByteArray indexName(const TableInfo &table, QStringView index);

/// Translates the making of an index, which nothing is made of when it is there. Each of `items` is
/// a column, or YEAR, MONTH or DAY of one, spelled as queries spell it, so that they are answered
/// by the index. Nothing for an index that begins with a text of which sessions keep lookups, since
/// it would answer none. Raises kSyntax for any other item: what an index of a file holds, every
/// tool must be able to work out. Raises kNoSuchTable, kNoSuchColumn and kTypeMismatch.
[[nodiscard]] std::optional<Translation> translateIndex(QStringView table, QStringView index,
                                                        const QStringList &items,
                                                        const Catalog &catalog,
                                                        const Writer &writer);

} // namespace ado::dialect
