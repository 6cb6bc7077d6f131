#include "host/tasks/SqlTask.h"

#include "data/clsAdoUtils.h"
#include "host/tasks/HostError.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

QByteArray escaped(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    bytes.replace('\\', "\\\\");
    bytes.replace('\t', "\\t");
    bytes.replace('\n', "\\n");
    bytes.replace('\r', "\\r");
    return bytes;
}

/// At least two decimals and as many of the four as are needed.
QByteArray amountText(Currency amount)
{
    const qint64 count = amount.tenThousandths();
    const quint64 magnitude = count < 0 ? 0 - quint64(count) : quint64(count);
    QByteArray decimals = QByteArray::number(magnitude % Currency::kScale).rightJustified(4, '0');
    while (decimals.size() > 2 && decimals.endsWith('0'))
        decimals.chop(1);
    return (count < 0 ? "-" : "") + QByteArray::number(magnitude / Currency::kScale) + '.' +
           decimals;
}

QByteArray fieldText(const Value &value)
{
    switch (value.type()) {
    case DataType::Empty:
        return "\\N";
    case DataType::Single:
        return QByteArray::number(value.toDouble(), 'g', 7);
    case DataType::Double:
        return QByteArray::number(value.toDouble(), 'g', 15);
    case DataType::Currency:
        return amountText(value.toCurrency());
    case DataType::Date: {
        const QDateTime moment = value.toDate();
        const bool wholeDay = moment.time() == QTime(0, 0);
        return moment.toString(wholeDay ? u"yyyy-MM-dd"_s : u"yyyy-MM-dd HH:mm:ss"_s).toUtf8();
    }
    case DataType::LongVarBinary:
        return value.toBytes().toHex();
    case DataType::SmallInt:
    case DataType::Integer:
    case DataType::Boolean:
    case DataType::VarWChar:
        break;
    }
    return escaped(value.toText());
}

[[noreturn]] void failWithLastError()
{
    throw HostError(gDB->LastError().simplified());
}

QByteArray rowsAsText(ado::Recordset &rows)
{
    QByteArray text;
    const int columns = rows.fieldCount();
    for (int column = 0; column < columns; ++column) {
        const ado::Field &field = rows.field(column);
        text += escaped(field.name) + ':' + QByteArray::number(int(field.type));
        text += column + 1 < columns ? '\t' : '\n';
    }
    for (; !rows.eof(); rows.moveNext()) {
        for (int column = 0; column < columns; ++column) {
            text += fieldText(rows.value(column));
            text += column + 1 < columns ? '\t' : '\n';
        }
    }
    return text;
}

} // namespace

QByteArray runStatement(const QString &statement)
{
    if (!statement.trimmed().startsWith("SELECT"_L1, Qt::CaseInsensitive)) {
        if (!gDB->Execute(statement))
            failWithLastError();
        return {};
    }
    const Ref<ado::Recordset> rows = gDB->GetRS(statement, true);
    if (!rows)
        failWithLastError();
    return rowsAsText(*rows);
}
