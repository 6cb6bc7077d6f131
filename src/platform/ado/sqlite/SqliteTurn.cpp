#include "platform/ado/sqlite/SqliteTurn.h"

#include "platform/ado/AdoTypes.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

/// Opens the file beside the database, made by need. Whoever may change the database may open it,
/// whoever made it; it stays, since one that waits may have it open.
int openBeside(const QString &database)
{
    // Beside the file itself, whichever link led to it, as SQLite puts its log.
    const QString real = QFileInfo(database).canonicalFilePath();
    struct stat info = {};
    ::stat(QFile::encodeName(real).constData(), &info);
    const int file = ::open(QFile::encodeName(real + u"-tur"_s).constData(),
                            O_RDONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, info.st_mode & 0777);
    if (file < 0)
        throw RunTimeError(errors::kNoPermission,
                           u"Låsen ved siden av databasen «%1» lot seg ikke åpne."_s.arg(database));
    // What was made just now is this user's own, cut by his mask. Of another's file both fail. Only
    // the superuser can give it to the database's owner, who may not open it otherwise.
    const uid_t owner = ::geteuid() == 0 ? info.st_uid : uid_t(-1);
    const bool shared =
        ::fchown(file, owner, info.st_gid) == 0 && ::fchmod(file, info.st_mode & 0777) == 0;
    static_cast<void>(shared);
    return file;
}

} // namespace

SqliteTurn::SqliteTurn(const QString &database) : m_database(database) {}

bool SqliteTurn::take()
{
    if (m_file >= 0)
        return true;
    const int file = openBeside(m_database);
    if (::flock(file, LOCK_EX | LOCK_NB) == 0)
        m_file = file;
    else
        ::close(file);
    return m_file >= 0;
}

void SqliteTurn::release() noexcept
{
    if (const int file = std::exchange(m_file, -1); file >= 0)
        ::close(file);
}

} // namespace ado
