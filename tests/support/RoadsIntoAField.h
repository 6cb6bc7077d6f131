#pragma once

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>

/// Tries to bring `text` into the field on every road that leads around the keyboard: paste, the
/// middle button, drag and drop, an input method, undo, and assistive technology.
inline void tryEveryRoad(QLineEdit &field, const QString &text)
{
    QApplication::clipboard()->setText(text);
    if (QApplication::clipboard()->supportsSelection())
        QApplication::clipboard()->setText(text, QClipboard::Selection);
    QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
    QTest::mouseClick(&field, Qt::MiddleButton);

    QMimeData mime;
    mime.setText(text);
    const QPoint middle = field.rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&field, &enter);
    QDropEvent drop(middle, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    if (enter.isAccepted())
        QApplication::sendEvent(&field, &drop);

    // No input method turns to a control that has not asked for one.
    QInputMethodEvent composed;
    composed.setCommitString(text);
    if (field.testAttribute(Qt::WA_InputMethodEnabled))
        QApplication::sendEvent(&field, &composed);

    QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier);

    QAccessibleInterface *assistive = QAccessible::queryAccessibleInterface(&field);
    assistive->editableTextInterface()->deleteText(0, 1);
    assistive->editableTextInterface()->insertText(0, text);
    assistive->setText(QAccessible::Value, text);
}
