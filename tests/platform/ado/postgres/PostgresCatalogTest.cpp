#include "platform/ado/postgres/Support.h"

namespace ado::test {

/// What is known of the tables, and what happens when others change them.
class PostgresCatalogTest : public PostgresTest
{
protected:
    static QString listed(Client &client)
    {
        QStringList lines;
        const Ref<Recordset> list = client.openSchema(SchemaList::Columns);
        for (; !list->eof(); list->moveNext())
            lines << list->text(0) + u'.' + list->text(1) + u' ' + list->text(3) +
                         (list->isNull(4) ? QString() : u'(' + list->text(4) + u')');
        return lines.join(u'|');
    }
};

TEST_F(PostgresCatalogTest, RangeOfAnAmountIsNeitherColumnNorKey)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (ID COUNTER CONSTRAINT ID PRIMARY KEY, Sum CURRENCY)"_s);
    client.run(u"ALTER TABLE T ADD COLUMN Rest CURRENCY NOT NULL"_s);
    EXPECT_EQ(listed(client), u"T.ID 3|T.Sum 6|T.Rest 6"_s);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM pg_constraint WHERE conrelid = '\"T\"'::regclass "
                     "AND contype = 'c'"_s),
              "2");
    // A Null is found by what was read of a row, and by no key.
    client.run(u"INSERT INTO T (Sum) VALUES (NULL)"_s);
    Recordset keyless = client.rows(u"SELECT Sum,Rest FROM T"_s, LockType::Optimistic);
    keyless.setValue(0, Value(2));
    keyless.updateBatch();
    EXPECT_EQ(stored(u"SELECT \"Sum\" FROM \"T\""_s), "2.0000");
    client.run(u"ALTER TABLE T DROP COLUMN Sum"_s);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM pg_constraint WHERE conrelid = '\"T\"'::regclass "
                     "AND contype = 'c'"_s),
              "1");
}

TEST_F(PostgresCatalogTest, OtherSchemasAndViewsAreNotShown)
{
    m_database.run(u"CREATE SCHEMA annen"_s);
    m_database.run(u"CREATE TABLE annen.skjult (a integer)"_s);
    m_database.run(u"CREATE TABLE synlig (a numeric, b numeric(20,6), c varchar, d timestamptz, e "
                   "serial PRIMARY KEY)"_s);
    m_database.run(u"CREATE VIEW utsikt AS SELECT a FROM synlig"_s);
    Client client(m_database);
    EXPECT_EQ(listed(client), u"synlig.a 5|synlig.b 5|synlig.c 202(0)|synlig.d 7|synlig.e 3"_s);
    EXPECT_EQ(errorOf([&] { (void)client.rows(u"SELECT a FROM skjult"_s); }), errors::kNoSuchTable);
    client.run(u"INSERT INTO synlig (c) VALUES ('x')"_s);
    EXPECT_EQ(client.value(u"SELECT @@IDENTITY"_s), Value(qint32{1}));
}

TEST_F(PostgresCatalogTest, NamesThatOthersHaveMadeSinceAreFound)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (A LONG)"_s);
    m_database.run(u"CREATE TABLE \"Ny\" (\"B\" integer)"_s);
    client.run(u"INSERT INTO Ny (B) VALUES (1)"_s);
    m_database.run(u"ALTER TABLE \"Ny\" ADD COLUMN \"C\" integer"_s);
    client.beginTrans();
    client.run(u"UPDATE Ny SET C=2"_s);
    client.commitTrans();
    EXPECT_EQ(stored(u"SELECT * FROM \"Ny\""_s), "1|2");
}

TEST_F(PostgresCatalogTest, NamesThatOthersHaveTakenAwayAreAnError)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (A LONG, B LONG)"_s);
    client.run(u"INSERT INTO T VALUES (1,2)"_s);
    EXPECT_EQ(client.value(u"SELECT B FROM T"_s), Value(qint32{2}));
    m_database.run(u"ALTER TABLE \"T\" DROP COLUMN \"B\""_s);
    EXPECT_EQ(errorOf([&] { (void)client.rows(u"SELECT B FROM T"_s); }), errors::kNoSuchColumn);
    EXPECT_EQ(client.rows(u"SELECT * FROM T"_s).fieldCount(), 1);
    m_database.run(u"DROP TABLE \"T\""_s);
    EXPECT_EQ(errorOf([&] { (void)client.rows(u"SELECT * FROM T"_s); }), errors::kNoSuchTable);
    client.run(u"CREATE TABLE T (A LONG)"_s);
}

TEST_F(PostgresCatalogTest, StarLosesAColumnThatOthersHaveTakenAway)
{
    Client client(m_database);
    client.run(u"CREATE TABLE T (A LONG, B LONG)"_s);
    EXPECT_EQ(client.rows(u"SELECT * FROM T"_s).fieldCount(), 2);
    m_database.run(u"ALTER TABLE \"T\" DROP COLUMN \"B\""_s);
    client.beginTrans();
    EXPECT_EQ(client.rows(u"SELECT * FROM T"_s).fieldCount(), 1);
    client.commitTrans();
}

TEST_F(PostgresCatalogTest, ChangesBySessionsOfThisProcessAreKnownToAll)
{
    Client first(m_database);
    Client second(m_database);
    first.run(u"CREATE TABLE T (A LONG)"_s);
    EXPECT_EQ(second.rows(u"SELECT * FROM T"_s).fieldCount(), 1);
    first.beginTrans();
    first.run(u"ALTER TABLE T ADD COLUMN B TEXT(5)"_s);
    EXPECT_EQ(first.rows(u"SELECT * FROM T"_s).fieldCount(), 2);
    first.commitTrans();
    EXPECT_EQ(second.rows(u"SELECT * FROM T"_s).fieldCount(), 2);
}

TEST_F(PostgresCatalogTest, ChangeThatIsRolledBackIsForgotten)
{
    Client client(m_database);
    client.beginTrans();
    client.run(u"CREATE TABLE T (A TEXT(9))"_s);
    client.run(u"INSERT INTO T VALUES ('x')"_s);
    client.rollbackTrans();
    EXPECT_EQ(errorOf([&] { (void)client.rows(u"SELECT * FROM T"_s); }), errors::kNoSuchTable);
    // The collation went with the table and is made again.
    client.run(u"CREATE TABLE T (A TEXT(9))"_s);
    client.run(u"INSERT INTO T VALUES ('å')"_s);
    EXPECT_EQ(client.value(u"SELECT A FROM T WHERE A='Å'"_s), Value(u"å"_s));
}

TEST_F(PostgresCatalogTest, TwoUsersMakingOneTableAtATimeAreToldClearly)
{
    OtherUser other(m_database);
    other.run(u"BEGIN"_s);
    other.run(u"CREATE TABLE \"T\" (a integer)"_s);
    Client client(m_database);
    QString text;
    {
        const WhenSomeoneWaits commits(m_database, [&] { other.run(u"COMMIT"_s); });
        try {
            client.run(u"CREATE TABLE T (A LONG)"_s);
            ADD_FAILURE() << "made twice";
        } catch (const RunTimeError &error) {
            EXPECT_EQ(error.number(), errors::kTableExists);
        }
    }
    EXPECT_EQ(client.rows(u"SELECT * FROM T"_s).fieldCount(), 1);
}

TEST_F(PostgresCatalogTest, NameThatTheServerWouldCutIsRefused)
{
    Client client(m_database);
    const QString longest = u"Å"_s.repeated(31) + u'x'; // 63 bytes
    client.run(u"CREATE TABLE [%1] ([%1] LONG)"_s.arg(longest));
    client.run(u"INSERT INTO [%1] ([%1]) VALUES (7)"_s.arg(longest));
    EXPECT_EQ(client.value(u"SELECT [%1] FROM [%1]"_s.arg(longest)), Value(qint32{7}));
    for (const QString &statement :
         {u"CREATE TABLE [%1y] (A LONG)"_s, u"CREATE TABLE T (A LONG, [%1y] LONG)"_s,
          u"CREATE TABLE T (A LONG CONSTRAINT [%1] PRIMARY KEY)"_s,
          u"CREATE TABLE T ([%1] CURRENCY)"_s, u"ALTER TABLE [%1] ADD COLUMN [%1y] LONG"_s,
          u"CREATE TABLE [\"%1\"] (A LONG)"_s}) {
        EXPECT_EQ(errorOf([&] { client.run(statement.arg(longest)); }), errors::kSyntax)
            << statement.toStdString();
        EXPECT_TRUE(textOf([&] { client.run(statement.arg(longest)); }).contains(u"er for langt"));
    }
    EXPECT_EQ(client.openSchema(SchemaList::Columns)->recordCount(), 1);
}

TEST_F(PostgresCatalogTest, DefinitionIsMadeWholeOrNotAtAll)
{
    m_database.run(u"CREATE TABLE \"Barn.Far\" (a integer)"_s); // in the way of the index
    Client client(m_database);
    client.run(u"CREATE TABLE Far (ID COUNTER PRIMARY KEY)"_s);
    EXPECT_NE(errorOf([&] {
                  client.run(
                      u"CREATE TABLE Barn (ID COUNTER PRIMARY KEY, FarID LONG CONSTRAINT Far "
                      "REFERENCES Far (ID))"_s);
              }),
              0);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM pg_class WHERE relname = 'Barn'"_s), "0");
    client.run(u"CREATE TABLE Barn (ID COUNTER PRIMARY KEY)"_s);
}

TEST_F(PostgresCatalogTest, UserWithoutTheRightToMakeTablesIsTold)
{
    m_database.run(u"CREATE TABLE \"T\" (\"Navn\" varchar(9))"_s);
    m_database.run(u"CREATE ROLE kari LOGIN"_s);
    m_database.run(u"GRANT SELECT ON \"T\" TO kari"_s);
    const QString asKari = m_database.connectionString() + u";uid=kari"_s;
    {
        Client client(asKari);
        EXPECT_EQ(errorOf([&] { client.run(u"CREATE TABLE U (A LONG)"_s); }),
                  errors::kNoPermission);
        EXPECT_EQ(errorOf([&] { client.run(u"DELETE FROM T"_s); }), errors::kNoPermission);
        const QString missing = textOf([&] { (void)client.rows(u"SELECT Navn FROM T"_s); });
        EXPECT_TRUE(missing.contains(u"norsk") && missing.contains(u"rett"))
            << missing.toStdString();
    }
    // Once anyone has made the collation, reading is enough.
    m_database.run(u"CREATE COLLATION norsk (provider = icu, locale = 'nb-NO-u-ks-level2', "
                   "deterministic = false)"_s);
    EXPECT_EQ(Client(asKari).rows(u"SELECT Navn FROM T"_s).recordCount(), 0);
    SessionPool::shared().clear();
    m_database.run(u"DROP OWNED BY kari"_s);
    m_database.run(u"DROP ROLE kari"_s);
}

// The statements are those of docs/POSTGRESQL.md.
TEST_F(PostgresCatalogTest, PreparedAheadByAnAdministratorItServesUsersWithFewRights)
{
    m_database.run(u"CREATE ROLE strekkbok_eier LOGIN"_s);
    m_database.run(u"CREATE ROLE strekkbok_bruker"_s);
    m_database.run(u"CREATE ROLE ola LOGIN IN ROLE strekkbok_bruker"_s);
    m_database.run(u"ALTER DATABASE %1 OWNER TO strekkbok_eier"_s.arg(m_database.name()));
    m_database.run(u"REVOKE CONNECT ON DATABASE %1 FROM PUBLIC"_s.arg(m_database.name()));
    m_database.run(u"GRANT CONNECT ON DATABASE %1 TO strekkbok_bruker"_s.arg(m_database.name()));
    m_database.run(u"SET ROLE strekkbok_eier; "
                   "CREATE COLLATION norsk (provider = icu, locale = 'nb-NO-u-ks-level2', "
                   "deterministic = false); "
                   "GRANT USAGE ON SCHEMA public TO strekkbok_bruker; "
                   "ALTER DEFAULT PRIVILEGES GRANT SELECT, INSERT, UPDATE, DELETE ON TABLES TO "
                   "strekkbok_bruker; "
                   "ALTER DEFAULT PRIVILEGES GRANT USAGE, SELECT, UPDATE ON SEQUENCES TO "
                   "strekkbok_bruker"_s);
    Client(m_database.connectionString() + u";uid=strekkbok_eier"_s)
        .run(u"CREATE TABLE T (ID COUNTER CONSTRAINT ID PRIMARY KEY, Navn TEXT(9))"_s);
    {
        Client user(m_database.connectionString() + u";uid=ola"_s);
        user.run(u"INSERT INTO T (Navn) VALUES ('Ås')"_s);
        user.run(u"INSERT INTO T (ID,Navn) VALUES (5,'Bø')"_s);
        user.run(u"INSERT INTO T (Navn) VALUES ('Å')"_s);
        user.run(u"DELETE FROM T WHERE Navn='å'"_s);
        EXPECT_EQ(user.value(u"SELECT @@IDENTITY"_s), Value(qint32{6}));
        EXPECT_EQ(user.column(u"SELECT Navn FROM T ORDER BY Navn"_s), u"Bø Ås"_s);
        EXPECT_EQ(errorOf([&] { user.run(u"ALTER TABLE T ADD COLUMN A LONG"_s); }),
                  errors::kNoPermission);
        EXPECT_EQ(errorOf([&] { user.run(u"ALTER TABLE T ADD COLUMN NAVN LONG"_s); }),
                  errors::kColumnExists);
    }
    SessionPool::shared().clear();
    m_database.run(u"ALTER DATABASE %1 OWNER TO postgres"_s.arg(m_database.name()));
    for (const QString &role : {u"strekkbok_eier"_s, u"ola"_s, u"strekkbok_bruker"_s}) {
        m_database.run(u"DROP OWNED BY "_s + role);
        m_database.run(u"DROP ROLE "_s + role);
    }
}

} // namespace ado::test
