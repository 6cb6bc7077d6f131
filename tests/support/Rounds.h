#pragma once

#include <QtGlobal>

/// How many rounds a test runs whose outcome hangs on the moment: a few, or as many as
/// FAKTURA_RUNDER names.
inline int rounds(int few)
{
    const int asked = qEnvironmentVariableIntValue("FAKTURA_RUNDER");
    return asked > 0 ? asked : few;
}
