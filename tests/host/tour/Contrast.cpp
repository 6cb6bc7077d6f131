#include "host/tour/Contrast.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QHash>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr double kReadable = 4.5;
constexpr int kFrame = 4; ///< pixels around what a control shows

struct Text
{
    const QWidget *widget;
    QRect place; ///< in the widget
    QString text;
};
using Texts = std::vector<Text>;

double luminance(QRgb color)
{
    const auto linear = [](int part) {
        const double share = part / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
           0.0722 * linear(qBlue(color));
}

/// The ground is the colour that most pixels have; of a letter's pixels some have its full colour.
double contrastIn(const QImage &picture)
{
    QHash<QRgb, int> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++pixels[picture.pixel(x, y)];
    }
    QRgb ground = 0;
    for (auto color = pixels.cbegin(); color != pixels.cend(); ++color) {
        if (color.value() > pixels.value(ground))
            ground = color.key();
    }
    double most = 1;
    for (auto color = pixels.cbegin(); color != pixels.cend(); ++color)
        most = std::max(most, contrast(color.key(), ground));
    return most;
}

void addCells(Texts &texts, const QAbstractItemView &view)
{
    const QAbstractItemModel &model = *view.model();
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int col = 0; col < model.columnCount(); ++col) {
            const QModelIndex cell = model.index(row, col);
            if (!view.indexWidget(cell) && !cell.data(Qt::CheckStateRole).isValid()) {
                texts.push_back({view.viewport(), view.visualRect(cell).adjusted(3, 3, -3, -3),
                                 cell.data().toString()});
            }
        }
    }
}

void addHeads(Texts &texts, const QHeaderView &header)
{
    for (int section = 0; section < header.count(); ++section) {
        const int start = header.sectionViewportPosition(section);
        const int size = header.sectionSize(section);
        const QRect place = header.orientation() == Qt::Horizontal
                                ? QRect(start, 0, size, header.height())
                                : QRect(0, start, header.width(), size);
        texts.push_back({header.viewport(), place.adjusted(3, 3, -3, -3),
                         header.model()->headerData(section, header.orientation()).toString()});
    }
}

/// Each stretch of letters of one colour, as far as it stands on one line.
void addPage(Texts &texts, const QTextBrowser &page)
{
    for (QTextBlock block = page.document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            QTextCursor cursor(block);
            cursor.setPosition(part.fragment().position());
            const QRect from = page.cursorRect(cursor);
            cursor.setPosition(part.fragment().position() + part.fragment().length());
            const QRect to = page.cursorRect(cursor);
            if (from.top() == to.top())
                texts.push_back({page.viewport(), from | to, part.fragment().text()});
        }
    }
}

/// The part of a button that its picture leaves to the text; none where it shows the picture alone.
QRect captionOf(const QAbstractButton &button)
{
    const QRect inside = button.rect().adjusted(kFrame, kFrame, -kFrame, -kFrame);
    const auto *tool = qobject_cast<const QToolButton *>(&button);
    if (!tool || tool->icon().isNull())
        return inside;
    switch (tool->toolButtonStyle()) {
    case Qt::ToolButtonTextUnderIcon:
        return inside.adjusted(0, tool->iconSize().height() + kFrame, 0, 0);
    case Qt::ToolButtonTextBesideIcon:
        return inside.adjusted(tool->iconSize().width() + kFrame, 0, 0, 0);
    default:
        return {};
    }
}

void addTexts(Texts &texts, const QWidget &widget)
{
    const QRect inside = widget.rect().adjusted(kFrame, kFrame, -kFrame, -kFrame);
    if (const auto *header = qobject_cast<const QHeaderView *>(&widget)) {
        addHeads(texts, *header);
    } else if (const auto *view = qobject_cast<const QAbstractItemView *>(&widget)) {
        addCells(texts, *view);
    } else if (const auto *page = qobject_cast<const QTextBrowser *>(&widget)) {
        addPage(texts, *page);
    } else if (const auto *area = qobject_cast<const QPlainTextEdit *>(&widget)) {
        texts.push_back({&widget, inside, area->toPlainText()});
    } else if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        texts.push_back({&widget, widget.rect(), label->text()});
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        texts.push_back({&widget, captionOf(*button), button->text()});
    } else if (const auto *field = qobject_cast<const QLineEdit *>(&widget)) {
        texts.push_back({&widget, inside, field->text()});
    } else if (const auto *combo = qobject_cast<const QComboBox *>(&widget)) {
        if (!combo->isEditable()) // its arrow stands at the right
            texts.push_back({&widget, inside.adjusted(0, 0, -20, 0), combo->currentText()});
    } else if (const auto *tabs = qobject_cast<const QTabBar *>(&widget)) {
        for (int tab = 0; tab < tabs->count(); ++tab) {
            texts.push_back({&widget, tabs->tabRect(tab).adjusted(kFrame, kFrame, -kFrame, -kFrame),
                             tabs->tabText(tab)});
        }
    }
}

bool hasLetters(const QString &text)
{
    return std::ranges::any_of(text, [](QChar c) { return c.isLetterOrNumber(); });
}

/// The texts of the window that are in view, each place in the window.
Texts textsInView(const QWidget &window)
{
    Texts all;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget->isVisible() && widget->isEnabled())
            addTexts(all, *widget);
    }
    Texts inView;
    for (Text &text : all) {
        // What is cut off at the edge is left out.
        if (text.place.isEmpty() || !hasLetters(text.text) ||
            !text.widget->visibleRegion().contains(text.place.topLeft()) ||
            !text.widget->visibleRegion().contains(text.place.bottomRight()))
            continue;
        text.place.moveTopLeft(text.widget->mapTo(&window, text.place.topLeft()));
        inView.push_back(text);
    }
    return inView;
}

} // namespace

double contrast(QRgb one, QRgb other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QStringList hardToRead(QWidget &window)
{
    const QImage picture = window.grab().toImage();
    QStringList found;
    for (const Text &text : textsInView(window)) {
        const double measured = contrastIn(picture.copy(text.place));
        if (measured < kReadable) {
            found += u"%1/%2: %3 (%4)"_s.arg(window.objectName(), text.widget->objectName(),
                                             text.text.left(40), QString::number(measured, 'f', 2));
        }
    }
    return found;
}

int textsIn(QWidget &window)
{
    return int(textsInView(window).size());
}
