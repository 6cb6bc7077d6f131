#include "platform/grid/CellType.h"

#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "runtime/MachineLocale.h"

#include <QTime>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The amount of a text in the machine's form; nothing when it is no number.
std::optional<Currency> readNumber(QStringView text)
{
    std::optional<Currency> amount;
    passOver([&] { amount = toCurrency(text); });
    return amount;
}

/// The amount with `decimals` digits (0 to 4), rounded half away from zero.
QString writeNumber(Currency amount, int decimals, QChar decimalSign, QStringView thousandsSign)
{
    quint64 unit = 1;
    for (int i = decimals; i < 4; ++i)
        unit *= 10;
    const qint64 count = amount.tenThousandths();
    const quint64 magnitude = count < 0 ? ~quint64(count) + 1 : quint64(count);
    const quint64 rounded = (magnitude + unit / 2) / unit;

    QString digits = QString::number(rounded).rightJustified(decimals + 1, u'0');
    const qsizetype whole = digits.size() - decimals;
    if (decimals > 0)
        digits.insert(whole, decimalSign);
    for (qsizetype at = whole - 3; at > 0; at -= 3)
        digits.insert(at, thousandsSign.toString());
    return count < 0 && rounded != 0 ? u'-' + digits : digits;
}

std::optional<QString> acceptedDate(const CellType &type, const QString &typed)
{
    std::optional<QString> taken;
    passOver([&] {
        const QDate date = toDate(typed).date();
        if (!type.minimum.isEmpty() && date < toDate(type.minimum).date())
            return;
        if (!type.maximum.isEmpty() && date > toDate(type.maximum).date())
            return;
        taken = Format(date, u"dd.mm.yyyy");
    });
    return taken;
}

std::optional<QString> acceptedTime(const CellType &type, const QString &typed)
{
    const QTime time = QTime::fromString(typed.trimmed(), "H'%1'm"_L1.arg(type.timeSign));
    if (!time.isValid())
        return std::nullopt;
    return time.toString("HH'%1'mm"_L1.arg(type.timeSign));
}

} // namespace

CellType CellType::ofNumber(int number)
{
    CellType type;
    type.kind = CellKind(number);
    switch (type.kind) {
    case CellKind::Integer:
        type.decimals = 0;
        return type;
    case CellKind::Date:
    case CellKind::Edit:
    case CellKind::Float:
    case CellKind::Time:
    case CellKind::ComboBox:
    case CellKind::CheckBox:
        return type;
    }
    throw RunTimeError(errors::kInvalidCall);
}

QString CellType::shown(const QString &text) const
{
    return written(text, shownDecimals.value_or(decimals));
}

QString CellType::edited(const QString &text) const
{
    return written(text, decimals);
}

QString CellType::written(const QString &text, int digits) const
{
    if (!isNumber() || text.isEmpty())
        return text;
    const std::optional<Currency> amount = readNumber(text);
    if (!amount)
        return text;
    return writeNumber(*amount, digits, decimalSign,
                       showThousands ? QStringView(&thousandsSign, 1) : QStringView());
}

std::optional<QString> CellType::accepted(const QString &typed) const
{
    if (typed.isEmpty())
        return typed;
    if (kind == CellKind::Date)
        return acceptedDate(*this, typed);
    if (kind == CellKind::Time)
        return acceptedTime(*this, typed);
    if (kind == CellKind::CheckBox)
        return typed == "0"_L1 || typed == "1"_L1 ? std::optional(typed) : std::nullopt;
    if (kind == CellKind::ComboBox && !editable)
        return items.split(u'\t').contains(typed) ? std::optional(typed) : std::nullopt;
    if (!isNumber())
        return typed;

    const QChar machinePoint = MachineLocale::current().decimalPoint;
    QString text = typed;
    text.remove(thousandsSign);
    text.replace(decimalSign, machinePoint);
    const std::optional<Currency> amount = readNumber(text);
    if (!amount)
        return std::nullopt;
    return writeNumber(*amount, decimals, machinePoint, showThousands ? u" " : u"");
}

bool CellType::takesCharacter(QChar c) const
{
    return (c >= u'0' && c <= u'9') || c == u'-' || c == u'\u2212' || c == thousandsSign ||
           c == u' ' || c == u'\u00a0' || ((c == decimalSign || c == u'.') && decimals > 0);
}
