#pragma once

#include "host/tasks/Options.h"
#include "host/tasks/Tour.h"

/// A tour of the module's screens: what a user does with mouse and keyboard, on the real screens of
/// the component, found by their names.
namespace screentour {

/// Makes the demo company in "demo.db" in the folder of --tur (a database that is there is used),
/// starts the module with settings of its own, in the folder "innstillinger" there, and goes
/// through its screens. Each screen is saved as a numbered PNG file in the folder, over one of the
/// same name, and told through `say`. Needs a QApplication. Raises HostError where the tour cannot
/// go on.
void run(Component &component, const Options &options, const tour::Say &say);

} // namespace screentour
