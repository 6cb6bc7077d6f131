#include "platform/grid/Sheet.h"

#include "runtime/Conversions.h"

#include <QCollator>

#include <algorithm>
#include <limits>
#include <numeric>

namespace {

// Below every amount and every date, so that cells without a value come first.
constexpr qint64 kNoValue = std::numeric_limits<qint64>::min();

qint64 valueOf(const CellType &type, QStringView text)
{
    qint64 value = kNoValue;
    passOver([&] {
        value = type.kind == CellKind::Date ? toDate(text).toMSecsSinceEpoch()
                                            : toCurrency(text).tenThousandths();
    });
    return value;
}

/// Orders the numbers of rows; `before` tells of two rows whether the first one comes first when
/// the order rises.
template<class Before>
void sortNumbers(std::vector<int> &rows, bool rising, Before before)
{
    std::stable_sort(rows.begin(), rows.end(),
                     [&](int a, int b) { return rising ? before(a, b) : before(b, a); });
}

} // namespace

void Sheet::setMaxCols(int count)
{
    if (count < 0)
        throw RunTimeError(errors::kInvalidCall);
    m_texts.resize(count, maxRows());
}

void Sheet::setMaxRows(int count)
{
    if (count < 0)
        throw RunTimeError(errors::kInvalidCall);
    const bool fewer = count < maxRows();
    m_texts.resize(maxCols(), count);
    if (!fewer)
        return;
    m_types.cutRows(count);
    m_locks.cutRows(count);
    m_fore.cutRows(count);
    m_back.cutRows(count);
    m_aligns.cutRows(count);
}

QString Sheet::text(int col, int row) const
{
    if (holds(col, row))
        return cell(col, row).toString();
    if (row == 0 && col >= 1 && size_t(col) < m_columnHeads.size())
        return m_columnHeads[size_t(col)];
    if (col == 0 && row >= 1) {
        if (const auto head = m_rowHeads.find(row); head != m_rowHeads.end())
            return head->second;
    }
    return {};
}

void Sheet::setText(int col, int row, QStringView text)
{
    if (holds(col, row)) {
        m_texts.set(col - 1, row - 1, text);
    } else if (row == 0 && col >= 1 && col <= maxCols()) {
        if (size_t(col) >= m_columnHeads.size())
            m_columnHeads.resize(size_t(col) + 1);
        m_columnHeads[size_t(col)] = text.toString();
    } else if (col == 0 && row >= 1 && row <= maxRows()) {
        m_rowHeads.insert_or_assign(row, text.toString());
    }
}

void Sheet::clearTexts(const CellRange &range)
{
    const CellRange r = range.within(maxCols(), maxRows());
    if (r.col <= r.col2 && r.row <= r.row2)
        m_texts.clear(r.col - 1, r.row - 1, r.col2 - 1, r.row2 - 1);
}

void Sheet::setType(const CellRange &range, const CellType &type)
{
    m_types.set(range, maxCols(), maxRows(), type);
}

void Sheet::setLocked(const CellRange &range, bool locked)
{
    m_locks.set(range, maxCols(), maxRows(), locked);
}

void Sheet::setForeColor(const CellRange &range, SheetColor color)
{
    m_fore.set(range, maxCols(), maxRows(), color);
}

void Sheet::setBackColor(const CellRange &range, SheetColor color)
{
    m_back.set(range, maxCols(), maxRows(), color);
}

void Sheet::setAlign(const CellRange &range, CellAlign align)
{
    m_aligns.set(range, maxCols(), maxRows(), align);
}

void Sheet::sortRows(int firstRow, int lastRow, int keyCol, bool rising)
{
    if (keyCol < 1 || keyCol > maxCols())
        throw RunTimeError(errors::kInvalidCall);
    firstRow = std::max(firstRow, 1);
    lastRow = std::min(lastRow, dataRowCount());
    if (firstRow >= lastRow)
        return;

    std::vector<int> order(size_t(lastRow - firstRow + 1));
    std::iota(order.begin(), order.end(), firstRow);
    const auto firstEmpty = std::stable_partition(
        order.begin(), order.end(), [&](int row) { return !m_texts.isEmptyRow(row - 1); });
    std::vector<int> filled(order.begin(), firstEmpty);

    std::vector<QStringView> texts; // found once, not at each comparison
    texts.reserve(order.size());
    for (int row = firstRow; row <= lastRow; ++row)
        texts.push_back(cell(keyCol, row));
    const CellType &type = m_types.atColumn(keyCol);
    if (type.isNumber() || type.kind == CellKind::Date) {
        std::vector<qint64> keys;
        keys.reserve(order.size());
        for (const QStringView text : texts)
            keys.push_back(valueOf(type, text));
        sortNumbers(filled, rising, [&](int a, int b) {
            return keys[size_t(a - firstRow)] < keys[size_t(b - firstRow)];
        });
    } else {
        QCollator norwegian(QLocale(QLocale::NorwegianBokmal, QLocale::Norway));
        norwegian.setCaseSensitivity(Qt::CaseInsensitive);
        // Comparing costs less than making a key of each text first.
        sortNumbers(filled, rising, [&](int a, int b) {
            return norwegian.compare(texts[size_t(a - firstRow)], texts[size_t(b - firstRow)]) < 0;
        });
    }
    std::copy(filled.begin(), filled.end(), order.begin());

    std::vector<int> newRows(order.size());
    for (size_t i = 0; i < order.size(); ++i)
        newRows[size_t(order[i] - firstRow)] = firstRow + int(i);
    const auto newRow = [&](int row) {
        return row < firstRow || row > lastRow ? row : newRows[size_t(row - firstRow)];
    };
    for (int &row : order)
        --row;
    m_texts.reorder(firstRow - 1, order);
    m_types.moveRows(newRow);
    m_locks.moveRows(newRow);
    m_fore.moveRows(newRow);
    m_back.moveRows(newRow);
    m_aligns.moveRows(newRow);
}
