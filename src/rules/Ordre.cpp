#include "rules/Ordre.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

qint32 NyttOrdreNr()
{
    const Ref<ado::Recordset> rs =
        gDB->GetRS(u"SELECT Max([OrdreNr])+1 AS NyttNr FROM Ordre WHERE "_s + klientVilkar(), true);
    const Value nyttNr = rs->value(u"NyttNr");
    if (!nyttNr.isNull())
        return nyttNr.toLong();

    const qint32 forste = HentFelt(u"FirstFakNr"_s, u"Klient"_s, klientVilkar()).toLong();
    return forste > 1 ? forste : 1;
}

bool KanEndres(QStringView status)
{
    return trimBlanks(status) == ordrestatus::kOrdre;
}

bool KanMerkesBetalt(QStringView status)
{
    return status == ordrestatus::kFakturert || status == ordrestatus::kBokfort;
}

QString FakturertSqlForOrdreNr(const QString &ordreNr)
{
    return u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE OrdreNr="_s + ordreNr;
}

QString FakturertSql(const QString &id)
{
    return u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE ID="_s + id;
}

QString BokfortSql(const QString &id)
{
    return u"UPDATE Ordre SET OrdreStatus='Bokført' WHERE ID="_s + id;
}

QString BetaltSql(qint32 id)
{
    return u"UPDATE Ordre SET OrdreStatus='Betalt' WHERE ID="_s + numberToText(id);
}

QString ErFakturertVilkar(const QString &id)
{
    return u" AND OrdreStatus='Fakturert' AND ID="_s + id;
}
