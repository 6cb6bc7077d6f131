#include "platform/registry/Registry.h"

#include "platform/registry/IniFile.h"
#include "platform/registry/KeyPath.h"
#include "runtime/WholeFile.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace registry {

namespace {

/// No file of settings comes near this many bytes; a larger one is neither read nor written.
constexpr qint64 kLargestFile = qint64{16} * 1024 * 1024;

constexpr std::chrono::seconds kLockPatience{2};

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

/// A file of settings in memory.
struct Loaded
{
    qint32 status = ERROR_SUCCESS;
    bool exists = false;
    IniFile file;
};

/// What tells one state of a file from the next. A change here makes a new file; another program
/// may write into the old one, which alters its times.
struct FileState
{
    dev_t device = 0;
    ino_t number = 0;
    off_t size = 0;
    qint64 written = 0; ///< nanoseconds
    qint64 changed = 0;

    static FileState of(const QFile &file)
    {
        struct stat status = {};
        if (::fstat(file.handle(), &status) != 0)
            return {};
        return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
                nanoseconds(status.st_ctim)};
    }
    /// Whether a later change would show in the times, which go on in steps.
    [[nodiscard]] bool isSettled() const
    {
        constexpr qint64 kLongestStep = 50'000'000; // nanoseconds
        timespec now = {};
        return ::clock_gettime(CLOCK_REALTIME, &now) == 0 &&
               nanoseconds(now) - std::max(written, changed) > kLongestStep;
    }
    friend bool operator==(const FileState &, const FileState &) = default;

private:
    static qint64 nanoseconds(const timespec &time)
    {
        return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
    }
};

/// The file of settings as it stands on the disk. It is parsed once as long as it stays the same.
/// The reference holds until the next call.
const Loaded &load(const QString &path)
{
    struct Parsed
    {
        FileState state;
        bool isSettled = false;
        Loaded content;
    };
    static const Loaded absent;
    static const Loaded denied{ERROR_ACCESS_DENIED, true, {}};
    static std::map<QString, Parsed> files;

    const QFileInfo info(path);
    if (!info.exists()) {
        files.erase(path);
        return absent;
    }
    QFile file(path);
    if (!info.isFile() || info.size() > kLargestFile || !file.open(QIODevice::ReadOnly))
        return denied;
    Parsed &parsed = files[path];
    const FileState state = FileState::of(file);
    if (parsed.isSettled && parsed.state == state)
        return parsed.content;
    const bool isSettled = state.isSettled(); // judged before the reading
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        files.erase(path);
        return denied;
    }
    parsed = {state, isSettled, {ERROR_SUCCESS, true, IniFile::fromBytes(bytes)}};
    return parsed.content;
}

/// Keeps other processes from changing a file of settings; waits a moment for them to finish, since
/// it is the windows' thread that waits. The lock is a file of its own beside it, since the file
/// itself is replaced by each change.
class Lock
{
public:
    explicit Lock(const QString &settingsFile)
        : m_descriptor(::open(QFile::encodeName(settingsFile + ".lock"_L1).constData(),
                              O_RDWR | O_CREAT | O_CLOEXEC, 0666))
    {
        const QDeadlineTimer deadline(kLockPatience);
        while (m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
            if ((errno == EWOULDBLOCK || errno == EINTR) && !deadline.hasExpired()) {
                QThread::msleep(5);
                continue;
            }
            ::close(m_descriptor);
            m_descriptor = -1;
        }
    }
    ~Lock()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Lock(const Lock &) = delete;
    Lock &operator=(const Lock &) = delete;

    [[nodiscard]] bool isHeld() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

bool replaceFile(const QString &path, const QByteArray &bytes)
{
    if (bytes.size() > kLargestFile)
        return false;
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && writeWhole(file, bytes);
}

/// Lets `change(Loaded &)` alter the file of settings as it stands now. When that returns
/// ERROR_SUCCESS the new state is stored, which is no file at all if `exists` has become false.
template<class Change>
qint32 alter(const KeyPlace &place, Change change)
{
    if (!QDir().mkpath(place.folder))
        return ERROR_ACCESS_DENIED;
    const Lock lock(place.file);
    if (!lock.isHeld())
        return ERROR_ACCESS_DENIED;
    Loaded loaded = load(place.file);
    if (loaded.status != ERROR_SUCCESS)
        return loaded.status;
    loaded.exists = true;
    const qint32 status = change(loaded);
    if (status != ERROR_SUCCESS)
        return status;
    const bool isStored =
        loaded.exists ? replaceFile(place.file, loaded.file.toBytes()) : QFile::remove(place.file);
    return isStored ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

bool companyHasApplications(const KeyPath &path)
{
    const QString folder = companyFolder(path);
    return !folder.isEmpty() &&
           !QDir(folder).entryList({u"*.ini"_s}, QDir::Files | QDir::Hidden).isEmpty();
}

/// ERROR_SUCCESS when the key exists.
qint32 probe(const KeyPath &path)
{
    if (isFixed(path) || companyHasApplications(path))
        return ERROR_SUCCESS;
    const KeyPlace place = placeOf(path);
    const Loaded &loaded = load(place.file);
    if (loaded.status != ERROR_SUCCESS)
        return loaded.status;
    return loaded.exists && loaded.file.hasKey(place.key) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

QString valueName(QByteArrayView name)
{
    const qsizetype end = name.indexOf('\0');
    return nameFromBytes(end < 0 ? name : name.first(end));
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
    const auto parent = find(key);
    if (!parent)
        return ERROR_INVALID_HANDLE;
    if (!result)
        return ERROR_INVALID_PARAMETER;
    const KeyPath path = parent->path.below(subKey);
    const qint32 status = probe(path);
    if (status == ERROR_SUCCESS)
        *result = opened(path, access);
    return status;
}

qint32 RegCreateKeyExA(Handle key, QByteArrayView subKey, quint32 access, Handle *result)
{
    const auto parent = find(key);
    if (!parent)
        return ERROR_INVALID_HANDLE;
    if (!result)
        return ERROR_INVALID_PARAMETER;
    const KeyPath path = parent->path.below(subKey);
    qint32 status = probe(path);
    if (status == ERROR_FILE_NOT_FOUND) {
        const KeyPlace place = placeOf(path);
        status = alter(place, [&](Loaded &loaded) {
            loaded.file.addKey(place.key);
            return ERROR_SUCCESS;
        });
    }
    if (status == ERROR_SUCCESS)
        *result = opened(path, access);
    return status;
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
    const auto value = loaded.file.value(place.key, valueName(name));
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
    const auto open = find(key);
    if (!open)
        return ERROR_INVALID_HANDLE;
    if (!(open->access & kSetValue))
        return ERROR_ACCESS_DENIED;
    const KeyPlace place = placeOf(open->path);
    return alter(place, [&](Loaded &loaded) {
        loaded.file.setValue(place.key, valueName(name), {type, closed(type, data)});
        return ERROR_SUCCESS;
    });
}

qint32 RegDeleteValueA(Handle key, QByteArrayView name)
{
    const auto open = find(key);
    if (!open)
        return ERROR_INVALID_HANDLE;
    if (!(open->access & kSetValue))
        return ERROR_ACCESS_DENIED;
    const KeyPlace place = placeOf(open->path);
    return alter(place, [&](Loaded &loaded) {
        const bool wasThere = loaded.file.removeValue(place.key, valueName(name));
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
    if (isFixed(path) || companyHasApplications(path))
        return ERROR_ACCESS_DENIED;
    const KeyPlace place = placeOf(path);
    return alter(place, [&](Loaded &loaded) {
        if (loaded.file.hasSubkeys(place.key))
            return ERROR_ACCESS_DENIED;
        loaded.file.removeKey(place.key);
        loaded.exists = !(place.isApplication && place.key.isEmpty());
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
