#pragma once

#include <QString>

class QIODevice;

/// Writes the EHF document of an order of the active client to `fil`, which is open for writing and
/// empty: the four pieces, each a line ended by CR LF, in 7-bit characters. `kreditnota` is 0 for
/// an invoice and 1 for a credit note.
///
/// An error while a piece is composed (see mEHF) reaches the caller, and the lines before it are
/// written by then. Error 75 when the device does not take the whole line.
void SkrivEhfFil(QIODevice &fil, int kreditnota, const QString &ordreNr);
