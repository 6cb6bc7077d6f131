#include "data/clsAdoUtils.h"

#include "support/ModuleTest.h"
#include "support/SessionTap.h"

using namespace Qt::StringLiterals;

namespace {

/// Reading, counting and the text of the last failure. Table T has the rows 1 a, 2 b, 3 c.
class AdoUtilsTest : public ModuleTest
{
protected:
    AdoUtilsTest()
    {
        run(u"CREATE TABLE T (Nr LONG CONSTRAINT Nr PRIMARY KEY, Navn TEXT(5))"_s);
        for (const QString &row : {u"1,'a'"_s, u"2,'b'"_s, u"3,'c'"_s})
            run(u"INSERT INTO T (Nr,Navn) VALUES ("_s + row + u')');
        db.setConnectionString(connectionString());
    }

    clsAdoUtils db;
};

TEST_F(AdoUtilsTest, ConnectionStringIsKeptAsGiven)
{
    EXPECT_EQ(clsAdoUtils().ConnectionString(), QString());
    EXPECT_EQ(db.ConnectionString(), connectionString());
}

TEST_F(AdoUtilsTest, IsSqlStartsFalseAndChangesNothing)
{
    EXPECT_EQ(db.isSQL(), 0);
    db.setIsSQL(-1);
    EXPECT_EQ(db.isSQL(), -1);
    EXPECT_EQ(db.GetCount(u"T"_s, QString()), 3);
}

TEST_F(AdoUtilsTest, EmptyRsOfNoObjectIsTrueWithoutAnError)
{
    EXPECT_TRUE(db.EmptyRS(nullptr));
    EXPECT_EQ(db.LastError(), QString());
}

TEST_F(AdoUtilsTest, EmptyRsLooksAtTheRowsAndNotAtTheCursor)
{
    const auto rs = db.GetRS(u"SELECT * FROM T"_s, true);
    EXPECT_FALSE(db.EmptyRS(rs));
    while (!rs->eof())
        rs->moveNext();
    EXPECT_FALSE(db.EmptyRS(rs));
    rs->moveFirst();
    rs->movePrevious();
    EXPECT_TRUE(rs->bof());
    EXPECT_FALSE(db.EmptyRS(rs));

    EXPECT_TRUE(db.EmptyRS(db.GetRS(u"SELECT * FROM T WHERE Nr=9"_s, true)));
}

TEST_F(AdoUtilsTest, EmptyRsOfAClosedSetIsTrueWithTheErrorKept)
{
    const auto rs = db.GetRS(u"SELECT * FROM T"_s, true);
    rs->close();
    EXPECT_TRUE(db.EmptyRS(rs));
    EXPECT_TRUE(db.LastError().startsWith(u"3704 - "));
}

TEST_F(AdoUtilsTest, GetRsHandsOutADetachedSet)
{
    const auto rs = db.GetRS(u"SELECT Nr,Navn FROM T ORDER BY Nr DESC"_s, true);
    ASSERT_TRUE(rs);
    run(u"DELETE FROM T"_s);
    ASSERT_EQ(rs->recordCount(), 3);
    EXPECT_EQ(rs->text(u"Navn"), u"c"_s);
    EXPECT_EQ(raised([&] { rs->requery(); }), ado::errors::kNoConnection);
    rs->close();
}

TEST_F(AdoUtilsTest, GetRsSetsCursorAndLock)
{
    const auto reading = db.GetRS(u"SELECT * FROM T"_s, true);
    EXPECT_EQ(reading->lockType(), ado::LockType::ReadOnly);
    EXPECT_EQ(reading->cursorType(), ado::CursorType::Keyset);
    EXPECT_EQ(reading->cursorLocation(), ado::CursorLocation::Server);
    EXPECT_EQ(reading->source(), u"SELECT * FROM T"_s);
    EXPECT_EQ(raised([&] { reading->setValue(u"Navn", Value(u"x"_s)); }),
              ado::errors::kReadOnlySet);

    const auto editing = db.GetRS(u"SELECT * FROM T"_s, false);
    EXPECT_EQ(editing->lockType(), ado::LockType::Optimistic);
    editing->setValue(u"Navn", Value(u"x"_s));
    EXPECT_EQ(editing->text(u"Navn"), u"x"_s);
}

TEST_F(AdoUtilsTest, GetRsPassesTheStatementOnUnchangedOnAShortConnection)
{
    SessionTap tap;
    const auto rs = db.GetRS(u"SELECT  *  FROM T WHERE Nr= 1AND Navn='a'"_s, true);
    EXPECT_EQ(rs->recordCount(), 1);
    EXPECT_EQ(tap.calls(),
              QStringList(
                  {u"open"_s, u"query SELECT  *  FROM T WHERE Nr= 1AND Navn='a'"_s, u"release"_s}));
}

TEST_F(AdoUtilsTest, GetRsAfterAFailureIsNoObject)
{
    EXPECT_FALSE(db.GetRS(u"SELECT * FROM Finnesikke"_s, true));
    EXPECT_TRUE(db.LastError().startsWith(u"-2147217865 - "));

    db.setConnectionString(QString());
    EXPECT_FALSE(db.GetRS(u"SELECT * FROM T"_s, true));
    EXPECT_NE(db.LastError(), QString());
}

TEST_F(AdoUtilsTest, GetCountWithoutAClauseCountsTheWholeTable)
{
    SessionTap tap;
    EXPECT_EQ(db.GetCount(u"T"_s, QString()), 3);
    EXPECT_EQ(tap.calls(),
              QStringList({u"open"_s, u"query SELECT COUNT (*) FROM T"_s, u"release"_s}));
}

TEST_F(AdoUtilsTest, GetCountWithAClauseLimitsTheRows)
{
    SessionTap tap;
    EXPECT_EQ(db.GetCount(u"T"_s, u"Nr> 1 AND Navn<>'c'"_s), 1);
    EXPECT_EQ(tap.statements(),
              QStringList(u"SELECT COUNT (*) FROM T WHERE Nr> 1 AND Navn<>'c'"_s));
    EXPECT_EQ(db.GetCount(u"T"_s, u"Nr=9"_s), 0);
    EXPECT_EQ(db.LastError(), QString());
    // Only the empty text is no clause.
    EXPECT_EQ(db.GetCount(u"T"_s, u" "_s), -1);
    EXPECT_TRUE(db.LastError().startsWith(u"-2147217900 - "));
}

TEST_F(AdoUtilsTest, GetCountAfterAFailureIsMinusOne)
{
    EXPECT_EQ(db.GetCount(u"Finnesikke"_s, QString()), -1);
    EXPECT_TRUE(db.LastError().startsWith(u"-2147217865 - "));
    db.setConnectionString(u"dsn="_s + folder() + u"/borte.db"_s);
    EXPECT_EQ(db.GetCount(u"T"_s, QString()), -1);
    EXPECT_TRUE(db.LastError().startsWith(u"-2147467259 - "));
}

TEST_F(AdoUtilsTest, LastErrorIsReadOnce)
{
    EXPECT_EQ(db.LastError(), QString());
    EXPECT_FALSE(db.Execute(u"TULL"_s));
    const QString text = db.LastError();
    EXPECT_TRUE(text.startsWith(u"-2147217900 - "));
    EXPECT_GT(text.size(), u"-2147217900 - "_s.size());
    EXPECT_EQ(db.LastError(), QString());
}

TEST_F(AdoUtilsTest, ASuccessLeavesAnOldErrorAndALaterFailureReplacesIt)
{
    EXPECT_FALSE(db.Execute(u"TULL"_s));
    EXPECT_EQ(db.GetCount(u"T"_s, QString()), 3);
    EXPECT_TRUE(db.Execute(u"DELETE FROM T WHERE Nr=1"_s));
    EXPECT_EQ(db.GetCount(u"Finnesikke"_s, QString()), -1);
    EXPECT_TRUE(db.LastError().startsWith(u"-2147217865 - "));
    EXPECT_EQ(db.LastError(), QString());

    EXPECT_FALSE(db.Execute(u"TULL"_s));
    EXPECT_TRUE(db.GetRS(u"SELECT * FROM T"_s, true));
    EXPECT_TRUE(db.LastError().startsWith(u"-2147217900 - "));
}

} // namespace
