#pragma once

#include "platform/ado/Support.h"

#include <utility>

namespace ado::test {

/// Counts what SQLite steps over in tables that it reads through; on connections opened meanwhile.
class ScanCounter
{
public:
    ScanCounter() { sqlite3_auto_extension(entry()); }
    ~ScanCounter() { sqlite3_cancel_auto_extension(entry()); }
    ScanCounter(const ScanCounter &) = delete;
    ScanCounter &operator=(const ScanCounter &) = delete;

    /// Since it was last asked.
    static int steps() { return std::exchange(s_steps, 0); }

private:
    static void (*entry())() { return reinterpret_cast<void (*)()>(watch); }
    static int watch(sqlite3 *database, char **, const void *)
    {
        return sqlite3_trace_v2(database, SQLITE_TRACE_PROFILE, note, nullptr);
    }
    static int note(unsigned, void *, void *statement, void *)
    {
        s_steps += sqlite3_stmt_status(static_cast<sqlite3_stmt *>(statement),
                                       SQLITE_STMTSTATUS_FULLSCAN_STEP, 1);
        return 0;
    }

    static inline int s_steps = 0;
};

} // namespace ado::test
