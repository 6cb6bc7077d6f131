#include "platform/forms/PassingWheel.h"

#include <QEvent>
#include <QWidget>

namespace {

class PassingWheel : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QWidget *>(watched)->hasFocus())
            return QObject::eventFilter(watched, event);
        event->ignore();
        return true;
    }
};

} // namespace

void ignorePassingWheel(QWidget &control)
{
    // A wheel gives such controls the focus of itself, ahead of what it does to them.
    if (control.focusPolicy() == Qt::WheelFocus)
        control.setFocusPolicy(Qt::StrongFocus);
    control.installEventFilter(new PassingWheel(&control));
}
