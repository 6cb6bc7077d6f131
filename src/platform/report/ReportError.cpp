#include "platform/report/ReportError.h"

namespace report {

void raise(int number, const QString &text)
{
    throw RunTimeError(number, text);
}

} // namespace report
