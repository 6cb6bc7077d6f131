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
    QString key;                ///< within the file: names joined with "\", empty for its own key
    bool isApplication = false; ///< true when the file holds one application's keys only
};

/// Folder and file names match what is on the disk without regard to case.
[[nodiscard]] KeyPlace placeOf(const KeyPath &path);

/// The folder of the company when `path` is HKEY_CURRENT_USER\Software\COMPANY, else empty.
[[nodiscard]] QString companyFolder(const KeyPath &path);

/// True for a root and for HKEY_CURRENT_USER\Software, which are there without having been made.
[[nodiscard]] bool isFixed(const KeyPath &path);

/// True for one of the roots that the registry knows.
[[nodiscard]] bool isRoot(Handle key);

} // namespace registry
