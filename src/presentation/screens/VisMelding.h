#pragma once

#include <QString>

/// Shows the note window with `text` and stands still for `seconds` while the note is on the
/// screen; the note goes on living after that and closes by itself. A note that is up already takes
/// the new text. `icon` is a value of frmTMsgBox::setIconID, 0 for the one before. A title of
/// blanks alone gives the application title. Passes over.
void VisMelding(const QString &text, qint32 icon, const QString &title, qint16 seconds,
                bool hideButton);

/// Waits until the time of day has come `seconds` further, by the clock in force. Pending window
/// events run before each sleep, until a note that is shown has come to the screen; a sleep takes
/// `seconds`, but half a second at least. A wait that would end after midnight does not end, since
/// the time of day begins anew. Error 6 for more seconds than a sleep can hold.
void Vent(double seconds);
