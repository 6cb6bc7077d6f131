#include "runtime/ComponentFolder.h"

#include "runtime/Paths.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>
#include <link.h>

QString componentFolder()
{
    Dl_info file{};
    link_map *loaded = nullptr;
    if (dladdr1(reinterpret_cast<const void *>(&componentFolder), &file,
                reinterpret_cast<void **>(&loaded), RTLD_DL_LINKMAP) == 0)
        return {};
    // Of a program the linker knows only how it was called: by a link, or by its name alone.
    const QString name = *loaded->l_name
                             ? QFile::decodeName(loaded->l_name)
                             : QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    return paths::toModule(QFileInfo(name).absolutePath());
}
