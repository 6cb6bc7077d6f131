#pragma once

struct pg_result;

namespace ado {

class RowSet;

/// Appends the first row of `result`, in binary form and of the columns' types, to `rows`. A value
/// that the type cannot show (an infinite date, a sum that is no number) raises kTypeMismatch,
/// money outside its range kOutOfRange; both name the column.
void appendRow(const pg_result *result, RowSet &rows);

} // namespace ado
