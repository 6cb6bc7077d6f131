#pragma once

#include <QIcon>
#include <QWidget>

/// An image control: a picture, fitted into the control's size, that can be clicked. It never takes
/// the focus.
class Image : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    [[nodiscard]] const QIcon &picture() const { return m_picture; }
    /// The icon should hold the picture for higher pixel ratios as well, as those of ownPicture do.
    void setPicture(const QIcon &picture);

Q_SIGNALS:
    /// The left mouse button was pressed and let go inside the control.
    void clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QIcon m_picture;
};
