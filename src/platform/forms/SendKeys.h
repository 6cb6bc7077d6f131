#pragma once

#include <QString>

/// Sends the keys to the control that has the focus, as if typed: each key is delivered from the
/// event loop, after the running handler has returned, to the control that has the focus then.
///
/// A character stands for itself. "+", "^" and "%" put Shift, Control and Alt on the next key or
/// on a group in "(" and ")"; "~" is Enter. Keys with names stand in braces, as in "{TAB}", "{F1}",
/// "{ESC}" and "{DOWN}", with a count if wanted, as in "{LEFT 3}"; so do the signs themselves, as
/// in "{+}". Names go without regard to case.
///
/// A text that does not follow these rules raises error 5, and no key of it is sent.
void sendKeys(const QString &keys);
