#pragma once

#include "platform/registry/IniFile.h"
#include "platform/registry/KeyPath.h"

#include <functional>

namespace registry {

/// A file of settings in memory, empty when there is none on the disk.
struct Loaded
{
    qint32 status = ERROR_SUCCESS; ///< ERROR_ACCESS_DENIED when the file cannot be read
    IniFile content;
};

/// The file of settings as it stands on the disk. It is parsed once as long as it stays the same.
/// The reference holds until the next call.
[[nodiscard]] const Loaded &load(const QString &path);

/// Lets `change` alter the file of settings as it stands now, and stores it when that returns
/// ERROR_SUCCESS: no file at all for one that has become empty.
[[nodiscard]] qint32 alter(const KeyPlace &place, const std::function<qint32(IniFile &)> &change);

} // namespace registry
