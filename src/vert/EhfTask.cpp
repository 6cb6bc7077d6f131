#include "vert/EhfTask.h"

#include "data/clsAdoUtils.h"
#include "output/EhfFil.h"
#include "platform/ado/Provider.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"
#include "vert/HostError.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

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

QByteArray ehfDocument(int orderNumber)
{
    const Ref<ado::Recordset> order =
        gDB->GetRS(u"SELECT SumBrutto FROM Ordre WHERE KlientNr="_s + numberToText(gKlient) +
                       u" AND OrdreNr="_s + numberToText(orderNumber),
                   true);
    if (!order)
        throw HostError(gDB->LastError().simplified());
    if (gDB->EmptyRS(order)) {
        throw HostError(u"ordre %1 finnes ikke for klient %2"_s.arg(orderNumber).arg(gKlient));
    }
    try {
        const bool creditNote = order->currency(0).isNegative();
        QBuffer document;
        document.open(QIODevice::WriteOnly);
        SkrivEhfFil(document, creditNote ? 1 : 0, QString::number(orderNumber));
        return document.data();
    } catch (const RunTimeError &error) {
        throw HostError(u"dokumentet til ordre %1 lot seg ikke lage: %2 - %3"_s.arg(orderNumber)
                            .arg(error.number())
                            .arg(error.description()));
    }
}

void writeEhf(int orderNumber, const QString &target, bool replace)
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

    const QByteArray document = ehfDocument(orderNumber);
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly) || file.write(document) != document.size() ||
        !file.commit()) {
        throw HostError(u"filen %1 lot seg ikke skrive"_s.arg(target));
    }
}
