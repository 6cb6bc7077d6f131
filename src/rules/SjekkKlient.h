#pragma once

#include <QString>

/// What the active client's row lacks for an invoice: for each fault its text, a tab, the grade
/// "Må rettes" or "Bør rettes", and CR LF. Empty when nothing is missing and when there is no such
/// client. Reads gKlient and gDB. Errors are passed over, so a row that cannot be read lacks
/// everything.
[[nodiscard]] QString SjekkKlient();
