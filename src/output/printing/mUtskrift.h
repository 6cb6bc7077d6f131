#pragma once

#include <QString>
#include <QtGlobal>

/// The one way in which the module runs a report, whatever it is about: into a preview window, or
/// to the printer without one. Returns when the report has been shown or printed, or when the user
/// has been told of a failure; the caller is not told. False when the user has cancelled it while
/// it took its time: nothing is shown or printed then, and nothing is told.
///
/// `rapport` is the file name with its extension, in the report folder. `modus` is 0 for the
/// preview and 1 for the printer. `utvalg` selects the rows; empty for the file's own. `formel1`
/// and `formel2` are "Name=expression" for formulas that the file declares; empty for none.
///
/// Nothing happens before the component is started and after its end.
///
/// A run to the printer leaves frmInvisible unloaded. A failed run leaves the report control as it
/// stood, with the forms that were loaded for it.
bool SkrivRapport(const QString &rapport, qint16 modus, const QString &utvalg,
                  const QString &formel1, const QString &formel2);
