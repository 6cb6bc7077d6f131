#pragma once

#include <QtGlobal>

/// How many rounds a test runs whose outcome hangs on the moment or on chance: a few, or as many as
/// FAKTURA_RUNDER names.
inline int rounds(int few)
{
    const int asked = qEnvironmentVariableIntValue("FAKTURA_RUNDER");
    return asked > 0 ? asked : few;
}

/// What a test draws its chances from: its usual start value, or what FAKTURA_FRO names.
inline quint32 startValue(quint32 usual)
{
    const int asked = qEnvironmentVariableIntValue("FAKTURA_FRO");
    return asked > 0 ? static_cast<quint32>(asked) : usual;
}
