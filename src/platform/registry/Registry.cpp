#include "platform/registry/Registry.h"

#include "platform/registry/KeyPath.h"
#include "platform/registry/SettingsFile.h"

#include <cstring>
#include <map>
#include <optional>

namespace registry {

namespace {

/// The bit of an access that allows changes.
constexpr quint32 kSetValue = 0x2;

struct OpenKey
{
    KeyPath path;
    quint32 access = 0;
    int count = 0; ///< how many times it was opened and not closed
};

std::map<Handle, OpenKey> &openKeys()
{
    static std::map<Handle, OpenKey> keys;
    return keys;
}

/// The key that a handle stands for; nothing when it is neither open nor a root.
std::optional<OpenKey> find(Handle handle)
{
    if (isRoot(handle))
        return OpenKey{{handle, {}}, KEY_ALL_ACCESS, 1};
    const auto found = openKeys().find(handle);
    return found == openKeys().end() ? std::nullopt : std::optional(found->second);
}

Handle opened(const KeyPath &path, quint32 access)
{
    Handle handle = 1;
    for (auto &[used, key] : openKeys()) {
        if (key.access == access && key.path.isSame(path)) {
            ++key.count;
            return used;
        }
        handle = used + 1;
    }
    openKeys()[handle] = {path, access, 1};
    return handle;
}

/// ERROR_SUCCESS when the key exists.
qint32 probe(const KeyPath &path)
{
    if (isFixed(path))
        return ERROR_SUCCESS;
    const KeyPlace place = placeOf(path);
    const Loaded &loaded = load(place.file);
    if (loaded.status != ERROR_SUCCESS)
        return loaded.status;
    return loaded.content.hasKey(place.key) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

/// As `probe`, and makes the key when it is absent.
qint32 make(const KeyPath &path)
{
    const qint32 status = probe(path);
    if (status != ERROR_FILE_NOT_FOUND)
        return status;
    const KeyPlace place = placeOf(path);
    return alter(place, [&](IniFile &file) {
        file.addKey(place.key);
        return ERROR_SUCCESS;
    });
}

/// Opens the key when `reach` says that it can be had.
qint32 openBelow(Handle key, QByteArrayView subKey, quint32 access, Handle *result,
                 qint32 (*reach)(const KeyPath &))
{
    const auto parent = find(key);
    if (!parent)
        return ERROR_INVALID_HANDLE;
    if (!result)
        return ERROR_INVALID_PARAMETER;
    const KeyPath path = parent->path.below(subKey);
    const qint32 status = reach(path);
    if (status == ERROR_SUCCESS)
        *result = opened(path, access);
    return status;
}

/// Lets `change(IniFile &, section)` alter the values of a key that is open for writing.
template<class Change>
qint32 alterValues(Handle key, Change change)
{
    const auto open = find(key);
    if (!open)
        return ERROR_INVALID_HANDLE;
    if (!(open->access & kSetValue))
        return ERROR_ACCESS_DENIED;
    const KeyPlace place = placeOf(open->path);
    return alter(place, [&](IniFile &file) { return change(file, place.key); });
}

QByteArray closed(quint32 type, QByteArrayView data)
{
    QByteArray bytes = data.toByteArray();
    const bool isText = type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
    if (!isText || bytes.isEmpty())
        return bytes;
    const QByteArray zeros(type == REG_MULTI_SZ ? 2 : 1, '\0');
    while (!bytes.endsWith(zeros))
        bytes += '\0';
    return bytes;
}

} // namespace

qint32 RegOpenKeyExA(Handle key, QByteArrayView subKey, quint32 access, Handle *result)
{
    return openBelow(key, subKey, access, result, probe);
}

qint32 RegCreateKeyExA(Handle key, QByteArrayView subKey, quint32 access, Handle *result)
{
    return openBelow(key, subKey, access, result, make);
}

qint32 RegQueryValueExA(Handle key, QByteArrayView name, quint32 *type, char *data, quint32 *size)
{
    const auto open = find(key);
    if (!open)
        return ERROR_INVALID_HANDLE;
    if (data && !size)
        return ERROR_INVALID_PARAMETER;
    const KeyPlace place = placeOf(open->path);
    const Loaded &loaded = load(place.file);
    if (loaded.status != ERROR_SUCCESS)
        return loaded.status;
    const auto value = loaded.content.value(place.key, nameFromBytes(name));
    if (!value)
        return ERROR_FILE_NOT_FOUND;
    if (type)
        *type = value->type;
    if (!size)
        return ERROR_SUCCESS;
    const quint32 room = *size;
    *size = quint32(value->data.size());
    if (!data)
        return ERROR_SUCCESS;
    if (room < *size)
        return ERROR_MORE_DATA;
    std::memcpy(data, value->data.constData(), *size);
    return ERROR_SUCCESS;
}

qint32 RegSetValueExA(Handle key, QByteArrayView name, quint32 type, QByteArrayView data)
{
    return alterValues(key, [&](IniFile &file, const QString &section) {
        file.setValue(section, nameFromBytes(name), {type, closed(type, data)});
        return ERROR_SUCCESS;
    });
}

qint32 RegDeleteValueA(Handle key, QByteArrayView name)
{
    return alterValues(key, [&](IniFile &file, const QString &section) {
        const bool wasThere = file.removeValue(section, nameFromBytes(name));
        return wasThere ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
    });
}

qint32 RegDeleteKeyA(Handle key, QByteArrayView subKey)
{
    const auto open = find(key);
    if (!open)
        return ERROR_INVALID_HANDLE;
    const KeyPath path = open->path.below(subKey);
    if (const qint32 status = probe(path); status != ERROR_SUCCESS)
        return status;
    if (isFixed(path))
        return ERROR_ACCESS_DENIED;
    const KeyPlace place = placeOf(path);
    return alter(place, [&](IniFile &file) {
        if (file.hasSubkeys(place.key))
            return ERROR_ACCESS_DENIED;
        file.removeKey(place.key);
        return ERROR_SUCCESS;
    });
}

qint32 RegCloseKey(Handle key)
{
    if (isRoot(key))
        return ERROR_SUCCESS;
    const auto found = openKeys().find(key);
    if (found == openKeys().end())
        return ERROR_INVALID_HANDLE;
    if (--found->second.count == 0)
        openKeys().erase(found);
    return ERROR_SUCCESS;
}

} // namespace registry
