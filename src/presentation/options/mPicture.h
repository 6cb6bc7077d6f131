#pragma once

#include <QString>

class PictureBox;

/// The client's logo on its way between the column Klient.Logo and a picture on the screen. Both
/// ways lead through one temporary file of a fixed name, which stays behind; two programs of one
/// user that move a logo at the same time overwrite each other's.

/// The user's own temporary folder in the module's form, with a closing backslash: the system's
/// when it is closed to others, else the folder of the login session, $XDG_RUNTIME_DIR, or one made
/// in the system's; empty when there is none. In a folder that users share the fixed name would
/// bring one user's logo to the next, and a planted link to any file.
[[nodiscard]] QString TempMappe();

/// Writes the stored logo of the active client to the temporary file, over an earlier one, and
/// returns its path in the module's form; empty when the client has no row. The file is empty when
/// no logo is stored or the row cannot be read, and gone when it could not be written. Passes over.
[[nodiscard]] QString LesLogo();

/// Stores the box's picture as the active client's logo, in the form in which pictures are saved.
/// A raised error is told in a message box; a refused write is not told.
void SkrivLogo(const PictureBox &boks);
