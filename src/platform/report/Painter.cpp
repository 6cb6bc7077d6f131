#include "platform/report/Painter.h"

#include "platform/report/PdfTexts.h"
#include "platform/report/Typesetting.h"

#include <QPainter>

namespace report {

namespace {

/// Draws in units, of which a page has so many that whole numbers of them are fine enough.
class PagePainter
{
public:
    PagePainter(QPainter &painter, const Document &document)
        : m_painter(painter), m_document(document)
    {
        m_fonts.reserve(document.styles.size());
        for (const TextStyle &style : document.styles)
            m_fonts.push_back(fontInUnits(style.font));
    }

    void draw(const BoxCommand &box)
    {
        const double inset = box.width / 2; // the frame stays inside
        const QRectF rect = units(box.rect.adjusted(inset, inset, -inset, -inset));
        m_painter.setPen(box.width > 0 ? pen(box.width, box.color, false) : QPen(Qt::NoPen));
        const QColor fill = QColor::fromRgba(box.fill);
        m_painter.setBrush(fill.alpha() > 0 ? QBrush(fill) : QBrush(Qt::NoBrush));
        const double radius = box.radius * kUnitsPerMm;
        m_painter.drawRoundedRect(rect, radius, radius);
    }

    void draw(const PictureCommand &command)
    {
        const QImage &picture = m_document.pictures[size_t(command.picture)];
        m_painter.drawImage(units(command.rect), picture);
    }

    void draw(const LineCommand &line)
    {
        m_painter.setPen(pen(line.width, line.color, line.dashed));
        m_painter.drawLine(QLineF(line.line.p1() * kUnitsPerMm, line.line.p2() * kUnitsPerMm));
    }

    void draw(const TextCommand &text)
    {
        const auto style = size_t(text.style());
        m_painter.setFont(m_fonts[style]);
        m_painter.setPen(QColor::fromRgba(m_document.styles[style].color));
        m_painter.drawText(text.baseline * kUnitsPerMm, text.text());
    }

private:
    static QRectF units(const QRectF &rect)
    {
        return {rect.topLeft() * kUnitsPerMm, rect.size() * kUnitsPerMm};
    }

    static QPen pen(double width, QRgb color, bool dashed)
    {
        QPen pen(QColor::fromRgba(color), width * kUnitsPerMm, Qt::SolidLine, Qt::FlatCap,
                 Qt::MiterJoin);
        if (dashed)
            pen.setDashPattern({4, 3});
        return pen;
    }

    QPainter &m_painter;
    const Document &m_document;
    std::vector<QFont> m_fonts;
};

} // namespace

void paintPage(QPainter &painter, const Document &document, int page, double unitsPerMm,
               PdfTexts *texts)
{
    const Page &commands = document.pages.at(size_t(page));
    painter.save();
    const double scale = unitsPerMm / kUnitsPerMm;
    painter.scale(scale, scale);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    PagePainter drawing(painter, document);
    const auto drawAll = [&](const auto &list) {
        for (const auto &command : list)
            drawing.draw(command);
    };
    drawAll(commands.boxes);
    drawAll(commands.pictures);
    drawAll(commands.lines);
    if (texts)
        texts->draw(painter, commands.texts);
    else
        drawAll(commands.texts);
    painter.restore();
}

} // namespace report
