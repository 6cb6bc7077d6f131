#pragma once

class QWidget;

/// Lets a wheel change the control only while it has the focus: one that passes by on its way over
/// the window neither changes it nor gives it the focus, and goes on to what lies below. For combo
/// boxes, date pickers and spin boxes. Holds as long as the control lives.
void ignorePassingWheel(QWidget &control);
