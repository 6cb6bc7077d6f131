#pragma once

#include "runtime/LateFunction.h"

#include <libpq-fe.h>

namespace ado {

/// The address of a function of libpq. Raises kUnspecified when the library is not on this machine.
[[nodiscard]] QFunctionPointer libpqFunction(const char *name);

// In this namespace the names below hide libpq's own. So the library, which brings some twenty
// others along, is loaded when the first server is named, and a start on a file is spared some 6 ms
// and 5 MB.
#define LIBPQ_FUNCTION(name)                                                                       \
    inline constinit const LateFunction<decltype(::name), libpqFunction> name(#name)
LIBPQ_FUNCTION(PQclear);
LIBPQ_FUNCTION(PQcmdStatus);
LIBPQ_FUNCTION(PQcmdTuples);
LIBPQ_FUNCTION(PQconnectPoll);
LIBPQ_FUNCTION(PQconnectStartParams);
LIBPQ_FUNCTION(PQconnectionNeedsPassword);
LIBPQ_FUNCTION(PQconninfoFree);
LIBPQ_FUNCTION(PQconninfoParse);
LIBPQ_FUNCTION(PQerrorMessage);
LIBPQ_FUNCTION(PQexec);
LIBPQ_FUNCTION(PQexecParams);
LIBPQ_FUNCTION(PQexecPrepared);
LIBPQ_FUNCTION(PQfinish);
LIBPQ_FUNCTION(PQfreemem);
LIBPQ_FUNCTION(PQgetResult);
LIBPQ_FUNCTION(PQgetisnull);
LIBPQ_FUNCTION(PQgetlength);
LIBPQ_FUNCTION(PQgetvalue);
LIBPQ_FUNCTION(PQhost);
LIBPQ_FUNCTION(PQnotifies);
LIBPQ_FUNCTION(PQntuples);
LIBPQ_FUNCTION(PQpass);
LIBPQ_FUNCTION(PQport);
LIBPQ_FUNCTION(PQprepare);
LIBPQ_FUNCTION(PQputCopyData);
LIBPQ_FUNCTION(PQputCopyEnd);
LIBPQ_FUNCTION(PQresultErrorField);
LIBPQ_FUNCTION(PQresultStatus);
LIBPQ_FUNCTION(PQsendQueryPrepared);
LIBPQ_FUNCTION(PQsetErrorVerbosity);
LIBPQ_FUNCTION(PQsetNoticeProcessor);
LIBPQ_FUNCTION(PQsetSingleRowMode);
LIBPQ_FUNCTION(PQsocket);
LIBPQ_FUNCTION(PQstatus);
LIBPQ_FUNCTION(PQtransactionStatus);
#undef LIBPQ_FUNCTION

} // namespace ado
