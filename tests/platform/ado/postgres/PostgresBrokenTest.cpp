#include "platform/ado/postgres/Support.h"

#include <QDeadlineTimer>

#include <atomic>
#include <chrono>
#include <thread>

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
    /// Ends those who wait for a lock.
    static void endWaiting(OtherUser &other)
    {
        other.run(u"SELECT pg_terminate_backend(pid, 10000) FROM pg_stat_activity WHERE datname = "
                  "current_database() AND wait_event_type = 'Lock'"_s);
    }
    std::string count() { return stored(u"SELECT COUNT(*) FROM \"T\""_s); }
    void expectStoredBySecondAttempt(Client &client)
    {
        int begun = 0;
        client.transact([&] {
            ++begun;
            client.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
        });
        EXPECT_EQ(begun, 2);
        EXPECT_EQ(count(), "2");
    }
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

TEST_F(PostgresBroken, TransactionThatIsCutOffBeforeItsCommitIsToldAndKeepsNothing)
{
    Client client(m_database);
    client.beginTrans();
    client.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    endConnections();
    EXPECT_TRUE(textOf([&] { client.commitTrans(); }).contains(u"brutt"));
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
                endWaiting(other);
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

TEST_F(PostgresBroken, ReadingThatIsCutOffIsRunAgain)
{
    Client client(m_database);
    OtherUser other(m_database);
    other.run(u"BEGIN"_s);
    other.run(u"LOCK TABLE \"T\""_s);
    const WhenSomeoneWaits cutsOff(m_database, [&] {
        endWaiting(other);
        other.run(u"ROLLBACK"_s);
    });
    EXPECT_EQ(client.rows(u"SELECT Nr FROM T"_s).recordCount(), 1);
}

TEST_F(PostgresBroken, ReadingIsGivenUpAfterFiveTimes)
{
    OtherUser other(m_database);
    // Whoever reads the view ends his own connection.
    other.run(u"CREATE FUNCTION fall() RETURNS integer LANGUAGE sql AS $$ SELECT "
              "(SELECT 1 FROM pg_terminate_backend(pg_backend_pid(), 10000)) $$"_s);
    other.run(u"CREATE TABLE tries (a integer)"_s);
    other.run(u"CREATE SEQUENCE tried"_s);
    other.run(u"ALTER TABLE \"T\" ENABLE ROW LEVEL SECURITY"_s);
    other.run(u"ALTER TABLE \"T\" FORCE ROW LEVEL SECURITY"_s);
    other.run(u"CREATE POLICY p ON \"T\" USING (nextval('tried') > 0 AND fall() = 1)"_s);
    other.run(u"CREATE ROLE leser LOGIN PASSWORD 'x'"_s);
    other.run(u"GRANT ALL ON \"T\", tried TO leser"_s);
    {
        Client client(m_database.connectionString() + u";uid=leser"_s);
        EXPECT_EQ(errorOf([&] { (void)client.rows(u"SELECT Nr FROM T"_s); }), errors::kUnspecified);
    }
    EXPECT_EQ(stored(u"SELECT last_value FROM tried"_s), "5");
    other.run(u"DROP OWNED BY leser"_s);
    other.run(u"DROP ROLE leser"_s);
}

// --- Transactions that are run again

TEST_F(PostgresBroken, LostTransactionIsRunAgainWhole)
{
    Client client(m_database);
    int begun = 0;
    client.transact([&] {
        client.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
        if (++begun == 1)
            endConnections();
        client.run(u"INSERT INTO T (Nr) VALUES (3)"_s);
    });
    EXPECT_EQ(begun, 2);
    client.transact([&] {
        client.run(u"INSERT INTO T (Nr) VALUES (4)"_s);
        if (++begun == 3)
            endConnections(); // found at the commit
    });
    EXPECT_EQ(begun, 4);
    EXPECT_EQ(count(), "4");
}

TEST_F(PostgresBroken, NumberOfARowIsThatOfTheTransactionWhichIsStored)
{
    Client client(m_database);
    client.run(u"CREATE TABLE C (ID COUNTER PRIMARY KEY, Navn TEXT(9))"_s);
    Value id;
    bool cutOff = false;
    client.transact([&] {
        client.run(u"INSERT INTO C (Navn) VALUES ('a')"_s);
        id = client.value(u"SELECT @@IDENTITY"_s);
        if (!std::exchange(cutOff, true))
            endConnections();
    });
    EXPECT_EQ(stored(u"SELECT string_agg(\"ID\"::text, ',') FROM \"C\""_s),
              id.toText().toStdString());
}

TEST_F(PostgresBroken, TransactionIsGivenUpAfterFiveTimes)
{
    Client client(m_database);
    int begun = 0;
    EXPECT_EQ(errorOf([&] {
                  client.transact([&] {
                      ++begun;
                      client.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
                      endConnections();
                  });
              }),
              errors::kUnspecified);
    EXPECT_EQ(begun, 5);
    client.rollbackTrans();
    EXPECT_EQ(count(), "1");
}

TEST_F(PostgresBroken, RefusedStatementIsNotRunAgain)
{
    Client client(m_database);
    int begun = 0;
    EXPECT_EQ(errorOf([&] {
                  client.transact([&] {
                      ++begun;
                      client.run(u"INSERT INTO T (Nr) VALUES (1)"_s);
                  });
              }),
              errors::kIntegrity);
    EXPECT_EQ(begun, 1);
}

TEST_F(PostgresBroken, CommitThatIsCutOffBeforeItIsDoneIsRunAgain)
{
    Client client(m_database);
    OtherUser other(m_database);
    other.run(u"CREATE FUNCTION vent() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN PERFORM "
              "pg_advisory_xact_lock(7); RETURN NULL; END $$"_s);
    other.run(u"CREATE CONSTRAINT TRIGGER v AFTER INSERT ON \"T\" DEFERRABLE INITIALLY DEFERRED "
              "FOR EACH ROW EXECUTE FUNCTION vent()"_s);
    other.run(u"SELECT pg_advisory_lock(7)"_s);
    const WhenSomeoneWaits cutsOff(m_database, [&] {
        endWaiting(other);
        other.run(u"SELECT pg_advisory_unlock(7)"_s);
    });
    expectStoredBySecondAttempt(client);
}

// The first commit of a connection asks which life of the server it belongs to.
TEST_F(PostgresBroken, CommitThatIsCutOffBeforeItIsSentIsRunAgain)
{
    OtherUser other(m_database);
    other.run(u"CREATE SEQUENCE spurt"_s);
    other.run(u"CREATE FUNCTION public.pg_stat_get_bgwriter_stat_reset_time() RETURNS timestamptz "
              "LANGUAGE plpgsql AS $$ BEGIN IF nextval('spurt') = 1 THEN PERFORM "
              "pg_terminate_backend(pg_backend_pid()); END IF; RETURN "
              "pg_catalog.pg_stat_get_bgwriter_stat_reset_time(); END $$"_s);
    Client client(m_database.connectionString() +
                  u"&options=-c%20search_path%3Dpublic,pg_catalog"_s);
    expectStoredBySecondAttempt(client);
}

TEST_F(PostgresBroken, CommitThatWasDoneIsFoundOutAndNotRunAgain)
{
    // A commit that waits for a copy of the database elsewhere is done here already.
    Client client(m_database.connectionString() + u"&options=-c%20synchronous_commit%3Don"_s);
    OtherUser other(m_database);
    const auto copies = [&](const QString &names) {
        other.run(u"ALTER SYSTEM SET synchronous_standby_names = '"_s + names + u'\'');
        other.run(u"SELECT pg_reload_conf()"_s);
        while (other.run(u"SHOW synchronous_standby_names"_s) != names)
            std::this_thread::yield();
    };
    other.run(u"SET synchronous_commit = off"_s);
    copies(u"ingen"_s);
    // The server takes to its new setting in its own time; until then commits do not wait.
    const QDeadlineTimer deadline(std::chrono::minutes(1));
    std::atomic<bool> cut = false;
    int begun = 0;
    int stored = 1;
    while (!cut && !deadline.hasExpired()) {
        std::atomic<bool> done = false;
        std::thread cutsOff([&] {
            OtherUser watcher(m_database);
            const QString end =
                u"SELECT COUNT(pg_terminate_backend(pid, 10000)) FROM pg_stat_activity "
                "WHERE datname = current_database() AND wait_event = 'SyncRep'"_s;
            while (!done && !cut)
                cut = watcher.run(end) != u"0"_s;
        });
        ++stored;
        client.transact([&] {
            ++begun;
            client.run(u"INSERT INTO T (Nr) VALUES (%1)"_s.arg(stored));
        });
        done = true;
        cutsOff.join();
    }
    copies(QString());
    EXPECT_TRUE(cut);
    EXPECT_EQ(begun, stored - 1);
    EXPECT_EQ(count(), std::to_string(stored));
}

// --- Servers that come back

TEST(PostgresRestart, ServerThatIsBeingRestartedIsWaitedFor)
{
    PostgresCluster cluster(PostgresCluster::Durability::None);
    const QString database = cluster.createDatabase();
    Client client(cluster.connectionString(database));
    client.run(u"CREATE TABLE T (Nr LONG)"_s);
    SteppedClock clock([&](int sleeps) {
        if (sleeps == 3)
            cluster.start();
    });
    const ScopedClock scope(clock);
    cluster.stop();
    client.transact([&] { client.run(u"INSERT INTO T (Nr) VALUES (1)"_s); });
    EXPECT_GE(clock.sleeps, 3);

    client.close(); // the idle session knows the server as well
    clock.sleeps = 0;
    cluster.stop();
    Client later(cluster.connectionString(database));
    EXPECT_GE(clock.sleeps, 3);
    EXPECT_EQ(later.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{1}));
    later.close();
    SessionPool::shared().clear();
}

TEST(PostgresRestart, LooksBeforeARestartDoNotCountForTheTurn)
{
    PostgresCluster cluster(PostgresCluster::Durability::None);
    const QString connectionString = cluster.connectionString(cluster.createDatabase());
    const auto restart = [&] {
        cluster.stop();
        cluster.start();
    };
    Client holder(connectionString);
    Client waiting(connectionString);
    while (!holder.takeTurn()) { // the server has just been started
    }
    EXPECT_FALSE(waiting.takeTurn());
    restart();
    constexpr int kEnough = 150;
    for (int look = 1; look < kEnough; ++look)
        EXPECT_FALSE(waiting.takeTurn());
    restart();
    EXPECT_FALSE(waiting.takeTurn()) << "the holder has had no time to come back";
    EXPECT_TRUE(holder.takeTurn());
    holder.close();
    waiting.close();
    SessionPool::shared().clear();
}

TEST(PostgresRestart, CommitThatACrashHasLostIsNotTakenForAnothersOfItsNumber)
{
    PostgresCluster cluster(PostgresCluster::Durability::None);
    const QString database = cluster.createDatabase();
    // What is not committed stays in memory until the crash.
    for (const char *setting : {"wal_writer_delay = '10s'", "bgwriter_lru_maxpages = 0"})
        cluster.run(database, u"ALTER SYSTEM SET "_s + QLatin1StringView(setting));
    cluster.run(database, u"SELECT pg_reload_conf()"_s);
    Client client(cluster.connectionString(database));
    client.run(u"CREATE TABLE T (Nr LONG)"_s);
    // The commit brings the server down.
    cluster.run(database, u"CREATE FUNCTION fall() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
                          "COPY (SELECT 1) TO PROGRAM 'kill -QUIT $(head -n 1 postmaster.pid)'; "
                          "PERFORM pg_sleep(60); RETURN NULL; END $$"_s);
    cluster.run(database, u"CREATE CONSTRAINT TRIGGER f AFTER INSERT ON \"T\" DEFERRABLE INITIALLY "
                          "DEFERRED FOR EACH ROW EXECUTE FUNCTION fall()"_s);
    cluster.run(database, u"CHECKPOINT"_s);
    QString number;
    QString becameOfIt;
    SteppedClock clock([&](int sleeps) {
        if (sleeps != 1)
            return;
        cluster.stop(); // what is left of it
        cluster.start();
        for (int other = 0; other < 20 && becameOfIt != u"committed"; ++other) {
            cluster.run(database, u"CREATE TABLE t%1 ()"_s.arg(other));
            becameOfIt = cluster.run(database, u"SELECT txid_status(%1)"_s.arg(number));
        }
    });
    const ScopedClock scope(clock);
    const QString told = textOf([&] {
        client.transact([&] {
            client.run(u"INSERT INTO T (Nr) VALUES (1)"_s);
            number = cluster.run(database, u"SELECT backend_xid FROM pg_stat_activity WHERE "
                                           "backend_xid IS NOT NULL"_s);
        });
    });
    EXPECT_EQ(becameOfIt, u"committed"_s) << "of another transaction";
    EXPECT_TRUE(told.contains(u"uvisst")) << told.toStdString();
    EXPECT_EQ(cluster.run(database, u"SELECT COUNT(*) FROM \"T\""_s), u"0"_s);
    client.close();
    SessionPool::shared().clear();
}

TEST(PostgresRestart, ServerThatStaysAwayIsWaitedForOnce)
{
    PostgresCluster cluster(PostgresCluster::Durability::None);
    Client client(cluster.connectionString(cluster.createDatabase()));
    SteppedClock clock;
    const ScopedClock scope(clock);
    cluster.stop();
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(textOf([&] { client.rows(u"SELECT Nr FROM T"_s); }).contains(u"Får ikke"));
    EXPECT_EQ(clock.slept, 9000);
    // Who has never seen it does not wait at all.
    client.close();
    SessionPool::shared().clear();
    EXPECT_TRUE(textOf([&] {
                    Client stranger(cluster.connectionString(u"firma1"_s));
                }).contains(u"Får ikke"));
    EXPECT_EQ(clock.slept, 9000);
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

    SteppedClock clock; // nobody waits for it in earnest
    const ScopedClock scope(clock);
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
