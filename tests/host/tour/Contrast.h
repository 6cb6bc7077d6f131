#pragma once

#include <QRgb>
#include <QStringList>

class QWidget;

/// The texts that stand in a window and can hardly be read: those whose letters stand apart from
/// their ground by less than 4.5, measured in the pixels of a picture of the window. Each with what
/// was measured, "window/control: text (2.31)". Controls that are disabled are left out.
[[nodiscard]] QStringList hardToRead(QWidget &window);

/// How far two colours stand apart to the eye: 1 for the same one, 21 for black and white.
[[nodiscard]] double contrast(QRgb one, QRgb other);

/// How many texts the window shows.
[[nodiscard]] int textsIn(QWidget &window);
