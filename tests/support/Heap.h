#pragma once

#include <QtGlobal>

#include <malloc.h>

/// What this program holds of the heap, in bytes. A sanitizer's own allocator tells 0. Exact only
/// in a test with the environment `exact_heap`.
inline qint64 heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

/// Runs `round` until one of them changes the heap by less than `most` bytes, and returns the
/// change of the last one. What is made once, for whatever needs it first, is all made after some
/// rounds, and the toolkit's timers make and free things in any; what is lost is lost in each.
template<class Round>
qint64 heapChange(qint64 most, Round round)
{
    constexpr int kRounds = 12;
    qint64 change = most;
    for (int done = 0; done < kRounds && qAbs(change) >= most; ++done) {
        const qint64 before = heapInUse();
        round();
        change = heapInUse() - before;
    }
    return change;
}
