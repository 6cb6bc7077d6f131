// Stands in for ScreenTour.cpp in a build without the tour (-DFAKTURA_TUR=OFF).

#include "host/tasks/HostError.h"
#include "host/tour/ScreenTour.h"

using namespace Qt::StringLiterals;

void screentour::run(Component & /*component*/, const Options & /*options*/,
                     const tour::Say & /*say*/)
{
    throw HostError(u"denne utgaven er bygget uten turen gjennom skjermbildene (--tur)"_s);
}
