#pragma once

#include <QString>

#include <memory>

struct sqlite3;
struct stat;

namespace ado {

/// An open SQLite file with the settings that the module relies on, each verified: write-ahead log
/// with full synchronisation, foreign keys kept, a name between double quotes never taken for a
/// text, no second database attached, nothing in the file trusted to run. A lock of another
/// connection is waited for by the clock in force, ten seconds at most.
class SqliteDatabase
{
public:
    /// Opens the file at the absolute `path`; it is never created, but an empty one is an empty
    /// database. A file that this user may not write, or whose folder he may not, is opened for
    /// reading. Raises kUnspecified, naming the file, when it is no database that can be read.
    explicit SqliteDatabase(const QString &path);

    [[nodiscard]] sqlite3 *handle() const { return m_handle.get(); }
    [[nodiscard]] bool inTransaction() const;

    /// Another number after each change of the file, by this connection or any other; to be asked
    /// while a statement stands on the snapshot that it tells of.
    [[nodiscard]] quint32 version() const;

    /// Runs one statement of our own that returns no rows.
    void run(const char *sql);

    /// False when the path no longer leads to the file that was opened, or the right to it has
    /// changed. A database opened for reading only looks for the folder's right as well.
    [[nodiscard]] bool isCurrent() const;
    /// True when the file was opened as one that nobody changes, for want of the right to share it;
    /// such a view must not be kept.
    [[nodiscard]] bool isFrozen() const { return m_frozen; }

private:
    struct Closer
    {
        void operator()(sqlite3 *database) const noexcept;
    };

    void open(const QByteArray &name, int flags);
    void openForReading(const QByteArray &path);
    void configure();
    void makeDurable();

    std::unique_ptr<sqlite3, Closer> m_handle;
    QByteArray m_path;
    /// What tells that a file is the same and that the same user has the same rights to it.
    struct Identity
    {
        quint64 device = 0;
        quint64 inode = 0;
        quint32 mode = 0;
        quint32 owner = 0;
        quint32 group = 0;
        quint32 user = 0;

        friend bool operator==(const Identity &, const Identity &) = default;
    };
    static Identity identityOf(const struct stat &info);

    Identity m_identity;
    bool m_writable = false;
    bool m_frozen = false;
};

} // namespace ado
