#include "platform/ado/postgres/Postgres.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/postgres/PostgresSession.h"

#include <libpq-fe.h>

using namespace Qt::StringLiterals;

namespace ado {

QMap<QString, QString> postgresKeywords(const QString &uri)
{
    char *message = nullptr; // libpq's, which shows parts of the text
    PQconninfoOption *const found = PQconninfoParse(uri.toUtf8().constData(), &message);
    PQfreemem(message);
    if (!found)
        throw RunTimeError(errors::kUnspecified,
                           u"Adressen til databasetjeneren («dsn=postgresql://…») er ikke "
                           "riktig skrevet."_s);
    QMap<QString, QString> keywords;
    for (const PQconninfoOption *option = found; option->keyword; ++option) {
        if (option->val)
            keywords.insert(QString::fromLatin1(option->keyword), QString::fromUtf8(option->val));
    }
    PQconninfoFree(found);
    return keywords;
}

std::unique_ptr<Session> openPostgres(const QMap<QString, QString> &keywords)
{
    return std::make_unique<PostgresSession>(keywords);
}

} // namespace ado
