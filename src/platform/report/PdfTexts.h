#pragma once

#include "platform/report/Document.h"

#include <QGlyphRun>
#include <QHash>
#include <QRawFont>

#include <optional>

class QPainter;

namespace report {

/// Draws the texts of a document into a PDF file, where they look and are read as if the painter
/// had drawn them. It is for speed alone: a list says the same again and again, so a text is set
/// once and its glyphs kept; they are of faces that are quick to embed (PdfFaces.h); and they stand
/// on whole numbers, of which the file has thousands a page. Texts for which that does not serve
/// are left to the painter: underlined ones, very large ones, and those that need more than one
/// face.
class PdfTexts
{
public:
    explicit PdfTexts(const std::vector<TextStyle> &styles);

    /// The texts of a page, on a painter whose units are those of a font in units. The painter is
    /// left with others.
    void draw(QPainter &painter, const std::vector<TextCommand> &texts);

private:
    struct Style
    {
        QFont font;
        QColor color;
    };

    [[nodiscard]] const QGlyphRun &runOf(const TextCommand &text);
    /// Empty for a text that is left to the painter itself.
    [[nodiscard]] QGlyphRun set(const QFont &font, const QString &text);
    /// None for a face that is left to the painter itself.
    [[nodiscard]] const std::optional<QRawFont> &faceFor(const QRawFont &face);

    std::vector<Style> m_styles;
    QHash<QRawFont, std::optional<QRawFont>> m_faces; ///< the quick ones, by face
    QHash<TextCommand::Shared, QGlyphRun> m_runs;     ///< of the texts so far
};

} // namespace report
