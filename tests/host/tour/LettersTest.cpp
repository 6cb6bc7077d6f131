#include "host/tour/DesktopTest.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTableView>

#include <string>

using namespace Qt::StringLiterals;

namespace {

/// The columns of customers' names, by their headers.
const QStringList kNameColumns{u"Navn"_s, u"Kundenavn"_s};
constexpr int kLettersOfName = 20;
constexpr int kMuchRoom = 60; ///< pixels, about two lines of the largest letters
constexpr int kMargin = 4;    ///< pixels at either side of a caption

/// What in the window is cut off: captions, headers, and names of customers.
class Cut
{
public:
    explicit Cut(const QWidget &window) : m_window(window)
    {
        for (const QWidget *widget : window.findChildren<QWidget *>()) {
            if (!widget->isVisible())
                continue;
            if (const auto *label = qobject_cast<const QLabel *>(widget))
                caption(*label, label->text());
            else if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
                caption(*button, button->text());
            else if (const auto *grid = qobject_cast<const QTableView *>(widget))
                headers(*grid);
        }
    }

    QStringList found;

private:
    void tell(const QWidget &widget, const QString &what, int has, int needs)
    {
        found += u"%1/%2: %3 has %4 of %5 pixels"_s
                     .arg(m_window.objectName(), widget.objectName(), what.left(30))
                     .arg(has)
                     .arg(needs);
    }
    void caption(const QWidget &widget, const QString &text)
    {
        if (text.isEmpty() || widget.inherits("OptionWithBox"))
            return;
        const auto *label = qobject_cast<const QLabel *>(&widget);
        const bool breaksLines = label && label->wordWrap();
        const int seen = widget.visibleRegion().boundingRect().width();
        // What a style makes a push button wider than its words for is no loss.
        const int words = widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
        const int needs = qobject_cast<const QPushButton *>(&widget) ? words + 2 * kMargin
                                                                     : widget.sizeHint().width();
        if (!breaksLines && seen < needs)
            tell(widget, text, seen, needs);
        const int height =
            breaksLines ? label->heightForWidth(widget.width()) : widget.fontMetrics().height();
        if (widget.visibleRegion().boundingRect().height() < height)
            tell(widget, text, widget.height(), height);
        if (breaksLines && widget.height() > height + kMuchRoom)
            tell(widget, text + u" too much"_s, widget.height(), height);
    }
    void headers(const QTableView &grid)
    {
        const QHeaderView &header = *grid.horizontalHeader();
        for (int col = 0; col < header.count(); ++col) {
            if (header.isSectionHidden(col))
                continue;
            const QString text = header.model()->headerData(col, Qt::Horizontal).toString();
            const int words = header.fontMetrics().horizontalAdvance(text);
            const int edge = header.sectionViewportPosition(col) + header.sectionSize(col);
            if (header.sectionSize(col) < words)
                tell(grid, text, header.sectionSize(col), words);
            if (edge > grid.viewport()->width())
                tell(grid, text + u" at the edge"_s, grid.viewport()->width(), edge);
            const int letters = grid.fontMetrics().averageCharWidth() * kLettersOfName;
            if (kNameColumns.contains(text) && header.sectionSize(col) < letters)
                tell(grid, u"20 letters of "_s + text, header.sectionSize(col), letters);
        }
    }

    const QWidget &m_window;
};

/// The buttons and fields of the window that cannot be seen as a whole wherever it is scrolled to.
QStringList outOfReach(const QWidget &window)
{
    constexpr int kBeside = 1;
    QStringList found;
    auto *page = window.findChild<QScrollArea *>(u"rulleside"_s);
    for (const QWidget *control : window.findChildren<QWidget *>()) {
        // Of a picker's own field the screens show nothing; its text stands beside it.
        if (control->parentWidget()->inherits("QAbstractSpinBox"))
            continue;
        const bool takesInput = control->inherits("QLineEdit") || control->inherits("QComboBox") ||
                                control->inherits("QAbstractSpinBox") ||
                                control->inherits("QAbstractButton");
        if (!takesInput || !control->isVisible() || control->focusPolicy() == Qt::NoFocus)
            continue;
        if (page && page->isAncestorOf(control)) {
            const QRect place(control->mapTo(page->widget(), QPoint(0, 0)), control->size());
            page->ensureVisible(place.right(), place.bottom(), kBeside, kBeside);
            page->ensureVisible(place.left(), place.top(), kBeside, kBeside);
        }
        if (control->visibleRegion().boundingRect() != control->rect())
            found += window.objectName() + u'/' + control->objectName();
    }
    return found;
}

/// A screen of 1366 by 768 pixels, and its letters.
struct Desktop
{
    int percent;
    int points;
};

void PrintTo(const Desktop &desktop, std::ostream *out)
{
    *out << desktop.points << " points at " << desktop.percent << " percent";
}

class LettersTest : public DesktopTest, public ::testing::WithParamInterface<Desktop>
{
protected:
    // In the pixels that a program sees where each of them is drawn larger.
    LettersTest() : DesktopTest(QSize(1366, 768) * 100 / GetParam().percent)
    {
        QFont font = QApplication::font();
        font.setPointSize(GetParam().points);
        QApplication::setFont(font);
    }
};

TEST_P(LettersTest, NothingIsCutOnTheTour)
{
    int looked = 0;
    const QStringList found = foundOnTour([&](const QWidget &window) {
        if (!window.objectName().startsWith(u"frm"_s))
            return QStringList();
        ++looked;
        QStringList cut = Cut(window).found;
        if (!window.screen()->geometry().contains(window.geometry()))
            cut += window.objectName() + u" goes beyond the screen"_s;
        return cut;
    });
    EXPECT_TRUE(found.isEmpty()) << found.join(u'\n').toStdString();
    EXPECT_GT(looked, 20);
}

/// The screens that need more than the screen has.
class SmallScreenTest : public LettersTest
{
};

TEST_P(SmallScreenTest, EveryControlOfTheTourCanBeReached)
{
    int scrolled = 0;
    const QStringList found = foundOnTour([&](const QWidget &window) {
        if (!window.objectName().startsWith(u"frm"_s))
            return QStringList();
        scrolled += window.findChild<QScrollArea *>(u"rulleside"_s) ? 1 : 0;
        QStringList missed = outOfReach(window);
        if (!window.screen()->geometry().contains(window.geometry()))
            missed += window.objectName() + u" goes beyond the screen"_s;
        return missed;
    });
    EXPECT_TRUE(found.isEmpty()) << found.join(u'\n').toStdString();
    EXPECT_GT(scrolled, 5);
}

INSTANTIATE_TEST_SUITE_P(Desktops, SmallScreenTest,
                         ::testing::Values(Desktop{200, 10}, Desktop{200, 12}),
                         [](const auto &desktop) {
                             return std::to_string(desktop.param.points) + "at" +
                                    std::to_string(desktop.param.percent);
                         });

INSTANTIATE_TEST_SUITE_P(Desktops, LettersTest,
                         ::testing::Values(Desktop{100, 8}, Desktop{100, 10}, Desktop{100, 12},
                                           Desktop{100, 16}, Desktop{150, 10}),
                         [](const auto &desktop) {
                             return std::to_string(desktop.param.points) + "at" +
                                    std::to_string(desktop.param.percent);
                         });

} // namespace
