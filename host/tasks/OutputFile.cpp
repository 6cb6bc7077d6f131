#include "host/tasks/OutputFile.h"

#include "data/clsAdoUtils.h"
#include "host/tasks/HostError.h"
#include "platform/ado/Provider.h"
#include "state/SharedState.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// True for the file of the database in use and the files that SQLite keeps beside it.
bool belongsToDatabase(const QFileInfo &file)
{
    const ado::DataSource source = ado::resolve(ado::ConnectionString(gDB->ConnectionString()));
    if (source.kind != ado::DataSource::Kind::SqliteFile)
        return false;
    const QFileInfo database(QFileInfo(source.location).canonicalFilePath());
    const QString path = file.exists() ? file.canonicalFilePath() : file.absoluteFilePath();
    if (QFileInfo(path).dir().canonicalPath() != database.dir().canonicalPath())
        return false;
    const QString name = QFileInfo(path).fileName();
    const auto isName = [&](QLatin1StringView suffix) {
        return name == database.fileName() + suffix;
    };
    return isName(""_L1) || isName("-wal"_L1) || isName("-shm"_L1) || isName("-journal"_L1) ||
           isName("-tur"_L1);
}

} // namespace

void checkTarget(const QString &target, bool replace)
{
    const QFileInfo existing(target);
    // A link that leads nowhere stands in the way as much as a folder does.
    if ((existing.exists() || existing.isSymLink()) && !existing.isFile())
        throw HostError(u"%1 er ingen vanlig fil"_s.arg(target));
    if (belongsToDatabase(existing))
        throw HostError(u"%1 hører til databasen"_s.arg(target));
    if (existing.exists() && !replace)
        throw HostError(u"filen %1 finnes fra før; --erstatt skriver over den"_s.arg(target));
    if (!existing.dir().exists())
        throw HostError(u"mappen %1 finnes ikke"_s.arg(existing.path()));
}
