#include "platform/report/TextSetter.h"

#include "platform/report/Typesetting.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace report {

namespace {

constexpr double kTolerance = 1e-6; // mm
/// Texts up to so many characters are measured whole. The width of a much longer one does not fit
/// into the numbers that fonts are measured in.
constexpr qsizetype kMeasuredWhole = 1000;
constexpr qsizetype kMostKept = 4000; // texts, of each style

} // namespace

TextSetter::TextSetter(const std::vector<TextStyle> &styles)
{
    m_fonts.reserve(styles.size());
    for (const TextStyle &style : styles) {
        const QFont scaled = fontInUnits(style.font);
        const QFontMetricsF metrics(scaled);
        m_fonts.push_back(
            {metrics, metrics.ascent() / kUnitsPerMm, lineHeightInUnits(scaled) / kUnitsPerMm, {}});
    }
}

double TextSetter::advance(const Font &font, const QString &text)
{
    return font.metrics.horizontalAdvance(text) / kUnitsPerMm;
}

const TextCommand::Shared &TextSetter::set(int style, const QString &text) const
{
    const Font &font = this->font(style);
    const auto known = font.texts.constFind(text);
    if (known != font.texts.constEnd())
        return *known;
    if (font.texts.size() == kMostKept)
        font.texts.clear();
    return *font.texts.insert(
        text, TextCommand::Shared(new SetText{{}, style, text, advance(font, text)}));
}

/// How many characters from the start are no wider than `width`; at least one.
qsizetype TextSetter::fitting(int style, QStringView text, double width) const
{
    const auto fit = [&](qsizetype count) {
        return advance(font(style), text.first(count).toString()) <= width + kTolerance;
    };
    // However long the text is, no more than twice of what fits is measured.
    qsizetype fits = 1;
    qsizetype tooMany = 32;
    while (tooMany <= text.size() && fit(tooMany)) {
        fits = tooMany;
        tooMany *= 2;
    }
    tooMany = std::min(tooMany, text.size() + 1);
    while (fits + 1 < tooMany) {
        const qsizetype middle = (fits + tooMany) / 2;
        if (fit(middle))
            fits = middle;
        else
            tooMany = middle;
    }
    if (fits < text.size() && text[fits - 1].isHighSurrogate())
        fits += fits > 1 ? -1 : 1;
    return fits;
}

bool TextSetter::fits(int style, const QString &text, double width) const
{
    return text.size() <= kMeasuredWhole ? this->width(style, text) <= width + kTolerance
                                         : fitting(style, text, width) == text.size();
}

void TextSetter::wrapLine(int style, QStringView line, double width, QStringList &lines) const
{
    while (!line.isEmpty()) {
        qsizetype end = fitting(style, line, width);
        if (end < line.size() && line[end] != u' ') {
            const qsizetype blank = line.first(end).lastIndexOf(u' ');
            if (blank > 0)
                end = blank;
        }
        lines += line.first(end).toString();
        line = line.sliced(end);
        while (line.startsWith(u' '))
            line = line.sliced(1);
    }
}

QStringList TextSetter::wrapped(int style, const QString &text, double width) const
{
    QStringList lines;
    for (const QString &line : text.split(u'\n')) {
        const QString plain = line.endsWith(u'\r') ? line.chopped(1) : line;
        if (fits(style, plain, width))
            lines += plain;
        else
            wrapLine(style, plain, width, lines);
    }
    return lines;
}

QString TextSetter::shortened(int style, const QString &text, double width) const
{
    if (fits(style, text, width))
        return text;
    QString dots = u"…"_s;
    const double room = width - this->width(style, dots);
    if (room <= 0)
        return dots;
    return text.first(fitting(style, text, room)).trimmed() + dots;
}

} // namespace report
