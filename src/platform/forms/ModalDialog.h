#pragma once

#include <QPointer>
#include <QWidget>

class QDialog;

/// Puts one of the platform's own dialogs above the window that is active now, and hands the
/// activity back to that window at its own end, when the dialog is hidden or gone.
///
/// The dialog is on the screen wherever that window is: what blocks the program must be seen. It
/// gets no owner: a form that unloads itself while the dialog is up (a timed note does) must not
/// take the dialog with it.
class AboveActiveWindow
{
public:
    explicit AboveActiveWindow(QDialog &dialog);
    ~AboveActiveWindow();
    AboveActiveWindow(const AboveActiveWindow &) = delete;
    AboveActiveWindow &operator=(const AboveActiveWindow &) = delete;

private:
    const QPointer<QWidget> m_window;
};

/// Shows such a dialog and waits for the user. Returns what QDialog::exec returns.
int runModal(QDialog &dialog);

/// Moves a window to the middle of a place, and wholly onto the screen there.
void centreOver(QWidget &window, const QRect &below);

/// Moves a window that is not wholly on its screen there, its upper left corner before all.
void putOnScreen(QWidget &window);

/// The room in pixels that its screen has for the inner area of a window.
[[nodiscard]] QSize roomFor(const QWidget &window);
