#include "platform/forms/PictureButton.h"

#include <QStyleOptionFocusRect>
#include <QStylePainter>

PictureButton::PictureButton(QWidget *parent) : QToolButton(parent)
{
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setFocusPolicy(Qt::StrongFocus);
}

void PictureButton::setPicture(const QIcon &picture, QSize size)
{
    setIcon(picture);
    setIconSize(size);
}

void PictureButton::paintEvent(QPaintEvent *event)
{
    QToolButton::paintEvent(event);
    if (!hasFocus())
        return;
    constexpr int kInset = 3;
    QStylePainter painter(this);
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.rect = rect().adjusted(kInset, kInset, -kInset, -kInset);
    focus.backgroundColor = palette().button().color();
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}
