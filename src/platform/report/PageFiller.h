#pragma once

#include "platform/report/BandSetter.h"

namespace report {

/// Fills pages with the bands of a report, row by row. It knows what has to stay together: a header
/// with the row below it, a row with the footers behind it, the last of them with the page footers
/// of the last page.
class PageFiller
{
public:
    /// Nothing is owned; there is at least one row.
    PageFiller(const ReportFile &report, RowEnvironment &environment, const Groups &groups,
               Pictures &pictures);

    [[nodiscard]] std::vector<Page> fill();

private:
    using Pieces = std::vector<Piece>;

    /// What is placed as one: a row, what is opened before it and what is closed behind it.
    struct Unit
    {
        Pieces headers;
        Pieces details;
        std::vector<Pieces> footers; ///< of groups, the innermost first
        Pieces end;                  ///< of the report

        [[nodiscard]] double height() const;
    };

    [[nodiscard]] Unit unitAt(int row);
    void placeRow(int row);
    void placeWhole(Unit &unit, int row);
    void placePieceByPiece(Unit &unit, int row);
    void placeInBody(Pieces &pieces, int row, bool last);
    void place(Pieces &pieces);
    [[nodiscard]] bool staysTogether(int row);

    void add(Pieces &pieces, const std::vector<Band> &bands, const Span &span);
    void addForEach(Pieces &pieces, const Band &band, const Span &span);

    void startPage(int row);
    /// Ends the page and begins the next one; the groups that are open go on.
    void breakPage(int nextRow);
    void endPage(bool last);
    void placeFixed(const std::vector<Band> &bands, double top, bool last);
    [[nodiscard]] bool isOnPage(const Band &band, bool last) const;
    [[nodiscard]] double heightOf(const std::vector<Band> &bands, bool last) const;
    [[nodiscard]] double carryHeight(int groups) const;
    [[nodiscard]] double bodyEnd(bool last) const;
    [[nodiscard]] double limit(bool last, int openGroups) const;
    [[nodiscard]] bool isLast(int row) const { return row + 1 == m_groups.rowCount(); }
    void enter(int row, const Span &span);
    void setTotalPages();

    const ReportFile &m_report;
    RowEnvironment &m_environment;
    const Groups &m_groups;
    BandSetter m_setter;
    Page m_page;                                    // the one in hand
    std::vector<Page> m_pages;                      // the full ones
    std::vector<std::vector<OpenText>> m_openTexts; // by page
    double m_bodyTop = 0;                           // below the page's headers alone
    double m_y = 0;                                 // where the next piece goes
    bool m_fresh = true;                            // the page has nothing of the body yet
    int m_open = 0;                                 // groups whose header is placed, footer not
    int m_placedRow = 0;                            // the last one on the page
    int m_serial = 0;
};

} // namespace report
