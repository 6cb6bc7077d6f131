#include "reports/PageReader.h"

#include "platform/report/Typesetting.h"

#include <QFontMetricsF>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// In mm.
constexpr double kSameEdge = 1e-6; ///< what stands so by chance only is farther off
constexpr double kSameLine = 0.5;
constexpr double kHair = 0.05; ///< what the eye does not see
constexpr double kGap = 0.4;   ///< texts side by side that are nearer look like one
constexpr double kMargin = 4;  ///< where printers do not print
constexpr double kBracket = 3; ///< the arms of a frame that has nothing but corners

/// How far letters reach above and below their base line. It remembers them, since a page has the
/// same ones over and over.
class Letters
{
public:
    /// Of a text in that style, in mm.
    std::pair<double, double> reach(const report::TextStyle &style, const QString &text)
    {
        QHash<QChar, QRectF> &known = m_known[style.font.key()];
        double above = 0;
        double below = 0;
        for (const QChar letter : text) {
            auto found = known.constFind(letter);
            if (found == known.cend())
                found = known.insert(
                    letter, QFontMetricsF(report::fontInUnits(style.font)).boundingRect(letter));
            above = std::max(above, -found->top());
            below = std::max(below, found->bottom());
        }
        return {above / report::kUnitsPerMm, below / report::kUnitsPerMm};
    }

private:
    QHash<QString, QHash<QChar, QRectF>> m_known; ///< by font
};

SeenText seen(const report::Document &document, const report::TextCommand &command)
{
    static Letters letters;
    const auto [above, below] =
        letters.reach(document.styles[static_cast<size_t>(command.style())], command.text());
    const QPointF at = command.baseline;
    return {
        QString(command.text()).replace(u'\u00a0', u' '),
        QRectF(QPointF(at.x(), at.y() - above), QPointF(at.x() + command.width(), at.y() + below)),
        at.y()};
}

/// A corner of a frame: where a short line to the side and a short one up or down meet.
struct Corner
{
    QPointF at;
    bool left;
    bool top;
};

std::vector<Corner> cornersOf(const std::vector<report::LineCommand> &lines)
{
    std::vector<Corner> corners;
    for (const report::LineCommand &side : lines) {
        if (side.line.dy() != 0 || side.line.length() > kBracket)
            continue;
        for (const report::LineCommand &upright : lines) {
            if (upright.line.dx() == 0 && upright.line.length() <= kBracket &&
                upright.line.p1() == side.line.p1())
                corners.push_back({side.line.p1(), side.line.dx() > 0, upright.line.dy() > 0});
        }
    }
    return corners;
}

/// The frames that nothing but corners tell of: from each upper left one to the next ones.
std::vector<QRectF> bracketsOf(const std::vector<report::LineCommand> &lines)
{
    const std::vector<Corner> corners = cornersOf(lines);
    std::vector<QRectF> frames;
    for (const Corner &first : corners) {
        if (!first.left || !first.top)
            continue;
        double right = 0;
        double bottom = 0;
        for (const Corner &other : corners) {
            const QPointF way = other.at - first.at;
            if (!other.left && other.top && way.y() == 0 && way.x() > 0)
                right = right > 0 ? std::min(right, way.x()) : way.x();
            if (other.left && !other.top && way.x() == 0 && way.y() > 0)
                bottom = bottom > 0 ? std::min(bottom, way.y()) : way.y();
        }
        frames.emplace_back(first.at, QSizeF(right, bottom));
    }
    return frames;
}

QString quoted(const SeenText &text)
{
    return u"«%1» at %2/%3"_s.arg(text.text)
        .arg(text.room.left(), 0, 'f', 1)
        .arg(text.baseline, 0, 'f', 1);
}

void sortBy(std::vector<SeenText> &texts, double (*place)(const SeenText &))
{
    std::stable_sort(texts.begin(), texts.end(),
                     [&](const SeenText &a, const SeenText &b) { return place(a) < place(b); });
}

double leftOf(const SeenText &text)
{
    return text.room.left();
}

double baselineOf(const SeenText &text)
{
    return text.baseline;
}

} // namespace

PageReader::PageReader(const report::Document &document, size_t page) : m_paper(document.paper)
{
    const report::Page &drawn = document.pages.at(page);
    m_texts.reserve(drawn.texts.size());
    for (const report::TextCommand &text : drawn.texts)
        m_texts.push_back(seen(document, text));
    m_frames = bracketsOf(drawn.lines);
    for (const report::BoxCommand &box : drawn.boxes)
        m_frames.push_back(box.rect);
    for (const report::LineCommand &line : drawn.lines) {
        const double half = line.width / 2;
        m_lines.push_back(
            QRectF(line.line.p1(), line.line.p2()).normalized().adjusted(-half, -half, half, half));
    }
}

const SeenText *PageReader::find(const QString &words) const
{
    const auto found = std::find_if(m_texts.begin(), m_texts.end(),
                                    [&](const SeenText &text) { return text.text == words; });
    return found == m_texts.end() ? nullptr : &*found;
}

const SeenText *PageReader::findStart(const QString &words) const
{
    const auto found = std::find_if(m_texts.begin(), m_texts.end(), [&](const SeenText &text) {
        return text.text.startsWith(words);
    });
    return found == m_texts.end() ? nullptr : &*found;
}

std::vector<SeenText> PageReader::row(double baseline) const
{
    std::vector<SeenText> texts;
    for (const SeenText &text : m_texts) {
        if (std::abs(text.baseline - baseline) < kSameLine)
            texts.push_back(text);
    }
    sortBy(texts, leftOf);
    return texts;
}

QString PageReader::beside(const SeenText &label) const
{
    for (const SeenText &text : row(label.baseline)) {
        if (text.room.left() > label.room.left() + kSameEdge)
            return text.text;
    }
    return {};
}

std::vector<SeenText> PageReader::leftColumn(const SeenText &heading, double end) const
{
    return column(heading, end, &QRectF::left);
}

std::vector<SeenText> PageReader::rightColumn(const SeenText &heading, double end) const
{
    return column(heading, end, &QRectF::right);
}

std::vector<SeenText> PageReader::column(const SeenText &heading, double end, Edge edge) const
{
    std::vector<SeenText> column;
    for (const SeenText &text : m_texts) {
        if (text.baseline > heading.baseline + kSameLine && text.baseline < end &&
            std::abs((text.room.*edge)() - (heading.room.*edge)()) < kSameEdge)
            column.push_back(text);
    }
    sortBy(column, baselineOf);
    return column;
}

QStringList PageReader::faults() const
{
    QStringList faults;
    addOverlaps(faults);
    for (const SeenText &text : m_texts) {
        addCrossings(text, faults);
        if (!isPrintable(text))
            faults += quoted(text) + u" is where no printer prints"_s;
    }
    return faults;
}

void PageReader::addOverlaps(QStringList &faults) const
{
    std::vector<SeenText> texts = m_texts;
    sortBy(texts, [](const SeenText &text) { return text.room.top(); });
    for (size_t i = 0; i < texts.size(); ++i) {
        const QRectF room = texts[i].room.adjusted(-kGap, kHair, kGap, -kHair);
        for (size_t next = i + 1; next < texts.size(); ++next) {
            if (texts[next].room.top() > room.bottom())
                break;
            if (room.intersects(texts[next].room))
                faults += quoted(texts[i]) + u" is on or against "_s + quoted(texts[next]);
        }
    }
}

void PageReader::addCrossings(const SeenText &text, QStringList &faults) const
{
    const QRectF inside = text.room.adjusted(kHair, kHair, -kHair, -kHair);
    for (const QRectF &frame : m_frames) {
        if (frame.intersects(inside) && !frame.contains(inside))
            faults += quoted(text) + u" crosses the edge of its frame"_s;
    }
    for (const QRectF &line : m_lines) {
        if (line.intersects(inside))
            faults += quoted(text) + u" is struck through"_s;
    }
}

/// The mark at the giro slip's machine-read line is preprinted on the paper; the form has its place
/// at the very edge, and printing covers it.
bool PageReader::isPrintable(const SeenText &text) const
{
    const QRectF printable(kMargin, kMargin, m_paper.width() - 2 * kMargin,
                           m_paper.height() - 2 * kMargin);
    return text.text == u"H"_s || text.room.isEmpty() || printable.contains(text.room);
}

QStringList layoutFaults(const report::Document &document)
{
    QStringList faults;
    for (size_t page = 0; page < document.pages.size(); ++page) {
        for (const QString &fault : PageReader(document, page).faults())
            faults += u"page %1: %2"_s.arg(page + 1).arg(fault);
    }
    return faults;
}

std::optional<qint64> oreOf(QString amount)
{
    static const QRegularExpression pattern(u"^-?\\d{1,3}( \\d{3})*,\\d\\d$"_s);
    if (!pattern.match(amount).hasMatch())
        return std::nullopt;
    return amount.remove(u' ').remove(u',').toLongLong();
}

QString krOf(qint64 ore)
{
    return u"%1 kr"_s.arg(static_cast<double>(ore) / 100, 0, 'f', 2);
}
