#include "platform/ado/postgres/PostgresParameters.h"

#include <array>
#include <charconv>
#include <cmath>

namespace ado {

namespace {

constexpr int kText = 0; // libpq's format codes
constexpr int kBinary = 1;

/// The shortest form that reads as the same number again.
template<class Number>
QByteArray shortest(Number number)
{
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return QByteArray(text.data(), end - text.data());
}

QByteArray decimal(Currency amount)
{
    constexpr quint64 kKrone = 10'000;
    const qint64 count = amount.tenThousandths();
    const quint64 magnitude = count < 0 ? quint64{0} - quint64(count) : quint64(count);
    std::array<char, 32> text;
    char *const last = text.data() + text.size();
    text[0] = '-';
    char *const point = std::to_chars(text.data() + (count < 0), last, magnitude / kKrone).ptr;
    const char *const end = std::to_chars(point, last, kKrone + magnitude % kKrone).ptr;
    *point = '.'; // in place of the 1 that keeps the zeros behind it
    return QByteArray(text.data(), end - text.data());
}

bool isBytes(DataType type)
{
    return type == DataType::VarWChar || type == DataType::LongVarBinary;
}

} // namespace

QByteArray postgresText(const Value &value)
{
    switch (value.type()) {
    case DataType::SmallInt:
    case DataType::Integer:
        return QByteArray::number(value.toLong());
    case DataType::Single:
        return shortest(value.toSingle());
    case DataType::Double:
        return shortest(value.toDouble());
    case DataType::Currency:
        return decimal(value.toCurrency());
    case DataType::Boolean:
        return value.toBoolean() ? "t" : "f";
    case DataType::Date:
        return value.toDate().toString(u"yyyy-MM-dd HH:mm:ss").toLatin1();
    case DataType::LongVarBinary:
        return value.toBytes();
    case DataType::VarWChar:
    case DataType::Empty:
        break;
    }
    return value.toText().toUtf8();
}

PostgresParameters::PostgresParameters(const std::vector<Value> &values)
{
    m_texts.reserve(values.size());
    m_values.reserve(values.size());
    m_lengths.reserve(values.size());
    m_formats.reserve(values.size());
    for (const Value &value : values) {
        m_texts.push_back(value.isNull() ? QByteArray() : postgresText(value));
        const QByteArray &text = m_texts.back();
        m_values.push_back(value.isNull() ? nullptr : text.constData());
        m_lengths.push_back(int(text.size()));
        m_formats.push_back(isBytes(value.type()) ? kBinary : kText);
    }
}

} // namespace ado
