#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A PostgreSQL server of the tests' own, with its data in a temporary folder: reached through a
/// Unix socket in that folder, where everyone is trusted, and on a free port of the loopback
/// address by password. It never runs as root, and it ends with the process that started it,
/// however that ends.
///
/// Failures end the process with a line on the standard error: without a server no test can run.
class PostgresCluster
{
public:
    enum class Durability {
        Full, ///< the server's own defaults
        None, ///< nothing survives the machine; many times faster
    };

    explicit PostgresCluster(Durability durability);
    ~PostgresCluster();
    PostgresCluster(const PostgresCluster &) = delete;
    PostgresCluster &operator=(const PostgresCluster &) = delete;

    /// The cluster that the tests of an executable share, without durability, started at first use.
    static PostgresCluster &shared();

    /// Starts a stopped server, or stops a running one without asking its clients: all connections
    /// end.
    void start();
    void stop();
    /// Brings the server down as a power failure does: no session ends in order, so none lets go of
    /// a lock that another one waits for.
    void crash();

    /// The administrator of the cluster.
    static constexpr char kUser[] = "postgres";
    static constexpr char kPassword[] = "Grimstad%7=pass ord";
    [[nodiscard]] QString socketFolder() const { return m_folder.path(); }
    [[nodiscard]] int port() const { return m_port; }
    /// "dsn=" and the URI of a database, through the socket.
    [[nodiscard]] QString connectionString(const QString &database) const;

    /// Runs one statement of the server's own language, outside the code under test; its rows as
    /// lines with "|" between the values. An error fails the test that is running.
    QString run(const QString &database, const QString &sql) const;

    /// An empty UTF-8 database, of a name that was never used.
    [[nodiscard]] QString createDatabase();

private:
    void initialise();
    void bringDown(int signal);
    [[nodiscard]] QString program(const QString &name) const;

    const Durability m_durability;
    QTemporaryDir m_folder;
    QString m_programs; // the folder of the server's programs
    int m_port = 0;
    int m_databases = 0;
    QProcess m_server;
};

/// A database in the shared cluster that goes away with this object. Idle sessions are closed
/// first.
class PostgresDatabase
{
public:
    PostgresDatabase();
    ~PostgresDatabase();
    PostgresDatabase(const PostgresDatabase &) = delete;
    PostgresDatabase &operator=(const PostgresDatabase &) = delete;

    [[nodiscard]] const QString &name() const { return m_name; }
    [[nodiscard]] QString connectionString() const;
    QString run(const QString &sql) const;

private:
    const QString m_name;
};
