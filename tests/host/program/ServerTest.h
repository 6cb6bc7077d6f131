#pragma once

#include "host/program/HostTest.h"
#include "support/PostgresCluster.h"

/// Drives the host program on an empty database of the tests' server.
class ServerTest : public HostTest
{
protected:
    /// The database's URI, through the socket; for another user when one is named.
    [[nodiscard]] QString
    uri(const QString &user = QString::fromLatin1(PostgresCluster::kUser)) const;
    /// The same over TCP, where a password is asked for.
    [[nodiscard]] QString tcpUri(const QString &userAndPassword) const;
    /// The number of the database's tables.
    [[nodiscard]] QString tableCount() const;

    [[nodiscard]] Outcome demo(const QString &dsn) const;

    PostgresDatabase m_database;
};
