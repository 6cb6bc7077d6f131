#pragma once

#include "platform/ado/Provider.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Where the host's databases lie and how they come to be.
namespace database {

/// A database as the user named it.
struct Place
{
    QString connectionString; ///< may hold a password
    ado::DataSource source;
    QString name; ///< for messages: the file's absolute path, or database and server

    [[nodiscard]] bool isFile() const { return source.kind == ado::DataSource::Kind::SqliteFile; }
};

/// Finds out what `dsn` names: a whole connection string ("dsn=…;…"), or what may stand behind
/// "dsn=" (see ado::resolve). A bare name that no odbc.ini knows is that of a file in the current
/// folder, which may be yet to be made. Raises HostError, without a secret in its text.
[[nodiscard]] Place locate(const QString &dsn);

/// True when both are known to name the same database.
[[nodiscard]] bool areSame(const Place &a, const Place &b);

/// True when there is a file with content that is not one whose making was cut short. It is never
/// made anew.
[[nodiscard]] bool isMade(const QString &path);

/// True when the module has its tables in the database, so that a start finds them. False also when
/// the database cannot be read.
[[nodiscard]] bool hasModuleTables(const Place &place);

/// Stands beside a database file while it is being made, as "<file>.lages", and holds a lock. One
/// that is there without its maker, who was stopped, tells that the file beside it is half made.
class MakingMark
{
public:
    /// Raises HostError while another program is making the same file, or when there is no right.
    explicit MakingMark(const QString &path);
    /// Takes the mark away.
    ~MakingMark();
    MakingMark(const MakingMark &) = delete;
    MakingMark &operator=(const MakingMark &) = delete;

    /// True when an earlier maker left the file half made.
    [[nodiscard]] bool wasCutShort() const { return m_wasCutShort; }

private:
    bool lock();

    QByteArray m_name;
    int m_file = -1;
    bool m_wasCutShort = false;
};

/// A database without tables, about to be filled. Unless kept, it is taken back when this goes: a
/// file that was made here is removed, and an empty one that was there is empty again. In a
/// database that was there the tables are dropped, if the caller has called them his own: until
/// then somebody else may have made them. Sessions of the caller are closed by then.
class NewDatabase
{
public:
    /// Makes the empty file, and its folder when that is missing; an empty file, a half made one or
    /// a database without tables that is there is used. Raises HostError for everything else that
    /// is there, when there is no right to make the file, and for a server that cannot be reached.
    explicit NewDatabase(const Place &place);
    ~NewDatabase();
    NewDatabase(const NewDatabase &) = delete;
    NewDatabase &operator=(const NewDatabase &) = delete;

    /// The caller has committed the first of the tables, all of which are his from now on.
    void takeTables() { m_tablesTaken = true; }
    void keep() { m_kept = true; }

private:
    void makeFile();
    void removeFiles() const;

    const Place m_place;
    std::optional<MakingMark> m_mark;
    bool m_isNewFile = false;
    bool m_fileWasThere = false;
    bool m_tablesTaken = false;
    bool m_kept = false;
};

/// Why the database cannot be opened, as one line; empty when it can.
[[nodiscard]] QString reasonForFailedOpen(const QString &connectionString);

/// Why the module cannot start on the database, as one line: it cannot be opened, a table of the
/// parent is missing, it cannot be written, a table or column of the module cannot be made. Empty
/// when none of these is the reason.
[[nodiscard]] QString reasonForFailedStart(const QString &connectionString);

} // namespace database
