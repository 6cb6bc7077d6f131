#pragma once

struct sqlite3;

namespace ado {

/// What SQLite reckons otherwise than the dialect. Statements refer to these functions, the schema
/// never does, so that any tool can read and check the file.
namespace functions {
/// KVOTIENT(a, b): a / b as a real number. SQLite alone makes Null of a division by zero.
inline constexpr char kQuotient[] = "KVOTIENT";
/// EKSAKT(n): n itself if it is a whole number, else an error. SQLite alone turns a sum beyond 64
/// bits into a real number, which has lost its last digits.
inline constexpr char kExact[] = "EKSAKT";
/// HELTALL(n): n itself if it is a LONG, else an error. SQLite alone reckons with 64 bits.
inline constexpr char kLong[] = "HELTALL";
/// ENKEL(x): the nearest SINGLE, as it is stored. A number beyond SINGLE stays as it is.
inline constexpr char kSingle[] = "ENKEL";
} // namespace functions

/// What their errors say; the second in SQLite's own words for a sum beyond 64 bits.
inline constexpr char kDividedByZero[] = "division by zero";
inline constexpr char kWholeOverflow[] = "integer overflow";

/// Makes the functions known to the connection. Raises by sqliteError.
void addFunctions(sqlite3 *database);

} // namespace ado
