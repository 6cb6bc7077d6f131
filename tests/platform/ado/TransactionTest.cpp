#include "platform/ado/AnyDatabase.h"

namespace ado::test {

/// Two connections at one database: what a transaction holds.
class Transaction : public AnyDatabaseTest
{
protected:
    Transaction()
    {
        m_first.run(u"CREATE TABLE T (Nr LONG CONSTRAINT N PRIMARY KEY, Navn TEXT(9))"_s);
        m_first.run(u"INSERT INTO T (Nr) VALUES (1)"_s);
    }
    std::string count() { return stored(u"SELECT COUNT(*) FROM \"T\""_s); }

    Opened m_first{dsn()};
    Opened m_second{dsn()};
};

TEST_F(Transaction, RollbackTakesBackAndCommitKeeps)
{
    m_first.beginTrans();
    m_first.run(u"DELETE FROM T"_s);
    EXPECT_EQ(count(), "1");
    m_first.rollbackTrans();
    EXPECT_EQ(count(), "1");
    m_first.beginTrans();
    m_first.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    m_first.run(u"INSERT INTO T (Nr) VALUES (3)"_s);
    EXPECT_EQ(count(), "1");
    m_first.commitTrans();
    EXPECT_EQ(count(), "3");
    m_database->check();
}

TEST_F(Transaction, FailedStatementLeavesTheTransactionGoing)
{
    for (const bool asFirst : {true, false}) {
        m_first.run(u"DELETE FROM T WHERE Nr>1"_s);
        m_first.beginTrans();
        if (!asFirst)
            m_first.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
        EXPECT_EQ(errorOf([&] { m_first.run(u"INSERT INTO T (Nr) VALUES (1)"_s); }),
                  errors::kIntegrity);
        EXPECT_EQ(errorOf([&] { m_first.run(u"INSERT INTO Ukjent (Nr) VALUES (1)"_s); }),
                  errors::kNoSuchTable);
        m_first.run(u"INSERT INTO T (Nr) VALUES (3)"_s);
        m_first.commitTrans();
        EXPECT_EQ(count(), asFirst ? "2" : "3");
    }
}

TEST_F(Transaction, CloseRollsBack)
{
    m_first.beginTrans();
    m_first.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    m_first.close();
    m_database->check();
    EXPECT_EQ(count(), "1");
    m_first.open(dsn());
    m_first.beginTrans();
    m_first.commitTrans();
}

TEST_F(Transaction, DestructionRollsBack)
{
    {
        Opened third(dsn());
        third.beginTrans();
        third.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    }
    EXPECT_EQ(count(), "1");
    m_second.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
}

TEST_F(Transaction, ReaderIsNotHeldUpByAWriter)
{
    SteppedClock clock;
    const ScopedClock scope(clock);
    m_second.beginTrans();
    m_second.run(u"DELETE FROM T"_s);
    EXPECT_EQ(m_first.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{1}));
    EXPECT_EQ(clock.sleeps, 0);
}

TEST_F(Transaction, IdentityIsThatOfTheSessionsOwnInsert)
{
    m_first.run(u"CREATE TABLE O (ID COUNTER CONSTRAINT ID PRIMARY KEY, Nr LONG)"_s);
    EXPECT_EQ(m_second.value(u"SELECT @@IDENTITY"_s), Value(qint32{0}));
    m_second.run(u"INSERT INTO O (Nr) VALUES (1)"_s);
    m_first.beginTrans();
    m_first.run(u"INSERT INTO O (Nr) VALUES (2)"_s);
    EXPECT_EQ(m_first.value(u"SELECT @@IDENTITY"_s), Value(qint32{2}));
    EXPECT_EQ(m_second.value(u"SELECT @@IDENTITY"_s), Value(qint32{1}));
    m_first.commitTrans();
    EXPECT_EQ(m_first.rows(u"SELECT @@IDENTITY"_s).field(0).type, DataType::Integer);
    m_first.close();
    m_second.close();
    EXPECT_EQ(Opened(dsn()).value(u"SELECT @@IDENTITY"_s), Value(qint32{0}));
}

} // namespace ado::test
