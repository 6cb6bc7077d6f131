#include "platform/forms/PassingWheel.h"

#include "platform/forms/Forms.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QTabBar>

namespace {

constexpr char kGuarded[] = "ignoresPassingWheel";

bool changesByWheel(const QObject *control)
{
    return qobject_cast<const QComboBox *>(control) ||
           qobject_cast<const QAbstractSpinBox *>(control) ||
           qobject_cast<const QTabBar *>(control);
}

/// Whether the widget, or one that it lies in, is a guarded window.
bool isGuarded(const QWidget *widget)
{
    while (widget && !widget->property(kGuarded).toBool())
        widget = widget->parentWidget();
    return widget != nullptr;
}

/// A wheel gives such controls the focus of itself, ahead of what it does to them.
void takeFocusFromWheel(const QWidget &window)
{
    for (QWidget *control : window.findChildren<QWidget *>()) {
        if (changesByWheel(control) && control->focusPolicy() == Qt::WheelFocus)
            control->setFocusPolicy(Qt::StrongFocus);
    }
}

} // namespace

void ignorePassingWheel(QWidget &window)
{
    (void)Forms::instance();
    window.setProperty(kGuarded, true);
}

bool endsAsPassingWheel(QObject &watched, QEvent &event)
{
    if (event.type() == QEvent::Show && watched.property(kGuarded).toBool())
        takeFocusFromWheel(static_cast<QWidget &>(watched));
    if (event.type() != QEvent::Wheel || !changesByWheel(&watched))
        return false;
    const auto &control = static_cast<QWidget &>(watched);
    if (control.hasFocus() || !isGuarded(&control))
        return false;
    event.ignore();
    return true;
}
