#pragma once

#include "platform/report/Pictures.h"
#include "platform/report/ReportFile.h"
#include "platform/report/RowEnvironment.h"
#include "platform/report/TextSetter.h"

namespace report {

/// A text that waits for the number of pages.
struct OpenText
{
    const Item *item = nullptr; ///< not owned
    QRectF rect;
    QString text; ///< with kTotalPagesMark
};

/// A band as set for one row: draw commands counted from its own upper left corner.
struct Piece
{
    double height = 0;
    Page content;
    std::vector<OpenText> open;

    /// Hands everything over to a page, moved by `offset`.
    void moveTo(Page &page, std::vector<OpenText> &openTexts, const QPointF &offset);
};

/// Turns bands into draw commands.
class BandSetter
{
public:
    /// Not owned: `report`, `environment` and `pictures`.
    BandSetter(const ReportFile &report, RowEnvironment &environment, Pictures &pictures);

    /// Sets a band on the environment's row, without looking at its own condition.
    [[nodiscard]] Piece set(const Band &band);
    /// Sets an item's text within `rect`, broken, shortened and aligned as the item says.
    void setText(const Item &item, const QRectF &rect, const QString &text, Page &page) const;

private:
    /// An item that stands on this row's band, and its text.
    struct Shown
    {
        const Item *item;
        QString text;
    };
    /// What an item that has grown does to those below it.
    struct Growth
    {
        double bottom; ///< of the item as designed
        double shift;  ///< what begins at or below that moves down by so much
    };

    [[nodiscard]] QString textOfItem(const Item &item);
    void setPicture(const Item &item, const QRectF &rect, Page &page);
    [[nodiscard]] std::vector<Growth> growthsOf(const std::vector<Shown> &shown) const;
    [[nodiscard]] static double shiftAt(const std::vector<Growth> &growths, double top);
    void place(const Shown &what, const QRectF &rect, Piece &piece);

    const ReportFile &m_report;
    RowEnvironment &m_environment;
    Pictures &m_pictures;
    TextSetter m_setter;
};

} // namespace report
