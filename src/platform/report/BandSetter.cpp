#include "platform/report/BandSetter.h"

#include "platform/report/Functions.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace report {

namespace {

constexpr double kTolerance = 1e-6; // mm

template<class Command>
void append(std::vector<Command> &to, std::vector<Command> &from)
{
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

/// The largest rectangle of the picture's proportions within `rect`.
QRectF fitted(const QSizeF &picture, const QRectF &rect, Qt::Alignment alignment)
{
    const QSizeF size = picture.scaled(rect.size(), Qt::KeepAspectRatio);
    const QSizeF room = rect.size() - size;
    QPointF corner = rect.topLeft();
    if (alignment & Qt::AlignHCenter)
        corner.rx() += room.width() / 2;
    else if (alignment & Qt::AlignRight)
        corner.rx() += room.width();
    if (alignment & Qt::AlignVCenter)
        corner.ry() += room.height() / 2;
    else if (alignment & Qt::AlignBottom)
        corner.ry() += room.height();
    return {corner, size};
}

/// A sum that is cut short would be read as another sum.
bool mayBeShortened(const Item &item)
{
    if (!item.value)
        return true;
    const Type type = item.value.expr->type;
    return type != Type::Number && type != Type::Money && type != Type::Date;
}

} // namespace

void Piece::moveTo(Page &page, std::vector<OpenText> &openTexts, const QPointF &offset)
{
    for (BoxCommand &box : content.boxes)
        box.rect.translate(offset);
    for (PictureCommand &picture : content.pictures)
        picture.rect.translate(offset);
    for (LineCommand &line : content.lines)
        line.line.translate(offset);
    for (TextCommand &text : content.texts)
        text.baseline += offset;
    for (OpenText &text : open)
        text.rect.translate(offset);
    append(page.boxes, content.boxes);
    append(page.pictures, content.pictures);
    append(page.lines, content.lines);
    append(page.texts, content.texts);
    append(openTexts, open);
}

BandSetter::BandSetter(const ReportFile &report, RowEnvironment &environment, Pictures &pictures)
    : m_report(report), m_environment(environment), m_pictures(pictures), m_setter(report.styles)
{
}

QString BandSetter::textOfItem(const Item &item)
{
    if (!item.value)
        return item.text;
    const Value value = valueOf(item.value, m_environment);
    return item.format.isEmpty() ? textOf(value) : textOf(value, item.format);
}

double BandSetter::shiftAt(const std::vector<Growth> &growths, double top)
{
    double shift = 0;
    for (const Growth &growth : growths) {
        if (top >= growth.bottom - kTolerance)
            shift = std::max(shift, growth.shift);
    }
    return shift;
}

std::vector<BandSetter::Growth> BandSetter::growthsOf(const std::vector<Shown> &shown) const
{
    std::vector<const Shown *> growing;
    for (const Shown &candidate : shown) {
        if (candidate.item->grow)
            growing.push_back(&candidate);
    }
    std::stable_sort(growing.begin(), growing.end(), [](const Shown *a, const Shown *b) {
        return a->item->rect.top() < b->item->rect.top();
    });
    std::vector<Growth> growths;
    for (const Shown *grown : growing) {
        const Item &item = *grown->item;
        const auto lines =
            double(m_setter.wrapped(item.style, grown->text, item.rect.width()).size());
        const double needed = lines * m_setter.lineHeight(item.style);
        const double more = std::max(0.0, needed - item.rect.height());
        growths.push_back({item.rect.bottom(), shiftAt(growths, item.rect.top()) + more});
    }
    return growths;
}

Piece BandSetter::set(const Band &band)
{
    std::vector<Shown> shown;
    shown.reserve(band.items.size());
    for (const Item &item : band.items) {
        if (isShown(item.visible, m_environment))
            shown.push_back({&item, item.kind == ItemKind::Text ? textOfItem(item) : QString()});
    }
    const std::vector<Growth> growths = growthsOf(shown);
    const double growth = shiftAt(growths, std::numeric_limits<double>::infinity());
    Piece piece;
    piece.height = band.height + growth;
    for (const Shown &what : shown) {
        const Item &item = *what.item;
        QRectF rect = item.rect.translated(0, shiftAt(growths, item.rect.top()));
        if (item.stretch)
            rect.setBottom(item.rect.bottom() + growth);
        if (item.grow)
            rect.setBottom(rect.bottom() + growth);
        place(what, rect, piece);
    }
    return piece;
}

void BandSetter::place(const Shown &what, const QRectF &rect, Piece &piece)
{
    const Item &item = *what.item;
    switch (item.kind) {
    case ItemKind::Text:
        if (what.text.contains(kTotalPagesMark))
            piece.open.push_back({&item, rect, what.text});
        else
            setText(item, rect, what.text, piece.content);
        break;
    case ItemKind::Line:
        piece.content.lines.push_back(
            {QLineF(rect.topLeft(), rect.bottomRight()), item.width, item.color, item.dashed});
        break;
    case ItemKind::Box:
        piece.content.boxes.push_back({rect, item.width, item.color, item.fill, item.radius});
        break;
    case ItemKind::Picture:
        setPicture(item, rect, piece.content);
        break;
    }
}

void BandSetter::setText(const Item &item, const QRectF &rect, const QString &text,
                         Page &page) const
{
    if (text.isEmpty())
        return;
    const int style = item.style;
    const double lineHeight = m_setter.lineHeight(style);
    QStringList lines;
    if (item.wrap)
        lines = m_setter.wrapped(style, text, rect.width());
    else
        lines = QString(text).remove(u'\r').split(u'\n');
    const auto room = qsizetype(std::max(1.0, (rect.height() + kTolerance) / lineHeight));
    if (item.wrap && lines.size() > room) {
        lines.resize(room);
        lines.back() += u'…';
    }

    double top = rect.top();
    const double free = rect.height() - lineHeight * double(lines.size());
    if (item.alignment & Qt::AlignVCenter)
        top += free / 2;
    else if (item.alignment & Qt::AlignBottom)
        top += free;
    double baseline = top + m_setter.ascent(style);
    for (QString &line : lines) {
        if (mayBeShortened(item))
            line = m_setter.shortened(style, line, rect.width());
        const TextCommand::Shared &set = m_setter.set(style, line);
        double left = rect.left();
        if (item.alignment & Qt::AlignRight)
            left = rect.right() - set->width;
        else if (item.alignment & Qt::AlignHCenter)
            left += (rect.width() - set->width) / 2;
        if (!line.isEmpty())
            page.texts.emplace_back(QPointF(left, baseline), set);
        baseline += lineHeight;
    }
}

void BandSetter::setPicture(const Item &item, const QRectF &rect, Page &page)
{
    int number = -1;
    if (item.value) {
        const Value value = valueOf(item.value, m_environment);
        if (!value.isNull())
            number = m_pictures.fromBytes(value.toBytes());
    } else {
        number = m_pictures.fromFile(QFileInfo(m_report.path).dir().filePath(item.file));
    }
    if (number >= 0)
        page.pictures.push_back(
            {fitted(m_pictures.picture(number).size(), rect, item.alignment), number});
}

} // namespace report
