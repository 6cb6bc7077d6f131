#include "benchmarks/support/FileDatabase.h"

#include "platform/ado/sqlite/NorwegianCollation.h"
#include "platform/ado/sqlite/SqliteFunctions.h"

namespace bench {

namespace {

QString emptyFile(const QString &path)
{
    makeEmptyFile(path);
    return path;
}

} // namespace

void teachModuleWords(const PlainDatabase &database)
{
    ado::addNorwegianCollation(database.handle());
    ado::addFunctions(database.handle());
}

FileDatabase::FileDatabase() : m_plain(emptyFile(path()))
{
    teachModuleWords(m_plain);
    send("PRAGMA synchronous=OFF");
}

QString FileDatabase::copyTo(const QString &name)
{
    const QString copy = m_folder.filePath(name);
    send("VACUUM INTO '" + QFile::encodeName(copy) + '\'');
    return copy;
}

} // namespace bench
