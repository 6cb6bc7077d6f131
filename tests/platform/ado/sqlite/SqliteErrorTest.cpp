#include "platform/ado/sqlite/SqliteError.h"

#include "platform/ado/Support.h"

namespace ado::test {

struct ErrorCase
{
    int code;
    const char *message;
    int number;
};

class SqliteErrorNumber : public testing::TestWithParam<ErrorCase>
{
};

TEST_P(SqliteErrorNumber, IsToldWithASentence)
{
    const ErrorCase &c = GetParam();
    const RunTimeError error = sqliteError(c.code, QString::fromUtf8(c.message));
    EXPECT_EQ(error.number(), c.number);
    EXPECT_GT(error.description().size(), 10);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, SqliteErrorNumber,
    testing::Values(
        ErrorCase{SQLITE_ERROR, "near \"x\": syntax error", errors::kSyntax},
        ErrorCase{SQLITE_ERROR, "no such table: Ordre", errors::kNoSuchTable},
        ErrorCase{SQLITE_ERROR, "no such column: Navn", errors::kNoSuchColumn},
        ErrorCase{SQLITE_ERROR, "table \"Ordre\" already exists", errors::kTableExists},
        ErrorCase{SQLITE_ERROR, "duplicate column name: Navn", errors::kColumnExists},
        ErrorCase{SQLITE_ERROR, "integer overflow", errors::kOutOfRange},
        ErrorCase{SQLITE_ERROR, "division by zero", ::errors::kDivisionByZero},
        ErrorCase{SQLITE_CONSTRAINT_UNIQUE, "UNIQUE constraint failed: A.B", errors::kIntegrity},
        ErrorCase{SQLITE_CONSTRAINT_PRIMARYKEY, "UNIQUE constraint failed: A.B",
                  errors::kIntegrity},
        ErrorCase{SQLITE_CONSTRAINT_ROWID, "UNIQUE constraint failed: A.B", errors::kIntegrity},
        ErrorCase{SQLITE_CONSTRAINT_FOREIGNKEY, "FOREIGN KEY constraint failed",
                  errors::kIntegrity},
        ErrorCase{SQLITE_CONSTRAINT_NOTNULL, "NOT NULL constraint failed: A.B", errors::kIntegrity},
        ErrorCase{SQLITE_CONSTRAINT_CHECK, "CHECK constraint failed: x > 0", errors::kIntegrity},
        ErrorCase{SQLITE_CONSTRAINT_CHECK, "CHECK constraint failed: Nr range",
                  errors::kOutOfRange},
        ErrorCase{SQLITE_CONSTRAINT_DATATYPE, "cannot store TEXT value in INTEGER column A.B",
                  errors::kTypeMismatch},
        ErrorCase{SQLITE_CONSTRAINT_TRIGGER, "nei", errors::kIntegrity},
        ErrorCase{SQLITE_MISMATCH, "datatype mismatch", errors::kTypeMismatch},
        ErrorCase{SQLITE_BUSY, "database is locked", errors::kTimeout},
        ErrorCase{SQLITE_BUSY_SNAPSHOT, "database is locked", errors::kTimeout},
        ErrorCase{SQLITE_BUSY_RECOVERY, "database is locked", errors::kTimeout},
        ErrorCase{SQLITE_LOCKED, "database table is locked", errors::kTimeout},
        ErrorCase{SQLITE_READONLY, "attempt to write a readonly database", errors::kNoPermission},
        ErrorCase{SQLITE_READONLY_DIRECTORY, "attempt to write a readonly database",
                  errors::kNoPermission},
        ErrorCase{SQLITE_PERM, "access permission denied", errors::kNoPermission},
        ErrorCase{SQLITE_TOOBIG, "string or blob too big", errors::kOutOfRange},
        ErrorCase{SQLITE_FULL, "database or disk is full", errors::kUnspecified},
        ErrorCase{SQLITE_IOERR_WRITE, "disk I/O error", errors::kUnspecified},
        ErrorCase{SQLITE_CORRUPT, "database disk image is malformed", errors::kUnspecified},
        ErrorCase{SQLITE_NOTADB, "file is not a database", errors::kUnspecified},
        ErrorCase{SQLITE_CANTOPEN, "unable to open database file", errors::kUnspecified},
        ErrorCase{SQLITE_NOMEM, "out of memory", errors::kUnspecified},
        ErrorCase{SQLITE_INTERRUPT, "interrupted", errors::kUnspecified}));

TEST(SqliteError, ASnapshotGrownOldIsNoLockOfAnother)
{
    EXPECT_NE(sqliteError(SQLITE_BUSY_SNAPSHOT, u"database is locked"_s).description(),
              sqliteError(SQLITE_BUSY, u"database is locked"_s).description());
}

TEST(SqliteError, NamesTheColumnsOfTheConstraint)
{
    const auto text = [](int code, const QString &message) {
        return sqliteError(code, message).description();
    };
    EXPECT_TRUE(
        text(SQLITE_CONSTRAINT_UNIQUE, u"UNIQUE constraint failed: Ordre.KlientNr, Ordre.OrdreNr"_s)
            .contains(u"Ordre.KlientNr, Ordre.OrdreNr"));
    EXPECT_TRUE(text(SQLITE_CONSTRAINT_NOTNULL, u"NOT NULL constraint failed: Bil.BilRegNr"_s)
                    .contains(u"Bil.BilRegNr"));
    EXPECT_TRUE(
        text(SQLITE_CONSTRAINT_CHECK, u"CHECK constraint failed: Nr range"_s).contains(u"«Nr»"));
}

TEST(SqliteError, AFullDiskIsToldAsOneEvenBesideTheFile)
{
    for (const int code : {SQLITE_FULL, SQLITE_IOERR_SHMSIZE})
        EXPECT_TRUE(sqliteError(code, {}).description().startsWith(u"Disken er full;")) << code;
}

} // namespace ado::test
