#pragma once

#include "platform/ado/dialect/Translator.h"
#include "platform/ado/sqlite/SqliteDatabase.h"
#include "platform/ado/sqlite/SqliteStatement.h"

#include <vector>

namespace ado {

/// The lookups of a session with a SQLite file, by which a join on text finds its rows. The file
/// can have no index for that: text compares under a collation of ours, which other tools lack. So
/// each lookup is a temporary table of the session, with the rows' numbers by their text, and
/// SqliteWriter::lookup and joinedLookup tell how statements go through it.
///
/// A lookup that is up to date holds every row that has a text. It may hold rows that are gone or
/// have another text by now, which statements find out for themselves.
class SqliteLookups
{
public:
    /// Watches what the connection changes; nobody else may have its update hook.
    explicit SqliteLookups(const SqliteDatabase &database);
    SqliteLookups(const SqliteLookups &) = delete;
    SqliteLookups &operator=(const SqliteLookups &) = delete;

    /// Makes and fills by need what a statement looks rows up in; within the snapshot that the
    /// statement is going to read.
    void update(const std::vector<dialect::Lookup> &wanted);
    /// To be called when a transaction has been rolled back, for the lookups fall back with the
    /// tables, and when the schema has changed.
    void distrust() noexcept { m_kept.clear(); }

private:
    struct Kept
    {
        dialect::Lookup lookup;
        bool upToDate = false;
    };
    void noteOthersChanges();
    static void noteChange(void *self, int change, const char *database, const char *table,
                           long long row);
    Kept &kept(const dialect::Lookup &lookup);
    void fill(const dialect::Lookup &lookup);
    void run(const QByteArray &sql);

    const SqliteDatabase &m_database;
    SqliteStatement m_othersVersion; // another one after each change by another connection
    quint32 m_knownVersion = 0;
    qint64 m_knownOthersVersion = 0;
    std::vector<Kept> m_kept;
};

} // namespace ado
