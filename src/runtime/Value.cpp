#include "runtime/Value.h"

#include "runtime/Conversions.h"
#include "runtime/Decimal.h"
#include "runtime/Format.h"
#include "runtime/MachineLocale.h"

#include <cmath>
#include <limits>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace {

constexpr double kMillisecondsPerDay = 86'400'000;
// The days of 1 January 100 and of 31 December 9999.
constexpr double kFirstDay = -657'434;
constexpr double kLastDay = 2'958'465;

template<class T>
constexpr bool kIsNull = std::is_same_v<T, std::monostate>;
template<class T>
constexpr bool kIsBytes = std::is_same_v<T, QByteArray>;

[[noreturn]] void raise(int error)
{
    throw RunTimeError(error);
}

/// Days from dateZero(). The time of day counts away from zero, so six in the morning of the day
/// before the zero date is -1.25.
double daysOf(const QDateTime &moment)
{
    if (!moment.isValid())
        raise(errors::kTypeMismatch);
    const auto days = double(dateZero().date().daysTo(moment.date()));
    const double part = moment.time().msecsSinceStartOfDay() / kMillisecondsPerDay;
    return days < 0 ? days - part : days + part;
}

QDateTime momentOf(double days)
{
    const double whole = std::trunc(days);
    if (!(whole >= kFirstDay && whole <= kLastDay))
        raise(errors::kOverflow);
    const auto milliseconds = qint64(std::llround(std::fabs(days - whole) * kMillisecondsPerDay));
    QDateTime moment = dateZero().addDays(qint64(whole)).addMSecs(milliseconds);
    if (dateZero().daysTo(moment) > qint64(kLastDay)) // by the rounding
        raise(errors::kOverflow);
    return moment;
}

QString signedText(const Decimal &number, int places)
{
    const QString digits = number.toText(places, MachineLocale::current().decimalPoint, true);
    return number.negative ? u'-' + digits : digits;
}

} // namespace

DataType Value::type() const
{
    return std::visit(
        [](const auto &v) {
            using T = std::decay_t<decltype(v)>;
            if constexpr (kIsNull<T>)
                return DataType::Empty;
            else if constexpr (std::is_same_v<T, qint16>)
                return DataType::SmallInt;
            else if constexpr (std::is_same_v<T, qint32>)
                return DataType::Integer;
            else if constexpr (std::is_same_v<T, float>)
                return DataType::Single;
            else if constexpr (std::is_same_v<T, double>)
                return DataType::Double;
            else if constexpr (std::is_same_v<T, ::Currency>)
                return DataType::Currency;
            else if constexpr (std::is_same_v<T, QDateTime>)
                return DataType::Date;
            else if constexpr (std::is_same_v<T, bool>)
                return DataType::Boolean;
            else if constexpr (std::is_same_v<T, QString>)
                return DataType::VarWChar;
            else
                return DataType::LongVarBinary;
        },
        m_data);
}

QString Value::toText() const
{
    return std::visit(
        [](const auto &v) -> QString {
            using T = std::decay_t<decltype(v)>;
            if constexpr (kIsNull<T>) {
                raise(errors::kInvalidUseOfNull);
            } else if constexpr (kIsBytes<T>) {
                raise(errors::kTypeMismatch);
            } else if constexpr (std::is_same_v<T, QString>) {
                return v;
            } else if constexpr (std::is_same_v<T, bool>) {
                return v ? u"True"_s : u"False"_s;
            } else if constexpr (std::is_same_v<T, QDateTime>) {
                const QString date = Format(v, u"short date");
                return v.time() == QTime(0, 0) ? date : date + v.toString(u" hh:mm:ss");
            } else if constexpr (std::is_same_v<T, ::Currency>) {
                return signedText(Decimal::fromCurrency(v), kExactDigits);
            } else if constexpr (std::is_same_v<T, float>) {
                return signedText(Decimal::fromDouble(double{v}, kSingleDigits), kSingleDigits);
            } else if constexpr (std::is_same_v<T, double>) {
                return signedText(Decimal::fromDouble(v, kDoubleDigits), kDoubleDigits);
            } else {
                return QString::number(v);
            }
        },
        m_data);
}

double Value::toDouble() const
{
    return std::visit(
        [](const auto &v) -> double {
            using T = std::decay_t<decltype(v)>;
            if constexpr (kIsNull<T>)
                raise(errors::kInvalidUseOfNull);
            else if constexpr (kIsBytes<T>)
                raise(errors::kTypeMismatch);
            else if constexpr (std::is_same_v<T, QString>)
                return ::toDouble(v);
            else if constexpr (std::is_same_v<T, bool>)
                return v ? -1 : 0;
            else if constexpr (std::is_same_v<T, QDateTime>)
                return daysOf(v);
            else if constexpr (std::is_same_v<T, ::Currency>)
                return v.toDouble();
            else
                return v;
        },
        m_data);
}

qint32 Value::toLong() const
{
    if (const auto *whole = std::get_if<qint32>(&m_data))
        return *whole;
    // An amount of that range is exact to the ten-thousandth as a double, so ties stay ties.
    return ::toLong(toDouble());
}

qint16 Value::toInteger() const
{
    return ::toInteger(toDouble());
}

float Value::toSingle() const
{
    const double number = toDouble();
    // What rounds to the largest single still is one; the conversion itself must stay in range.
    constexpr double kBeyond = 0x1.ffffffp127;
    if (!(std::fabs(number) < kBeyond))
        raise(errors::kOverflow);
    return float(number);
}

Currency Value::toCurrency() const
{
    if (const auto *amount = std::get_if<Currency>(&m_data))
        return *amount;
    if (const auto *text = std::get_if<QString>(&m_data))
        return ::toCurrency(*text);
    return Currency::fromDouble(toDouble());
}

QDateTime Value::toDate() const
{
    if (const auto *date = std::get_if<QDateTime>(&m_data))
        return *date;
    if (const auto *text = std::get_if<QString>(&m_data))
        return ::toDate(*text);
    return momentOf(toDouble());
}

bool Value::toBoolean() const
{
    if (const auto *truth = std::get_if<bool>(&m_data))
        return *truth;
    if (const auto *text = std::get_if<QString>(&m_data)) {
        const QString word = trimBlanks(*text);
        if (word.compare("True"_L1, Qt::CaseInsensitive) == 0)
            return true;
        if (word.compare("False"_L1, Qt::CaseInsensitive) == 0)
            return false;
    }
    return toDouble() != 0;
}

QByteArray Value::toBytes() const
{
    if (isNull())
        raise(errors::kInvalidUseOfNull);
    const auto *bytes = std::get_if<QByteArray>(&m_data);
    if (bytes == nullptr)
        raise(errors::kTypeMismatch);
    return *bytes;
}
