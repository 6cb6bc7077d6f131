#pragma once

#include <QString>

#include <functional>

/// The way from the floors without windows to the platform's standard message box. The widget floor
/// puts its box in; until it does, nothing is shown.
namespace messages {

/// Style values of the box.
inline constexpr int kPlain = 0;
inline constexpr int kCritical = 16;
inline constexpr int kExclamation = 48;
inline constexpr int kInformation = 64;

/// Shows `text` with one OK button, the icon of `style` and no title of its own, and returns when
/// the user has closed it.
using Box = std::function<void(const QString &text, int style)>;

/// An empty `box` shows nothing.
void setBox(Box box);

void show(const QString &text, int style = kPlain);

} // namespace messages
