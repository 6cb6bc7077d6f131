#pragma once

#include <QString>

class QWidget;

/// Commands of HtmlHelpA.
inline constexpr int HH_DISPLAY_TOPIC = 0x0;
inline constexpr int HH_CLOSE_ALL = 0x12;

/// Shows a topic of a help file in the help window, which is made at the first use and then used
/// again. `file` and `topic` are in the module's form, "\prog\help\Regningsdel.chm" and
/// "html\ordre.htm". What is read is the compiled help beside the given name, with the ending
/// ".rcc". The window belongs to the application and is the top-level widget "HtmlHelp"; `owner`
/// is the window that it stays above; without one it is the modal window, if there is one.
///
/// HH_CLOSE_ALL closes the window; the other arguments do not count then.
///
/// Returns the window, or null with nothing changed on the screen when the file or the topic is
/// missing or the command is another one.
QWidget *HtmlHelpA(QWidget *owner, const QString &file, int command, const QString &topic);
