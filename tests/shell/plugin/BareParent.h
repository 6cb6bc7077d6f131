#pragma once

#include <QString>

#include <gtest/gtest.h>
#include <sqlite3.h>

/// Makes the parent's database at `path`, with what of its tables a start cannot do without. By
/// SQLite alone, for tests that know nothing of the component but names.
inline void makeBareParent(const QString &path)
{
    sqlite3 *database = nullptr;
    EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database,
                           "CREATE TABLE Klient (KlientNr SHORT, Navn TEXT(40));"
                           "CREATE TABLE KundeLev (KlientNr SHORT, KundeNr LONG);"
                           "CREATE TABLE Kontoplan (KlientNr SHORT, KontoNr LONG, "
                           "Navn TEXT(40), FastMvaKode SHORT, Std BIT, NaerSkjema2 SHORT, "
                           "KtoGruppe SHORT);"
                           "CREATE TABLE Hovedbok (KlientNr SHORT, KontoNr LONG, Aar SHORT, "
                           "AapningsSaldo CURRENCY);",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
}
