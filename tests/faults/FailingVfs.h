#pragma once

#include <QtGlobal>

namespace faults {

/// The file layer of SQLite while it lives: the machine's own one, in which writing can be made to
/// fail. One at a time; database files must be opened and closed within its life.
///
/// See "The SQLite OS Interface or VFS" and "Run-Time Extension" of the SQLite documentation for
/// the interfaces that it stands between.
class FailingVfs
{
public:
    FailingVfs();
    ~FailingVfs();
    FailingVfs(const FailingVfs &) = delete;
    FailingVfs &operator=(const FailingVfs &) = delete;

    /// The disk takes this many bytes more; a write that does not fit is cut where the disk ends.
    void fillUpAfter(qint64 bytes);
    /// After so many changes of files (writes, cuts, syncs) more, each one fails with the result
    /// code.
    void failAfter(qint64 changes, int code);
    /// The same for syncs alone.
    void failSyncAfter(qint64 syncs, int code);
    /// The temporary folder takes no file.
    void refuseTemporary();
    /// All is well again.
    void mend();

    /// What has come through since the last mend().
    [[nodiscard]] qint64 bytes() const;
    [[nodiscard]] qint64 changes() const;
    [[nodiscard]] qint64 syncs() const;
};

} // namespace faults
