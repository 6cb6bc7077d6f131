#include "platform/registry/SettingsFile.h"

#include "runtime/WholeFile.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <sys/file.h>

using namespace Qt::StringLiterals;

namespace registry {

namespace {

/// No file of settings comes near this many bytes; a larger one is neither read nor written.
constexpr qint64 kLargestFile = qint64{16} * 1024 * 1024;

constexpr std::chrono::seconds kLockPatience{2};

/// What tells one state of a file from the next. A change here makes a new file; another program
/// may write into the old one, which alters its times.
struct FileState
{
    qint64 size = 0;
    qint64 written = 0; ///< milliseconds
    qint64 changed = 0;

    static FileState of(const QFileInfo &info)
    {
        return {info.size(), info.lastModified().toMSecsSinceEpoch(),
                info.metadataChangeTime().toMSecsSinceEpoch()};
    }
    /// Whether a later change would show in the times, which go on in steps.
    [[nodiscard]] bool isSettled() const
    {
        constexpr qint64 kLongestStep = 50; // milliseconds
        // The system's own time, as the file's are.
        return QDateTime::currentMSecsSinceEpoch() - std::max(written, changed) > kLongestStep;
    }
    friend bool operator==(const FileState &, const FileState &) = default;
};

/// Keeps other processes from changing a file of settings until `lock` is closed; waits a moment
/// for them to finish, since it is the windows' thread that waits.
bool lockFor(QFile &lock)
{
    const QDeadlineTimer deadline(kLockPatience);
    if (!lock.open(QIODevice::ReadWrite))
        return false;
    while (::flock(lock.handle(), LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || deadline.hasExpired())
            return false;
        QThread::msleep(5);
    }
    return true;
}

bool replaceFile(const QString &path, const QByteArray &bytes)
{
    if (bytes.size() > kLargestFile)
        return false;
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && writeWhole(file, bytes);
}

} // namespace

const Loaded &load(const QString &path)
{
    struct Parsed
    {
        FileState state;
        bool isSettled = false;
        Loaded loaded;
    };
    static const Loaded absent;
    static const Loaded denied{ERROR_ACCESS_DENIED, {}};
    static std::map<QString, Parsed> files;

    const QFileInfo info(path);
    if (!info.exists())
        return absent;
    const FileState state = FileState::of(info);
    Parsed &parsed = files[path];
    if (parsed.isSettled && parsed.state == state)
        return parsed.loaded;
    QFile file(path);
    if (!info.isFile() || state.size > kLargestFile || !file.open(QIODevice::ReadOnly))
        return denied;
    const bool isSettled = state.isSettled(); // judged before the reading
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return denied;
    parsed = {state, isSettled, {ERROR_SUCCESS, IniFile::fromBytes(bytes)}};
    return parsed.loaded;
}

qint32 alter(const KeyPlace &place, const std::function<qint32(IniFile &)> &change)
{
    // The lock is a file of its own, since the file itself is replaced by each change.
    QFile lock(place.file + ".lock"_L1);
    if (!QDir().mkpath(place.folder) || !lockFor(lock))
        return ERROR_ACCESS_DENIED;
    Loaded loaded = load(place.file);
    if (loaded.status != ERROR_SUCCESS)
        return loaded.status;
    const qint32 status = change(loaded.content);
    if (status != ERROR_SUCCESS)
        return status;
    const bool isStored = loaded.content.isEmpty()
                              ? QFile::remove(place.file)
                              : replaceFile(place.file, loaded.content.toBytes());
    return isStored ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

} // namespace registry
