#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// The settings registry's functions over INI files in the user's configuration folder
/// ($XDG_CONFIG_HOME, else ~/.config).
///
/// The values under HKEY_CURRENT_USER\Software\COMPANY\APPLICATION lie in the file
/// COMPANY/APPLICATION.ini, each deeper key as a section of it; all other keys lie in one file for
/// each root, named after the root. The form of a file is told in IniFile.h. A key exists when it
/// was made, or when a key below it exists.
///
/// Names and text are bytes of the code page (runtime/CodePage.h). A name ends before its first
/// zero byte and matches without regard to case; levels of a path are parted by "\", separators at
/// its end mean nothing, and a doubled one encloses a level with an empty name. Text (REG_SZ,
/// REG_EXPAND_SZ, REG_MULTI_SZ) is kept with its closing zero bytes, one, or two for REG_MULTI_SZ:
/// RegSetValueExA adds what the caller left out. Data of no bytes at all stays as it is.
///
/// Every function returns one of the ERROR_ values and throws nothing. A change locks the file
/// against other processes, for which it waits two seconds at most, reads it as it stands, and puts
/// a whole new file in its place when it has reached the disk; a change that fails leaves the file
/// as it was. For one thread of a process.
///
/// QSettings cannot stand in: it knows neither types nor keys without values, waits for its lock
/// without end, and takes a comma in a stored text for a list. A format of our own registered with
/// it would have to be read and written here all the same.
namespace registry {

/// An open key, or one of the roots below.
using Handle = quint32;

inline constexpr Handle HKEY_CLASSES_ROOT = 0x80000000;
inline constexpr Handle HKEY_CURRENT_USER = 0x80000001;
inline constexpr Handle HKEY_LOCAL_MACHINE = 0x80000002;
inline constexpr Handle HKEY_USERS = 0x80000003;

inline constexpr quint32 KEY_READ = 0x20019;
inline constexpr quint32 KEY_ALL_ACCESS = 0xF003F;

inline constexpr qint32 ERROR_SUCCESS = 0;
inline constexpr qint32 ERROR_FILE_NOT_FOUND = 2; ///< no such key or value
/// The files, their lock, the handle or a subkey forbid it, or a file would exceed 16 MB.
inline constexpr qint32 ERROR_ACCESS_DENIED = 5;
inline constexpr qint32 ERROR_INVALID_HANDLE = 6; ///< neither a root nor an open key
inline constexpr qint32 ERROR_INVALID_PARAMETER = 87;
inline constexpr qint32 ERROR_MORE_DATA = 234; ///< the buffer is too small

inline constexpr quint32 REG_SZ = 1;
inline constexpr quint32 REG_EXPAND_SZ = 2;
inline constexpr quint32 REG_BINARY = 3;
inline constexpr quint32 REG_DWORD = 4;
inline constexpr quint32 REG_MULTI_SZ = 7;

/// Opens the existing key `subKey` below `key` (an empty one is `key` itself) into `*result`, to be
/// closed with RegCloseKey. Opening one key many times costs no memory, closed or not.
[[nodiscard]] qint32 RegOpenKeyExA(Handle key, QByteArrayView subKey, quint32 access,
                                   Handle *result);

/// As RegOpenKeyExA, and makes the key when it is absent.
[[nodiscard]] qint32 RegCreateKeyExA(Handle key, QByteArrayView subKey, quint32 access,
                                     Handle *result);

/// Reads a value; an empty `name` is the unnamed one. `*size` is the room at `data` in bytes before
/// the call and the size of the value after it. With `data` null only `*type` and `*size` are told;
/// `type` may be null, and so may `size` when `data` is. A value whose type mark cannot be
/// understood counts as absent.
[[nodiscard]] qint32 RegQueryValueExA(Handle key, QByteArrayView name, quint32 *type, char *data,
                                      quint32 *size);

[[nodiscard]] qint32 RegSetValueExA(Handle key, QByteArrayView name, quint32 type,
                                    QByteArrayView data);

[[nodiscard]] qint32 RegDeleteValueA(Handle key, QByteArrayView name);

/// Deletes the key `subKey` with its values; ERROR_ACCESS_DENIED while it has subkeys.
[[nodiscard]] qint32 RegDeleteKeyA(Handle key, QByteArrayView subKey);

/// Closing a root does nothing.
qint32 RegCloseKey(Handle key);

} // namespace registry
