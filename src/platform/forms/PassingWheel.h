#pragma once

class QComboBox;

/// Lets a wheel choose another entry only while the box has the focus: one that passes by on its
/// way over the window goes on to what lies below. Holds as long as the box lives.
void ignorePassingWheel(QComboBox &box);
