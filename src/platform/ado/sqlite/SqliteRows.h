#pragma once

namespace ado {

class RowSet;
class SqliteStatement;

/// Steps the statement to its end and appends its rows. A stored value that is not of its column's
/// type (another tool may have written it) raises kTypeMismatch, a whole number outside the type's
/// range error 6; both name the column.
void readRows(SqliteStatement &statement, RowSet &rows);

} // namespace ado
