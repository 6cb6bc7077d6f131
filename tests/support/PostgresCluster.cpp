#include "support/PostgresCluster.h"

#include "platform/ado/SessionPool.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <arpa/inet.h>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <grp.h>
#include <memory>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatience = 60'000; // milliseconds, for a machine that is busy with other tests

[[noreturn]] void fail(const QString &why)
{
    std::fprintf(stderr, "PostgresCluster: %s\n", qPrintable(why));
    std::_Exit(1);
}

/// Whom the server runs as: this user, or for the superuser one without rights.
const passwd *serverUser()
{
    if (::geteuid() != 0)
        return nullptr;
    const passwd *user = ::getpwnam("postgres");
    return user ? user : ::getpwnam("nobody");
}

/// In the child, before the program begins.
void becomeServerUser(const passwd *user)
{
    if (user && (::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 ||
                 ::setuid(user->pw_uid) != 0))
        ::_exit(127);
    // The server stops at once when the test's process is gone, whatever took it.
    ::prctl(PR_SET_PDEATHSIG, SIGQUIT);
}

bool isFree(int port)
{
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    const bool bound =
        ::bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    ::close(listener);
    return bound;
}

/// Below the ports that the system gives out by itself, so that nobody else gets it while the
/// server is down; processes that run side by side look in different places.
int freePort()
{
    constexpr int first = 10'000;
    constexpr int count = 20'000;
    constexpr int apart = 16;
    const int start = ::getpid() % (count / apart) * apart;
    for (int i = 0; i < count; ++i) {
        const int port = first + (start + i) % count;
        if (isFree(port))
            return port;
    }
    fail(u"no free port"_s);
}

/// Debian keeps each version's programs in a folder of its own.
QString findPrograms()
{
    const QDir versions(u"/usr/lib/postgresql"_s);
    int newest = 0;
    for (const QString &version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (QFile::exists(versions.filePath(version + u"/bin/postgres"_s)))
            newest = std::max(newest, version.toInt());
    }
    if (newest == 0)
        fail(u"no server is installed (Debian package postgresql)"_s);
    return versions.filePath(QString::number(newest) + u"/bin"_s);
}

} // namespace

PostgresCluster::PostgresCluster(Durability durability)
    : m_durability(durability), m_programs(findPrograms()), m_port(freePort())
{
    initialise();
    start();
}

PostgresCluster::~PostgresCluster()
{
    stop();
}

PostgresCluster &PostgresCluster::shared()
{
    static PostgresCluster cluster(Durability::None);
    return cluster;
}

QString PostgresCluster::program(const QString &name) const
{
    return QDir(m_programs).filePath(name);
}

void PostgresCluster::initialise()
{
    const passwd *user = serverUser();
    const QString passwordFile = m_folder.filePath(u"passord"_s);
    QFile password(passwordFile);
    if (!password.open(QIODevice::WriteOnly) || password.write(kPassword) < 0)
        fail(u"cannot write to "_s + m_folder.path());
    password.close();
    for (const QString &path : {m_folder.path(), passwordFile}) {
        if (user && ::chown(QFile::encodeName(path).constData(), user->pw_uid, user->pw_gid) != 0)
            fail(u"cannot give away "_s + path);
    }
    // Through the socket this user, too, has to come in.
    QFile::setPermissions(m_folder.path(),
                          QFile::permissions(m_folder.path()) | QFile::ReadOther | QFile::ExeOther);

    QProcess initdb;
    initdb.setProcessChannelMode(QProcess::MergedChannels);
    initdb.setChildProcessModifier([user] { becomeServerUser(user); });
    initdb.setWorkingDirectory(m_folder.path());
    initdb.start(program(u"initdb"_s),
                 {u"--pgdata="_s + m_folder.filePath(u"data"_s),
                  u"--username="_s + QLatin1StringView(kUser), u"--pwfile="_s + passwordFile,
                  u"--encoding=UTF8"_s, u"--locale=C.UTF-8"_s, u"--auth-local=trust"_s,
                  u"--auth-host=scram-sha-256"_s, u"--no-sync"_s});
    if (!initdb.waitForFinished(kPatience) || initdb.exitCode() != 0)
        fail(u"initdb: "_s + QString::fromUtf8(initdb.readAll()));
}

void PostgresCluster::start()
{
    const passwd *user = serverUser();
    QStringList arguments{u"-D"_s, m_folder.filePath(u"data"_s),
                          u"-k"_s, m_folder.path(),
                          u"-h"_s, u"127.0.0.1"_s,
                          u"-p"_s, QString::number(m_port),
                          u"-c"_s, u"max_connections=50"_s,
                          u"-c"_s, u"shared_buffers=32MB"_s};
    if (m_durability == Durability::None)
        arguments += {u"-c"_s, u"fsync=off"_s, u"-c"_s, u"synchronous_commit=off"_s, u"-c"_s,
                      u"full_page_writes=off"_s,
                      // Its workers would be in the way of a database's copy.
                      u"-c"_s, u"autovacuum=off"_s};
    m_server.setChildProcessModifier([user] { becomeServerUser(user); });
    m_server.setWorkingDirectory(m_folder.path());
    m_server.setStandardOutputFile(QProcess::nullDevice());
    m_server.setStandardErrorFile(m_folder.filePath(u"logg"_s));
    m_server.start(program(u"postgres"_s), arguments);

    const QByteArray port = QByteArray::number(m_port);
    const QByteArray host = QFile::encodeName(m_folder.path());
    const char *const names[] = {"host", "port", nullptr};
    const char *const values[] = {host.constData(), port.constData(), nullptr};
    QElapsedTimer waited;
    waited.start();
    while (PQpingParams(names, values, 0) != PQPING_OK) {
        if (m_server.waitForFinished(0) || m_server.state() == QProcess::NotRunning ||
            waited.hasExpired(kPatience)) {
            QFile log(m_folder.filePath(u"logg"_s));
            static_cast<void>(log.open(QIODevice::ReadOnly));
            fail(u"the server does not start: "_s + QString::fromUtf8(log.readAll()));
        }
        QThread::msleep(5); // the server tells nobody when it is ready
    }
}

void PostgresCluster::stop()
{
    bringDown(SIGINT); // the fast way: clients are cut off, the data are put in order
}

void PostgresCluster::crash()
{
    // Without durability, what was committed lately may be nowhere but in memory.
    run(QStringLiteral("postgres"), QStringLiteral("CHECKPOINT"));
    bringDown(SIGQUIT);
}

void PostgresCluster::bringDown(int signal)
{
    if (m_server.state() == QProcess::NotRunning)
        return;
    ::kill(static_cast<pid_t>(m_server.processId()), signal);
    if (!m_server.waitForFinished(kPatience))
        fail(u"the server does not stop"_s);
}

QString PostgresCluster::connectionString(const QString &database) const
{
    return u"dsn=postgresql://%1@/%2?host=%3&port=%4"_s
        .arg(QLatin1StringView(kUser), database, m_folder.path())
        .arg(m_port);
}

QString PostgresCluster::run(const QString &database, const QString &sql) const
{
    const QByteArray port = QByteArray::number(m_port);
    const std::unique_ptr<PGconn, void (*)(PGconn *)> connection(
        PQsetdbLogin(QFile::encodeName(m_folder.path()).constData(), port.constData(), nullptr,
                     nullptr, database.toUtf8().constData(), kUser, nullptr),
        PQfinish);
    const std::unique_ptr<PGresult, void (*)(PGresult *)> result(
        PQexec(connection.get(), sql.toUtf8().constData()), PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    EXPECT_TRUE(status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK)
        << sql.toStdString() << ": " << PQerrorMessage(connection.get());
    QStringList lines;
    for (int row = 0; row < PQntuples(result.get()); ++row) {
        QStringList values;
        for (int column = 0; column < PQnfields(result.get()); ++column)
            values += QString::fromUtf8(PQgetvalue(result.get(), row, column));
        lines += values.join(u'|');
    }
    return lines.join(u'\n');
}

QString PostgresCluster::createDatabase()
{
    const QString name = u"firma%1"_s.arg(++m_databases);
    run(u"postgres"_s, u"CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8'"_s.arg(name));
    return name;
}

PostgresDatabase::PostgresDatabase() : m_name(PostgresCluster::shared().createDatabase()) {}

PostgresDatabase::~PostgresDatabase()
{
    ado::SessionPool::shared().clear();
    PostgresCluster::shared().run(u"postgres"_s, u"DROP DATABASE %1 WITH (FORCE)"_s.arg(m_name));
}

QString PostgresDatabase::connectionString() const
{
    return PostgresCluster::shared().connectionString(m_name);
}

QString PostgresDatabase::run(const QString &sql) const
{
    return PostgresCluster::shared().run(m_name, sql);
}
