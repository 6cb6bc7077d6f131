#include "platform/report/Qpdf.h"

#include "platform/report/ReportError.h"

#include <QLibrary>

using namespace Qt::StringLiterals;

namespace report {

QFunctionPointer qpdfFunction(const char *name)
{
    QLibrary library(QStringLiteral(QPDF_LIBRARY)); // of the interface that it is built with
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const QFunctionPointer function = library.resolve(name);
    if (!function)
        raise(errors::kOutput,
              u"PDF-filer kan ikke skrives: biblioteket qpdf (%1) mangler på denne maskinen."_s.arg(
                  library.fileName()));
    return function;
}

} // namespace report
