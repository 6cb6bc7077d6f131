#include "platform/forms/PictureBox.h"

#include <QPainter>

PictureBox::PictureBox(QWidget *parent) : QFrame(parent)
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
}

void PictureBox::setPicture(const QImage &picture)
{
    m_picture = picture;
    update();
}

void PictureBox::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        const QRect room = contentsRect();
        painter.fillRect(room, palette().base());
        if (!m_picture.isNull()) {
            QSize size = m_picture.size();
            if (size.width() > room.width() || size.height() > room.height())
                size.scale(room.size(), Qt::KeepAspectRatio);
            QRect place({}, size);
            place.moveCenter(room.center());
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawImage(place, m_picture);
        }
    }
    QFrame::paintEvent(event);
}
