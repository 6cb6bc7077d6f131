#include "platform/ado/sqlite/SqliteError.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/sqlite/SqliteWriter.h"

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

/// The column of a SHORT or LONG that a number was too large for; empty for another constraint.
QString rangeChecked(const QString &message)
{
    const QLatin1StringView suffix(SqliteWriter::kRangeCheck);
    return message.endsWith(suffix) ? named(message).chopped(suffix.size()) : QString();
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
        if (const QString column = rangeChecked(message); !column.isEmpty())
            return {errors::kOutOfRange, u"Tallet er for stort for feltet «%1»."_s.arg(column)};
        break;
    case SQLITE_CONSTRAINT_DATATYPE:
        return {errors::kTypeMismatch,
                u"Verdien passer ikke til feltets type (%1)."_s.arg(message)};
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
    if (message == u"integer overflow")
        return {errors::kOutOfRange, u"Summen er for stor."_s};
    return {errors::kSyntax, u"Databasen godtok ikke setningen (%1)."_s.arg(message)};
}

} // namespace

RunTimeError sqliteError(int extendedCode, const QString &message)
{
    switch (extendedCode & 0xff) {
    case SQLITE_ERROR:
        return generalError(message);
    case SQLITE_CONSTRAINT:
        return constraintError(extendedCode, message);
    case SQLITE_BUSY:
        if (extendedCode == SQLITE_BUSY_SNAPSHOT)
            return {errors::kTimeout,
                    u"Databasen er endret av en annen etter at transaksjonen begynte å lese."_s};
        [[fallthrough]];
    case SQLITE_LOCKED:
        return {errors::kTimeout, u"Databasen er låst av en annen bruker."_s};
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return {errors::kNoPermission, u"Databasen er skrivebeskyttet."_s};
    case SQLITE_MISMATCH:
        return {errors::kTypeMismatch, u"Verdien passer ikke til feltets type."_s};
    case SQLITE_TOOBIG:
        return {errors::kOutOfRange, u"Verdien er for stor for databasen."_s};
    case SQLITE_FULL:
        return {errors::kUnspecified, u"Disken er full; endringen er ikke lagret."_s};
    case SQLITE_IOERR:
        return {errors::kUnspecified,
                u"Databasefilen kan ikke leses eller skrives (feil %1)."_s.arg(extendedCode)};
    case SQLITE_CORRUPT:
        return {errors::kUnspecified, u"Databasefilen er skadet."_s};
    case SQLITE_NOTADB:
        return {errors::kUnspecified, u"Filen er ingen database."_s};
    case SQLITE_CANTOPEN:
        return {errors::kUnspecified, u"Databasefilen kan ikke åpnes."_s};
    case SQLITE_NOMEM:
        return {errors::kUnspecified, u"Det er ikke nok minne."_s};
    default:
        return {errors::kUnspecified,
                u"Databasen meldte feil %1 (%2)."_s.arg(extendedCode).arg(message)};
    }
}

} // namespace ado
