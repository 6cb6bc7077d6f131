#pragma once

#include <QToolButton>

/// A push button with its picture above its caption. It takes the focus like any button; Space and,
/// in a Form, Enter press it.
class PictureButton : public QToolButton
{
    Q_OBJECT

public:
    explicit PictureButton(QWidget *parent = nullptr);

    /// `size` in device-independent pixels; the icon should hold the picture for higher pixel
    /// ratios as well, as those of ownPicture do.
    void setPicture(const QIcon &picture, QSize size);

protected:
    /// A tool button shows the focus less clearly than a push button does; here it must be seen.
    void paintEvent(QPaintEvent *event) override;
};
