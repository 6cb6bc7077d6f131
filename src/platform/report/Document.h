#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QSharedData>
#include <QSizeF>
#include <QString>

#include <utility>
#include <vector>

/// A report that has been laid out: pages of draw commands. It is a value that needs no report
/// file, no database and no printer any more. All lengths are millimetres from the paper's upper
/// left corner, x to the right and y down; the type size is in points.
namespace report {

/// How text looks. `font` has its size in points and is the same for every device.
struct TextStyle
{
    QString name; ///< as in the report file
    QFont font;
    QRgb color = 0xff000000;
};

/// A text in its style. A list says the same again and again, so whoever says it shares this.
struct SetText : QSharedData
{
    int style = 0; ///< index in Document::styles
    QString text;
    double width = 0; ///< as set, for finding and marking it
};

/// One line of text. A long report has half a million of them, so it is a place and no more.
struct TextCommand
{
    using Shared = QExplicitlySharedDataPointer<const SetText>;

    TextCommand(const QPointF &at, Shared text) : baseline(at), set(std::move(text)) {}
    TextCommand(const QPointF &at, double width, int style, const QString &text)
        : TextCommand(at, Shared(new SetText{{}, style, text, width}))
    {
    }

    [[nodiscard]] const QString &text() const { return set->text; }
    [[nodiscard]] int style() const { return set->style; }
    [[nodiscard]] double width() const { return set->width; }

    QPointF baseline; ///< left end of the base line
    Shared set;       ///< never null
};

struct LineCommand
{
    QLineF line;
    double width = 0; ///< thickness
    QRgb color = 0xff000000;
    bool dashed = false;
};

struct BoxCommand
{
    QRectF rect;
    double width = 0; ///< thickness of the frame, drawn inside `rect`; 0 for no frame
    QRgb color = 0xff000000;
    QRgb fill = 0;     ///< alpha 0 for none
    double radius = 0; ///< of the corners
};

struct PictureCommand
{
    QRectF rect;
    int picture = 0; ///< index in Document::pictures
};

/// What is drawn on one page, in this order: boxes, pictures, lines, texts; each in file order.
struct Page
{
    std::vector<BoxCommand> boxes;
    std::vector<PictureCommand> pictures;
    std::vector<LineCommand> lines;
    std::vector<TextCommand> texts;
};

/// Every page has the same paper, which is the report's own and not the printer's.
struct Document
{
    QString title;
    QString fileName; ///< what a file of it is called, without ending; empty for the title
    QString author;   ///< whose document it is; may be empty
    QSizeF paper;     ///< A4 standing is 210 by 297
    std::vector<TextStyle> styles;
    std::vector<QImage> pictures;
    std::vector<Page> pages;
};

} // namespace report
