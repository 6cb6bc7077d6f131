#pragma once

#include "platform/report/Document.h"
#include "platform/report/FormulaText.h"
#include "platform/report/Query.h"

#include <QMarginsF>
#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

/// A report file in memory: what docs/REPORTS.md describes. Lengths are millimetres; those of an
/// item count from its band's upper left corner, those of a band from the page's left margin.
namespace report {

enum class ItemKind { Text, Line, Box, Picture };

/// One thing that a band shows.
struct Item
{
    ItemKind kind = ItemKind::Text;
    QRectF rect; ///< of a line: its start and the way to its end
    FormulaText visible;
    bool stretch = false; ///< the lower end follows the band's growth

    // Text and picture.
    FormulaText value;
    QString text; ///< shown where there is no value
    int style = 0;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    QString format;
    bool wrap = false;
    bool grow = false; ///< makes its band higher when the text needs it
    QString file;      ///< of a picture; path beside the report file

    // Line and box.
    double width = 0;
    QRgb color = 0xff000000;
    QRgb fill = 0;
    double radius = 0;
    bool dashed = false;
};

/// On which pages a band of the page stands.
enum class Pages { All, First, NotFirst, Last, NotLast };

/// A horizontal strip of items.
struct Band
{
    double height = 0;
    FormulaText visible;
    FormulaText each; ///< repeats the band for every value among its rows
    Pages pages = Pages::All;
    std::vector<Item> items;
};

struct Group
{
    QString name;
    FormulaText on;
    bool keepTogether = false;
    bool repeatHeader = false;
    bool newPage = false;
    std::vector<Band> headers;
    std::vector<Band> footers;
    std::vector<Band> carryHeaders;
    std::vector<Band> carryFooters;
};

/// A named formula of the file.
struct DeclaredFormula
{
    QString name;
    FormulaText text;
};

struct ReportFile
{
    QString path;
    QString title;
    FormulaText fileName; ///< of the first row; none for the title
    FormulaText author;   ///< of the first row; may be none
    QSizeF paper = {210, 297};
    QMarginsF margins = {15, 15, 15, 15};
    std::optional<Query> query;
    std::vector<DeclaredFormula> formulas;
    std::vector<TextStyle> styles; ///< the first is the one of items that name none
    std::vector<Band> reportHeaders;
    std::vector<Band> pageHeaders;
    std::vector<Group> groups; ///< the outermost first
    std::vector<Band> details;
    std::vector<Band> pageFooters;
    std::vector<Band> reportFooters;
};

} // namespace report
