#include "platform/forms/SendKey.h"

#include "platform/forms/OuterRim.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

QWidget *receiver()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup->focusWidget() ? popup->focusWidget() : popup;
    return QApplication::focusWidget() ? QApplication::focusWidget() : QApplication::activeWindow();
}

void deliver(Qt::Key key)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (QWidget *target = receiver()) {
            QKeyEvent event(type, key, Qt::NoModifier, key == Qt::Key_Tab ? u"\t"_s : QString());
            QCoreApplication::sendEvent(target, &event);
        }
    }
}

} // namespace

void sendKey(Qt::Key key)
{
    QMetaObject::invokeMethod(
        qApp, [key] { atOuterRim([key] { deliver(key); }); }, Qt::QueuedConnection);
}
