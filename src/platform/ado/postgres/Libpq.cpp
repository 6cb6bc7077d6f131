#include "platform/ado/postgres/Libpq.h"

#include "platform/ado/AdoTypes.h"

#include <QLibrary>

using namespace Qt::StringLiterals;

namespace ado {

QFunctionPointer libpqFunction(const char *name)
{
    constexpr int kInterface = 5; // has been the same since 2005
    QLibrary library(u"pq"_s, kInterface);
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const QFunctionPointer function = library.resolve(name);
    if (!function)
        throw RunTimeError(errors::kUnspecified,
                           u"En databasetjener kan ikke brukes: PostgreSQLs klientbibliotek "
                           "(libpq.so.%1) mangler på denne maskinen."_s.arg(kInterface));
    return function;
}

} // namespace ado
