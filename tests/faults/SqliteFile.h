#pragma once

#include <QString>
#include <QTemporaryDir>

namespace faults {

/// A prepared database (see prepareDatabase) in a SQLite file of its own. It lies in memory where
/// the machine offers that: what these tests break are processes and calls, not the machine, and
/// waiting for a disk thousands of times would show nothing more.
class SqliteFile
{
public:
    SqliteFile();

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("data.db")); }
    [[nodiscard]] QString connectionString() const { return QStringLiteral("dsn=") + path(); }
    /// Puts the file back to as it was prepared; nobody may have it open.
    void restore();
    /// Makes it an empty database; the same holds.
    void clear();
    /// What SQLite itself finds wrong with the file, read past any file layer in force; "ok".
    [[nodiscard]] QString integrity() const;

private:
    static QString inMemory();
    void write(const QByteArray &content);

    QTemporaryDir m_folder{inMemory()};
    QByteArray m_prepared;
};

} // namespace faults
