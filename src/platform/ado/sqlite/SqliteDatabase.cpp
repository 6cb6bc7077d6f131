#include "platform/ado/sqlite/SqliteDatabase.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/sqlite/NorwegianCollation.h"
#include "platform/ado/sqlite/SqliteError.h"
#include "platform/ado/sqlite/SqliteFunctions.h"
#include "platform/ado/sqlite/SqliteStatement.h"
#include "runtime/Clock.h"

#include <QFile>
#include <QUrl>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

constexpr int kLockWaitMilliseconds = 10'000;

/// Called by SQLite before each further try to get a lock. Short waits first, since most locks are
/// held for one statement.
int waitForLock(void *, int attempt)
{
    constexpr std::array steps{1, 2, 5, 10, 15, 20, 25, 50};
    int waited = 0;
    for (int i = 0; i < attempt; ++i)
        waited += i < int(steps.size()) ? steps[size_t(i)] : 100;
    if (waited >= kLockWaitMilliseconds)
        return 0;
    Clock::current().sleep(attempt < int(steps.size()) ? steps[size_t(attempt)] : 100);
    return 1;
}

bool mayAccess(const QByteArray &path, int mode)
{
    return faccessat(AT_FDCWD, path.constData(), mode, AT_EACCESS) == 0;
}

/// The file can be changed, and the log and lock files can be made beside it.
bool mayWrite(const QByteArray &path)
{
    const QByteArray folder = path.first(std::max<qsizetype>(1, path.lastIndexOf('/')));
    return mayAccess(path, W_OK) && mayAccess(folder, W_OK);
}

RunTimeError openError(const QString &text, const QByteArray &path)
{
    return {errors::kUnspecified, text.arg(QFile::decodeName(path))};
}

} // namespace

void SqliteDatabase::Closer::operator()(sqlite3 *database) const noexcept
{
    sqlite3_close_v2(database);
}

SqliteDatabase::SqliteDatabase(const QString &path) : m_path(QFile::encodeName(path))
{
    struct stat info = {};
    if (stat(m_path.constData(), &info) != 0)
        throw openError(u"Databasen «%1» finnes ikke."_s, m_path);
    if (S_ISDIR(info.st_mode))
        throw openError(u"«%1» er en mappe og ingen database."_s, m_path);
    if (!S_ISREG(info.st_mode))
        throw openError(u"«%1» er ingen vanlig fil."_s, m_path);
    if (!mayAccess(m_path, R_OK))
        throw openError(u"Databasen «%1» kan ikke åpnes: lesetilgang mangler."_s, m_path);
    m_identity = identityOf(info);
    m_writable = mayWrite(m_path);
    try {
        if (m_writable) {
            open(m_path, SQLITE_OPEN_READWRITE);
            makeDurable();
        } else {
            openForReading(m_path);
        }
    } catch (const RunTimeError &error) {
        throw RunTimeError(error.number(), u"Databasen «%1» kan ikke åpnes: %2"_s.arg(
                                               QFile::decodeName(m_path), error.description()));
    }
}

void SqliteDatabase::open(const QByteArray &name, int flags)
{
    sqlite3 *database = nullptr;
    // One thread uses a session, so SQLite's own locking against threads is left out.
    const int code = sqlite3_open_v2(name.constData(), &database,
                                     flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    m_handle.reset(database);
    if (code != SQLITE_OK)
        throw sqliteError(code, QString::fromUtf8(sqlite3_errstr(code)));
    configure();
    // The first reading, which tells whether it is a database at all.
    SqliteStatement(handle(), "PRAGMA schema_version").step();
}

void SqliteDatabase::openForReading(const QByteArray &path)
{
    try {
        open(path, SQLITE_OPEN_READONLY);
    } catch (const RunTimeError &) {
        // A database kept by a write-ahead log needs lock files, which cannot be made in a folder
        // that is not to be written. Without a log beside it the file is whole and can be read as
        // one that nobody changes.
        const int code = sqlite3_errcode(handle()) & 0xff;
        const bool lacksLockFiles = code == SQLITE_CANTOPEN || code == SQLITE_READONLY;
        if (!lacksLockFiles || mayAccess(path + "-wal", F_OK))
            throw;
        const QByteArray name = QUrl::toPercentEncoding(QFile::decodeName(path), "/");
        open("file:" + name + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
        m_frozen = true;
    }
}

void SqliteDatabase::configure()
{
    struct Setting
    {
        int option;
        int wanted;
    };
    constexpr std::array settings{
        Setting{SQLITE_DBCONFIG_ENABLE_FKEY, 1},    Setting{SQLITE_DBCONFIG_DQS_DML, 0},
        Setting{SQLITE_DBCONFIG_DQS_DDL, 0},        Setting{SQLITE_DBCONFIG_DEFENSIVE, 1},
        Setting{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
    };
    for (const Setting &setting : settings) {
        int actual = -1;
        if (sqlite3_db_config(handle(), setting.option, setting.wanted, &actual) != SQLITE_OK ||
            actual != setting.wanted)
            throw RunTimeError(errors::kUnspecified,
                               u"SQLite godtar ikke innstilling %1."_s.arg(setting.option));
    }
    sqlite3_limit(handle(), SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_busy_handler(handle(), waitForLock, nullptr);
    // A temporary folder without room must not empty the lists that are sorted there.
    run("PRAGMA temp_store=MEMORY");
    addNorwegianCollation(handle());
    addFunctions(handle());
}

void SqliteDatabase::makeDurable()
{
    SqliteStatement journal(handle(), "PRAGMA journal_mode=WAL");
    if (!journal.step() || journal.text(0) != u"wal")
        throw RunTimeError(errors::kUnspecified, u"skriveloggen kan ikke slås på."_s);
    run("PRAGMA synchronous=FULL");
    constexpr qint64 full = 2;
    SqliteStatement synchronous(handle(), "PRAGMA synchronous");
    if (!synchronous.step() || synchronous.integer(0) != full)
        throw RunTimeError(errors::kUnspecified, u"sikker lagring kan ikke slås på."_s);
}

bool SqliteDatabase::inTransaction() const
{
    return sqlite3_get_autocommit(handle()) == 0;
}

quint32 SqliteDatabase::version() const
{
    quint32 version = 0;
    sqlite3_file_control(handle(), "main", SQLITE_FCNTL_DATA_VERSION, &version);
    return version;
}

void SqliteDatabase::run(const char *sql)
{
    if (sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw sqliteError(sqlite3_extended_errcode(handle()),
                          QString::fromUtf8(sqlite3_errmsg(handle())));
}

SqliteDatabase::Identity SqliteDatabase::identityOf(const struct stat &info)
{
    return {info.st_dev, info.st_ino, info.st_mode, info.st_uid, info.st_gid, geteuid()};
}

bool SqliteDatabase::isCurrent() const
{
    // Asked before every operation, so it makes do with one look at a file that can be written.
    struct stat info = {};
    return stat(m_path.constData(), &info) == 0 && identityOf(info) == m_identity &&
           (m_writable || !mayWrite(m_path));
}

} // namespace ado
