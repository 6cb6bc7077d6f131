#pragma once

/// Numbers of the errors in a statement; AdoTypes.h has those of the record interface.
namespace ado::errors {

inline constexpr int kSyntax = -2147217900;       ///< statement not understood, or refused
inline constexpr int kNoSuchTable = -2147217865;  ///< unknown table
inline constexpr int kNoSuchColumn = -2147217904; ///< unknown column
inline constexpr int kTableExists = -2147217857;  ///< the table to create is there already
inline constexpr int kColumnExists = -2147217858; ///< the column to add is there already
inline constexpr int kTypeMismatch = -2147217913; ///< value does not fit the column's type
inline constexpr int kOutOfRange = -2147217887;   ///< number outside the column's range

} // namespace ado::errors
