// Stands in for ScreenTour.cpp in a build without the tour (-DFAKTURA_TUR=OFF).

#include "vert/HostError.h"
#include "vert/ScreenTour.h"

using namespace Qt::StringLiterals;

void screentour::run(Component & /*component*/, const Options & /*options*/,
                     const tour::Say & /*say*/)
{
    throw HostError(u"denne utgaven er bygget uten turen gjennom skjermbildene (--tur)"_s);
}
