#include "platform/forms/ScrolledPage.h"

#include <QApplication>
#include <QEvent>
#include <QVBoxLayout>

namespace {

constexpr int kMargin = 8; ///< pixels around what has come into view

} // namespace

ScrolledPage::ScrolledPage(QWidget &window, QSize size)
{
    auto *page = new QWidget;
    page->setMinimumSize(size);
    const QList<QWidget *> controls = window.findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    if (window.layout())
        page->setLayout(window.layout());
    for (QWidget *control : controls) {
        if (control->parentWidget() == &window && !control->isWindow())
            control->setParent(page);
    }
    setObjectName(QStringLiteral("rulleside"));
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(page);
    auto *whole = new QVBoxLayout(&window);
    whole->setContentsMargins({});
    whole->addWidget(this);
    connect(qApp, &QApplication::focusChanged, this, [this, page](QWidget *, QWidget *now) {
        if (now && page->isAncestorOf(now))
            bringIntoView(*now);
    });
}

/// The whole of it, or what there is room for from its upper left corner on.
void ScrolledPage::bringIntoView(const QWidget &control)
{
    const QRect place(control.mapTo(widget(), QPoint(0, 0)), control.size());
    ensureVisible(place.right(), place.bottom(), kMargin, kMargin);
    ensureVisible(place.left(), place.top(), kMargin, kMargin);
}

bool ScrolledPage::eventFilter(QObject *watched, QEvent *event)
{
    const bool handled = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && event->type() == QEvent::Resize)
        Q_EMIT pageResized();
    return handled;
}
