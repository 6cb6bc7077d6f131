#include "faults/FailingVfs.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <limits>

namespace faults {

namespace {

constexpr qint64 kUnlimited = std::numeric_limits<qint64>::max();

/// How much of something still passes, and what has passed.
struct Allowance
{
    qint64 left = kUnlimited;
    qint64 passed = 0;
    int code = SQLITE_OK; ///< of what does not pass

    void limit(qint64 count, int failure)
    {
        left = count;
        code = failure;
    }
    /// Takes as much of `count` as is left; how much that is.
    qint64 take(qint64 count)
    {
        const qint64 taken = std::min(left, count);
        if (left != kUnlimited)
            left -= taken;
        passed += taken;
        return taken;
    }
};

Allowance bytesAllowed;
Allowance changesAllowed;
Allowance syncsAllowed;
bool temporaryAllowed = true;

sqlite3_vfs *machine = nullptr;

/// An open file; the machine's own one follows it in memory.
struct File
{
    sqlite3_file base;
    sqlite3_file *own() { return reinterpret_cast<sqlite3_file *>(this + 1); }
};

sqlite3_file *own(sqlite3_file *file)
{
    return reinterpret_cast<File *>(file)->own();
}

int changeFile()
{
    return changesAllowed.take(1) == 1 ? SQLITE_OK : changesAllowed.code;
}

int closeFile(sqlite3_file *file)
{
    return own(file)->pMethods->xClose(own(file));
}

int writeFile(sqlite3_file *file, const void *data, int count, sqlite3_int64 offset)
{
    if (const int code = changeFile(); code != SQLITE_OK)
        return code;
    const int fitting = static_cast<int>(bytesAllowed.take(count));
    const int code =
        fitting == 0 ? SQLITE_OK : own(file)->pMethods->xWrite(own(file), data, fitting, offset);
    return code == SQLITE_OK && fitting < count ? bytesAllowed.code : code;
}

int truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    const int code = changeFile();
    return code != SQLITE_OK ? code : own(file)->pMethods->xTruncate(own(file), size);
}

int syncFile(sqlite3_file *file, int flags)
{
    if (const int code = changeFile(); code != SQLITE_OK)
        return code;
    if (syncsAllowed.take(1) == 0)
        return syncsAllowed.code;
    return own(file)->pMethods->xSync(own(file), flags);
}

const sqlite3_io_methods methods{
    3,
    closeFile,
    [](sqlite3_file *file, void *data, int count, sqlite3_int64 offset) {
        return own(file)->pMethods->xRead(own(file), data, count, offset);
    },
    writeFile,
    truncateFile,
    syncFile,
    [](sqlite3_file *file, sqlite3_int64 *size) {
        return own(file)->pMethods->xFileSize(own(file), size);
    },
    [](sqlite3_file *file, int lock) { return own(file)->pMethods->xLock(own(file), lock); },
    [](sqlite3_file *file, int lock) { return own(file)->pMethods->xUnlock(own(file), lock); },
    [](sqlite3_file *file, int *locked) {
        return own(file)->pMethods->xCheckReservedLock(own(file), locked);
    },
    [](sqlite3_file *file, int operation, void *argument) {
        return own(file)->pMethods->xFileControl(own(file), operation, argument);
    },
    [](sqlite3_file *file) { return own(file)->pMethods->xSectorSize(own(file)); },
    [](sqlite3_file *file) { return own(file)->pMethods->xDeviceCharacteristics(own(file)); },
    [](sqlite3_file *file, int page, int size, int extend, void volatile **memory) {
        return own(file)->pMethods->xShmMap(own(file), page, size, extend, memory);
    },
    [](sqlite3_file *file, int offset, int count, int flags) {
        return own(file)->pMethods->xShmLock(own(file), offset, count, flags);
    },
    [](sqlite3_file *file) { own(file)->pMethods->xShmBarrier(own(file)); },
    [](sqlite3_file *file, int remove) {
        return own(file)->pMethods->xShmUnmap(own(file), remove);
    },
    [](sqlite3_file *file, sqlite3_int64 offset, int count, void **memory) {
        return own(file)->pMethods->xFetch(own(file), offset, count, memory);
    },
    [](sqlite3_file *file, sqlite3_int64 offset, void *memory) {
        return own(file)->pMethods->xUnfetch(own(file), offset, memory);
    },
};

int openFile(sqlite3_vfs *, const char *name, sqlite3_file *file, int flags, int *actual)
{
    const bool temporary = !name;
    if (temporary && !temporaryAllowed) {
        file->pMethods = nullptr;
        return SQLITE_FULL;
    }
    const int code = machine->xOpen(machine, name, own(file), flags, actual);
    // What the machine has not opened is not to be closed.
    file->pMethods = own(file)->pMethods ? &methods : nullptr;
    return code;
}

sqlite3_vfs failing{};

} // namespace

FailingVfs::FailingVfs()
{
    machine = sqlite3_vfs_find(nullptr);
    failing = *machine; // what is no file of ours goes to the machine as it is
    failing.szOsFile = static_cast<int>(sizeof(File)) + machine->szOsFile;
    failing.pNext = nullptr;
    failing.zName = "failing";
    failing.xOpen = openFile;
    mend();
    EXPECT_EQ(sqlite3_vfs_register(&failing, 1), SQLITE_OK);
}

FailingVfs::~FailingVfs()
{
    sqlite3_vfs_unregister(&failing);
    sqlite3_vfs_register(machine, 1);
}

void FailingVfs::fillUpAfter(qint64 count)
{
    bytesAllowed.limit(count, SQLITE_FULL);
}

void FailingVfs::failAfter(qint64 count, int code)
{
    changesAllowed.limit(count, code);
}

void FailingVfs::failSyncAfter(qint64 count, int code)
{
    syncsAllowed.limit(count, code);
}

void FailingVfs::refuseTemporary()
{
    temporaryAllowed = false;
}

void FailingVfs::mend()
{
    bytesAllowed = changesAllowed = syncsAllowed = {};
    temporaryAllowed = true;
}

qint64 FailingVfs::bytes() const
{
    return bytesAllowed.passed;
}

qint64 FailingVfs::changes() const
{
    return changesAllowed.passed;
}

qint64 FailingVfs::syncs() const
{
    return syncsAllowed.passed;
}

} // namespace faults
