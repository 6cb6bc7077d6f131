#include "platform/forms/PassingWheel.h"

#include <QComboBox>
#include <QEvent>

namespace {

class PassingWheel : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QComboBox *>(watched)->hasFocus())
            return QObject::eventFilter(watched, event);
        event->ignore();
        return true;
    }
};

} // namespace

void ignorePassingWheel(QComboBox &box)
{
    box.installEventFilter(new PassingWheel(&box));
}
