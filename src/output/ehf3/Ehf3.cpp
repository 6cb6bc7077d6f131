#include "output/ehf3/Ehf3.h"

#include "output/ehf3/Dokument.h"
#include "output/ehf3/Mangler.h"
#include "output/ehf3/Oversettelse.h"
#include "runtime/WholeFile.h"

#include <QSaveFile>

using namespace Qt::StringLiterals;

Ehf3 Ehf3Skriver::lag(qint32 ordreNr)
{
    try {
        const ehf3::Grunnlag *ordre = m_leser.les(ordreNr);
        if (!ordre)
            return {{}, u"Ordre %1 finnes ikke for klient %2"_s.arg(ordreNr).arg(m_klient)};
        const ehf3::Dokument dokument = ehf3::lagDokument(*ordre);
        const QStringList mangler = ehf3::manglerI(dokument);
        if (!mangler.isEmpty())
            return {{}, mangler.join(u'\n')};
        return {ehf3::skrivXml(dokument), {}};
    } catch (const RunTimeError &error) {
        return {
            {},
            u"Ordre %1 lot seg ikke lese: %2"_s.arg(ordreNr).arg(error.description().simplified())};
    }
}

QString Ehf3Skriver::skriv(qint32 ordreNr, const QString &fil)
{
    const Ehf3 ehf = lag(ordreNr);
    if (!ehf.mangler.isEmpty())
        return ehf.mangler;
    QSaveFile ut(fil);
    // The document is whole already, so a buffer would only be a copy of it.
    if (!ut.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !writeWhole(ut, ehf.dokument))
        return u"Filen %1 lot seg ikke skrive"_s.arg(fil);
    return {};
}
