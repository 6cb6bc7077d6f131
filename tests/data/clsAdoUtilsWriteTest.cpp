#include "data/clsAdoUtils.h"

#include "support/ModuleTest.h"
#include "support/SessionTap.h"

using namespace Qt::StringLiterals;

namespace {

/// The three writing operations, what reaches the database in which order, and what is left after
/// each kind of failure. Table T has the rows 1 a and 2 b; table U has a counter.
class AdoUtilsWriteTest : public ModuleTest
{
protected:
    AdoUtilsWriteTest()
    {
        run(u"CREATE TABLE T (Nr LONG CONSTRAINT Nr PRIMARY KEY, Navn TEXT(5))"_s);
        run(u"CREATE TABLE U (ID COUNTER CONSTRAINT ID PRIMARY KEY, Navn TEXT(5))"_s);
        run(u"INSERT INTO T (Nr,Navn) VALUES (1,'a')"_s);
        run(u"INSERT INTO T (Nr,Navn) VALUES (2,'b')"_s);
        db.setConnectionString(connectionString());
    }

    QStringList table() { return rows(u"SELECT Nr,Navn FROM T ORDER BY Nr"_s); }

    /// An edited, detached set: row 1 is to become "x".
    Ref<ado::Recordset> editedSet()
    {
        const auto rs = db.GetRS(u"SELECT Nr,Navn FROM T WHERE Nr=1"_s, false);
        rs->setValue(u"Navn", Value(u"x"_s));
        return rs;
    }

    const QStringList before{u"1|a"_s, u"2|b"_s};
    clsAdoUtils db;
};

// --- Execute

TEST_F(AdoUtilsWriteTest, ExecuteRunsAndCommitsOnAShortConnection)
{
    SessionTap tap;
    EXPECT_TRUE(db.Execute(u"UPDATE T SET Navn='x' WHERE Nr= 1"_s));
    EXPECT_EQ(tap.calls(),
              QStringList({u"open"_s, u"begin"_s, u"execute UPDATE T SET Navn='x' WHERE Nr= 1"_s,
                           u"commit"_s, u"release"_s}));
    EXPECT_EQ(table(), QStringList({u"1|x"_s, u"2|b"_s}));
    EXPECT_EQ(db.LastError(), QString());
}

TEST_F(AdoUtilsWriteTest, ExecuteDropsTheRowsOfAQuery)
{
    EXPECT_TRUE(db.Execute(u"SELECT * FROM T"_s));
}

TEST_F(AdoUtilsWriteTest, ExecuteOfARefusedStatementRollsBackAndLeavesNothing)
{
    SessionTap tap;
    // The second row meets the key of the first one, whose change must not stay.
    EXPECT_FALSE(db.Execute(u"UPDATE T SET Nr=7"_s));
    EXPECT_EQ(tap.calls(), QStringList({u"open"_s, u"begin"_s, u"execute UPDATE T SET Nr=7"_s,
                                        u"rollback"_s, u"release"_s}));
    EXPECT_EQ(table(), before);
    EXPECT_TRUE(db.LastError().startsWith(u"-2147217873 - "));
}

TEST_F(AdoUtilsWriteTest, ExecuteWithoutADatabaseHasNothingToRollBack)
{
    SessionTap tap;
    tap.fail(u"open"_s);
    EXPECT_FALSE(db.Execute(u"DELETE FROM T"_s));
    EXPECT_EQ(tap.calls(), QStringList(u"open"_s));
    EXPECT_EQ(db.LastError(), u"-2147467259 - Nektet: open"_s);
}

TEST_F(AdoUtilsWriteTest, ExecuteRollsBackAfterARefusedCommit)
{
    SessionTap tap;
    tap.fail(u"commit"_s);
    EXPECT_FALSE(db.Execute(u"DELETE FROM T"_s));
    EXPECT_EQ(tap.calls(), QStringList({u"open"_s, u"begin"_s, u"execute DELETE FROM T"_s,
                                        u"commit"_s, u"rollback"_s, u"release"_s}));
    EXPECT_EQ(table(), before);
    EXPECT_EQ(db.LastError(), u"-2147467259 - Nektet: commit"_s);
}

TEST_F(AdoUtilsWriteTest, ARollbackIsTriedWithoutABegunTransactionAndItsErrorReachesTheCaller)
{
    SessionTap tap;
    tap.fail(u"begin"_s);
    EXPECT_EQ(raised([&] { db.Execute(u"DELETE FROM T"_s); }), ado::errors::kUnspecified);
    EXPECT_EQ(db.LastError(), u"-2147467259 - Nektet: begin"_s);
    EXPECT_EQ(tap.calls(), QStringList({u"open"_s, u"begin"_s, u"release"_s}));
    EXPECT_EQ(table(), before);
}

TEST_F(AdoUtilsWriteTest, ARefusedRollbackReachesTheCallerAndTheConnectionIsReleased)
{
    SessionTap tap;
    tap.fail(u"execute"_s);
    tap.fail(u"rollback"_s);
    EXPECT_EQ(raised([&] { db.Execute(u"DELETE FROM T"_s); }), ado::errors::kUnspecified);
    EXPECT_EQ(db.LastError(), u"-2147467259 - Nektet: execute"_s);
    EXPECT_EQ(tap.calls().last(), u"release"_s);
}

// --- ExecuteID

TEST_F(AdoUtilsWriteTest, ExecuteIdReadsTheKeyInsideTheTransactionOfItsInsert)
{
    run(u"INSERT INTO U (Navn) VALUES ('a')"_s);
    SessionTap tap;
    EXPECT_EQ(db.ExecuteID(u"INSERT INTO U (Navn) VALUES ('b')"_s), 2);
    EXPECT_EQ(tap.calls(),
              QStringList({u"open"_s, u"begin"_s, u"execute INSERT INTO U (Navn) VALUES ('b')"_s,
                           u"query SELECT @@IDENTITY"_s, u"commit"_s, u"release"_s}));
    EXPECT_EQ(rows(u"SELECT ID,Navn FROM U ORDER BY ID"_s), QStringList({u"1|a"_s, u"2|b"_s}));
}

TEST_F(AdoUtilsWriteTest, ExecuteIdOfATableWithoutACounterIsNoFailure)
{
    EXPECT_EQ(db.ExecuteID(u"INSERT INTO U (Navn) VALUES ('a')"_s), 1);
    // What the database reports then is its own affair.
    (void)db.ExecuteID(u"INSERT INTO T (Nr,Navn) VALUES (3,'c')"_s);
    EXPECT_EQ(db.LastError(), QString());
    EXPECT_EQ(table().size(), 3);
}

TEST_F(AdoUtilsWriteTest, ExecuteIdAfterARefusedInsertIsZero)
{
    SessionTap tap;
    EXPECT_EQ(db.ExecuteID(u"INSERT INTO T (Nr,Navn) VALUES (1,'c')"_s), 0);
    EXPECT_TRUE(db.LastError().startsWith(u"-2147217873 - "));
    EXPECT_EQ(tap.calls(),
              QStringList({u"open"_s, u"begin"_s,
                           u"execute INSERT INTO T (Nr,Navn) VALUES (1,'c')"_s, u"release"_s}));
    EXPECT_EQ(table(), before);
}

TEST_F(AdoUtilsWriteTest, ExecuteIdNeitherRollsBackNorStoresAfterALateFailure)
{
    {
        SessionTap tap;
        tap.fail(u"query"_s);
        EXPECT_EQ(db.ExecuteID(u"INSERT INTO U (Navn) VALUES ('a')"_s), 0);
        EXPECT_FALSE(tap.calls().contains(u"rollback"_s));
        EXPECT_EQ(db.LastError(), u"-2147467259 - Nektet: query"_s);
    }
    {
        SessionTap tap;
        tap.fail(u"commit"_s);
        EXPECT_EQ(db.ExecuteID(u"INSERT INTO U (Navn) VALUES ('a')"_s), 0);
        EXPECT_FALSE(tap.calls().contains(u"rollback"_s));
    }
    EXPECT_EQ(rows(u"SELECT * FROM U"_s), QStringList());
}

TEST_F(AdoUtilsWriteTest, ExecuteIdWithoutADatabaseIsZero)
{
    db.setConnectionString(u"tull"_s);
    EXPECT_EQ(db.ExecuteID(u"INSERT INTO U (Navn) VALUES ('a')"_s), 0);
    EXPECT_NE(db.LastError(), QString());
}

// --- PutRS

TEST_F(AdoUtilsWriteTest, PutRsWritesTheChangesAndDetachesTheSetAgain)
{
    const auto rs = editedSet();
    SessionTap tap;
    EXPECT_TRUE(db.PutRS(rs));
    EXPECT_EQ(tap.calls(),
              QStringList({u"open"_s, u"begin"_s, u"writeBack"_s, u"commit"_s, u"release"_s}));
    EXPECT_EQ(table(), QStringList({u"1|x"_s, u"2|b"_s}));
    EXPECT_EQ(raised([&] { rs->requery(); }), ado::errors::kNoConnection);

    rs->setValue(u"Navn", Value(u"y"_s));
    EXPECT_TRUE(db.PutRS(rs));
    EXPECT_EQ(table(), QStringList({u"1|y"_s, u"2|b"_s}));
}

TEST_F(AdoUtilsWriteTest, PutRsOfNothingToWriteIsFalseInSilence)
{
    SessionTap tap;
    EXPECT_FALSE(db.PutRS(nullptr));
    EXPECT_FALSE(db.PutRS(db.GetRS(u"SELECT * FROM T WHERE Nr=9"_s, false)));
    EXPECT_FALSE(db.PutRS(db.GetRS(u"SELECT * FROM T"_s, true)));
    EXPECT_EQ(db.LastError(), QString());
    EXPECT_FALSE(tap.calls().contains(u"begin"_s));
}

TEST_F(AdoUtilsWriteTest, PutRsOfARowThatIsGoneRollsBackAndDetaches)
{
    const auto rs = db.GetRS(u"SELECT Nr,Navn FROM T ORDER BY Nr"_s, false);
    rs->setValue(u"Navn", Value(u"x"_s));
    rs->moveNext();
    rs->setValue(u"Navn", Value(u"y"_s));
    run(u"DELETE FROM T WHERE Nr=2"_s);

    SessionTap tap;
    EXPECT_FALSE(db.PutRS(rs));
    EXPECT_TRUE(db.LastError().startsWith(u"-2147217864 - "));
    EXPECT_EQ(tap.calls(),
              QStringList({u"open"_s, u"begin"_s, u"writeBack"_s, u"rollback"_s, u"release"_s}));
    EXPECT_EQ(table(), QStringList(u"1|a"_s));
    EXPECT_EQ(raised([&] { rs->requery(); }), ado::errors::kNoConnection);
}

TEST_F(AdoUtilsWriteTest, PutRsWithoutADatabaseKeepsTheEditsForAnotherTry)
{
    const auto rs = editedSet();
    db.setConnectionString(u"dsn="_s + folder() + u"/borte.db"_s);
    EXPECT_FALSE(db.PutRS(rs));
    EXPECT_TRUE(db.LastError().startsWith(u"-2147467259 - "));
    EXPECT_EQ(table(), before);

    db.setConnectionString(connectionString());
    EXPECT_TRUE(db.PutRS(rs));
    EXPECT_EQ(table(), QStringList({u"1|x"_s, u"2|b"_s}));
}

TEST_F(AdoUtilsWriteTest, PutRsAfterARefusedCommitWritesAtTheNextTry)
{
    const auto rs = editedSet();
    {
        SessionTap tap;
        tap.fail(u"commit"_s);
        EXPECT_FALSE(db.PutRS(rs));
    }
    EXPECT_EQ(table(), before);
    EXPECT_TRUE(db.PutRS(rs));
    EXPECT_EQ(table(), QStringList({u"1|x"_s, u"2|b"_s}));
}

TEST_F(AdoUtilsWriteTest, PutRsHandsARefusedRollbackToTheCallerWithTheSetDetached)
{
    const auto rs = editedSet();
    {
        SessionTap tap;
        tap.fail(u"writeBack"_s);
        tap.fail(u"rollback"_s);
        EXPECT_EQ(raised([&] { db.PutRS(rs); }), ado::errors::kUnspecified);
        EXPECT_EQ(db.LastError(), u"-2147467259 - Nektet: writeBack"_s);
    }
    EXPECT_EQ(raised([&] { rs->requery(); }), ado::errors::kNoConnection);
    EXPECT_EQ(table(), before);
}

// --- Transactions beside each other

TEST_F(AdoUtilsWriteTest, AWriteIsCommittedBesideABegunTransactionOfAnotherConnection)
{
    ado::Connection other;
    other.open(connectionString());
    other.beginTrans();
    EXPECT_TRUE(db.Execute(u"DELETE FROM T WHERE Nr=1"_s));
    other.rollbackTrans();
    EXPECT_EQ(table(), QStringList(u"2|b"_s));
}

} // namespace
