#include "platform/ado/Provider.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/OdbcIni.h"
#include "platform/ado/postgres/Postgres.h"
#include "platform/ado/sqlite/SqliteSession.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

/// What remains of a path behind the folders that are there.
QString missingPart(const QString &path)
{
    qsizetype known = 0;
    for (qsizetype slash = path.indexOf(u'/'); slash >= 0; slash = path.indexOf(u'/', known)) {
        if (slash > 0 && !QFileInfo(path.first(slash)).isDir())
            break;
        known = slash + 1;
    }
    return path.sliced(known);
}

/// A name that leads nowhere is shown, so that the user sees his mistake, unless it may be a
/// misspelt address or connection string.
void requireShowable(const QString &name)
{
    if (!isShowable(name))
        throw RunTimeError(errors::kUnspecified,
                           u"Databasen finnes ikke. Navnet vises ikke, for det kan inneholde et "
                           "passord; adressen til en databasetjener skrives «postgresql://…»."_s);
}

DataSource sqliteFile(const QString &path, ConnectionString connectionString)
{
    if (QDir::isRelativePath(path) && QDir::currentPath().isEmpty()) {
        requireShowable(path);
        throw RunTimeError(errors::kUnspecified,
                           u"Databasen «%1» finnes ikke: arbeidsmappen er borte."_s.arg(path));
    }
    DataSource source;
    source.location = QDir::cleanPath(QDir().absoluteFilePath(path));
    // The current folder may change between two openings, so the key holds the absolute path.
    connectionString.setValue(u"dsn", source.location);
    source.key = connectionString.normalized();
    return source;
}

DataSource postgresServer(QMap<QString, QString> keywords, const ConnectionString &connectionString)
{
    for (const QStringView name : {u"user", u"uid"}) {
        if (const QString user = connectionString.value(name); !user.isEmpty())
            keywords.insert(u"user"_s, user);
    }
    for (const QStringView name : {u"password", u"pwd"}) {
        if (const QString password = connectionString.value(name); !password.isEmpty())
            keywords.insert(u"password"_s, password);
    }
    DataSource source;
    source.kind = DataSource::Kind::PostgresServer;
    for (auto pair = keywords.cbegin(); pair != keywords.cend(); ++pair)
        source.key += pair.key() + u'=' + pair.value() + QChar(u'\0');
    source.server = std::move(keywords);
    return source;
}

QMap<QString, QString> serverOf(const OdbcEntries &entries)
{
    struct Entry
    {
        QString keyword;
        std::initializer_list<QString> names; // the first one that is given counts
    };
    const Entry known[] = {
        {u"host"_s, {u"servername"_s, u"server"_s}},
        {u"port"_s, {u"port"_s}},
        {u"dbname"_s, {u"database"_s}},
        {u"user"_s, {u"username"_s, u"uid"_s, u"user"_s}},
        {u"password"_s, {u"password"_s, u"pwd"_s}},
        {u"sslmode"_s, {u"sslmode"_s}},
    };
    QMap<QString, QString> keywords;
    for (const Entry &entry : known) {
        for (const QString &name : entry.names) {
            const auto found = entries.find(name);
            if (found != entries.end() && !found->second.isEmpty() &&
                !keywords.contains(entry.keyword))
                keywords.insert(entry.keyword, found->second);
        }
    }
    return keywords;
}

DataSource fromOdbcIni(const QString &name, const ConnectionString &connectionString)
{
    const std::optional<OdbcEntries> entries = odbcDataSource(name);
    if (!entries) {
        requireShowable(name);
        throw RunTimeError(errors::kUnspecified,
                           u"Datakilden «%1» finnes verken som fil eller i odbc.ini."_s.arg(name));
    }
    const auto value = [&](const QString &keyword) {
        const auto found = entries->find(keyword);
        return found == entries->end() ? QString() : found->second;
    };
    const QString driver = value(u"driver"_s);
    const QString database = value(u"database"_s);
    if (database.isEmpty())
        throw RunTimeError(errors::kUnspecified,
                           u"Datakilden «%1» i odbc.ini mangler «Database»."_s.arg(name));
    if (driver.contains(u"sqlite", Qt::CaseInsensitive))
        return sqliteFile(database, connectionString);
    if (driver.contains(u"postgre", Qt::CaseInsensitive) ||
        driver.contains(u"psql", Qt::CaseInsensitive))
        return postgresServer(serverOf(*entries), connectionString);
    throw RunTimeError(
        errors::kUnspecified,
        u"Datakilden «%1» i odbc.ini har en driver som ikke støttes: «%2»."_s.arg(name, driver));
}

} // namespace

bool isShowable(const QString &file)
{
    static const QRegularExpression traces(u"[@:=;?&]|pass|pwd"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    return QFileInfo::exists(file) || !traces.match(missingPart(file)).hasMatch();
}

bool isServerAddress(QStringView name)
{
    return name.startsWith(u"postgres", Qt::CaseInsensitive) && name.contains(u':');
}

DataSource resolve(const ConnectionString &connectionString)
{
    const QString name = connectionString.value(u"dsn");
    if (name.isEmpty())
        throw RunTimeError(errors::kUnspecified,
                           u"Tilkoblingsstrengen navngir ingen datakilde («dsn=…»)."_s);
    const auto byTextAlone = [](DataSource source) {
        source.byTextAlone = true;
        return source;
    };
    if (name.startsWith(u"postgresql://") || name.startsWith(u"postgres://"))
        return byTextAlone(postgresServer(postgresKeywords(name), connectionString));
    if (isServerAddress(name))
        throw RunTimeError(errors::kUnspecified,
                           u"Adressen til en databasetjener skrives «postgresql://…»."_s);
    if (name.startsWith(u'/'))
        return byTextAlone(sqliteFile(name, connectionString));
    if (name.contains(u'/') || QFileInfo::exists(name))
        return sqliteFile(name, connectionString);
    return fromOdbcIni(name, connectionString);
}

std::unique_ptr<Session> openSession(const DataSource &source)
{
    switch (source.kind) {
    case DataSource::Kind::SqliteFile:
        requireShowable(source.location); // what cannot be opened is named
        return std::make_unique<SqliteSession>(source.location);
    case DataSource::Kind::PostgresServer:
        return openPostgres(source.server);
    }
    Q_UNREACHABLE();
}

} // namespace ado
