#include "platform/report/PdfTexts.h"

#include "platform/report/PdfFaces.h"
#include "platform/report/Typesetting.h"

#include <QPainter>
#include <QTextLayout>

#include <cmath>

namespace report {

namespace {

/// The toolkit places glyphs on 64ths of a unit; in units as fine as that they stand on whole ones.
constexpr int kFiner = 64;
constexpr int kLargestFace = 65535;   // in any unit; the toolkit has none that are larger
constexpr qsizetype kMostKept = 4000; // texts

QPointF inFinerUnits(const QPointF &point)
{
    return {std::round(point.x() * kFiner), std::round(point.y() * kFiner)};
}

/// As the painter itself does it.
void drawPlain(QPainter &painter, const QFont &font, const QPointF &baseline, const QString &text)
{
    painter.save();
    painter.scale(kFiner, kFiner);
    painter.setFont(font);
    painter.drawText(baseline, text);
    painter.restore();
}

} // namespace

PdfTexts::PdfTexts(const std::vector<TextStyle> &styles)
{
    m_styles.reserve(styles.size());
    for (const TextStyle &style : styles)
        m_styles.push_back({fontInUnits(style.font), QColor::fromRgba(style.color)});
}

const std::optional<QRawFont> &PdfTexts::faceFor(const QRawFont &face)
{
    auto known = m_faces.constFind(face);
    if (known == m_faces.constEnd())
        known = m_faces.insert(face, quickFace(face, face.pixelSize() * kFiner));
    return *known;
}

QGlyphRun PdfTexts::set(const QFont &font, const QString &text)
{
    if (font.underline() || font.pixelSize() * kFiner > kLargestFace)
        return {};
    QTextLayout layout(text, font);
    layout.setCacheEnabled(true); // else the text is set again when it is asked for its glyphs
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = line.glyphRuns();
    // Something in it breaks lines, or it needs several faces, whose letters are not in order here.
    if (line.textLength() < text.size() || runs.size() != 1)
        return {};
    QGlyphRun run = runs.first();
    const std::optional<QRawFont> &face = faceFor(run.rawFont());
    if (!face)
        return {};
    QList<QPointF> positions = run.positions();
    for (QPointF &position : positions)
        position = inFinerUnits(position - QPointF(0, line.ascent()));
    run.setPositions(positions);
    run.setRawFont(*face);
    return run;
}

const QGlyphRun &PdfTexts::runOf(const TextCommand &text)
{
    const auto known = m_runs.constFind(text.set);
    if (known != m_runs.constEnd())
        return *known;
    if (m_runs.size() == kMostKept)
        m_runs.clear();
    return *m_runs.insert(text.set, set(m_styles[size_t(text.style())].font, text.text()));
}

void PdfTexts::draw(QPainter &painter, const std::vector<TextCommand> &texts)
{
    painter.scale(1.0 / kFiner, 1.0 / kFiner);
    for (const TextCommand &text : texts) {
        const Style &style = m_styles[size_t(text.style())];
        painter.setPen(style.color);
        const QPointF baseline = text.baseline * kUnitsPerMm;
        const QGlyphRun &run = runOf(text);
        if (run.isEmpty())
            drawPlain(painter, style.font, baseline, text.text());
        else
            painter.drawGlyphRun(inFinerUnits(baseline), run);
    }
}

} // namespace report
