#include "runtime/Paths.h"

namespace paths {

QString toSystem(const QString &modulePath)
{
    QString path = modulePath;
    return path.replace(u'\\', u'/');
}

QString toModule(const QString &systemPath)
{
    QString path = systemPath;
    return path.replace(u'/', u'\\');
}

QString applicationFolder(const QString &componentFolder)
{
    // left(-1), when nothing is found, is the whole path.
    return componentFolder.left(componentFolder.indexOf(QLatin1StringView("\\bin")));
}

} // namespace paths
