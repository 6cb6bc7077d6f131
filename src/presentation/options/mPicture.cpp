#include "presentation/options/mPicture.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "platform/forms/MsgBox.h"
#include "platform/forms/PictureBox.h"
#include "platform/pictures/PictureFile.h"
#include "runtime/Paths.h"
#include "state/SharedState.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Whether nobody but this user (and root) reaches what lies in the folder.
bool isPrivate(const QString &folder)
{
    constexpr auto kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                             QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    const QFileInfo info(folder);
    return info.ownerId() == ::geteuid() && !(info.permissions() & kOthers);
}

QString logoFile()
{
    return TempMappe() + u"output.bin"_s;
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(paths::toSystem(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        throw RunTimeError(errors::kPathAccess);
}

QByteArray readFile(const QString &path)
{
    QFile file(paths::toSystem(path));
    if (!file.open(QIODevice::ReadOnly))
        throw RunTimeError(errors::kPathAccess);
    return file.readAll();
}

} // namespace

QString TempMappe()
{
    QString folder = QDir::tempPath();
    if (!folder.isEmpty() && !isPrivate(folder))
        folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return folder.isEmpty() ? QString() : paths::toModule(folder) + u'\\';
}

QString LesLogo()
{
    Ref<ado::Recordset> rs;
    passOver([&] { rs = gDB->GetRS(u"SELECT Logo FROM Klient WHERE "_s + klientVilkar(), false); });
    QString path;
    if (enters([&] { return !rs->eof(); })) {
        path = logoFile();
        QFile::remove(paths::toSystem(path));
        QByteArray stream;
        passOver([&] { stream = rs->value(u"Logo").toBytes(); });
        if (passOver([&] { writeFile(path, stream); }) != 0)
            QFile::remove(paths::toSystem(path)); // a part of a picture is not to be taken for it
        passOver([&] { rs->close(); });
    }
    return path;
}

void SkrivLogo(const PictureBox &box)
{
    QString failure;
    try {
        const Ref<ado::Recordset> rs =
            gDB->GetRS(u"SELECT KlientNr,Logo FROM Klient WHERE "_s + klientVilkar(), false);
        const QString path = logoFile();
        savePicture(box.picture(), paths::toSystem(path));
        rs->setValue(u"Logo", Value(readFile(path)));
        if (gDB->PutRS(rs))
            return;
    } catch (const RunTimeError &error) {
        failure = QString::number(error.number()) + u' ' + error.description();
    }
    // A refused write has raised nothing, and its text is for nobody.
    (void)gDB->LastError();
    if (!failure.isEmpty())
        MsgBox(u"Feil ved lagring av logo: "_s + failure, msgbox::kInformation);
}
