#pragma once

#include <QString>

/// Style values of MsgBox; one of each group is added into the style.
namespace msgbox {
inline constexpr int kOkOnly = 0;
inline constexpr int kYesNo = 4;

inline constexpr int kCritical = 16;
inline constexpr int kQuestion = 32;
inline constexpr int kExclamation = 48;
inline constexpr int kInformation = 64;

/// No is the default button, not Yes.
inline constexpr int kDefaultButton2 = 256;
} // namespace msgbox

/// The number of the button that closed a message box.
namespace answer {
inline constexpr int kOk = 1;
inline constexpr int kYes = 6;
inline constexpr int kNo = 7;
} // namespace answer

/// Shows the standard message box under the application title, waits for the user and returns a
/// value of `answer`. `style` is a sum of `msgbox` values.
///
/// `text` is shown as it stands: blanks and line breaks are kept, nothing in it is markup. A word
/// longer than the box is broken where it must be, and a text higher than the screen scrolls.
///
/// Escape and the close box answer OK, and do nothing where the user has to choose. The box is the
/// top-level widget "MsgBox", its buttons are "OK", "Ja" and "Nei" with the object names `button1`,
/// `button6` and `button7`, by their answers. Showing one is no activation of the form beneath.
int MsgBox(const QString &text, int style = msgbox::kOkOnly);

/// The component's own title, which stands on message boxes.
[[nodiscard]] QString applicationTitle();
