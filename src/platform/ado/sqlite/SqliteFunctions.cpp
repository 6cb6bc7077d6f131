#include "platform/ado/sqlite/SqliteFunctions.h"

#include "platform/ado/sqlite/SqliteError.h"
#include "platform/ado/sqlite/StoredSingle.h"

#include <sqlite3.h>

#include <QtGlobal>

#include <cmath>
#include <limits>

namespace ado {

namespace {

bool isNull(sqlite3_value *value)
{
    return sqlite3_value_type(value) == SQLITE_NULL;
}

// A function that sets no result gives Null.
void quotient(sqlite3_context *context, int, sqlite3_value **operands)
{
    if (isNull(operands[0]) || isNull(operands[1]))
        return;
    const double divisor = sqlite3_value_double(operands[1]);
    if (divisor == 0)
        sqlite3_result_error(context, kDividedByZero, -1);
    else
        sqlite3_result_double(context, sqlite3_value_double(operands[0]) / divisor);
}

void exact(sqlite3_context *context, int, sqlite3_value **operands)
{
    if (sqlite3_value_type(operands[0]) == SQLITE_FLOAT)
        sqlite3_result_error(context, kWholeOverflow, -1);
    else
        sqlite3_result_value(context, operands[0]);
}

void longNumber(sqlite3_context *context, int, sqlite3_value **operands)
{
    const sqlite3_int64 number = sqlite3_value_int64(operands[0]);
    if (number < std::numeric_limits<qint32>::min() || number > std::numeric_limits<qint32>::max())
        sqlite3_result_error(context, kWholeOverflow, -1);
    else
        sqlite3_result_value(context, operands[0]);
}

void single(sqlite3_context *context, int, sqlite3_value **operands)
{
    if (isNull(operands[0]))
        return;
    const double number = sqlite3_value_double(operands[0]);
    const auto nearest = float(number);
    sqlite3_result_double(context, std::isfinite(nearest) ? storedSingle(nearest) : number);
}

} // namespace

void addFunctions(sqlite3 *database)
{
    struct Function
    {
        const char *name;
        int operands;
        void (*call)(sqlite3_context *, int, sqlite3_value **);
    };
    constexpr Function all[] = {
        {functions::kQuotient, 2, quotient},
        {functions::kExact, 1, exact},
        {functions::kLong, 1, longNumber},
        {functions::kSingle, 1, single},
    };
    for (const Function &function : all) {
        const int code =
            sqlite3_create_function(database, function.name, function.operands,
                                    SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY, nullptr,
                                    function.call, nullptr, nullptr);
        if (code != SQLITE_OK)
            throw sqliteError(code, QString::fromUtf8(sqlite3_errmsg(database)));
    }
}

} // namespace ado
