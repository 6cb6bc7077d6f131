#include "platform/ado/Session.h"
#include "platform/ado/postgres/PostgresLink.h"
#include "platform/ado/postgres/Support.h"

namespace ado::test {

/// Many rows added at once.
class PostgresAppend : public PostgresTest
{
protected:
    PostgresAppend()
        : m_session(SessionPool::shared().acquire(
              resolve(ConnectionString(m_database.connectionString()))))
    {
        m_session->execute(u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, Navn "
                           "TEXT(9), Sum CURRENCY, Bilde LONGBINARY)");
    }
    static dialect::ResultColumn column(const QString &name, DataType type)
    {
        dialect::ResultColumn result;
        result.name = name;
        result.type = type;
        return result;
    }
    static RowSet rowsOf(const std::vector<std::pair<qint32, Value>> &numbered)
    {
        RowSet rows({column(u"ID"_s, DataType::Integer), column(u"Navn"_s, DataType::VarWChar)});
        for (const auto &[number, name] : numbered) {
            rows.store(0).append(number);
            rows.store(1).append(name);
            rows.closeRow();
        }
        return rows;
    }

    std::shared_ptr<Session> m_session;
};

TEST_F(PostgresAppend, KeepsNumbersAndGoesOnBehindThem)
{
    m_session->append(u"ORDRE", rowsOf({{70, Value(u"Æsop"_s)}, {5, Value()}, {90, Value(u""_s)}}));
    EXPECT_EQ(
        stored(u"SELECT string_agg(\"ID\" || COALESCE(\"Navn\", 'Null'), ' ' ORDER BY \"ID\") "
               "FROM \"Ordre\""_s),
        "5Null 70Æsop 90");
    m_session->execute(u"INSERT INTO Ordre (Navn) VALUES ('ny')");
    EXPECT_EQ(stored(u"SELECT \"ID\" FROM \"Ordre\" WHERE \"Navn\" = 'ny'"_s), "91");
    // Smaller numbers do not take the counter back.
    m_session->append(u"Ordre", rowsOf({{10, Value()}}));
    m_session->execute(u"INSERT INTO Ordre (Navn) VALUES ('til')");
    EXPECT_EQ(stored(u"SELECT \"ID\" FROM \"Ordre\" WHERE \"Navn\" = 'til'"_s), "92");
}

TEST_F(PostgresAppend, NoCharacterIsTakenForAnother)
{
    const QStringList texts{u"\t\n\r\\"_s, u"\\N"_s, u"\\."_s, u"a\\tb"_s, u"'\"$1"_s, u" x "_s};
    std::vector<std::pair<qint32, Value>> numbered;
    for (qsizetype i = 0; i < texts.size(); ++i)
        numbered.push_back({static_cast<qint32>(i), Value(texts[i])});
    m_session->append(u"Ordre", rowsOf(numbered));
    const RowSet read = m_session->query(u"SELECT Navn FROM Ordre ORDER BY ID");
    ASSERT_EQ(read.rowCount(), texts.size());
    for (int i = 0; i < read.rowCount(); ++i)
        EXPECT_EQ(read.value(i, 0).toText(), texts[i]);
}

TEST_F(PostgresAppend, BytesAndMoneyAreExact)
{
    QByteArray bytes(256, '\0');
    for (int i = 0; i < 256; ++i)
        bytes[i] = static_cast<char>(i);
    RowSet rows(
        {column(u"Bilde"_s, DataType::LongVarBinary), column(u"Sum"_s, DataType::Currency)});
    for (const qint64 amount : {std::numeric_limits<qint64>::min(), qint64{-1}}) {
        rows.store(0).append(Value(bytes));
        rows.store(1).append(amount);
        rows.closeRow();
    }
    m_session->append(u"Ordre", rows);
    const RowSet read = m_session->query(u"SELECT ID,Bilde,Sum FROM Ordre ORDER BY ID");
    ASSERT_EQ(read.rowCount(), 2);
    EXPECT_EQ(read.value(0, 0).toLong(), 1); // the counter is used where no number is given
    EXPECT_TRUE(read.value(0, 1).toBytes() == bytes);
    EXPECT_EQ(read.value(0, 2).toCurrency().tenThousandths(), std::numeric_limits<qint64>::min());
    EXPECT_EQ(read.value(1, 2).toCurrency().tenThousandths(), -1);
}

TEST_F(PostgresAppend, AllRowsOrNone)
{
    const auto twice = [](qint32 number) {
        return rowsOf({{number, Value(u"a"_s)}, {number, Value(u"b"_s)}});
    };
    EXPECT_EQ(errorOf([&] { m_session->append(u"Ordre", twice(1)); }), errors::kIntegrity);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Ordre\""_s), "0");

    m_session->begin();
    m_session->execute(u"INSERT INTO Ordre (ID) VALUES (7)");
    EXPECT_EQ(errorOf([&] { m_session->append(u"Ordre", twice(8)); }), errors::kIntegrity);
    m_session->append(u"Ordre", rowsOf({{9, Value()}}));
    m_session->commit();
    EXPECT_EQ(stored(u"SELECT string_agg(\"ID\"::text, ',' ORDER BY \"ID\") FROM \"Ordre\""_s),
              "7,9");
}

TEST_F(PostgresAppend, SessionGoesOnBehindARefusedRow)
{
    EXPECT_EQ(errorOf([&] {
                  m_session->append(u"Ordre", rowsOf({{1, Value(u"ti tegn er for mye"_s)}}));
              }),
              errors::kOutOfRange);
    const RowSet one = rowsOf({{1, Value()}});
    EXPECT_EQ(errorOf([&] { m_session->append(u"Finnes", one); }), errors::kNoSuchTable);
    m_session->append(u"Ordre", rowsOf({{1, Value(u"ni"_s)}}));
    EXPECT_EQ(m_session->query(u"SELECT * FROM Ordre").rowCount(), 1);
}

TEST_F(PostgresAppend, EndOfTheConnectionIsAnError)
{
    m_session->begin();
    m_session->execute(u"INSERT INTO Ordre (ID) VALUES (7)");
    endConnections();
    const RowSet one = rowsOf({{8, Value()}});
    EXPECT_EQ(errorOf([&] { m_session->append(u"Ordre", one); }), errors::kUnspecified);
    m_session->rollback();
    m_session->append(u"Ordre", one);
    EXPECT_EQ(stored(u"SELECT string_agg(\"ID\"::text, ',') FROM \"Ordre\""_s), "8");
}

TEST_F(PostgresAppend, FailingSourceOfACopyLeavesTheLinkFit)
{
    PostgresLink link(resolve(ConnectionString(m_database.connectionString())).server);
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
