#include "platform/ado/ColumnStore.h"

#include "platform/ado/AdoTypes.h"
#include "runtime/Moment.h"

#include <limits>

namespace ado {

namespace {

constexpr std::size_t kUsualText = 8; // bytes

} // namespace

ColumnStore::Cells ColumnStore::cellsFor(DataType type)
{
    switch (type) {
    case DataType::SmallInt:
        return std::vector<qint16>();
    case DataType::Integer:
        return std::vector<qint32>();
    case DataType::Single:
        return std::vector<float>();
    case DataType::Double:
        return std::vector<double>();
    case DataType::Currency:
    case DataType::Date:
        return std::vector<qint64>();
    case DataType::Boolean:
        return std::vector<bool>();
    case DataType::VarWChar:
    case DataType::LongVarBinary:
    case DataType::Empty:
        break;
    }
    return Blocks();
}

// Room for the lines of an order, so that a column of them does not grow step by step.
ColumnStore::ColumnStore(DataType type) : m_type(type), m_cells(cellsFor(type))
{
    std::visit(
        [](auto &cells) {
            if constexpr (std::is_same_v<std::decay_t<decltype(cells)>, Blocks>) {
                cells.bytes.reserve(kFirstRows * kUsualText);
                cells.ends.reserve(kFirstRows);
            } else {
                cells.reserve(kFirstRows);
            }
        },
        m_cells);
}

std::size_t ColumnStore::size() const
{
    return std::visit(
        [](const auto &cells) {
            if constexpr (std::is_same_v<std::decay_t<decltype(cells)>, Blocks>)
                return cells.ends.size();
            else
                return cells.size();
        },
        m_cells);
}

void ColumnStore::appendNull()
{
    if (m_nulls.empty())
        m_nulls.assign(size(), false);
    m_nulls.push_back(true);
    std::visit(
        [](auto &cells) {
            if constexpr (std::is_same_v<std::decay_t<decltype(cells)>, Blocks>)
                cells.ends.push_back(std::uint32_t(cells.bytes.size()));
            else
                cells.emplace_back();
        },
        m_cells);
}

void ColumnStore::appendBytes(const char *bytes, std::size_t count)
{
    auto &blocks = std::get<Blocks>(m_cells);
    if (count > std::numeric_limits<std::uint32_t>::max() - blocks.bytes.size())
        throw RunTimeError(errors::kUnspecified,
                           QStringLiteral("Resultatet er for stort for minnet."));
    blocks.bytes.insert(blocks.bytes.end(), bytes, bytes + count);
    blocks.ends.push_back(std::uint32_t(blocks.bytes.size()));
    if (!m_nulls.empty())
        m_nulls.push_back(false);
}

void ColumnStore::append(const Value &value)
{
    if (value.isNull()) {
        appendNull();
        return;
    }
    switch (m_type) {
    case DataType::SmallInt:
        return append(value.toInteger());
    case DataType::Integer:
        return append(value.toLong());
    case DataType::Single:
        return append(value.toSingle());
    case DataType::Double:
        return append(value.toDouble());
    case DataType::Currency:
        return append(value.toCurrency().tenThousandths());
    case DataType::Date: {
        const QDateTime date = value.toDate();
        return append(utcMoment(date.date(), date.time()).toMSecsSinceEpoch());
    }
    case DataType::Boolean:
        return append(value.toBoolean());
    case DataType::LongVarBinary: {
        const QByteArray bytes = value.toBytes();
        return appendBytes(bytes.constData(), size_t(bytes.size()));
    }
    case DataType::VarWChar:
    case DataType::Empty:
        break;
    }
    const QByteArray utf8 = value.toText().toUtf8();
    appendBytes(utf8.constData(), size_t(utf8.size()));
}

void ColumnStore::shrink()
{
    std::visit(
        [](auto &cells) {
            if constexpr (std::is_same_v<std::decay_t<decltype(cells)>, Blocks>) {
                cells.bytes.shrink_to_fit();
                cells.ends.shrink_to_fit();
            } else {
                cells.shrink_to_fit();
            }
        },
        m_cells);
    m_nulls.shrink_to_fit();
}

Value ColumnStore::value(std::size_t row) const
{
    if (isNull(row))
        return {};
    switch (m_type) {
    case DataType::SmallInt:
        return Value(number<qint16>(row));
    case DataType::Integer:
        return Value(number<qint32>(row));
    case DataType::Single:
        return Value(number<float>(row));
    case DataType::Double:
        return Value(number<double>(row));
    case DataType::Currency:
        return Value(Currency::fromTenThousandths(number<qint64>(row)));
    case DataType::Date:
        return Value(utcMoment(number<qint64>(row)));
    case DataType::Boolean:
        return Value(number<bool>(row));
    case DataType::LongVarBinary:
        return Value(bytes(row).toByteArray());
    case DataType::VarWChar:
    case DataType::Empty:
        break;
    }
    return Value(QString::fromUtf8(bytes(row)));
}

QByteArrayView ColumnStore::bytes(std::size_t row) const
{
    const auto &blocks = std::get<Blocks>(m_cells);
    const std::size_t begin = row == 0 ? 0 : blocks.ends[row - 1];
    return {blocks.bytes.data() + begin, qsizetype(blocks.ends[row] - begin)};
}

} // namespace ado
