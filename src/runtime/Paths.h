#pragma once

#include <QString>

/// Inside the module a path has the module's form, with backslashes; it takes the system's own
/// form only where a file or folder is opened.
namespace paths {

/// "\home\kari\rpt" becomes "/home/kari/rpt".
[[nodiscard]] QString toSystem(const QString &modulePath);
/// "/home/kari/rpt" becomes "\home\kari\rpt".
[[nodiscard]] QString toModule(const QString &systemPath);

/// The application folder of a component that lies in `componentFolder`, both in the module's form:
/// everything before the first "\bin", searched case-sensitively and not by whole path elements, or
/// the whole path when that does not occur.
[[nodiscard]] QString applicationFolder(const QString &componentFolder);

} // namespace paths
