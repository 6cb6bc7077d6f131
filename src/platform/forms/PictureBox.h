#pragma once

#include <QFrame>
#include <QImage>

/// A framed box with a picture, which stands in its middle on the background of a text field. A
/// picture larger than the box is shown smaller, in its own proportions; what the box holds stays
/// as it is.
class PictureBox : public QFrame
{
    Q_OBJECT

public:
    explicit PictureBox(QWidget *parent = nullptr);

    /// A null image where there is no picture.
    [[nodiscard]] const QImage &picture() const { return m_picture; }
    void setPicture(const QImage &picture);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage m_picture;
};
