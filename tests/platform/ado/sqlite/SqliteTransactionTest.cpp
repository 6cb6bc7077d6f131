#include "platform/ado/Support.h"
#include "support/FileSizeLimit.h"

namespace ado::test {

/// Two connections at one file: when locks are taken and who waits.
class SqliteTransaction : public testing::Test
{
protected:
    SqliteTransaction()
    {
        m_first.run(u"CREATE TABLE T (Nr LONG)"_s);
        m_first.run(u"INSERT INTO T (Nr) VALUES (1)"_s);
    }
    std::string count() { return m_tool.text("SELECT COUNT(*) FROM T"); }

    Database m_file;
    Opened m_first{m_file};
    Opened m_second{m_file};
    Tool m_tool{m_file.path()};
};

TEST_F(SqliteTransaction, BegunTransactionWithoutStatementHindersNobody)
{
    SteppedClock clock;
    const ScopedClock scope(clock);
    m_first.beginTrans();
    m_second.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    m_second.run(u"CREATE TABLE U (Nr LONG)"_s);
    m_first.commitTrans();
    m_first.beginTrans();
    m_second.run(u"DROP TABLE U"_s);
    m_first.rollbackTrans();
    EXPECT_EQ(count(), "2");
    EXPECT_EQ(clock.sleeps, 0);
}

TEST_F(SqliteTransaction, BegunTransactionReadsFromItsFirstStatementOn)
{
    m_first.beginTrans();
    m_second.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    EXPECT_EQ(m_first.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{2}));
    m_second.run(u"INSERT INTO T (Nr) VALUES (3)"_s);
    EXPECT_EQ(m_first.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{2}));
    m_first.commitTrans();
    EXPECT_EQ(m_first.value(u"SELECT COUNT(*) FROM T"_s), Value(qint32{3}));
}

TEST_F(SqliteTransaction, WriterWaitsForTheOtherWriter)
{
    m_second.beginTrans();
    m_second.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    SteppedClock clock([&](int sleeps) {
        if (sleeps == 2)
            m_second.commitTrans();
    });
    const ScopedClock scope(clock);
    m_first.beginTrans();
    m_first.run(u"INSERT INTO T (Nr) VALUES (3)"_s);
    m_first.commitTrans();
    EXPECT_EQ(clock.sleeps, 2);
    EXPECT_EQ(count(), "3");
}

TEST_F(SqliteTransaction, LockThatStaysIsToldAndTheTransactionCanGoOn)
{
    SteppedClock clock;
    const ScopedClock scope(clock);
    m_second.beginTrans();
    m_second.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    EXPECT_EQ(errorOf([&] { m_first.run(u"INSERT INTO T (Nr) VALUES (3)"_s); }), errors::kTimeout);
    m_first.beginTrans();
    EXPECT_EQ(errorOf([&] { m_first.run(u"INSERT INTO T (Nr) VALUES (3)"_s); }), errors::kTimeout);
    // Reading needs no lock.
    m_second.commitTrans();
    m_first.run(u"INSERT INTO T (Nr) VALUES (3)"_s);
    m_first.commitTrans();
    EXPECT_EQ(count(), "3");
}

TEST_F(SqliteTransaction, ReaderThatTurnsToWritingAfterAChangeIsRefused)
{
    SteppedClock clock;
    const ScopedClock scope(clock);
    m_first.beginTrans();
    static_cast<void>(m_first.value(u"SELECT COUNT(*) FROM T"_s));
    m_second.run(u"INSERT INTO T (Nr) VALUES (2)"_s);
    EXPECT_EQ(errorOf([&] { m_first.run(u"INSERT INTO T (Nr) VALUES (3)"_s); }), errors::kTimeout);
    m_first.rollbackTrans();
    m_first.run(u"INSERT INTO T (Nr) VALUES (3)"_s);
    EXPECT_EQ(count(), "3");
}

TEST_F(SqliteTransaction, FinishedReadingHoldsNothing)
{
    SteppedClock clock;
    const ScopedClock scope(clock);
    const Recordset rows = m_first.rows(u"SELECT Nr FROM T"_s);
    // A reader that lingers would keep the log from being taken into the file whole.
    EXPECT_EQ(m_tool.text("PRAGMA wal_checkpoint(TRUNCATE)"), "0");
}

TEST_F(SqliteTransaction, GivenUpByTheDatabaseItTakesNoFurtherStatement)
{
    m_first.run(u"CREATE TABLE Stor (Tekst TEXT(255))"_s);
    const QString insert = u"INSERT INTO Stor (Tekst) VALUES ('"_s + QString(255, u'x') + u"')"_s;
    m_first.beginTrans();
    for (int i = 0; i < 100; ++i)
        m_first.run(insert);
    {
        const FileSizeLimit limit(4096);
        EXPECT_EQ(errorOf([&] { m_first.commitTrans(); }), errors::kUnspecified);
    }
    // A statement let through now would stand alone, outside any transaction.
    EXPECT_EQ(errorOf([&] { m_first.run(insert); }), errors::kUnspecified);
    EXPECT_EQ(errorOf([&] { static_cast<void>(m_first.value(u"SELECT Nr FROM T"_s)); }),
              errors::kUnspecified);
    EXPECT_EQ(errorOf([&] { m_first.commitTrans(); }), errors::kUnspecified);
    m_first.rollbackTrans();
    EXPECT_EQ(m_tool.text("SELECT COUNT(*) FROM Stor"), "0");
    EXPECT_EQ(m_tool.text("PRAGMA integrity_check"), "ok");
    m_first.run(insert);
    EXPECT_EQ(m_tool.text("SELECT COUNT(*) FROM Stor"), "1");
}

} // namespace ado::test
