#pragma once

#include "platform/report/Document.h"

#include <QRectF>
#include <QStringList>

#include <optional>
#include <vector>

/// A text as it stands on the paper, in mm from the upper left corner.
struct SeenText
{
    QString text; ///< with plain blanks
    QRectF room;  ///< its width and the height of its letters
    double baseline = 0;
};

/// Reads a page as one does who holds it: what a text is follows from the labels around it. It
/// knows nothing of the report file that the page was made from.
class PageReader
{
public:
    /// `page` is the page's index in the document, which is not needed any more afterwards.
    PageReader(const report::Document &document, size_t page);

    [[nodiscard]] const std::vector<SeenText> &texts() const { return m_texts; }
    /// The first text that is, or that begins with, the words; null for none. Not owned.
    [[nodiscard]] const SeenText *find(const QString &words) const;
    [[nodiscard]] const SeenText *findStart(const QString &words) const;
    /// The texts on that base line, from left to right.
    [[nodiscard]] std::vector<SeenText> row(double baseline) const;
    /// The next text to the right of a label; empty for none.
    [[nodiscard]] QString beside(const SeenText &label) const;
    /// The texts of a column, from the top down: those above `end` that begin or end where the
    /// heading above them does, as its letters stand to the left or to the right.
    [[nodiscard]] std::vector<SeenText> leftColumn(const SeenText &heading, double end) const;
    [[nodiscard]] std::vector<SeenText> rightColumn(const SeenText &heading, double end) const;

    /// What anyone would see to be wrong with the page: texts on or against each other, a text or a
    /// number across the edge of its frame, struck through by a line, or where no printer prints.
    [[nodiscard]] QStringList faults() const;

private:
    using Edge = qreal (QRectF::*)() const;
    [[nodiscard]] std::vector<SeenText> column(const SeenText &heading, double end,
                                               Edge edge) const;
    void addOverlaps(QStringList &faults) const;
    void addCrossings(const SeenText &text, QStringList &faults) const;
    [[nodiscard]] bool isPrintable(const SeenText &text) const;

    std::vector<SeenText> m_texts;
    std::vector<QRectF> m_frames;
    std::vector<QRectF> m_lines;
    QSizeF m_paper;
};

/// The faults of all pages, each with its page.
[[nodiscard]] QStringList layoutFaults(const report::Document &document);

/// An amount as the reports write it, in øre; nothing for what is none.
std::optional<qint64> oreOf(QString amount);
/// That many øre as a text for a message.
QString krOf(qint64 ore);
