#include "platform/forms/ModalDialog.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QWindow>

namespace {

/// Centred over `window`, as an owned dialog would be, and told to the window manager.
void standAbove(QDialog &dialog, const QWidget &window)
{
    dialog.winId();
    dialog.windowHandle()->setTransientParent(window.windowHandle());
    dialog.ensurePolished();
    dialog.adjustSize();
    QRect place(QPoint(0, 0), dialog.size());
    place.moveCenter(window.frameGeometry().center());
    dialog.move(place.topLeft());
}

} // namespace

int runModal(QDialog &dialog)
{
    const QPointer<QWidget> before = QApplication::activeWindow();
    if (before)
        standAbove(dialog, *before);
    const int result = dialog.exec();
    if (before && before->isVisible())
        before->activateWindow();
    return result;
}
