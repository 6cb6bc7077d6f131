#pragma once

class QDialog;

/// Shows one of the platform's own dialogs above the window that is active now, waits for the user,
/// and hands the activity back to that window. Returns what QDialog::exec returns.
///
/// The dialog gets no owner: a form that unloads itself while the dialog is up (a timed note does)
/// must not take the dialog with it.
int runModal(QDialog &dialog);
