#include "platform/ado/Append.h"
#include "platform/ado/postgres/PostgresLink.h"
#include "platform/ado/postgres/Support.h"

namespace ado::test {

/// Many rows added at once, by the server's COPY.
class PostgresAppend : public Append
{
};

TEST_F(PostgresAppend, SessionGoesOnBehindARefusedRow)
{
    EXPECT_EQ(errorOf([&] {
                  m_session->append(u"Ordre", rowsOf({{1, Value(u"ti tegn er for mye"_s)}}));
              }),
              errors::kOutOfRange);
    m_session->append(u"Ordre", rowsOf({{1, Value(u"ni"_s)}}));
    EXPECT_EQ(m_session->query(u"SELECT * FROM Ordre").rowCount(), 1);
}

TEST_F(PostgresAppend, EndOfTheConnectionIsAnError)
{
    m_session->begin();
    m_session->execute(u"INSERT INTO Ordre (ID) VALUES (7)");
    stored(kEndConnections);
    const RowSet one = rowsOf({{8, Value(u"ny"_s)}});
    EXPECT_EQ(errorOf([&] { m_session->append(u"Ordre", one); }), errors::kUnspecified);
    m_session->rollback();
    m_session->append(u"Ordre", one);
    EXPECT_EQ(stored(u"SELECT string_agg(\"ID\"::text, ',') FROM \"Ordre\""_s), "8");
}

TEST_F(PostgresAppend, FailingSourceOfACopyLeavesTheLinkFit)
{
    PostgresLink link(resolve(ConnectionString(dsn())).server);
    int pieces = 0;
    EXPECT_EQ(errorOf([&] {
                  link.copyIn("COPY \"Ordre\" (\"ID\") FROM STDIN", [&]() -> QByteArray {
                      if (++pieces == 3)
                          throw RunTimeError(errors::kTypeMismatch, u"Prøve"_s);
                      return QByteArray::number(pieces) + '\n';
                  });
              }),
              errors::kTypeMismatch);
    EXPECT_TRUE(link.isIdle());
    link.run("SELECT 1");
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Ordre\""_s), "0");
}

} // namespace ado::test
