#include "runtime/WholeFile.h"

#include <QSaveFile>

namespace {

constexpr qint64 kBlock = 0x10000;

// Without the flush, commit() would not notice that what lay in the buffer found no room.
bool commitWhole(QSaveFile &file)
{
    return file.flush() && file.commit();
}

} // namespace

bool writeWhole(QSaveFile &file, const QByteArray &bytes)
{
    return file.write(bytes) == bytes.size() && commitWhole(file);
}

bool writeWhole(QSaveFile &file, QIODevice &from)
{
    while (!from.atEnd()) {
        const QByteArray block = from.read(kBlock);
        if (block.isEmpty() || file.write(block) != block.size())
            return false;
    }
    return commitWhole(file);
}
