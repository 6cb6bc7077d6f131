#pragma once

#include "platform/ado/Support.h"

#include <memory>

namespace ado::test {

/// An empty database of the kind that a test program is about; each has its own makeDatabase().
class AnyDatabase
{
public:
    virtual ~AnyDatabase() = default;

    [[nodiscard]] virtual QString connectionString() const = 0;
    /// What another program gets for a statement in words that every database has: its rows as
    /// lines, with "|" between the values.
    virtual std::string stored(const QString &sql) = 0;
    /// Looks at the database from outside; fails the test that is running when it is not whole, or
    /// when a transaction is left open in it.
    virtual void check() = 0;
};

[[nodiscard]] std::unique_ptr<AnyDatabase> makeDatabase();

/// A test that holds on any database.
class AnyDatabaseTest : public testing::Test
{
protected:
    [[nodiscard]] QString dsn() const { return m_database->connectionString(); }
    std::string stored(const QString &sql) { return m_database->stored(sql); }

    const std::unique_ptr<AnyDatabase> m_database = makeDatabase();
};

} // namespace ado::test
