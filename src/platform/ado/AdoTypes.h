#pragma once

#include "platform/ado/dialect/ErrorNumbers.h"
#include "runtime/Value.h"

/// The named values of the database interface that callers use; the numbers are its published
/// ones. All rows are read at once, so place and kind of the cursor make no difference to them.
namespace ado {

enum class CursorLocation { Server = 2, Client = 3 };
enum class CursorType { ForwardOnly = 0, Keyset = 1 };
enum class LockType { ReadOnly = 1, Optimistic = 3 };
enum class ObjectState { Closed = 0, Open = 1 };
enum class SchemaList { Columns = 4 };
enum class AffectRecords { All = 3 };

/// Options of a command, joined by addition; Unspecified stands alone.
namespace options {
inline constexpr int kUnspecified = -1;
inline constexpr int kText = 1;
inline constexpr int kNoRecords = 128;
} // namespace options

/// Numbers of the database errors, besides those of statements.
namespace errors {
inline constexpr int kIntegrity = -2147217873;    ///< a constraint refused the change
inline constexpr int kNoPermission = -2147217911; ///< read-only file or missing right
inline constexpr int kRowNotFound = -2147217864;  ///< no row hit by a write-back
inline constexpr int kTimeout = -2147217871;      ///< the database stayed locked
inline constexpr int kUnspecified = -2147467259;  ///< everything else, opening included
inline constexpr int kNoCurrentRow = 3021;        ///< BOF or EOF is true
inline constexpr int kInvalidArgument = 3001;
inline constexpr int kNoSuchItem = 3265;  ///< no field of that name or number
inline constexpr int kReadOnlySet = 3251; ///< the record set's lock type forbids it
inline constexpr int kObjectClosed = 3704;
inline constexpr int kObjectOpen = 3705;
inline constexpr int kNoConnection = 3709;
} // namespace errors

} // namespace ado
