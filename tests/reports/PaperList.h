#pragma once

#include "reports/PageReader.h"

#include <QMap>

/// A list or a journal as its pages tell it: lines under headings, heads and sums of groups.
class PaperList
{
public:
    enum class Kind {
        Row,
        More,  ///< goes on with the row above
        Head,  ///< of a group
        Sum,   ///< of a group
        Total, ///< of the whole list
        Below  ///< of a table below the total, which has headings of its own
    };
    struct Line
    {
        Kind kind = Kind::Row;
        size_t page = 0;
        QString text;                 ///< the first one
        QMap<QString, QString> cells; ///< by heading

        /// In øre; 0 for an empty cell.
        [[nodiscard]] qint64 amount(const QString &heading) const;
    };

    /// Each row has something under the heading `key`.
    PaperList(const report::Document &document, const QString &key);

    [[nodiscard]] const std::vector<Line> &lines() const { return m_lines; }
    /// What stands under a heading, row by row.
    [[nodiscard]] QStringList column(const QString &heading) const;
    /// The sum with that text, or the line of a table below them; null for none. Not owned.
    [[nodiscard]] const Line *sum(const QString &text) const;

    /// Where the list contradicts itself: a page without the headings or its number, a head or a
    /// sum apart from its rows, a row or a sum that does not add up.
    [[nodiscard]] QStringList faults() const;

private:
    void readPage(const PageReader &page, size_t number);
    void readLine(const std::vector<SeenText> &row, size_t page);
    [[nodiscard]] Kind kindOf(const std::vector<SeenText> &row, const Line &line) const;
    [[nodiscard]] std::optional<QString> headingOf(const SeenText &text) const;

    void addPageFaults(QStringList &faults) const;
    void addRowFaults(QStringList &faults) const;
    void addSumFaults(QStringList &faults) const;

    const QString m_key;
    std::vector<SeenText> m_headings; ///< of the lines that are read
    bool m_belowTotal = false;
    QStringList m_columns;
    std::vector<Line> m_lines;
    QStringList m_unread;
};
