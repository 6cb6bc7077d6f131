#include "platform/ado/AdoTypes.h"
#include "platform/ado/Session.h"
#include "platform/ado/postgres/Postgres.h"

using namespace Qt::StringLiterals;

namespace ado {

namespace {

[[noreturn]] void refuse()
{
    throw RunTimeError(errors::kUnspecified,
                       u"Denne utgaven er bygget uten PostgreSQL og åpner bare SQLite-filer."_s);
}

} // namespace

QMap<QString, QString> postgresKeywords(const QString & /*uri*/)
{
    refuse();
}

std::unique_ptr<Session> openPostgres(const QMap<QString, QString> & /*keywords*/)
{
    refuse();
}

} // namespace ado
