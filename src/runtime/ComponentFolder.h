#pragma once

#include <QString>

/// The folder in which the file lies that holds this code (the loaded component, or a program that
/// links it), in the module's form and without a trailing separator.
[[nodiscard]] QString componentFolder();
