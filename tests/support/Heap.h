#pragma once

#include <QtGlobal>

#include <malloc.h>

/// What this program holds of the heap, in bytes. A sanitizer's own allocator tells 0.
inline qint64 heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}
