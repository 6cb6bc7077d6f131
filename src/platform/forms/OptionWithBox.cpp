#include "platform/forms/OptionWithBox.h"

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

} // namespace

OptionWithBox::OptionWithBox(QWidget *parent) : QRadioButton(parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize OptionWithBox::sizeHint() const
{
    QTextLayout lines;
    breakLines(lines, QWIDGETSIZE_MAX);
    const int width = captionLeft() + int(std::ceil(lines.lineAt(0).naturalTextWidth()));
    return {width, heightForWidth(width)};
}

QSize OptionWithBox::minimumSizeHint() const
{
    return {kNarrowest, boxLineHeight()};
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
    const QRect firstLine(0, 0, width(), boxLineHeight());

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
    QTextLayout lines;
    breakLines(lines, width());
    for (const Gap &gap : gaps()) {
        const QTextLine line = lines.lineForTextPosition(gap.start);
        const int left = captionLeft() + kBesideBox + int(std::lround(line.cursorToX(gap.start)));
        const double middle = line.y() + line.height() / 2;
        const int top = int(std::lround(middle - boxLineHeight() / 2.0));
        gap.box->setGeometry(left, top, boxWidth(*gap.box), boxLineHeight());
    }
}

bool OptionWithBox::hitButton(const QPoint &point) const
{
    return rect().contains(point);
}

std::vector<OptionWithBox::Gap> OptionWithBox::gaps() const
{
    static const QRegularExpression blanks(u" {2,}"_s);
    QRegularExpressionMatchIterator places = blanks.globalMatch(text());
    std::vector<Gap> result;
    for (QLineEdit *box : findChildren<QLineEdit *>(Qt::FindDirectChildrenOnly)) {
        if (!places.hasNext())
            break;
        const QRegularExpressionMatch place = places.next();
        result.push_back({box, int(place.capturedStart()), int(place.capturedLength())});
    }
    return result;
}

int OptionWithBox::boxWidth(const QLineEdit &box) const
{
    if (box.minimumWidth() > 0)
        return box.minimumWidth();
    return fontMetrics().horizontalAdvance(u'0') * kDigitsOfBox + 2 * kBesideBox;
}

int OptionWithBox::boxLineHeight() const
{
    int height = fontMetrics().height();
    for (const Gap &gap : gaps())
        height = std::max(height, gap.box->sizeHint().height());
    return height;
}

int OptionWithBox::captionLeft() const
{
    return style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, this) +
           style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, this);
}

double OptionWithBox::breakLines(QTextLayout &lines, double width) const
{
    QString caption = text();
    QList<QTextLayout::FormatRange> formats;
    const std::vector<Gap> allGaps = gaps();
    for (const Gap &gap : allGaps) {
        // The blanks are drawn out until the box has room among them. Such as break no line.
        caption.replace(gap.start, gap.length, QString(gap.length, QChar::Nbsp));
        const int natural = fontMetrics().horizontalAdvance(QString(gap.length, QChar::Nbsp));
        const int needed = boxWidth(*gap.box) + 2 * kBesideBox;
        QTextLayout::FormatRange wide{gap.start, gap.length, {}};
        wide.format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        wide.format.setFontLetterSpacing(double(std::max(0, needed - natural)) / gap.length);
        formats += wide;
    }
    lines.setFont(font());
    lines.setText(caption);
    lines.setFormats(formats);
    // A line stands level with its boxes, the first one with the option's mark in any case.
    double bottom = 0;
    lines.beginLayout();
    for (QTextLine line = lines.createLine(); line.isValid(); line = lines.createLine()) {
        line.setLineWidth(width - captionLeft());
        const bool hasBox = std::ranges::any_of(allGaps, [&](const Gap &gap) {
            return gap.start >= line.textStart() &&
                   gap.start < line.textStart() + line.textLength();
        });
        const double height =
            hasBox || line.lineNumber() == 0 ? double(boxLineHeight()) : line.height();
        line.setPosition(QPointF(0, bottom + (height - line.height()) / 2));
        bottom += height;
    }
    lines.endLayout();
    return bottom;
}
