#pragma once

#include <QFile>

#include <sqlite3.h>

/// The yardstick's way to a database file: its own C interface, with nothing of the module before
/// it. What the database refuses ends the program.
namespace bench {

/// An empty file, which every way into the database takes for a database without tables.
inline void makeEmptyFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot make the database file");
}

/// A connection to an existing file.
class PlainDatabase
{
public:
    /// `flags` as of sqlite3_open_v2, beside those for reading and writing.
    explicit PlainDatabase(const QString &path, int flags = 0)
    {
        check(sqlite3_open_v2(QFile::encodeName(path).constData(), &m_database,
                              SQLITE_OPEN_READWRITE | flags, nullptr));
    }
    ~PlainDatabase() { check(sqlite3_close(m_database)); }
    PlainDatabase(const PlainDatabase &) = delete;
    PlainDatabase &operator=(const PlainDatabase &) = delete;

    [[nodiscard]] sqlite3 *handle() const { return m_database; }
    /// Sends a statement whose rows nobody wants.
    void send(const char *sql) const
    {
        check(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr));
    }
    /// Ends the program unless `code` tells of success.
    void check(int code) const
    {
        if (code != SQLITE_OK)
            qFatal("%s", sqlite3_errmsg(m_database));
    }

private:
    sqlite3 *m_database = nullptr;
};

/// A prepared statement; it must go before its database does.
class PlainQuery
{
public:
    PlainQuery(const PlainDatabase &database, const char *sql) : m_database(database)
    {
        database.check(sqlite3_prepare_v2(database.handle(), sql, -1, &m_statement, nullptr));
    }
    ~PlainQuery() { sqlite3_finalize(m_statement); }
    PlainQuery(const PlainQuery &) = delete;
    PlainQuery &operator=(const PlainQuery &) = delete;

    [[nodiscard]] sqlite3_stmt *handle() const { return m_statement; }
    /// Steps to the next row; false behind the last one.
    bool next()
    {
        const int code = sqlite3_step(m_statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE)
            m_database.check(code);
        return code == SQLITE_ROW;
    }
    /// Before the first row again.
    void reset() { sqlite3_reset(m_statement); }

private:
    const PlainDatabase &m_database;
    sqlite3_stmt *m_statement = nullptr;
};

} // namespace bench
