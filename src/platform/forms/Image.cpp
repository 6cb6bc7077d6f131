#include "platform/forms/Image.h"

#include <QMouseEvent>
#include <QPainter>

void Image::setPicture(const QIcon &picture)
{
    m_picture = picture;
    update();
}

void Image::mousePressEvent(QMouseEvent *event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
}

void Image::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}

void Image::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    m_picture.paint(&painter, rect());
}
