#pragma once

#include "platform/ado/dialect/Catalog.h"

namespace ado {

class PostgresLink;

/// The tables that a statement reaches without naming a schema, as they are now, in the order in
/// which they were created. Columns of types that the dialect does not have show as the nearest.
[[nodiscard]] dialect::Catalog readCatalog(PostgresLink &link);

} // namespace ado
