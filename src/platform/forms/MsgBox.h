#pragma once

#include <QString>

/// Style values of MsgBox; one of each group is added into the style.
namespace msgbox {
inline constexpr int kOkOnly = 0;
inline constexpr int kOkCancel = 1;
inline constexpr int kAbortRetryIgnore = 2;
inline constexpr int kYesNoCancel = 3;
inline constexpr int kYesNo = 4;
inline constexpr int kRetryCancel = 5;

inline constexpr int kCritical = 16;
inline constexpr int kQuestion = 32;
inline constexpr int kExclamation = 48;
inline constexpr int kInformation = 64;

inline constexpr int kDefaultButton2 = 256;
inline constexpr int kDefaultButton3 = 512;
} // namespace msgbox

/// The number of the button that closed a message box.
namespace answer {
inline constexpr int kOk = 1;
inline constexpr int kCancel = 2;
inline constexpr int kAbort = 3;
inline constexpr int kRetry = 4;
inline constexpr int kIgnore = 5;
inline constexpr int kYes = 6;
inline constexpr int kNo = 7;
} // namespace answer

/// Shows the standard message box, waits for the user and returns a value of `answer`.
///
/// `text` is shown as it stands: blanks and line breaks are kept, nothing in it is markup. A word
/// longer than the box is broken where it must be, and a text higher than the screen scrolls.
/// `style` is a sum of `msgbox` values; a sum with other buttons raises error 5, and a default
/// button beyond the last counts as the first. An empty `title` gives the application title.
///
/// Escape and the close box answer Cancel where there is one, OK where that is the only button, and
/// do nothing where the user has to choose. The box is the top-level widget "MsgBox", its buttons
/// are "OK", "Avbryt", "Ja", "Nei", "Prøv igjen" and "Ignorer" with the object names `button1` to
/// `button7`, by their answers. Showing one is no activation of the form beneath.
int MsgBox(const QString &text, int style = msgbox::kOkOnly, const QString &title = {});

/// The component's own title, which stands on boxes that give none.
[[nodiscard]] const QString &applicationTitle();
void setApplicationTitle(const QString &title);
