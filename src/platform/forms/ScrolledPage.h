#pragma once

#include <QScrollArea>

/// What a window shows on a screen that has no room for the whole of it: its controls stand on a
/// page that is scrolled, and one that gets the focus comes into view.
class ScrolledPage : public QScrollArea
{
    Q_OBJECT

public:
    /// Takes over the layout and all controls of the window, for which the page has `size` at
    /// least.
    ScrolledPage(QWidget &window, QSize size);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void pageResized();

private:
    void bringIntoView(const QWidget &control);
};
