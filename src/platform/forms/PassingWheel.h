#pragma once

class QEvent;
class QObject;
class QWidget;

/// Lets a wheel change a combo box, date picker, spin box or tab strip of the window only while
/// that control has the focus: one that passes by on its way over the window neither changes it nor
/// gives it the focus, and goes on to what lies below. Every Form and every dialog that runModal
/// shows is such a window; the parent's own are not.
void ignorePassingWheel(QWidget &window);

/// What comes of that for an event of the application, which Forms sees ahead of all. True when the
/// event ends here.
[[nodiscard]] bool endsAsPassingWheel(QObject &watched, QEvent &event);
