#include "platform/ado/Append.h"

namespace ado::test {

TEST_F(Append, KeepsNumbersAndGoesOnBehindThem)
{
    m_session->append(u"ORDRE", rowsOf({{70, Value(u"Æsop"_s)}, {5, Value()}, {90, Value(u""_s)}}));
    EXPECT_EQ(stored(u"SELECT \"ID\", \"Navn\", \"Navn\" IS NULL, \"Sum\" IS NULL FROM \"Ordre\" "
                     "WHERE \"ID\" = 70"_s)
                  .substr(0, 8),
              "70|Æsop");
    EXPECT_EQ(stored(u"SELECT \"ID\" FROM \"Ordre\" WHERE \"Navn\" IS NULL"_s), "5");
    EXPECT_EQ(stored(u"SELECT \"ID\" FROM \"Ordre\" WHERE \"Navn\" = ''"_s), "90");
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Ordre\" WHERE \"Sum\" IS NULL"_s), "3");
    m_session->execute(u"INSERT INTO Ordre (Navn) VALUES ('ny')");
    EXPECT_EQ(stored(u"SELECT \"ID\" FROM \"Ordre\" WHERE \"Navn\" = 'ny'"_s), "91");
    // Smaller numbers do not take the counter back.
    m_session->append(u"Ordre", rowsOf({{10, Value()}}));
    m_session->execute(u"INSERT INTO Ordre (Navn) VALUES ('til')");
    EXPECT_EQ(stored(u"SELECT \"ID\" FROM \"Ordre\" WHERE \"Navn\" = 'til'"_s), "92");
}

TEST_F(Append, NoCharacterIsTakenForAnother)
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

TEST_F(Append, BytesAndMoneyAreExact)
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

TEST_F(Append, AllRowsOrNone)
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
    EXPECT_EQ(stored(u"SELECT \"ID\" FROM \"Ordre\" ORDER BY 1"_s), "7\n9");
}

TEST_F(Append, TellsHowFarItIsAndCanBeEnded)
{
    constexpr int kRows = 2 * Session::kAddedAtOnce + 500;
    std::vector<std::pair<qint32, Value>> numbered;
    for (qint32 number = 1; number <= kRows; ++number)
        numbered.emplace_back(number, Value());
    const RowSet rows = rowsOf(numbered);

    struct Ended
    {
    };
    const auto endSoon = [](int added) {
        if (added == 2 * Session::kAddedAtOnce)
            throw Ended();
    };
    EXPECT_THROW(m_session->append(u"Ordre", rows, endSoon), Ended);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Ordre\""_s), "0");

    m_session->begin();
    m_session->execute(u"INSERT INTO Ordre (ID) VALUES (9000)");
    EXPECT_THROW(m_session->append(u"Ordre", rows, endSoon), Ended);
    m_session->execute(u"INSERT INTO Ordre (ID) VALUES (9001)");
    m_session->commit();
    EXPECT_EQ(stored(u"SELECT \"ID\" FROM \"Ordre\" ORDER BY 1"_s), "9000\n9001");

    std::vector<int> told;
    m_session->append(u"Ordre", rows, [&](int added) { told.push_back(added); });
    EXPECT_EQ(told, (std::vector<int>{Session::kAddedAtOnce, 2 * Session::kAddedAtOnce}));
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Ordre\""_s), std::to_string(kRows + 2));
}

TEST_F(Append, UnknownTableAndColumnAreErrors)
{
    const RowSet one = rowsOf({{1, Value()}});
    EXPECT_EQ(errorOf([&] { m_session->append(u"Finnes", one); }), errors::kNoSuchTable);
    m_session->execute(u"CREATE TABLE Annet (ID LONG)");
    EXPECT_NE(errorOf([&] { m_session->append(u"Annet", one); }), 0);
    m_session->append(u"Ordre", one);
    EXPECT_EQ(m_session->query(u"SELECT * FROM Ordre").rowCount(), 1);
}

} // namespace ado::test
