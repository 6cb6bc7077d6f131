#pragma once

#include "platform/registry/Registry.h"

#include <QString>
#include <QStringList>

namespace registry {

/// A key by its root and the names of the levels below it.
struct KeyPath
{
    Handle root = HKEY_CURRENT_USER;
    QStringList levels;

    /// The key `subKey` (bytes of the code page) below this one.
    [[nodiscard]] KeyPath below(QByteArrayView subKey) const;

    /// Same root, and same levels without regard to case.
    [[nodiscard]] bool isSame(const KeyPath &other) const;
};

/// Where a key's values lie.
struct KeyPlace
{
    QString folder; ///< the system's own form, as is `file`; neither need exist
    QString file;
    QString key; ///< within the file: names joined with "\", empty for its own key
};

/// A name as the registry's functions take it, which ends before its first zero byte.
[[nodiscard]] QString nameFromBytes(QByteArrayView bytes);

/// Folder and file names match what is on the disk without regard to case.
[[nodiscard]] KeyPlace placeOf(const KeyPath &path);

/// True for what no file has as a key of its own: a root, HKEY_CURRENT_USER\Software, which are
/// there without having been made, and the key of a company that has applications.
[[nodiscard]] bool isFixed(const KeyPath &path);

/// True for one of the roots that the registry knows.
[[nodiscard]] bool isRoot(Handle key);

} // namespace registry
