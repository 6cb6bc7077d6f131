#include "platform/ado/AnyDatabase.h"

namespace ado::test {

/// How statements of the desktop dialect fare on a database.
class SessionTest : public AnyDatabaseTest
{
protected:
    Opened m_connection{dsn()};
};

TEST_F(SessionTest, StatementsOfOneShapeTakeTheirOwnValues)
{
    m_connection.run(u"CREATE TABLE T (Nr SHORT, Navn TEXT(5))"_s);
    m_connection.run(u"INSERT INTO T (Nr, Navn) VALUES (1, 'en')"_s);
    m_connection.run(u"INSERT INTO T (Nr, Navn) VALUES (2, 'altfor langt')"_s);
    EXPECT_EQ(errorOf([&] { m_connection.run(u"INSERT INTO T (Nr, Navn) VALUES (40000, 'x')"_s); }),
              errors::kOutOfRange);
    EXPECT_EQ(m_connection.value(u"SELECT Navn FROM T WHERE Nr=1"_s), Value(u"en"_s));
    EXPECT_EQ(m_connection.value(u"SELECT Navn FROM T WHERE Nr=2"_s), Value(u"altfo"_s));
    const Recordset none = m_connection.rows(u"SELECT Navn FROM T WHERE Nr=3"_s);
    EXPECT_EQ(none.recordCount(), 0);
    EXPECT_EQ(none.field(u"Navn").definedSize, 5);
}

TEST_F(SessionTest, ManyShapesGoThroughTheBoundedStore)
{
    m_connection.run(u"CREATE TABLE T (Nr LONG)"_s);
    for (int round = 0; round < 2; ++round) {
        QString condition = u"Nr=0"_s;
        for (int i = 0; i < 100; ++i) {
            condition += u" OR Nr=1"_s;
            EXPECT_EQ(m_connection.rows(u"SELECT Nr FROM T WHERE "_s + condition).recordCount(),
                      round);
        }
        m_connection.run(u"INSERT INTO T (Nr) VALUES (1)"_s);
    }
}

TEST_F(SessionTest, OwnSchemaChangeIsSeenAtOnce)
{
    m_connection.run(u"CREATE TABLE T (Nr LONG)"_s);
    EXPECT_EQ(m_connection.rows(u"SELECT * FROM T"_s).fieldCount(), 1);
    m_connection.run(u"ALTER TABLE T ADD COLUMN Navn TEXT(5)"_s);
    EXPECT_EQ(m_connection.rows(u"SELECT * FROM T"_s).fieldCount(), 2);
    m_connection.run(u"ALTER TABLE T DROP COLUMN Navn"_s);
    EXPECT_EQ(errorOf([&] { m_connection.run(u"SELECT Navn FROM T"_s); }), errors::kNoSuchColumn);
    m_connection.run(u"DROP TABLE T"_s);
    EXPECT_EQ(errorOf([&] { m_connection.run(u"SELECT Nr FROM T"_s); }), errors::kNoSuchTable);
}

} // namespace ado::test
