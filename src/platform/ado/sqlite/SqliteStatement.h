#pragma once

#include "runtime/Value.h"

#include <QByteArray>

#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace ado {

/// A prepared statement of one SQLite connection, which must outlive it. Raises by sqliteError.
class SqliteStatement
{
public:
    /// Exactly one statement; a text that holds none or more than one raises kSyntax.
    SqliteStatement(sqlite3 *database, const QByteArray &sql);

    /// Binds the first parameter and so on, each by its value's type. Currency becomes its
    /// ten-thousandths, a date its text, a single the double of its shortest decimal form.
    void bind(const std::vector<Value> &values);

    /// True when it stands on a row.
    bool step();
    /// Ends the run and forgets the bound values, so that no read transaction lingers.
    void reset() noexcept;

    [[nodiscard]] sqlite3_stmt *handle() const { return m_handle.get(); }
    [[nodiscard]] qint64 integer(int column) const;
    [[nodiscard]] QString text(int column) const;

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *statement) const noexcept;
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> m_handle;
};

/// Resets a statement at the end of a scope.
class ScopedRun
{
public:
    explicit ScopedRun(SqliteStatement &statement) : m_statement(statement) {}
    ~ScopedRun() { m_statement.reset(); }
    ScopedRun(const ScopedRun &) = delete;
    ScopedRun &operator=(const ScopedRun &) = delete;

private:
    SqliteStatement &m_statement;
};

} // namespace ado
