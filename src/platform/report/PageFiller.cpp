#include "platform/report/PageFiller.h"

#include <algorithm>

namespace report {

namespace {

constexpr double kTolerance = 1e-6; // mm

double heightOf(const std::vector<Piece> &pieces)
{
    double height = 0;
    for (const Piece &piece : pieces)
        height += piece.height;
    return height;
}

/// Takes the commands of a full page into no more memory than they need, with room for some more.
/// The memory that they grew in stays for those of the next page.
template<class Command>
std::vector<Command> packed(std::vector<Command> &commands, size_t more = 0)
{
    std::vector<Command> kept;
    kept.reserve(commands.size() + more);
    kept.insert(kept.end(), std::make_move_iterator(commands.begin()),
                std::make_move_iterator(commands.end()));
    commands.clear();
    return kept;
}

} // namespace

double PageFiller::Unit::height() const
{
    double height = report::heightOf(headers) + report::heightOf(details) + report::heightOf(end);
    for (const Pieces &footer : footers)
        height += report::heightOf(footer);
    return height;
}

PageFiller::PageFiller(const ReportFile &report, RowEnvironment &environment, const Groups &groups,
                       Pictures &pictures)
    : m_report(report), m_environment(environment), m_groups(groups),
      m_setter(report, environment, pictures)
{
}

std::vector<Page> PageFiller::fill()
{
    startPage(0);
    for (int row = 0; row < m_groups.rowCount(); ++row)
        placeRow(row);
    if (m_y > limit(true, 0) + kTolerance && !m_fresh)
        breakPage(m_placedRow);
    endPage(true);
    setTotalPages();
    return std::move(m_pages);
}

void PageFiller::enter(int row, const Span &span)
{
    m_environment.setRow(row);
    m_environment.setOwnSpan(span);
}

// --- Pieces

void PageFiller::add(Pieces &pieces, const std::vector<Band> &bands, const Span &span)
{
    m_environment.setOwnSpan(span);
    for (const Band &band : bands) {
        if (band.each)
            addForEach(pieces, band, span);
        else if (isShown(band.visible, m_environment))
            pieces.push_back(m_setter.set(band));
    }
}

void PageFiller::addForEach(Pieces &pieces, const Band &band, const Span &span)
{
    struct Picked
    {
        Value value;
        std::vector<int> rows;
    };
    const int row = m_environment.row();
    std::vector<Picked> values; // in rising order
    for (int i = span.first; i < span.end; ++i) {
        m_environment.setRow(i);
        Value value = valueOf(band.each, m_environment);
        if (value.isNull())
            continue;
        const auto at = std::lower_bound(values.begin(), values.end(), value,
                                         [](const Picked &picked, const Value &wanted) {
                                             return compare(picked.value, wanted) < 0;
                                         });
        if (at != values.end() && compare(at->value, value) == 0)
            at->rows.push_back(i);
        else
            values.insert(at, Picked{std::move(value), {i}});
    }
    std::vector<int> running;
    for (const Picked &picked : values) {
        running.insert(running.end(), picked.rows.begin(), picked.rows.end());
        enter(picked.rows.front(), {span.first, span.end, &picked.rows, &running, ++m_serial});
        if (isShown(band.visible, m_environment))
            pieces.push_back(m_setter.set(band));
    }
    enter(row, span);
}

PageFiller::Unit PageFiller::unitAt(int row)
{
    Unit unit;
    const int groups = m_groups.count();
    enter(row, m_groups.whole());
    for (int group = m_groups.levelAt(row); group < groups; ++group)
        add(unit.headers, m_report.groups[size_t(group)].headers, m_groups.span(group, row));
    add(unit.details, m_report.details,
        groups > 0 ? m_groups.span(groups - 1, row) : m_groups.whole());
    for (int group = groups - 1; group >= m_groups.levelAt(row + 1); --group) {
        unit.footers.emplace_back();
        add(unit.footers.back(), m_report.groups[size_t(group)].footers, m_groups.span(group, row));
    }
    if (isLast(row))
        add(unit.end, m_report.reportFooters, m_groups.whole());
    return unit;
}

// --- The body

void PageFiller::placeRow(int row)
{
    const int level = m_groups.levelAt(row);
    const int openAfter = m_groups.levelAt(row + 1);
    bool wantsPage = false;
    for (int group = level; group < m_groups.count(); ++group)
        wantsPage = wantsPage || m_report.groups[size_t(group)].newPage;
    if ((wantsPage && row > 0) || (!m_fresh && !staysTogether(row)))
        breakPage(row);

    Unit unit = unitAt(row);
    const auto fits = [&] {
        return m_y + unit.height() <= limit(isLast(row), openAfter) + kTolerance;
    };
    if (!fits() && !m_fresh) {
        breakPage(row);
        unit = unitAt(row);
    }
    if (fits())
        placeWhole(unit, row);
    else
        placePieceByPiece(unit, row);
    m_open = openAfter;
}

/// False when a group that begins at `row` and must not be parted has too little room left, and
/// would have enough on a page of its own.
bool PageFiller::staysTogether(int row)
{
    for (int group = m_groups.levelAt(row); group < m_groups.count(); ++group) {
        if (!m_report.groups[size_t(group)].keepTogether)
            continue;
        const int end = m_groups.span(group, row).end;
        const double bottom = limit(end == m_groups.rowCount(), 0) + kTolerance;
        double height = 0;
        for (int r = row; r < end && m_bodyTop + height <= bottom; ++r)
            height += unitAt(r).height();
        if (m_y + height > bottom && m_bodyTop + height <= bottom)
            return false;
    }
    return true;
}

void PageFiller::placeWhole(Unit &unit, int row)
{
    place(unit.headers);
    place(unit.details);
    for (Pieces &footer : unit.footers)
        place(footer);
    place(unit.end);
    m_placedRow = row;
}

void PageFiller::placePieceByPiece(Unit &unit, int row)
{
    placeInBody(unit.headers, row, false);
    m_open = m_groups.count();
    placeInBody(unit.details, row, false);
    m_placedRow = row;
    for (Pieces &footer : unit.footers) {
        placeInBody(footer, row, false);
        --m_open;
    }
    placeInBody(unit.end, row, true);
}

void PageFiller::placeInBody(Pieces &pieces, int row, bool last)
{
    for (Piece &piece : pieces) {
        if (!m_fresh && m_y + piece.height > limit(last, m_open) + kTolerance)
            breakPage(row);
        Pieces one;
        one.push_back(std::move(piece));
        place(one);
    }
}

void PageFiller::place(Pieces &pieces)
{
    for (Piece &piece : pieces) {
        piece.moveTo(m_page, m_openTexts.back(), {m_report.margins.left(), m_y});
        m_y += piece.height;
        m_fresh = false;
    }
}

// --- Pages

bool PageFiller::isOnPage(const Band &band, bool last) const
{
    switch (band.pages) {
    case Pages::First:
        return m_pages.empty();
    case Pages::NotFirst:
        return !m_pages.empty();
    case Pages::Last:
        return last;
    case Pages::NotLast:
        return !last;
    case Pages::All:
        break;
    }
    return true;
}

double PageFiller::heightOf(const std::vector<Band> &bands, bool last) const
{
    double height = 0;
    for (const Band &band : bands) {
        if (isOnPage(band, last))
            height += band.height;
    }
    return height;
}

/// Of the carry lines of so many groups from the outermost on.
double PageFiller::carryHeight(int groups) const
{
    double height = 0;
    for (int group = 0; group < groups; ++group)
        height += heightOf(m_report.groups[size_t(group)].carryFooters, false);
    return height;
}

double PageFiller::bodyEnd(bool last) const
{
    return m_report.paper.height() - m_report.margins.bottom() -
           heightOf(m_report.pageFooters, last);
}

double PageFiller::limit(bool last, int openGroups) const
{
    return bodyEnd(last) - carryHeight(openGroups);
}

void PageFiller::startPage(int row)
{
    m_openTexts.emplace_back();
    m_environment.setPageNumber(int(m_openTexts.size()));
    m_y = m_report.margins.top();
    enter(row, m_groups.whole());
    Pieces pieces;
    for (const Band &band : m_report.pageHeaders) {
        if (isOnPage(band, false) && isShown(band.visible, m_environment))
            pieces.push_back(m_setter.set(band));
    }
    m_bodyTop = m_y + report::heightOf(pieces);
    if (m_pages.empty()) {
        Pieces first;
        add(first, m_report.reportHeaders, m_groups.whole());
        place(first);
    }
    place(pieces);
    m_fresh = true;
}

void PageFiller::breakPage(int nextRow)
{
    double top = bodyEnd(false) - carryHeight(m_open);
    for (int group = m_open - 1; group >= 0; --group) {
        const Group &open = m_report.groups[size_t(group)];
        enter(m_placedRow, m_groups.span(group, m_placedRow));
        placeFixed(open.carryFooters, top, false);
        top += heightOf(open.carryFooters, false);
    }
    endPage(false);
    startPage(nextRow);
    for (int group = 0; group < m_open; ++group) {
        const Group &open = m_report.groups[size_t(group)];
        Pieces pieces;
        if (open.repeatHeader) {
            enter(nextRow, m_groups.span(group, nextRow));
            add(pieces, open.headers, m_groups.span(group, nextRow));
        }
        enter(m_placedRow, m_groups.span(group, m_placedRow));
        add(pieces, open.carryHeaders, m_groups.span(group, m_placedRow));
        place(pieces);
    }
    m_fresh = true;
}

void PageFiller::endPage(bool last)
{
    enter(m_placedRow, m_groups.whole());
    placeFixed(m_report.pageFooters, bodyEnd(last), last);
    m_pages.push_back({packed(m_page.boxes), packed(m_page.pictures), packed(m_page.lines),
                       packed(m_page.texts, m_openTexts.back().size())});
}

/// Bands whose room is kept also where they are not shown.
void PageFiller::placeFixed(const std::vector<Band> &bands, double top, bool last)
{
    for (const Band &band : bands) {
        if (!isOnPage(band, last))
            continue;
        if (isShown(band.visible, m_environment))
            m_setter.set(band).moveTo(m_page, m_openTexts.back(), {m_report.margins.left(), top});
        top += band.height;
    }
}

void PageFiller::setTotalPages()
{
    const QString total = QString::number(m_pages.size());
    for (size_t page = 0; page < m_pages.size(); ++page) {
        for (OpenText &text : m_openTexts[page])
            m_setter.setText(*text.item, text.rect, text.text.replace(kTotalPagesMark, total),
                             m_pages[page]);
    }
}

} // namespace report
