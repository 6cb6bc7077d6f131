#include "output/ehf/EhfFil.h"

#include "output/ehf/mEHF.h"
#include "runtime/RunTimeError.h"

#include <QIODevice>

using namespace Qt::StringLiterals;

namespace {

void skrivLinje(QIODevice &fil, const QString &tekst)
{
    const QByteArray tegn = EhfTegn(tekst);
    if (fil.write(tegn) != tegn.size() || fil.write("\r\n") != 2)
        throw RunTimeError(errors::kPathAccess);
}

} // namespace

void SkrivEhfFil(QIODevice &fil, int kreditnota, const QString &ordreNr)
{
    const QString stilark =
        kreditnota == 1 ? u"EHF-kreditnota_små.xslt"_s : u"EHF-faktura_små.xslt"_s;
    skrivLinje(fil, EhfHode(kreditnota, stilark));
    skrivLinje(fil, EhfDokument(kreditnota, ordreNr));
    skrivLinje(fil, EhfLinjer(kreditnota, ordreNr));
    skrivLinje(fil, EhfSlutt(kreditnota));
}
