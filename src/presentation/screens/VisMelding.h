#pragma once

#include <QString>

/// Shows the note window with `tekst` and stands still for `sekunder` while the note is on the
/// screen; the note goes on living after that and closes by itself. A note that is up already takes
/// the new text. `ikon` is a value of frmTMsgBox::setIconID, 0 for the one before. A title of
/// blanks alone gives the application title. Passes over.
void VisMelding(const QString &tekst, qint32 ikon, const QString &tittel, qint16 sekunder,
                bool utenKnapp);

/// Waits until the time of day has come `sekunder` further, by the clock in force. Pending window
/// events run before each sleep, until a note that is shown has come to the screen; a sleep takes
/// `sekunder`, but half a second at least. A wait that would end after midnight does not end, since
/// the time of day begins anew. Error 6 for more seconds than a sleep can hold.
void Vent(double sekunder);
