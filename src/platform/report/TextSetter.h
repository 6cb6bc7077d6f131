#pragma once

#include "platform/report/Document.h"

#include <QFontMetricsF>

#include <vector>

namespace report {

/// Measures text in the styles of a document and breaks it into lines. Lengths are millimetres.
class TextSetter
{
public:
    explicit TextSetter(const std::vector<TextStyle> &styles);

    [[nodiscard]] double width(int style, const QString &text) const;
    /// From the upper edge of a line to its base line.
    [[nodiscard]] double ascent(int style) const { return font(style).ascent; }
    /// From one base line to the next.
    [[nodiscard]] double lineHeight(int style) const { return font(style).lineHeight; }

    /// The text's own lines, cut at blanks so that none is wider than `width`; a word that is wider
    /// alone is cut within.
    [[nodiscard]] QStringList wrapped(int style, const QString &text, double width) const;
    /// The text, or as much of its beginning as fits with "…" behind it.
    [[nodiscard]] QString shortened(int style, const QString &text, double width) const;

private:
    struct Font
    {
        QFontMetricsF metrics;
        double ascent;
        double lineHeight;
    };

    [[nodiscard]] const Font &font(int style) const { return m_fonts[size_t(style)]; }
    [[nodiscard]] bool fits(int style, const QString &text, double width) const;
    void wrapLine(int style, QStringView line, double width, QStringList &lines) const;
    [[nodiscard]] qsizetype fitting(int style, QStringView text, double width) const;

    std::vector<Font> m_fonts;
    /// The text measured last: breaking, shortening and placing it ask one after the other.
    struct Measured
    {
        int style = -1;
        QString text;
        double width = 0;
    };
    mutable Measured m_measured;
};

} // namespace report
