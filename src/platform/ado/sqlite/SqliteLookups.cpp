#include "platform/ado/sqlite/SqliteLookups.h"

#include "platform/ado/sqlite/SqliteWriter.h"

#include <sqlite3.h>

#include <algorithm>

namespace ado {

SqliteLookups::SqliteLookups(const SqliteDatabase &database)
    : m_database(database), m_othersVersion(database.handle(), "PRAGMA data_version")
{
    sqlite3_update_hook(database.handle(), noteChange, this);
}

void SqliteLookups::update(const std::vector<dialect::Lookup> &wanted)
{
    if (wanted.empty())
        return;
    noteOthersChanges();
    for (const dialect::Lookup &lookup : wanted) {
        if (Kept &known = kept(lookup); !known.upToDate) {
            fill(lookup);
            known.upToDate = true;
        }
    }
}

// Between two changes the file's version answers at once; who has changed it a statement tells.
void SqliteLookups::noteOthersChanges()
{
    const quint32 version = m_database.version();
    if (version == m_knownVersion)
        return;
    m_knownVersion = version;
    const ScopedRun look(m_othersVersion);
    m_othersVersion.step();
    const qint64 othersVersion = m_othersVersion.integer(0);
    if (othersVersion != m_knownOthersVersion)
        distrust();
    m_knownOthersVersion = othersVersion;
}

// SQLite tells of every row that is written, but not of all that are removed; those do no harm.
void SqliteLookups::noteChange(void *self, int, const char *, const char *table, long long)
{
    for (Kept &known : static_cast<SqliteLookups *>(self)->m_kept) {
        if (known.upToDate && QAnyStringView(table) == known.lookup.table)
            known.upToDate = false;
    }
}

SqliteLookups::Kept &SqliteLookups::kept(const dialect::Lookup &lookup)
{
    const auto found = std::ranges::find(m_kept, lookup, &Kept::lookup);
    return found != m_kept.end() ? *found : m_kept.emplace_back(Kept{lookup, false});
}

void SqliteLookups::fill(const dialect::Lookup &lookup)
{
    const QByteArray table = SqliteWriter::lookupTable(lookup.table, lookup.column);
    // Without row numbers of its own it leaves last_insert_rowid() alone.
    run("CREATE TABLE IF NOT EXISTS " + table + " (number INTEGER PRIMARY KEY, text TEXT COLLATE " +
        SqliteWriter::kCollation + ", UNIQUE (text, number)) WITHOUT ROWID");
    // Reading through both takes a fraction of the time that sorting all texts anew would.
    const QByteArray text = "t." + dialect::Writer::name(lookup.column);
    run("INSERT OR REPLACE INTO " + table + " SELECT t._rowid_, " + text + " FROM main." +
        dialect::Writer::name(lookup.table) + " AS t LEFT JOIN " + table +
        " AS k ON k.number = t._rowid_ WHERE " + text + " IS NOT NULL AND " + text +
        " IS NOT k.text COLLATE BINARY");
}

void SqliteLookups::run(const QByteArray &sql)
{
    SqliteStatement(m_database.handle(), sql).step();
}

} // namespace ado
