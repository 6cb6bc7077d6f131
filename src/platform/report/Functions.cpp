#include "platform/report/Functions.h"

#include "platform/report/ReportError.h"
#include "runtime/Conversions.h"
#include "runtime/Decimal.h"
#include "runtime/Format.h"
#include "runtime/Moment.h"

#include <algorithm>
#include <cmath>
#include <cstring>

using namespace Qt::StringLiterals;

namespace report {

namespace {

constexpr int kOutOfStringSpace = 14; // the platform's number for a text that is too long

using Arguments = std::vector<Value>;

QString text(const Arguments &arguments, size_t index)
{
    return textOf(arguments[index]);
}

/// A whole number of a range, as a count or position.
qsizetype count(const Arguments &arguments, size_t index)
{
    const double number = numberOf(arguments[index]);
    if (!(number >= 0 && number <= 1e9))
        throw RunTimeError(::errors::kInvalidCall);
    return qsizetype(number);
}

[[noreturn]] void raiseTooLong()
{
    throw RunTimeError(kOutOfStringSpace, u"teksten blir for lang"_s);
}

bool anyNull(const Arguments &arguments)
{
    return std::any_of(arguments.begin(), arguments.end(),
                       [](const Value &value) { return value.isNull(); });
}

Value toText(const Arguments &arguments)
{
    return Value(arguments.size() == 1 ? textOf(arguments[0])
                                       : textOf(arguments[0], text(arguments, 1)));
}

Value trim(const Arguments &arguments)
{
    return Value(text(arguments, 0).trimmed());
}

Value left(const Arguments &arguments)
{
    return Value(text(arguments, 0).left(count(arguments, 1)));
}

Value right(const Arguments &arguments)
{
    return Value(text(arguments, 0).right(count(arguments, 1)));
}

/// Characters from the one numbered `arguments[1]`, the first being 1.
Value mid(const Arguments &arguments)
{
    const qsizetype first = count(arguments, 1);
    if (first == 0)
        throw RunTimeError(::errors::kInvalidCall);
    return Value(text(arguments, 0)
                     .mid(first - 1, arguments.size() > 2 ? count(arguments, 2) : qsizetype{-1}));
}

Value length(const Arguments &arguments)
{
    return Value(double(text(arguments, 0).size()));
}

Value upper(const Arguments &arguments)
{
    return Value(text(arguments, 0).toUpper());
}

Value lower(const Arguments &arguments)
{
    return Value(text(arguments, 0).toLower());
}

Value replace(const Arguments &arguments)
{
    const QString from = text(arguments, 1);
    const QString to = text(arguments, 2);
    QString result = text(arguments, 0);
    if (from.isEmpty())
        return Value(result);
    if (to.size() > from.size() && to.size() * (result.size() / from.size()) > kLongestText)
        raiseTooLong();
    return Value(result.replace(from, to));
}

/// The texts that are not blank, each on a line of its own.
Value lines(const Arguments &arguments)
{
    QStringList kept;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const QString line = text(arguments, i).trimmed();
        if (!line.isEmpty())
            kept += line;
    }
    return Value(kept.join(u'\n'));
}

/// Fills up with a character from the left.
Value padLeft(const Arguments &arguments)
{
    const qsizetype width = count(arguments, 1);
    const QString fill = text(arguments, 2);
    if (width > kLongestText)
        raiseTooLong();
    if (fill.size() != 1)
        throw RunTimeError(::errors::kInvalidCall);
    return Value(text(arguments, 0).rightJustified(width, fill.front()));
}

Value date(const Arguments &arguments)
{
    if (anyNull(arguments))
        return {};
    int parts[3];
    for (size_t i = 0; i < 3; ++i) {
        const double number = numberOf(arguments[i]);
        if (!(number >= 1 && number <= 9999 && number == std::floor(number)))
            throw RunTimeError(::errors::kInvalidCall, u"det finnes ingen slik dato"_s);
        parts[i] = int(number);
    }
    const QDate day(parts[0], parts[1], parts[2]);
    if (!day.isValid() || day.year() < 100)
        throw RunTimeError(::errors::kInvalidCall, u"det finnes ingen slik dato"_s);
    return Value(utcMoment(day));
}

Value datePart(const Arguments &arguments, int (QDate::*part)() const)
{
    if (arguments[0].isNull())
        return {};
    const QDate day = arguments[0].toDate().date();
    return Value(double((day.*part)()));
}

Value year(const Arguments &arguments)
{
    return datePart(arguments, &QDate::year);
}

Value month(const Arguments &arguments)
{
    return datePart(arguments, &QDate::month);
}

Value day(const Arguments &arguments)
{
    return datePart(arguments, &QDate::day);
}

Value absolute(const Arguments &arguments)
{
    if (arguments[0].isNull())
        return {};
    if (arguments[0].type() == DataType::Currency)
        return Value(arguments[0].toCurrency().abs());
    return Value(std::abs(numberOf(arguments[0])));
}

/// Half away from zero, at so many decimals; an amount exactly.
Value round(const Arguments &arguments)
{
    if (anyNull(arguments))
        return {};
    const qsizetype decimals = arguments.size() > 1 ? count(arguments, 1) : 0;
    const bool money = arguments[0].type() == DataType::Currency;
    Decimal decimal = money ? Decimal::fromCurrency(arguments[0].toCurrency())
                            : Decimal::fromDouble(numberOf(arguments[0]), kDoubleDigits);
    decimal.roundTo(int(std::min<qsizetype>(decimals, kExactDigits)));
    return money ? Value(decimal.toCurrency()) : Value(decimal.toDouble());
}

/// Towards zero.
Value truncate(const Arguments &arguments)
{
    if (arguments[0].isNull())
        return {};
    if (arguments[0].type() == DataType::Currency)
        return Value(arguments[0].toCurrency().cut());
    return Value(std::trunc(numberOf(arguments[0])));
}

/// A text's leading number; 0 when there is none.
Value toNumber(const Arguments &arguments)
{
    return Value(leadingNumber(text(arguments, 0)));
}

Value isNull(const Arguments &arguments)
{
    return Value(arguments[0].isNull());
}

Value ifNull(const Arguments &arguments)
{
    return arguments[0].isNull() ? arguments[1] : arguments[0];
}

/// The check digit that makes the text's digits pass the weights 2, 1, 2, 1 … from the right with
/// digit sums (ISO/IEC 7812-1, annex B); other characters are passed over.
Value mod10(const Arguments &arguments)
{
    const QString digits = text(arguments, 0);
    int sum = 0;
    int weight = 2;
    for (auto c = digits.crbegin(); c != digits.crend(); ++c) {
        if (*c < u'0' || *c > u'9')
            continue;
        const int product = (c->unicode() - u'0') * weight;
        sum += product / 10 + product % 10;
        weight = 3 - weight;
    }
    return Value(QString(QChar(u'0' + (10 - sum % 10) % 10)));
}

constexpr Function kFunctions[] = {
    {u"Abs", "n", Type::Null, absolute},        {u"Date", "nnn", Type::Date, date},
    {u"Day", "d", Type::Number, day},           {u"IfNull", "aa", Type::Null, ifNull, true},
    {u"IsNull", "a", Type::Truth, isNull},      {u"Left", "tn", Type::Text, left},
    {u"Length", "t", Type::Number, length},     {u"Lines", "t*", Type::Text, lines},
    {u"Lower", "t", Type::Text, lower},         {u"Mid", "tn?n", Type::Text, mid},
    {u"Mod10", "t", Type::Text, mod10},         {u"Month", "d", Type::Number, month},
    {u"PadLeft", "tnt", Type::Text, padLeft},   {u"Replace", "ttt", Type::Text, replace},
    {u"Right", "tn", Type::Text, right},        {u"Round", "n?n", Type::Null, round},
    {u"ToNumber", "t", Type::Number, toNumber}, {u"ToText", "a?t", Type::Text, toText},
    {u"Trim", "t", Type::Text, trim},           {u"Truncate", "n", Type::Null, truncate},
    {u"Upper", "t", Type::Text, upper},         {u"Year", "d", Type::Number, year},
};

/// "1234567,50" becomes "1 234 567,50" with no-break blanks.
QString grouped(QString number)
{
    constexpr QChar kNoBreakBlank = u'\u00a0';
    const qsizetype first = number.startsWith(u'-') ? 1 : 0;
    qsizetype end = first;
    while (end < number.size() && number[end].isDigit())
        ++end;
    for (qsizetype at = end - 3; at > first; at -= 3)
        number.insert(at, kNoBreakBlank);
    return number;
}

QString formatted(const Value &value, QStringView pattern)
{
    switch (value.type()) {
    case DataType::Empty:
        return {};
    case DataType::Currency:
        return Format(value.toCurrency(), pattern);
    case DataType::Single:
        return Format(value.toSingle(), pattern);
    case DataType::Date:
        return Format(value.toDate(), pattern);
    case DataType::VarWChar:
        return Format(value.toText(), pattern);
    default:
        return Format(value.toDouble(), pattern);
    }
}

} // namespace

QString checkedLength(QString text)
{
    if (text.size() > kLongestText)
        raiseTooLong();
    return text;
}

const Function *findFunction(QStringView name)
{
    const auto *const found =
        std::find_if(std::begin(kFunctions), std::end(kFunctions), [&](const Function &f) {
            return f.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    return found == std::end(kFunctions) ? nullptr : found;
}

bool takesCount(const Function &function, size_t count)
{
    const std::string_view parameters(function.parameters);
    if (parameters.back() == '*')
        return count >= 1;
    const size_t optional = parameters.find('?');
    const bool hasOptional = optional != std::string_view::npos;
    const size_t most = parameters.size() - (hasOptional ? 1 : 0);
    return count <= most && count >= (hasOptional ? optional : most);
}

bool takesType(const Function &function, size_t index, Type type)
{
    const std::string_view parameters(function.parameters);
    const size_t optional = parameters.find('?');
    char parameter = 0;
    if (parameters.back() == '*')
        parameter = parameters.front();
    else
        parameter = parameters[index < optional ? index : index + 1];
    switch (parameter) {
    case 'n':
        return type == Type::Number || type == Type::Money || type == Type::Null;
    case 't':
        return type == Type::Text || type == Type::Null;
    case 'd':
        return type == Type::Date || type == Type::Null;
    default:
        return true;
    }
}

QString textOf(const Value &value)
{
    switch (value.type()) {
    case DataType::Empty:
        return {};
    case DataType::Currency:
        return textOf(value, u"### ##0.00");
    case DataType::Date:
        return textOf(value, u"dd.mm.yyyy");
    case DataType::Boolean:
        return value.toBoolean() ? u"Ja"_s : u"Nei"_s;
    default:
        return value.toText();
    }
}

QString textOf(const Value &value, QStringView pattern)
{
    if (value.isNull())
        return {};
    if (pattern == u"### ##0.00")
        return grouped(formatted(value, u"0.00"));
    if (pattern == u"### ##0")
        return grouped(formatted(value, u"0"));
    return formatted(value, pattern);
}

double numberOf(const Value &value)
{
    if (value.type() == DataType::Single)
        return Decimal::fromDouble(double(value.toSingle()), kSingleDigits).toDouble();
    return value.toDouble();
}

Currency moneyOf(const Value &value)
{
    if (value.type() == DataType::Currency)
        return value.toCurrency();
    return Currency::fromDouble(numberOf(value));
}

} // namespace report
