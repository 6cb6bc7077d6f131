#include "runtime/WholeFile.h"

#include <QSaveFile>

bool commitWhole(QSaveFile &file)
{
    return file.flush() && file.commit();
}
