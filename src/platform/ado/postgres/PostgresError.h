#pragma once

#include "runtime/RunTimeError.h"

#include <QByteArray>
#include <QString>

/// As libpq names the answer of a server.
using PGresult = struct pg_result;

namespace ado {

/// What a server tells of a failed statement.
struct PostgresFailure
{
    QByteArray state; ///< the five characters of SQLSTATE; empty when no server answered
    QString message;  ///< in the server's language
    QString schema;   ///< of the table, like the following only where the server tells them
    QString table;
    QString column;
    QString constraint;

    PostgresFailure() = default;
    explicit PostgresFailure(const PGresult *result);
};

/// The module's error for a failed statement, by SQLSTATE (PostgreSQL 15 documentation, appendix
/// A).
[[nodiscard]] RunTimeError postgresError(const PostgresFailure &failure);

/// The module's error for a connection that did not come about: always kUnspecified. `where` is the
/// server and `database` the database in the words of the connection string.
[[nodiscard]] RunTimeError postgresConnectError(const PostgresFailure &failure,
                                                const QString &where, const QString &database);

/// The connection ended below a statement.
[[nodiscard]] RunTimeError postgresLost();

} // namespace ado
