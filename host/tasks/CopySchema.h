#pragma once

#include "platform/ado/dialect/Catalog.h"

#include <QString>

#include <vector>

/// What a copy of a database takes over of its definitions: tables and columns with their names,
/// types and widths, counters and primary keys, and the two constraints of the module's own tables.
/// Other constraints and indexes are not known to the catalogue and stay behind.

/// The tables in an order in which their rows can be entered: none before one that it refers to.
/// Valid as long as `catalog`.
[[nodiscard]] std::vector<const ado::dialect::TableInfo *>
copyOrder(const ado::dialect::Catalog &catalog);

/// The CREATE TABLE for a copy of the table, in the desktop dialect. A text column that is wider
/// than the dialect has them becomes one of the greatest width.
[[nodiscard]] QString createStatement(const ado::dialect::TableInfo &table,
                                      const ado::dialect::Catalog &catalog);
