#include "host/tasks/Database.h"

#include "host/tasks/HostError.h"
#include "platform/ado/AdoTypes.h"
#include "platform/ado/Connection.h"
#include "platform/ado/OdbcIni.h"
#include "platform/ado/Session.h"
#include "runtime/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView kMarkSuffix(".lages");
constexpr QLatin1StringView kModuleTables[] = {"Ordre"_L1, "Produkt"_L1, "OrdreLinjer"_L1};

bool isConnectionString(const QString &text)
{
    try {
        return !ado::ConnectionString(text).value(u"dsn").isEmpty();
    } catch (const RunTimeError &) {
        return false;
    }
}

QString connectionStringOf(const QString &dsn)
{
    if (isConnectionString(dsn))
        return dsn;
    if (dsn.contains(u';')) {
        throw HostError(u"navnet på en database kan bare inneholde semikolon i en hel "
                        u"tilkoblingsstreng («dsn=…;…»)"_s,
                        HostError::kUsage);
    }
    const bool isFileName =
        !dsn.contains(u'/') && !ado::isServerAddress(dsn) && !ado::odbcDataSource(dsn);
    return (isFileName ? u"dsn=./"_s : u"dsn="_s) + dsn;
}

/// On a server; a user's own database need not be named.
QString databaseOf(const ado::DataSource &source)
{
    return source.server.value(u"dbname"_s, source.server.value(u"user"_s));
}

QString nameOf(const ado::DataSource &source)
{
    if (source.kind == ado::DataSource::Kind::SqliteFile)
        return ado::isShowable(source.location) ? source.location : u"databasen"_s;
    const QString host = source.server.value(u"host"_s);
    // A misspelt user may hold the password.
    return u"databasen «%1»"_s.arg(source.server.value(u"dbname"_s, u"brukerens egen"_s)) +
           (host.isEmpty() ? QString() : u" på "_s + host);
}

bool hasTables(const ado::DataSource &source)
{
    return !ado::openSession(source)->catalog().tables().empty();
}

/// The order of foreign keys does not matter: what cannot be dropped yet can be in a later round.
void dropTables(ado::Session &session)
{
    bool dropped = true;
    while (dropped) {
        dropped = false;
        const ado::dialect::Catalog catalog = session.catalog();
        for (const ado::dialect::TableInfo &table : catalog.tables()) {
            const QString statement = u"DROP TABLE [%1]"_s.arg(table.name);
            dropped = passOver([&] { session.execute(statement); }) == 0 || dropped;
        }
    }
}

} // namespace

database::Place database::locate(const QString &dsn)
{
    try {
        Place place;
        place.connectionString = connectionStringOf(dsn);
        place.source = ado::resolve(ado::ConnectionString(place.connectionString));
        place.name = nameOf(place.source);
        return place;
    } catch (const RunTimeError &error) {
        throw HostError(error.description());
    }
}

bool database::areSame(const Place &a, const Place &b)
{
    if (a.source.kind != b.source.kind)
        return false;
    if (a.isFile()) {
        const QString file = QFileInfo(a.source.location).canonicalFilePath();
        return !file.isEmpty() && file == QFileInfo(b.source.location).canonicalFilePath();
    }
    const QStringList address{u"host"_s, u"hostaddr"_s, u"port"_s};
    return databaseOf(a.source) == databaseOf(b.source) &&
           std::all_of(address.begin(), address.end(), [&](const QString &keyword) {
               return a.source.server.value(keyword) == b.source.server.value(keyword);
           });
}

bool database::isMade(const QString &path)
{
    return QFileInfo(path).size() > 0 && !QFileInfo::exists(path + kMarkSuffix);
}

bool database::hasModuleTables(const Place &place)
{
    bool hasAll = false;
    passOver([&] {
        const ado::dialect::Catalog catalog = ado::openSession(place.source)->catalog();
        hasAll = std::ranges::all_of(kModuleTables, [&](QLatin1StringView table) {
            return catalog.table(QString(table)) != nullptr;
        });
    });
    return hasAll;
}

database::MakingMark::MakingMark(const QString &path)
    : m_name(QFile::encodeName(path + kMarkSuffix))
{
    while (!lock()) {
    }
    char cutShort = 0;
    m_wasCutShort = pread(m_file, &cutShort, 1, 0) == 1;
    if (pwrite(m_file, "x", 1, 0) != 1 || fsync(m_file) != 0) {
        close(m_file);
        throw HostError(u"filen %1 lot seg ikke skrive"_s.arg(QFile::decodeName(m_name)));
    }
}

/// False when the mark went with its maker between the opening and the lock.
bool database::MakingMark::lock()
{
    m_file = open(m_name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
    if (m_file < 0)
        throw HostError(u"filen %1 lot seg ikke lage"_s.arg(QFile::decodeName(m_name)));
    if (flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        close(m_file);
        throw HostError(
            u"et annet program lager den samme databasen nå (%1)"_s.arg(QFile::decodeName(m_name)));
    }
    struct stat opened = {};
    struct stat named = {};
    if (fstat(m_file, &opened) == 0 && stat(m_name.constData(), &named) == 0 &&
        opened.st_dev == named.st_dev && opened.st_ino == named.st_ino)
        return true;
    close(m_file);
    return false;
}

database::MakingMark::~MakingMark()
{
    unlink(m_name.constData());
    close(m_file);
}

database::NewDatabase::NewDatabase(const Place &place) : m_place(place)
{
    if (place.isFile() && !isMade(place.source.location)) {
        makeFile();
        return;
    }
    if (place.isFile() && !QFileInfo(place.source.location).isFile())
        throw HostError(u"%1 er ingen vanlig fil"_s.arg(place.name));
    bool mayBeUsed = false;
    try {
        mayBeUsed = !hasTables(place.source);
    } catch (const RunTimeError &error) {
        if (!place.isFile())
            throw HostError(error.description());
    }
    if (!mayBeUsed && place.isFile())
        throw HostError(u"%1 finnes og har innhold; velg en ny fil"_s.arg(place.name));
    if (!mayBeUsed)
        throw HostError(u"%1 har tabeller fra før; velg en tom database"_s.arg(place.name));
}

void database::NewDatabase::makeFile()
{
    const QFileInfo info(m_place.source.location);
    if (info.exists() && !info.isFile())
        throw HostError(u"%1 er ingen vanlig fil"_s.arg(m_place.name));
    if (!QDir().mkpath(info.absolutePath()))
        throw HostError(u"mappen %1 lot seg ikke lage"_s.arg(info.absolutePath()));
    m_mark.emplace(info.filePath());
    // Another maker may have come to its end since the first look.
    const qint64 size = QFileInfo(info.filePath()).size();
    if (m_mark->wasCutShort()) {
        removeFiles();
    } else if (size > 0) {
        throw HostError(u"%1 finnes og har innhold; velg en ny fil"_s.arg(m_place.name));
    }
    m_fileWasThere = QFileInfo::exists(info.filePath());
    if (!QFile(info.filePath()).open(QIODevice::ReadWrite))
        throw HostError(u"filen %1 lot seg ikke lage"_s.arg(m_place.name));
    m_isNewFile = true;
}

void database::NewDatabase::removeFiles() const
{
    for (const QLatin1StringView suffix : {""_L1, "-wal"_L1, "-shm"_L1})
        QFile::remove(m_place.source.location + suffix);
}

database::NewDatabase::~NewDatabase()
{
    if (m_kept)
        return;
    if (!m_isNewFile) {
        if (m_tablesTaken)
            passOver([this] { dropTables(*ado::openSession(m_place.source)); });
        return;
    }
    // An idle session may still write when it closes, so the file goes rather than its content.
    removeFiles();
    if (m_fileWasThere)
        QFile(m_place.source.location).open(QIODevice::WriteOnly);
}

QString database::reasonForFailedOpen(const QString &connectionString)
{
    try {
        ado::Connection().open(connectionString);
    } catch (const RunTimeError &error) {
        return error.description();
    }
    return {};
}

QString database::reasonForFailedStart(const QString &connectionString)
{
    try {
        ado::Connection connection;
        connection.open(connectionString);
        for (const QLatin1StringView table :
             {"Klient"_L1, "KundeLev"_L1, "Kontoplan"_L1, "Hovedbok"_L1})
            connection.execute(u"SELECT COUNT (*) FROM "_s + table);
        // A change that hits no row still tells whether the database may be written.
        connection.execute(u"UPDATE Klient SET Navn=Navn WHERE KlientNr IS NULL"_s);
        // What the module makes is tried and taken back when the connection goes.
        connection.beginTrans();
        const auto attempt = [&](const QString &statement, int isThere) {
            try {
                connection.execute(statement);
            } catch (const RunTimeError &error) {
                if (error.number() != isThere)
                    throw;
            }
        };
        for (const QLatin1StringView table : kModuleTables)
            attempt(u"CREATE TABLE %1 (ID LONG)"_s.arg(table), ado::errors::kTableExists);
        attempt(u"ALTER TABLE Klient ADD COLUMN FakTekst2 TEXT(255)"_s, ado::errors::kColumnExists);
    } catch (const RunTimeError &error) {
        return error.description();
    }
    return {};
}
