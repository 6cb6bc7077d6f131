#pragma once

#include <QString>

/// What a user reads as the caption of a control: its text without the "&" of its letter for Alt.
template<class Control>
QString captionOf(const Control &control)
{
    return control.text().remove(QLatin1Char('&'));
}
