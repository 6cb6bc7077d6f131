#include "runtime/ComponentFolder.h"

#include "runtime/Paths.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

QString componentFolder()
{
    Dl_info file{};
    if (dladdr(reinterpret_cast<const void *>(&componentFolder), &file) == 0)
        return {};
    return paths::toModule(QFileInfo(QFile::decodeName(file.dli_fname)).absolutePath());
}
