#pragma once

#include <QString>

/// Inside the module a path has the told form, with backslashes; it takes the system's own form
/// only where a file or folder is opened.
namespace paths {

/// "\home\kari\rpt" becomes "/home/kari/rpt".
[[nodiscard]] QString toSystem(const QString &toldPath);
/// "/home/kari/rpt" becomes "\home\kari\rpt".
[[nodiscard]] QString toTold(const QString &systemPath);

/// The application folder of a component that lies in `componentFolder` (told form): everything
/// before the first "\bin", searched case-sensitively and not by whole path elements, or the whole
/// path when that does not occur.
[[nodiscard]] QString applicationFolder(const QString &componentFolder);

} // namespace paths
