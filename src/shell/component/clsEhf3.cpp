#include "shell/component/clsEhf3.h"

#include "output/ehf3/Ehf3.h"

QString clsEhf3::SkrivEhf3(qint16 klient, qint32 ordreNr, const QString &fil)
{
    return Ehf3Skriver(klient).skriv(ordreNr, fil);
}
