#pragma once

#include "platform/ado/ConnectionString.h"

#include <QMap>
#include <QString>

#include <memory>

namespace ado {

class Session;

/// The place that a connection string names: which kind of database, and where.
struct DataSource
{
    enum class Kind { SqliteFile, PostgresServer };

    Kind kind = Kind::SqliteFile;
    QString location; ///< of a SqliteFile: the absolute path
    /// Of a PostgresServer: libpq's keywords, the password among them.
    QMap<QString, QString> server;
    QString key; ///< the same for all connection strings that may share a session
    /// The connection string alone has decided: an address, or a file by its whole path. Else the
    /// current folder or an odbc.ini has had a say, and may have another one next time.
    bool byTextAlone = false;
};

/// False for the name of a file that is not there, when it may be a misspelt address or connection
/// string and hold a password: no message is to show it.
[[nodiscard]] bool isShowable(const QString &file);

/// True for what stands for the address of a PostgreSQL server, also where it is misspelt: it is
/// never taken for the name of a file, which would be shown, since an address may hold a password.
[[nodiscard]] bool isServerAddress(QStringView name);

/// Finds out what the keyword "dsn" names:
///   postgresql:// or postgres:// and what follows       the database on a PostgreSQL server
///   an existing file, or anything with a slash in it    a SQLite file, from the current folder
///   anything else                                       a data source of an odbc.ini
/// A data source (OdbcIni.h) has a Driver for SQLite (Database is the file) or PostgreSQL
/// (Database, Servername or Server, Port, UserName, UID or User, Password or PWD, SSLmode).
/// User and password of the connection string (uid or user, pwd or password) win over those found
/// there. Raises kUnspecified when there is no "dsn" and when its name leads nowhere. Nothing is
/// opened.
[[nodiscard]] DataSource resolve(const ConnectionString &connectionString);

/// A new session with the source. Raises kUnspecified when it cannot be reached or is no database.
[[nodiscard]] std::unique_ptr<Session> openSession(const DataSource &source);

} // namespace ado
