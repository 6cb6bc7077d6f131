#include "runtime/WholeFile.h"

#include <QSaveFile>

bool writeWhole(QSaveFile &file, const QByteArray &bytes)
{
    // Without the flush, commit() would not notice that what lay in the buffer found no room.
    return file.write(bytes) == bytes.size() && file.flush() && file.commit();
}
