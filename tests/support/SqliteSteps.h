#pragma once

#include <sqlite3.h>

#include <utility>

/// Counts steps of SQLite, of a kind that it counts itself, on connections opened meanwhile. One at
/// a time.
class SqliteSteps
{
public:
    /// By itself what is stepped over in tables that are read through.
    explicit SqliteSteps(int kind = SQLITE_STMTSTATUS_FULLSCAN_STEP)
    {
        s_kind = kind;
        s_steps = 0;
        sqlite3_auto_extension(entry());
    }
    ~SqliteSteps() { sqlite3_cancel_auto_extension(entry()); }
    SqliteSteps(const SqliteSteps &) = delete;
    SqliteSteps &operator=(const SqliteSteps &) = delete;

    /// Since it was last asked.
    static int taken() { return std::exchange(s_steps, 0); }

private:
    static void (*entry())() { return reinterpret_cast<void (*)()>(watch); }
    static int watch(sqlite3 *database, char **, const void *)
    {
        return sqlite3_trace_v2(database, SQLITE_TRACE_PROFILE, note, nullptr);
    }
    static int note(unsigned, void *, void *statement, void *)
    {
        s_steps += sqlite3_stmt_status(static_cast<sqlite3_stmt *>(statement), s_kind, 1);
        return 0;
    }

    static inline int s_kind = 0;
    static inline int s_steps = 0;
};
