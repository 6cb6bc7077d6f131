#include "platform/forms/OneLine.h"

#include <QLineEdit>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

void holdOneLine(QLineEdit &field)
{
    QObject::connect(&field, &QLineEdit::textEdited, &field, [&field](const QString &text) {
        static const QRegularExpression ends(u"[\r\n\u2028\u2029]+$"_s);
        static const QRegularExpression breaks(u"\r\n|[\r\n\t\u2028\u2029]"_s);
        if (!text.contains(breaks))
            return;
        // The cursor stands behind what has come in.
        QString before = text.first(field.cursorPosition());
        QString behind = text.sliced(field.cursorPosition());
        before.remove(ends).replace(breaks, u" "_s);
        behind.replace(breaks, u" "_s);
        field.setText(before + behind);
        field.setCursorPosition(int(before.size()));
    });
}
