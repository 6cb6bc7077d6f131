#include "platform/forms/ModalDialog.h"

#include "platform/forms/PassingWheel.h"

#include <QApplication>
#include <QDialog>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace {

/// What is commonly drawn around a window, in pixels.
constexpr QSize kCommonFrame{10, 40};

/// Centred over `window`, as an owned dialog would be, and told to the window manager.
void standAbove(QDialog &dialog, const QWidget &window)
{
    dialog.winId();
    dialog.windowHandle()->setTransientParent(window.windowHandle());
    dialog.ensurePolished();
    dialog.adjustSize();
    centreOver(dialog, window.frameGeometry());
}

} // namespace

void centreOver(QWidget &window, const QRect &below)
{
    QRect place(QPoint(0, 0), window.size());
    place.moveCenter(below.center());
    window.move(place.topLeft());
    putOnScreen(window);
}

void putOnScreen(QWidget &window)
{
    // Before a window has been on the desk it knows of no frame.
    const QSize frame = window.isVisible() ? QSize(0, 0) : kCommonFrame;
    QRect place(window.frameGeometry().topLeft(), window.frameGeometry().size() + frame);
    // By its place, since a window that has just been moved still names the screen it came from.
    const QScreen *there = QGuiApplication::screenAt(place.center());
    const QRect area = (there ? there : window.screen())->availableGeometry();
    place.moveRight(std::min(place.right(), area.right()));
    place.moveBottom(std::min(place.bottom(), area.bottom()));
    place.moveLeft(std::max(place.left(), area.left()));
    place.moveTop(std::max(place.top(), area.top()));
    if (place.topLeft() != window.frameGeometry().topLeft())
        window.move(place.topLeft());
}

AboveActiveWindow::AboveActiveWindow(QDialog &dialog) : m_window(QApplication::activeWindow())
{
    if (m_window)
        standAbove(dialog, *m_window);
}

AboveActiveWindow::~AboveActiveWindow()
{
    if (m_window && m_window->isVisible())
        m_window->activateWindow();
}

QSize roomFor(const QWidget &window)
{
    return window.screen()->availableSize() - kCommonFrame;
}

int runModal(QDialog &dialog)
{
    ignorePassingWheel(dialog);
    const AboveActiveWindow above(dialog);
    return dialog.exec();
}
