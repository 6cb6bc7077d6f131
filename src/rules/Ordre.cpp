#include "rules/Ordre.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

QString statusSql(QStringView status, const QString &vilkar)
{
    return u"UPDATE Ordre SET "_s + StatusLik(status) + u" WHERE "_s + vilkar;
}

} // namespace

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

QString StatusLik(QStringView status)
{
    return u"OrdreStatus='"_s + status.toString() + u'\'';
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
    return statusSql(ordrestatus::kFakturert, u"OrdreNr="_s + ordreNr);
}

QString FakturertSql(const QString &id)
{
    return statusSql(ordrestatus::kFakturert, u"ID="_s + id);
}

QString BokfortSql(const QString &id)
{
    return statusSql(ordrestatus::kBokfort, u"ID="_s + id);
}

QString BetaltSql(qint32 id)
{
    return statusSql(ordrestatus::kBetalt, u"ID="_s + numberToText(id));
}

QString ErFakturertVilkar(const QString &id)
{
    return u" AND "_s + StatusLik(ordrestatus::kFakturert) + u" AND ID="_s + id;
}
