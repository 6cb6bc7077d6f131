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
    const qint64 count = amount.tenThousandths();
    QByteArray digits = QByteArray::number(count).rightJustified(count < 0 ? 6 : 5, '0');
    if (count < 0) {
        digits.remove(digits.indexOf('-'), 1); // zeros may stand before it
        digits.prepend('-');
    }
    return digits.insert(digits.size() - 4, '.');
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
    for (const Value &value : values) {
        m_texts.push_back(value.isNull() ? QByteArray() : postgresText(value));
        const QByteArray &text = m_texts.back();
        m_values.push_back(value.isNull() ? nullptr : text.constData());
        m_lengths.push_back(int(text.size()));
        m_formats.push_back(isBytes(value.type()) ? kBinary : kText);
    }
}

} // namespace ado
