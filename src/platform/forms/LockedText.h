#pragma once

class QLineEdit;

/// Keeps the field's text as the program has put it while the field is read-only: assistive
/// technology writes past that lock, by the very call that a program uses. So a program that writes
/// into such a field says so by a ProgramWrites. Holds as long as the field lives.
void keepWhileLocked(QLineEdit &field);

/// While one lives, it is the program that writes.
class ProgramWrites
{
public:
    ProgramWrites();
    ~ProgramWrites();
    ProgramWrites(const ProgramWrites &) = delete;
    ProgramWrites &operator=(const ProgramWrites &) = delete;
};
