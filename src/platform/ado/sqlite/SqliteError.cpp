#include "platform/ado/sqlite/SqliteError.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/dialect/Overflow.h"
#include "platform/ado/sqlite/SqliteFunctions.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

/// What stands behind the first ": ": the columns of a constraint, the name of a missing table.
QString named(const QString &message)
{
    const qsizetype mark = message.indexOf(u": ");
    return mark < 0 ? QString() : message.sliced(mark + 2);
}

RunTimeError constraintError(int extendedCode, const QString &message)
{
    switch (extendedCode) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return {errors::kIntegrity,
                u"Endringen ble avvist: det finnes alt en post med samme verdi i %1."_s.arg(
                    named(message))};
    case SQLITE_CONSTRAINT_FOREIGNKEY:
        return {errors::kIntegrity,
                u"Endringen ble avvist: posten viser til en post som ikke finnes, eller er i bruk "
                "av en annen tabell."_s};
    case SQLITE_CONSTRAINT_NOTNULL:
        return {errors::kIntegrity,
                u"Endringen ble avvist: %1 må ha en verdi."_s.arg(named(message))};
    case SQLITE_CONSTRAINT_CHECK:
        if (const auto overflow = dialect::brokenRange(named(message)))
            return *overflow;
        break;
    case SQLITE_CONSTRAINT_DATATYPE:
        return {errors::kTypeMismatch,
                u"Verdien passer ikke til feltets type (%1)."_s.arg(message)};
    default:
        break;
    }
    return {errors::kIntegrity,
            u"Endringen ble avvist av en regel i databasen (%1)."_s.arg(message)};
}

RunTimeError generalError(const QString &message)
{
    if (message.startsWith(u"no such table"))
        return {errors::kNoSuchTable, u"Tabellen «%1» finnes ikke."_s.arg(named(message))};
    if (message.startsWith(u"no such column"))
        return {errors::kNoSuchColumn, u"Feltet «%1» finnes ikke."_s.arg(named(message))};
    if (message.startsWith(u"table ") && message.endsWith(u" already exists"))
        return {errors::kTableExists, u"Tabellen finnes fra før (%1)."_s.arg(message)};
    if (message.startsWith(u"duplicate column name"))
        return {errors::kColumnExists, u"Feltet «%1» finnes fra før."_s.arg(named(message))};
    if (message == QLatin1StringView(kWholeOverflow))
        return dialect::computedOverflow();
    if (message == QLatin1StringView(kDividedByZero))
        return RunTimeError(::errors::kDivisionByZero);
    return {errors::kSyntax, u"Databasen godtok ikke setningen (%1)."_s.arg(message)};
}

struct Meaning
{
    int code; ///< a primary result code, or an extended one before its primary
    int number;
    QStringView text;
};

constexpr Meaning kMeanings[] = {
    {SQLITE_BUSY_SNAPSHOT, errors::kTimeout,
     u"Databasen er endret av en annen etter at transaksjonen begynte å lese."},
    {SQLITE_BUSY, errors::kTimeout, u"Databasen er låst av en annen bruker."},
    {SQLITE_LOCKED, errors::kTimeout, u"Databasen er låst av en annen bruker."},
    {SQLITE_READONLY, errors::kNoPermission, u"Databasen er skrivebeskyttet."},
    {SQLITE_PERM, errors::kNoPermission, u"Databasen er skrivebeskyttet."},
    {SQLITE_AUTH, errors::kNoPermission, u"Databasen er skrivebeskyttet."},
    {SQLITE_MISMATCH, errors::kTypeMismatch, u"Verdien passer ikke til feltets type."},
    {SQLITE_TOOBIG, errors::kOutOfRange, u"Verdien er for stor for databasen."},
    {SQLITE_FULL, errors::kUnspecified, u"Disken er full; endringen er ikke lagret."},
    {SQLITE_IOERR_SHMSIZE, errors::kUnspecified,
     u"Disken er full; det er ikke plass til låsefilen ved siden av databasen."},
    {SQLITE_CORRUPT, errors::kUnspecified, u"Databasefilen er skadet."},
    {SQLITE_NOTADB, errors::kUnspecified, u"Filen er ingen database."},
    {SQLITE_CANTOPEN, errors::kUnspecified, u"Databasefilen kan ikke åpnes."},
    {SQLITE_NOMEM, errors::kUnspecified, u"Det er ikke nok minne."},
};

} // namespace

RunTimeError sqliteError(int extendedCode, const QString &message)
{
    const int code = extendedCode & 0xff;
    if (code == SQLITE_ERROR)
        return generalError(message);
    if (code == SQLITE_CONSTRAINT)
        return constraintError(extendedCode, message);
    for (const Meaning &meaning : kMeanings) {
        if (meaning.code == extendedCode || meaning.code == code)
            return {meaning.number, meaning.text.toString()};
    }
    if (code == SQLITE_IOERR)
        return {errors::kUnspecified,
                u"Databasefilen kan ikke leses eller skrives (feil %1)."_s.arg(extendedCode)};
    return {errors::kUnspecified,
            u"Databasen meldte feil %1 (%2)."_s.arg(extendedCode).arg(message)};
}

} // namespace ado
