#include "faults/SqliteFile.h"

#include "faults/Work.h"
#include "platform/ado/sqlite/NorwegianCollation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace faults {

namespace {

void collect(const char *text, QStringList *lines)
{
    *lines += QString::fromUtf8(text);
}

} // namespace

QString SqliteFile::inMemory()
{
    const QFileInfo memory(u"/dev/shm"_s);
    return (memory.isWritable() ? memory.filePath() : QDir::tempPath()) + u"/faults-XXXXXX"_s;
}

SqliteFile::SqliteFile()
{
    clear();
    prepareDatabase(connectionString());
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly))
        ADD_FAILURE() << "the database is gone";
    m_prepared = file.readAll();
}

void SqliteFile::restore()
{
    write(m_prepared);
}

void SqliteFile::clear()
{
    write({});
}

void SqliteFile::write(const QByteArray &content)
{
    for (const QString &name : {path(), path() + u"-wal"_s, path() + u"-shm"_s})
        QFile::remove(name);
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        ADD_FAILURE() << "the database cannot be put back";
}

QString SqliteFile::integrity() const
{
    sqlite3 *opened = nullptr;
    const int code = sqlite3_open_v2(QFile::encodeName(path()).constData(), &opened,
                                     SQLITE_OPEN_READWRITE, "unix");
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> database(opened, sqlite3_close);
    if (code != SQLITE_OK)
        return QString::fromUtf8(sqlite3_errstr(code));
    ado::addNorwegianCollation(database.get()); // by which the indexes of text are sorted
    QStringList lines;
    for (const char *check : {"PRAGMA integrity_check", "PRAGMA foreign_key_check"}) {
        char *message = nullptr;
        const auto line = [](void *out, int, char **values, char **) {
            collect(values[0], static_cast<QStringList *>(out));
            return 0;
        };
        sqlite3_exec(database.get(), check, line, &lines, &message);
        if (message)
            collect(message, &lines);
        sqlite3_free(message);
    }
    return lines.join(u'\n');
}

} // namespace faults
