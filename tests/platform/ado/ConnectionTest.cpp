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
    EXPECT_EQ(errorOf([&] { (void)connection.openSchema(); }), errors::kObjectClosed);
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

TEST_F(ConnectionTest, SchemaListsTablesByNameAndColumnsByPosition)
{
    Opened connection(m_file);
    connection.run(u"CREATE TABLE Produkt (ID COUNTER CONSTRAINT ID PRIMARY KEY, Navn TEXT(100), "
                   "Pris CURRENCY, BruttoPris BIT)"_s);
    connection.run(u"CREATE TABLE bil (Nr SHORT, Bilde LONGBINARY)"_s);
    const Ref<Recordset> list = connection.openSchema();
    const std::vector<std::pair<QString, DataType>> fields{
        {u"TABLE_NAME"_s, DataType::VarWChar},
        {u"COLUMN_NAME"_s, DataType::VarWChar},
        {u"ORDINAL_POSITION"_s, DataType::Integer},
        {u"DATA_TYPE"_s, DataType::SmallInt},
        {u"CHARACTER_MAXIMUM_LENGTH"_s, DataType::Integer}};
    ASSERT_EQ(list->fieldCount(), 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(list->field(i).name, fields[static_cast<size_t>(i)].first);
        EXPECT_EQ(list->field(i).type, fields[static_cast<size_t>(i)].second);
    }
    EXPECT_EQ(list->field(u"TABLE_NAME").definedSize, 0); // no limit
    QStringList lines;
    for (; !list->eof(); list->moveNext())
        lines << list->text(u"Table_Name") + u'.' + list->text(u"Column_Name") + u' ' +
                     list->text(u"Ordinal_Position") + u' ' + list->text(u"Data_Type") + u' ' +
                     (list->isNull(4) ? u"-"_s : list->text(4));
    EXPECT_EQ(lines.join(u'|').toStdString(),
              "bil.Nr 1 2 -|bil.Bilde 2 205 -|Produkt.ID 1 3 -|Produkt.Navn 2 202 100|"
              "Produkt.Pris 3 6 -|Produkt.BruttoPris 4 11 -");
    EXPECT_EQ(list->recordCount(), 6);
    EXPECT_EQ(errorOf([&] { list->requery(); }), errors::kNoConnection);
}

TEST_F(ConnectionTest, SchemaOfAnEmptyDatabaseHasNoRows)
{
    const Ref<Recordset> list = Opened(m_file).openSchema();
    EXPECT_EQ(list->recordCount(), 0);
}

} // namespace ado::test
