#pragma once

#include "platform/report/Document.h"

#include <QFontMetricsF>
#include <QHash>

#include <vector>

namespace report {

/// Measures text in the styles of a document and breaks it into lines. Lengths are millimetres.
class TextSetter
{
public:
    explicit TextSetter(const std::vector<TextStyle> &styles);

    /// The text with its width; the same one again for an equal text.
    [[nodiscard]] const TextCommand::Shared &set(int style, const QString &text) const;
    [[nodiscard]] double width(int style, const QString &text) const
    {
        return set(style, text)->width;
    }
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
        /// The texts so far. Breaking, shortening and placing a text ask one after the other, and
        /// lists say the same again and again: dates, names, headings.
        mutable QHash<QString, TextCommand::Shared> texts;
    };

    [[nodiscard]] const Font &font(int style) const { return m_fonts[size_t(style)]; }
    [[nodiscard]] static double advance(const Font &font, const QString &text);
    [[nodiscard]] bool fits(int style, const QString &text, double width) const;
    void wrapLine(int style, QStringView line, double width, QStringList &lines) const;
    [[nodiscard]] qsizetype fitting(int style, QStringView text, double width) const;

    std::vector<Font> m_fonts;
};

} // namespace report
