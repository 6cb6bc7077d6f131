#include "platform/ado/postgres/PostgresError.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/dialect/Overflow.h"
#include "platform/ado/postgres/Libpq.h"

using namespace Qt::StringLiterals;

namespace ado {

namespace {

QString field(const PGresult *result, int code)
{
    return QString::fromUtf8(PQresultErrorField(result, code));
}

/// "", or " (<the server's own words>)".
QString inWords(const PostgresFailure &failure)
{
    return failure.message.isEmpty() ? QString() : u" ("_s + failure.message + u')';
}

RunTimeError integrityError(const PostgresFailure &failure)
{
    const QByteArray &state = failure.state;
    if (state == "23505" && failure.schema == u"pg_catalog")
        return {errors::kTableExists,
                u"En annen bruker laget det samme i databasen samtidig; prøv en gang til."_s};
    if (state == "23505")
        return {errors::kIntegrity,
                u"Endringen ble avvist: det finnes alt en post med samme verdi i "
                "tabellen «%1» (%2)."_s.arg(failure.table, failure.constraint)};
    if (state == "23503")
        return {errors::kIntegrity,
                u"Endringen ble avvist: posten viser til en post som ikke finnes, eller er i bruk "
                "av en annen tabell (%1)."_s.arg(failure.constraint)};
    if (state == "23502")
        return {errors::kIntegrity, u"Endringen ble avvist: %1.%2 må ha en verdi."_s.arg(
                                        failure.table, failure.column)};
    if (const auto overflow = dialect::brokenRange(failure.constraint))
        return *overflow;
    return {errors::kIntegrity,
            u"Endringen ble avvist av en regel i databasen"_s + inWords(failure) + u'.'};
}

struct Meaning
{
    const char *state; ///< SQLSTATE or the beginning of one; an exact one stands before its class
    int number;
    QStringView text;
};

constexpr Meaning kMeanings[] = {
    {"2BP01", errors::kIntegrity, u"Endringen ble avvist: noe annet i databasen bruker den"},
    {"22001", errors::kOutOfRange, u"Teksten er for lang for feltet"},
    {"22", errors::kTypeMismatch, u"Verdien passer ikke til feltets type"},
    {"42P01", errors::kNoSuchTable, u"Tabellen finnes ikke"},
    {"42703", errors::kNoSuchColumn, u"Feltet finnes ikke"},
    {"42P07", errors::kTableExists, u"Tabellen finnes fra før"},
    {"42701", errors::kColumnExists, u"Feltet finnes fra før"},
    {"42501", errors::kNoPermission, u"Databasebrukeren har ikke rett til dette"},
    {"25006", errors::kNoPermission, u"Databasen er skrivebeskyttet"},
    {"42804", errors::kTypeMismatch, u"Verdien passer ikke til feltets type"},
    {"42", errors::kSyntax, u"Databasen godtok ikke setningen"},
    {"25P02", errors::kUnspecified, u"Transaksjonen er avbrutt av en tidligere feil"},
    {"40P01", errors::kTimeout, u"To brukere ventet på hverandre; endringen ble avbrutt"},
    {"40", errors::kTimeout, u"Endringen kom i veien for en annen bruker og ble avbrutt"},
    {"55P03", errors::kTimeout, u"Databasen er låst av en annen bruker"},
    {"57P", errors::kUnspecified, u"Databasetjeneren brøt forbindelsen"},
    {"57014", errors::kTimeout, u"Setningen tok for lang tid og ble avbrutt"},
    {"53100", errors::kUnspecified, u"Databasetjenerens disk er full; endringen er ikke lagret"},
    {"53200", errors::kUnspecified, u"Databasetjeneren har ikke nok minne"},
};

} // namespace

PostgresFailure::PostgresFailure(const PGresult *result)
    : state(PQresultErrorField(result, PG_DIAG_SQLSTATE)),
      message(field(result, PG_DIAG_MESSAGE_PRIMARY)), schema(field(result, PG_DIAG_SCHEMA_NAME)),
      table(field(result, PG_DIAG_TABLE_NAME)), column(field(result, PG_DIAG_COLUMN_NAME)),
      constraint(field(result, PG_DIAG_CONSTRAINT_NAME))
{
}

RunTimeError postgresError(const PostgresFailure &failure)
{
    if (failure.state.startsWith("23"))
        return integrityError(failure);
    if (failure.state == "22003") // a literal has been checked by its column before
        return dialect::computedOverflow();
    if (failure.state == "22012")
        return RunTimeError(::errors::kDivisionByZero);
    for (const Meaning &meaning : kMeanings) {
        if (failure.state.startsWith(meaning.state))
            return {meaning.number, meaning.text.toString() + inWords(failure) + u'.'};
    }
    return {errors::kUnspecified, u"Databasetjeneren meldte feil "_s +
                                      QString::fromLatin1(failure.state) + inWords(failure) + u'.'};
}

RunTimeError postgresConnectError(const PostgresFailure &failure, const QString &where,
                                  const QString &database)
{
    QString text;
    if (failure.state.startsWith("28"))
        text = u"Databasetjeneren %1 godtok ikke brukernavnet eller passordet."_s.arg(where);
    else if (failure.state == "3D000")
        text = u"Databasen «%2» finnes ikke på databasetjeneren %1."_s.arg(where, database);
    else if (failure.state == "42501")
        text = u"Brukeren har ikke rett til å åpne databasen «%2» på %1."_s.arg(where, database);
    else if (failure.state == "53300")
        text = u"Databasetjeneren %1 tar ikke imot flere tilkoblinger."_s.arg(where);
    else if (failure.state == "57P03")
        text = u"Databasetjeneren %1 holder på å starte eller stoppe."_s.arg(where);
    else
        text = u"Får ikke kontakt med databasetjeneren %1%2."_s.arg(where, inWords(failure));
    return {errors::kUnspecified, text};
}

RunTimeError postgresLost()
{
    return {errors::kUnspecified, u"Forbindelsen til databasetjeneren er brutt."_s};
}

} // namespace ado
