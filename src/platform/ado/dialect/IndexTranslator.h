#pragma once

#include "platform/ado/dialect/Translator.h"

#include <QStringList>

namespace ado::dialect {

/// Translates the making of an index, which nothing is made of when it is there. Each of `items` is
/// a column, or YEAR, MONTH or DAY of one, spelled as queries spell it, so that they are answered
/// by the index. Raises kSyntax for anything else: what an index of a file holds, every tool must
/// be able to work out. Raises kNoSuchTable, kNoSuchColumn and kTypeMismatch.
[[nodiscard]] Translation translateIndex(QStringView table, QStringView index,
                                         const QStringList &items, const Catalog &catalog,
                                         const Writer &writer);

} // namespace ado::dialect
