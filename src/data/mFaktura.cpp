#include "data/mFaktura.h"

#include "data/clsAdoUtils.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

QString klientVilkar()
{
    return u"KlientNr="_s + numberToText(gKlient);
}

Value HentFelt(const QString &field, const QString &table, const QString &where)
{
    const Ref<ado::Recordset> rs =
        gDB->GetRS(u"SELECT "_s + field + u" FROM "_s + table + u" WHERE "_s + where, false);
    if (!gDB->EmptyRS(rs) && !rs->isNull(0))
        return rs->value(0);
    // The column's type is known without any row.
    return rs->field(0).type == DataType::Integer ? Value(qint32{0}) : Value(QString());
}

QString TallTilSql(const QString &text, QStringView format)
{
    Currency amount;
    if (!text.isEmpty())
        passOver([&] { amount = toCurrency(text); });
    QString result;
    passOver([&] { result = BelopTilSql(amount, format); });
    return result;
}

QString BelopTilSql(Currency amount, QStringView format)
{
    return Format(amount, format).replace(u',', u'.');
}

QString HeltallTilSql(const QString &text)
{
    qint32 number = 0;
    if (!text.isEmpty())
        passOver([&] { number = toLong(text); });
    return QString::number(number);
}
