#include "registers/OptionWithBox.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int kDigitsOfBox = 5;
constexpr int kBesideBox = 6;   // pixels between the box and the words around it
constexpr int kNarrowest = 200; // pixels
constexpr int kFocusMargin = 2;

/// The place of the run of blanks in a caption.
QRegularExpressionMatch gapOf(const QString &caption)
{
    static const QRegularExpression blanks(u" {2,}"_s);
    return blanks.match(caption);
}

} // namespace

OptionWithBox::OptionWithBox(QWidget *parent) : QRadioButton(parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize OptionWithBox::sizeHint() const
{
    const int width = captionLeft() + fontMetrics().horizontalAdvance(text()) + boxWidth();
    return {width, heightForWidth(width)};
}

QSize OptionWithBox::minimumSizeHint() const
{
    return {kNarrowest, firstLineHeight()};
}

int OptionWithBox::heightForWidth(int width) const
{
    QTextLayout lines;
    return int(std::ceil(breakLines(lines, width)));
}

void OptionWithBox::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRect firstLine(0, 0, width(), firstLineHeight());

    QStyleOptionButton indicator = option;
    indicator.rect = firstLine;
    indicator.rect = style()->subElementRect(QStyle::SE_RadioButtonIndicator, &indicator, this);
    painter.drawPrimitive(QStyle::PE_IndicatorRadioButton, indicator);

    QTextLayout lines;
    breakLines(lines, width());
    const QPointF place(captionLeft(), 0);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    lines.draw(&painter, place);

    if (option.state & QStyle::State_HasFocus) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = lines.boundingRect().translated(place).toAlignedRect().adjusted(
            -kFocusMargin, -kFocusMargin, kFocusMargin, kFocusMargin);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

void OptionWithBox::resizeEvent(QResizeEvent *event)
{
    QRadioButton::resizeEvent(event);
    QLineEdit *standing = box();
    if (!standing)
        return;
    QTextLayout lines;
    breakLines(lines, width());
    const QTextLine line = lines.lineAt(0);
    const int left = captionLeft() + kBesideBox +
                     int(std::lround(line.cursorToX(int(gapOf(text()).capturedStart()))));
    standing->setGeometry(left, 0, boxWidth() - 2 * kBesideBox, firstLineHeight());
}

bool OptionWithBox::hitButton(const QPoint &point) const
{
    return rect().contains(point);
}

QLineEdit *OptionWithBox::box() const
{
    return findChild<QLineEdit *>();
}

int OptionWithBox::boxWidth() const
{
    return fontMetrics().horizontalAdvance(u'0') * kDigitsOfBox + 4 * kBesideBox;
}

int OptionWithBox::firstLineHeight() const
{
    return std::max(fontMetrics().height(), box() ? box()->sizeHint().height() : 0);
}

int OptionWithBox::captionLeft() const
{
    return style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, this) +
           style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, this);
}

double OptionWithBox::breakLines(QTextLayout &lines, double width) const
{
    lines.setFont(font());
    lines.setText(text());
    const QRegularExpressionMatch gap = gapOf(text());
    if (gap.hasMatch()) {
        // The blanks of the caption are drawn out until the box has room among them.
        const auto blanks = int(gap.capturedLength());
        const int natural = fontMetrics().horizontalAdvance(gap.captured());
        QTextLayout::FormatRange wide{int(gap.capturedStart()), blanks, {}};
        wide.format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        wide.format.setFontLetterSpacing(double(std::max(0, boxWidth() - natural)) / blanks);
        lines.setFormats({wide});
    }
    // The first line stands level with the box, the next ones under it.
    double bottom = firstLineHeight();
    lines.beginLayout();
    for (QTextLine line = lines.createLine(); line.isValid(); line = lines.createLine()) {
        line.setLineWidth(width - captionLeft());
        const bool first = line.lineNumber() == 0;
        line.setPosition(QPointF(0, first ? (bottom - line.height()) / 2 : bottom));
        if (!first)
            bottom += line.height();
    }
    lines.endLayout();
    return bottom;
}
