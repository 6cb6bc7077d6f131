#pragma once

class QLineEdit;

/// Keeps to one line what a user brings into the field: of pasted text a line end or tab becomes a
/// blank, and the line ends behind it fall away, such as a spreadsheet puts behind a cell. The
/// field would take them, show a blank, and hand them on. Text that the program sets stays as it
/// is. Ends with the field.
void holdOneLine(QLineEdit &field);
