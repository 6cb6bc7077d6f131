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
bool erPrivat(const QString &mappe)
{
    constexpr auto kAndre = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                            QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    const QFileInfo omMappen(mappe);
    return omMappen.ownerId() == ::geteuid() && !(omMappen.permissions() & kAndre);
}

QString logofil()
{
    return TempMappe() + u"output.bin"_s;
}

void skrivFil(const QString &sti, const QByteArray &innhold)
{
    QFile fil(paths::toSystem(sti));
    if (!fil.open(QIODevice::WriteOnly) || fil.write(innhold) != innhold.size() || !fil.flush())
        throw RunTimeError(errors::kPathAccess);
}

QByteArray lesFil(const QString &sti)
{
    QFile fil(paths::toSystem(sti));
    if (!fil.open(QIODevice::ReadOnly))
        throw RunTimeError(errors::kPathAccess);
    return fil.readAll();
}

} // namespace

QString TempMappe()
{
    QString mappe = QDir::tempPath();
    if (!mappe.isEmpty() && !erPrivat(mappe))
        mappe = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return mappe.isEmpty() ? QString() : paths::toModule(mappe) + u'\\';
}

QString LesLogo()
{
    Ref<ado::Recordset> rs;
    passOver([&] { rs = gDB->GetRS(u"SELECT Logo FROM Klient WHERE "_s + klientVilkar(), false); });
    QString sti;
    if (enters([&] { return !rs->eof(); })) {
        sti = logofil();
        QFile::remove(paths::toSystem(sti));
        QByteArray innhold;
        passOver([&] { innhold = rs->value(u"Logo").toBytes(); });
        if (passOver([&] { skrivFil(sti, innhold); }) != 0)
            QFile::remove(paths::toSystem(sti)); // a part of a picture is not to be taken for it
        passOver([&] { rs->close(); });
    }
    return sti;
}

void SkrivLogo(const PictureBox &boks)
{
    QString feil;
    try {
        const Ref<ado::Recordset> rs =
            gDB->GetRS(u"SELECT KlientNr,Logo FROM Klient WHERE "_s + klientVilkar(), false);
        const QString sti = logofil();
        savePicture(boks.picture(), paths::toSystem(sti));
        rs->setValue(u"Logo", Value(lesFil(sti)));
        if (gDB->PutRS(rs))
            return;
    } catch (const RunTimeError &feilen) {
        feil = QString::number(feilen.number()) + u' ' + feilen.description();
    }
    // A refused write has raised nothing, and its text is for nobody.
    (void)gDB->LastError();
    if (!feil.isEmpty())
        MsgBox(u"Feil ved lagring av logo: "_s + feil, msgbox::kInformation);
}
