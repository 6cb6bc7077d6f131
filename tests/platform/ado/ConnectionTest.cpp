#include "platform/ado/Connection.h"

#include "platform/ado/Support.h"

namespace ado::test {

class ConnectionTest : public testing::Test
{
protected:
    Database m_file;
    Tool m_tool{m_file.path()};
};

TEST_F(ConnectionTest, OpensAndCloses)
{
    Connection connection;
    EXPECT_EQ(connection.state(), ObjectState::Closed);
    connection.open(m_file.dsn());
    EXPECT_EQ(connection.state(), ObjectState::Open);
    EXPECT_EQ(connection.connectionString(), m_file.dsn());
    connection.close();
    EXPECT_EQ(connection.state(), ObjectState::Closed);
    connection.open(m_file.dsn());
    EXPECT_EQ(connection.state(), ObjectState::Open);
}

TEST_F(ConnectionTest, AnotherUserHasASessionOfHisOwn)
{
    Connection first;
    first.open(m_file.dsn() + u";uid=kari"_s);
    Connection second;
    second.open(m_file.dsn() + u";uid=ola;pwd=hemmelig"_s);
    first.close();
    second.close();
    const auto idle = [this](const QString &more) {
        return SessionPool::shared().idleCount(resolve(ConnectionString(m_file.dsn() + more)));
    };
    EXPECT_EQ(idle(u";uid=kari"_s), 1U);
    EXPECT_EQ(idle(u";uid=ola;pwd=hemmelig"_s), 1U);
}

TEST_F(ConnectionTest, FailedOpenLeavesItClosed)
{
    Connection connection;
    EXPECT_EQ(errorOf([&] { connection.open({}); }), errors::kUnspecified);
    EXPECT_EQ(errorOf([&] { connection.open(u"dsn=/finnes/ikke.db"_s); }), errors::kUnspecified);
    EXPECT_EQ(connection.state(), ObjectState::Closed);
}

TEST_F(ConnectionTest, OpenConnectionCannotBeOpened)
{
    Opened connection(m_file);
    EXPECT_EQ(errorOf([&] { connection.open(m_file.dsn()); }), errors::kObjectOpen);
    EXPECT_EQ(connection.state(), ObjectState::Open);
}

TEST_F(ConnectionTest, ClosedConnectionRefusesEverything)
{
    Connection connection;
    EXPECT_EQ(errorOf([&] { connection.close(); }), errors::kObjectClosed);
    EXPECT_EQ(errorOf([&] { connection.beginTrans(); }), errors::kObjectClosed);
    EXPECT_EQ(errorOf([&] { connection.commitTrans(); }), errors::kObjectClosed);
    EXPECT_EQ(errorOf([&] { connection.rollbackTrans(); }), errors::kObjectClosed);
    EXPECT_EQ(errorOf([&] { connection.execute(u"DELETE FROM T"_s); }), errors::kObjectClosed);
    EXPECT_EQ(errorOf([&] { (void)connection.openSchema(SchemaList::Columns); }),
              errors::kObjectClosed);
}

TEST_F(ConnectionTest, TransactionCallsOutOfTurnAreRefused)
{
    Opened connection(m_file);
    EXPECT_EQ(errorOf([&] { connection.commitTrans(); }), errors::kUnspecified);
    EXPECT_EQ(errorOf([&] { connection.rollbackTrans(); }), errors::kUnspecified);
    connection.beginTrans();
    EXPECT_EQ(errorOf([&] { connection.beginTrans(); }), errors::kUnspecified);
    connection.commitTrans();
    EXPECT_EQ(errorOf([&] { connection.rollbackTrans(); }), errors::kUnspecified);
}

TEST_F(ConnectionTest, RowsOfAnExecutedQueryAreDropped)
{
    Opened connection(m_file);
    connection.run(u"CREATE TABLE T (a LONG)"_s);
    connection.run(u"INSERT INTO T (a) VALUES (1)"_s);
    connection.run(u"SELECT a FROM T"_s);
    // No reading lingers that would keep the table.
    m_tool.run("DROP TABLE T");
}

TEST_F(ConnectionTest, SessionIsPooledUnderConnections)
{
    const DataSource source = resolve(ConnectionString(m_file.dsn()));
    {
        const Opened connection(m_file);
        EXPECT_EQ(SessionPool::shared().idleCount(source), 0U);
    }
    EXPECT_EQ(SessionPool::shared().idleCount(source), 1U);
    const Opened again(m_file);
    EXPECT_EQ(SessionPool::shared().idleCount(source), 0U);
}

TEST_F(ConnectionTest, ReplacedFileIsOpenedAnew)
{
    Opened(m_file).run(u"CREATE TABLE Gammel (a LONG)"_s);
    ASSERT_TRUE(QFile::remove(m_file.path()));
    EXPECT_EQ(errorOf([&] { Opened connection(m_file); }), errors::kUnspecified);
    {
        QFile file(m_file.path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    Opened connection(m_file);
    EXPECT_EQ(errorOf([&] { connection.run(u"SELECT a FROM Gammel"_s); }), errors::kNoSuchTable);
    connection.run(u"CREATE TABLE Ny (a LONG)"_s);
    EXPECT_EQ(Tool(m_file.path()).text("SELECT name FROM sqlite_schema"), "Ny");
}

} // namespace ado::test
