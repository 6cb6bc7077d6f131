#include "platform/ado/postgres/Postgres.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/postgres/Libpq.h"
#include "platform/ado/postgres/PostgresSession.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

/// libpq takes a password with an "@" or a "/" in it apart, and its pieces for a host, a port or a
/// database, which messages show. What is not written so in the plain form is refused.
bool isWellWritten(const QString &uri)
{
    static const QRegularExpression form([] {
        const QString host = uR"((?:\[[0-9A-Fa-f:.%]*\]|[^][@:/?=&;,]*)(?::[0-9]*)?)"_s;
        return uR"(^postgres(?:ql)?://(?:[^@/?]*@)?%1(?:,%1)*(?:/[^@:=&;/?]*)?(?:\?[^@]*)?$)"_s.arg(
            host);
    }());
    return form.match(uri).hasMatch();
}

RunTimeError misspelt()
{
    return {errors::kUnspecified,
            u"Adressen til databasetjeneren («dsn=postgresql://…») er ikke riktig skrevet."_s};
}

} // namespace

QMap<QString, QString> postgresKeywords(const QString &uri)
{
    if (!isWellWritten(uri))
        throw misspelt();
    char *message = nullptr; // libpq's, which shows parts of the text
    PQconninfoOption *const found = PQconninfoParse(uri.toUtf8().constData(), &message);
    PQfreemem(message);
    if (!found)
        throw misspelt();
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
