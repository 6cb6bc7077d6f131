#include "platform/ado/postgres/Support.h"

namespace ado::test {

/// Two connections at one database: what a transaction holds, and who waits.
class PostgresTransaction : public PostgresTest
{
protected:
    PostgresTransaction()
    {
        m_first.run(u"CREATE TABLE T (Nr LONG CONSTRAINT N PRIMARY KEY, Navn TEXT(9))"_s);
        m_first.run(u"INSERT INTO T (Nr) VALUES (1)"_s);
    }
    std::string count() { return stored(u"SELECT COUNT(*) FROM \"T\""_s); }
    Client m_first{m_database};
    Client m_second{m_database};
};

TEST_F(PostgresTransaction, BegunTransactionWithoutStatementAsksNothingOfTheServer)
{
    const QString open = u"SELECT COUNT(*) FROM pg_stat_activity WHERE datname = "
                         "current_database() AND state LIKE 'idle in transaction%'"_s;
    m_first.beginTrans();
    EXPECT_EQ(stored(open), "0");
    m_second.run(u"CREATE TABLE U (Nr LONG)"_s);
    m_first.run(u"DELETE FROM T"_s);
    EXPECT_EQ(stored(open), "1");
    m_first.commitTrans();
    m_first.beginTrans();
    m_second.run(u"DROP TABLE T"_s);
    m_first.rollbackTrans();
}

// Another question before each commit would be a fourth of what a statement alone takes.
TEST_F(PostgresTransaction, OneThatChangesKnowsItsNumberWithItsBegin)
{
    const QString functions[] = {u"txid_current()"_s, u"txid_current_if_assigned()"_s};
    const auto mayAsk = [&](const QString &function, bool may) {
        m_database.run((may ? u"GRANT EXECUTE ON FUNCTION %1 TO PUBLIC"_s
                            : u"REVOKE EXECUTE ON FUNCTION %1 FROM PUBLIC"_s)
                           .arg(function));
    };
    m_database.run(u"CREATE ROLE spoer LOGIN PASSWORD 'x'"_s);
    m_database.run(u"GRANT ALL ON \"T\" TO spoer"_s);
    {
        Client client(m_database.connectionString() + u";uid=spoer"_s);
        mayAsk(functions[1], false);
        client.beginTrans();
        client.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
        client.commitTrans();
        EXPECT_EQ(count(), "2");

        mayAsk(functions[0], false);
        client.beginTrans();
        EXPECT_EQ(errorOf([&] { client.run(u"INSERT INTO T (Nr) VALUES (3)"_s); }),
                  errors::kNoPermission);
        mayAsk(functions[0], true);
        client.run(u"INSERT INTO T (Nr) VALUES (3)"_s); // as if the one before had not been
        client.commitTrans();
        EXPECT_EQ(count(), "3");

        // Only one that has begun by reading is asked.
        client.beginTrans();
        EXPECT_EQ(client.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{3}));
        client.run(u"INSERT INTO T (Nr) VALUES (4)"_s);
        EXPECT_EQ(errorOf([&] { client.commitTrans(); }), errors::kNoPermission);
        client.rollbackTrans();
    }
    m_database.run(u"DROP OWNED BY spoer"_s);
    m_database.run(u"DROP ROLE spoer"_s);
}

TEST_F(PostgresTransaction, ReadsWhatOthersHaveCommittedMeanwhile)
{
    m_first.beginTrans();
    EXPECT_EQ(m_first.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{1}));
    m_second.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    EXPECT_EQ(m_first.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{2}));
    m_first.commitTrans();
}

TEST_F(PostgresTransaction, ATableWithoutACounterLeavesTheIdentity)
{
    m_first.run(u"CREATE TABLE O (ID COUNTER CONSTRAINT ID PRIMARY KEY, Nr LONG)"_s);
    EXPECT_EQ(m_first.value(u"SELECT @@IDENTITY"_s), Value(qint32{0}));
    m_first.run(u"INSERT INTO O (Nr) VALUES (10)"_s);
    m_first.run(u"INSERT INTO T (Nr) VALUES (7)"_s);
    EXPECT_EQ(m_first.value(u"SELECT @@IDENTITY"_s), Value(qint32{1}));
}

TEST_F(PostgresTransaction, CommitThatIsRefusedKeepsNothing)
{
    m_database.run(u"CREATE TABLE \"Barn\" (\"Nr\" integer REFERENCES \"T\" DEFERRABLE INITIALLY "
                   "DEFERRED)"_s);
    m_first.beginTrans();
    m_first.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    m_first.run(u"INSERT INTO Barn (Nr) VALUES (99)"_s);
    EXPECT_EQ(errorOf([&] { m_first.commitTrans(); }), errors::kIntegrity);
    m_first.rollbackTrans();
    EXPECT_EQ(count(), "1");
    m_first.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
}

TEST_F(PostgresTransaction, WriterWaitsForTheOtherWriter)
{
    OtherUser other(m_database);
    other.run(u"BEGIN"_s);
    other.run(u"INSERT INTO \"T\" VALUES (2)"_s);
    const WhenSomeoneWaits rollsBack(m_database, [&] { other.run(u"ROLLBACK"_s); });
    m_first.run(u"INSERT INTO T (Nr,Navn) VALUES (2,'vår')"_s);
    EXPECT_EQ(stored(u"SELECT \"Navn\" FROM \"T\" WHERE \"Nr\" = 2"_s), "vår");
}

TEST_F(PostgresTransaction, LockThatStaysIsToldAndTheTransactionCanGoOn)
{
    OtherUser other(m_database);
    other.run(u"BEGIN"_s);
    other.run(u"UPDATE \"T\" SET \"Navn\" = 'x'"_s);
    Client hurried(m_database.connectionString() + u"&options=-c%20lock_timeout%3D50"_s);
    EXPECT_EQ(errorOf([&] { hurried.run(u"UPDATE T SET Navn='y'"_s); }), errors::kTimeout);
    hurried.beginTrans();
    hurried.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    EXPECT_EQ(errorOf([&] { hurried.run(u"UPDATE T SET Navn='y' WHERE Nr=1"_s); }),
              errors::kTimeout);
    other.run(u"COMMIT"_s);
    hurried.run(u"UPDATE T SET Navn='y' WHERE Nr=1"_s);
    hurried.commitTrans();
    EXPECT_EQ(stored(u"SELECT \"Navn\" FROM \"T\" WHERE \"Nr\" = 1"_s), "y");
    EXPECT_EQ(count(), "2");
}

TEST_F(PostgresTransaction, OfTwoThatWaitForEachOtherOneIsTold)
{
    m_first.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    OtherUser other(m_database);
    other.run(u"SET deadlock_timeout = '1min'"_s); // leaves the finding to us
    other.run(u"BEGIN"_s);
    other.run(u"UPDATE \"T\" SET \"Navn\" = 'a' WHERE \"Nr\" = 2"_s);
    Client client(m_database.connectionString() + u"&options=-c%20deadlock_timeout%3D10"_s);
    client.beginTrans();
    client.run(u"UPDATE T SET Navn='b' WHERE Nr=1"_s);
    std::thread waiting([&] { other.run(u"UPDATE \"T\" SET \"Navn\" = 'a' WHERE \"Nr\" = 1"_s); });
    OtherUser watcher(m_database);
    while (watcher.run(u"SELECT COUNT(*) FROM pg_stat_activity WHERE wait_event_type = 'Lock'"_s) ==
           u"0"_s)
        std::this_thread::yield();
    EXPECT_EQ(errorOf([&] { client.run(u"UPDATE T SET Navn='b' WHERE Nr=2"_s); }),
              errors::kTimeout);
    client.rollbackTrans();
    waiting.join();
    other.run(u"COMMIT"_s);
    EXPECT_EQ(stored(u"SELECT string_agg(\"Navn\", '') FROM \"T\""_s), "aa");
}

} // namespace ado::test
