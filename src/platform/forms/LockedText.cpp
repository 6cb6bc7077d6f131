#include "platform/forms/LockedText.h"

#include <QLineEdit>

namespace {

int writers = 0;

} // namespace

void keepWhileLocked(QLineEdit &field)
{
    QObject::connect(&field, &QLineEdit::textChanged, &field,
                     [&field, kept = field.text()](const QString &text) mutable {
                         if (writers > 0 || !field.isReadOnly()) {
                             kept = text;
                             return;
                         }
                         const ProgramWrites back;
                         field.setText(QString(kept));
                     });
}

ProgramWrites::ProgramWrites()
{
    ++writers;
}

ProgramWrites::~ProgramWrites()
{
    --writers;
}
