#pragma once

struct sqlite3;

namespace ado {

/// Makes the collation SqliteWriter::kCollation known to the connection, which owns its collator
/// from then on: the order of a Norwegian desktop database without regard to case, æ ø å last ("aa"
/// beside å), by ICU's locale "nb" at strength two (Unicode Technical Standard 10). Raises
/// kUnspecified.
void addNorwegianCollation(sqlite3 *database);

} // namespace ado
