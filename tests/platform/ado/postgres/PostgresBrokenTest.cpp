#include "platform/ado/postgres/Support.h"

namespace ado::test {

/// Connections that end under the module.
class PostgresBroken : public PostgresTest
{
protected:
    PostgresBroken()
    {
        Client client(m_database);
        client.run(u"CREATE TABLE T (Nr LONG CONSTRAINT N PRIMARY KEY, Navn TEXT(9))"_s);
        client.run(u"INSERT INTO T (Nr) VALUES (1)"_s);
    }
    std::string count() { return stored(u"SELECT COUNT(*) FROM \"T\""_s); }
};

TEST_F(PostgresBroken, IdleSessionInThePoolIsReplacedUnseen)
{
    endConnections();
    EXPECT_EQ(Client(m_database).value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{1}));
}

TEST_F(PostgresBroken, IdleSessionOfAnOpenConnectionIsReplacedUnseen)
{
    Client client(m_database);
    const QString insert = u"INSERT INTO T (Nr) VALUES (%1)"_s;
    for (const int number : {2, 3, 4}) {
        client.run(insert.arg(number)); // prepared on each connection anew
        endConnections();
    }
    EXPECT_EQ(client.openSchema(SchemaList::Columns)->recordCount(), 2);
    endConnections();
    client.beginTrans();
    endConnections();
    client.run(insert.arg(5));
    client.commitTrans();
    EXPECT_EQ(count(), "5");
}

TEST_F(PostgresBroken, TransactionThatIsCutOffIsToldAndKeepsNothing)
{
    Client client(m_database);
    client.beginTrans();
    client.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    endConnections();
    EXPECT_EQ(errorOf([&] { client.run(u"INSERT INTO T (Nr) VALUES (3)"_s); }),
              errors::kUnspecified);
    // A statement let through now would stand alone, outside any transaction.
    EXPECT_EQ(errorOf([&] { client.run(u"INSERT INTO T (Nr) VALUES (4)"_s); }),
              errors::kUnspecified);
    EXPECT_EQ(errorOf([&] { client.commitTrans(); }), errors::kUnspecified);
    client.rollbackTrans();
    EXPECT_EQ(count(), "1");
    client.run(u"INSERT INTO T (Nr) VALUES (5)"_s);
    EXPECT_EQ(count(), "2");
}

TEST_F(PostgresBroken, CutOffCommitIsToldAsUncertain)
{
    Client client(m_database);
    client.beginTrans();
    client.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    endConnections();
    EXPECT_TRUE(textOf([&] { client.commitTrans(); }).contains(u"uvisst"));
    client.close();
    EXPECT_EQ(
        SessionPool::shared().idleCount(resolve(ConnectionString(m_database.connectionString()))),
        0U);
    EXPECT_EQ(count(), "1");
}

TEST_F(PostgresBroken, StatementThatIsCutOffIsToldAndNotRunAgain)
{
    for (const bool alone : {true, false}) {
        Client client(m_database);
        OtherUser other(m_database);
        other.run(u"BEGIN"_s);
        other.run(u"LOCK TABLE \"T\""_s);
        if (!alone)
            client.beginTrans();
        {
            const WhenSomeoneWaits cutsOff(m_database, [&] {
                other.run(u"SELECT pg_terminate_backend(pid, 10000) FROM pg_stat_activity WHERE "
                          "datname = current_database() AND wait_event_type = 'Lock'"_s);
                other.run(u"ROLLBACK"_s);
            });
            EXPECT_EQ(errorOf([&] { client.run(u"UPDATE T SET Navn='x'"_s); }),
                      errors::kUnspecified);
        }
        EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"T\" WHERE \"Navn\" = 'x'"_s), "0");
        if (!alone)
            client.rollbackTrans();
        EXPECT_EQ(client.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{1}));
    }
}

TEST_F(PostgresBroken, ReadingThatIsCutOffIsTold)
{
    Client client(m_database);
    OtherUser other(m_database);
    other.run(u"BEGIN"_s);
    other.run(u"LOCK TABLE \"T\""_s);
    {
        const WhenSomeoneWaits cutsOff(m_database, [&] {
            other.run(
                u"SELECT pg_terminate_backend(pid, 10000) FROM pg_stat_activity WHERE datname "
                "= current_database() AND wait_event_type = 'Lock'"_s);
            other.run(u"ROLLBACK"_s);
        });
        EXPECT_EQ(errorOf([&] { (void)client.rows(u"SELECT Nr FROM T"_s); }), errors::kUnspecified);
    }
    EXPECT_EQ(client.rows(u"SELECT Nr FROM T"_s).recordCount(), 1);
}

TEST(PostgresRestart, ServerThatComesBackIsUsedOnUnseen)
{
    PostgresCluster cluster(PostgresCluster::Durability::Full);
    const QString database = cluster.createDatabase();
    const QString connectionString = cluster.connectionString(database);
    Client open(connectionString);
    open.run(u"CREATE TABLE T (ID COUNTER PRIMARY KEY, Navn TEXT(9))"_s);
    const QString insert = u"INSERT INTO T (Navn) VALUES ('%1')"_s;
    Client(connectionString).run(insert.arg(u"en"_s));

    cluster.stop();
    const QString down = textOf([&] { open.run(insert.arg(u"borte"_s)); });
    EXPECT_TRUE(down.contains(u"Får ikke kontakt")) << down.toStdString();
    EXPECT_EQ(errorOf([&] { Client client(connectionString); }), errors::kUnspecified);

    cluster.start();
    Client(connectionString).run(insert.arg(u"to"_s));
    open.run(insert.arg(u"tre"_s));
    EXPECT_EQ(
        cluster.run(database, u"SELECT string_agg(\"Navn\", ' ' ORDER BY \"ID\") FROM \"T\""_s),
        u"en to tre"_s);
    SessionPool::shared().clear();
}

} // namespace ado::test
