#include "reports/PaperList.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

using namespace Qt::StringLiterals;

namespace {

constexpr double kSameEdge = 1e-6; // mm; what stands so by chance only is farther off
constexpr double kSameLine = 0.5;  // mm
const QStringList kAmounts{u"Netto"_s, u"Mva"_s, u"Avrund."_s, u"Beløp"_s};

bool isTotal(const QString &text)
{
    static const QRegularExpression pattern(u"^Sum (i alt|forfalt i alt|\\d+ faktura)"_s);
    return pattern.match(text).hasMatch();
}

QString where(const PaperList::Line &line)
{
    return u"page %1, «%2»: "_s.arg(line.page + 1).arg(line.text);
}

/// The amounts of some rows by column.
using Amounts = std::map<QString, qint64>;

void add(Amounts &amounts, const PaperList::Line &line)
{
    for (const QString &column : kAmounts)
        amounts[column] += line.amount(column);
}

void compare(const PaperList::Line &sum, Amounts &rows, QStringList &faults)
{
    for (const QString &column : kAmounts) {
        if (sum.cells.contains(column) && sum.amount(column) != rows[column])
            faults += where(sum) + u"%1 is %2, the rows are %3"_s.arg(
                                       column, krOf(sum.amount(column)), krOf(rows[column]));
    }
}

} // namespace

qint64 PaperList::Line::amount(const QString &heading) const
{
    return oreOf(cells.value(heading)).value_or(0);
}

PaperList::PaperList(const report::Document &document, const QString &key) : m_key(key)
{
    const size_t count = document.pages.size();
    for (size_t page = 0; page < count; ++page) {
        const PageReader reader(document, page);
        readPage(reader, page);
        if (!reader.find(u"Side %1 av %2"_s.arg(page + 1).arg(count)))
            m_unread += u"page %1 has another number"_s.arg(page + 1);
    }
}

void PaperList::readPage(const PageReader &page, size_t number)
{
    const SeenText *key = page.find(m_key);
    const SeenText *foot = page.findStart(u"Utskrevet "_s);
    if (!key || !foot) {
        m_unread += u"page %1 has no headings or no foot"_s.arg(number + 1);
        return;
    }
    const std::vector<SeenText> headings = page.row(key->baseline);
    QStringList columns;
    for (const SeenText &heading : headings)
        columns += heading.text;
    if (number == 0)
        m_columns = columns;
    else if (columns != m_columns)
        m_unread += u"page %1 has other headings"_s.arg(number + 1);
    if (!m_belowTotal)
        m_headings = headings;

    std::set<double> baselines;
    for (const SeenText &text : page.texts()) {
        const auto above = baselines.lower_bound(text.baseline - kSameLine);
        const bool known = above != baselines.end() && *above < text.baseline + kSameLine;
        if (!known && text.baseline > key->baseline + kSameLine && text.baseline < foot->baseline)
            baselines.insert(text.baseline);
    }
    for (const double baseline : baselines)
        readLine(page.row(baseline), number);
}

void PaperList::readLine(const std::vector<SeenText> &row, size_t page)
{
    Line line;
    line.page = page;
    line.text = row.front().text;
    if (m_belowTotal && (line.text == u"Mva-sats"_s || line.text == u"Konto"_s))
        m_headings = row;
    for (const SeenText &text : row) {
        if (const std::optional<QString> heading = headingOf(text))
            line.cells[*heading] = text.text;
    }
    line.kind = m_belowTotal ? Kind::Below : kindOf(row, line);
    if (line.kind == Kind::Head && !m_lines.empty() && m_lines.back().kind == Kind::Head &&
        m_lines.back().page == page) {
        m_lines.back().text += u' ' + line.text; // a long head takes several lines
        return;
    }
    m_belowTotal = m_belowTotal || line.kind == Kind::Total;
    m_lines.push_back(std::move(line));
}

/// A number ends where its heading does, a word begins where it does.
std::optional<QString> PaperList::headingOf(const SeenText &text) const
{
    const auto found =
        std::find_if(m_headings.begin(), m_headings.end(), [&](const SeenText &heading) {
            return std::abs(text.room.right() - heading.room.right()) < kSameEdge ||
                   std::abs(text.room.left() - heading.room.left()) < kSameEdge;
        });
    return found == m_headings.end() ? std::nullopt : std::optional(found->text);
}

PaperList::Kind PaperList::kindOf(const std::vector<SeenText> &row, const Line &line) const
{
    if (isTotal(line.text))
        return Kind::Total;
    if (line.text.startsWith(u"Sum "_s))
        return Kind::Sum;
    if (line.cells.contains(m_key))
        return Kind::Row;
    return headingOf(row.front()) ? Kind::More : Kind::Head;
}

QStringList PaperList::column(const QString &heading) const
{
    QStringList column;
    for (const Line &line : m_lines) {
        if (line.kind == Kind::Row)
            column += line.cells.value(heading);
    }
    return column;
}

const PaperList::Line *PaperList::sum(const QString &text) const
{
    const auto found = std::find_if(m_lines.begin(), m_lines.end(), [&](const Line &line) {
        return line.text == text && line.kind >= Kind::Sum;
    });
    return found == m_lines.end() ? nullptr : &*found;
}

QStringList PaperList::faults() const
{
    QStringList faults = m_unread;
    addPageFaults(faults);
    addRowFaults(faults);
    addSumFaults(faults);
    return faults;
}

void PaperList::addPageFaults(QStringList &faults) const
{
    const bool hasHeads = std::any_of(m_lines.begin(), m_lines.end(),
                                      [](const Line &line) { return line.kind == Kind::Head; });
    bool rowAbove = false;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        const Line &line = m_lines[i];
        const bool first = i == 0 || m_lines[i - 1].page != line.page;
        const bool last = i + 1 == m_lines.size() || m_lines[i + 1].page != line.page;
        rowAbove = (rowAbove && !first) || line.kind == Kind::Row;
        if ((line.kind == Kind::Sum || line.kind == Kind::Total) && !rowAbove)
            faults += where(line) + u"a sum without a row on its page"_s;
        if (line.kind == Kind::Head && last)
            faults += where(line) + u"a head without a row on its page"_s;
        if (line.kind == Kind::Row && first && hasHeads)
            faults += where(line) + u"a row without a head on its page"_s;
        if (line.kind == Kind::More && first)
            faults += where(line) + u"a row is parted"_s;
    }
}

/// A row and what goes on with it: net, VAT and rounding are the amount.
void PaperList::addRowFaults(QStringList &faults) const
{
    if (!m_columns.contains(u"Netto"_s))
        return;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        if (m_lines[i].kind != Kind::Row)
            continue;
        Amounts amounts;
        for (size_t part = i; part < m_lines.size(); ++part) {
            if (part > i && m_lines[part].kind != Kind::More)
                break;
            add(amounts, m_lines[part]);
        }
        const qint64 sum = amounts[u"Netto"_s] + amounts[u"Mva"_s] + amounts[u"Avrund."_s];
        if (sum != amounts[u"Beløp"_s])
            faults +=
                where(m_lines[i]) + u"%1 adds up to %2"_s.arg(krOf(amounts[u"Beløp"_s]), krOf(sum));
    }
}

/// Groups begin with their heads; a head that is repeated on a new page begins none. Within a
/// group, the rows of a rate may have a sum of their own.
void PaperList::addSumFaults(QStringList &faults) const
{
    Amounts all;
    Amounts group;
    std::map<QString, Amounts> rates;
    for (const Line &line : m_lines) {
        switch (line.kind) {
        case Kind::Head:
            if (!line.text.endsWith(u"(forts.)"_s)) {
                group.clear();
                rates.clear();
            }
            break;
        case Kind::Row:
        case Kind::More:
            add(all, line);
            add(group, line);
            add(rates[line.cells.value(u"Sats"_s)], line);
            break;
        case Kind::Sum:
            if (line.text == u"Sum avgiftsfritt"_s)
                compare(line, rates[u"0 %"_s], faults);
            else if (line.text.endsWith(u" mva"_s))
                compare(line, rates[line.text.sliced(4).chopped(4)], faults);
            else
                compare(line, group, faults);
            break;
        case Kind::Total:
            compare(line, all, faults);
            break;
        case Kind::Below:
            break;
        }
    }
}
