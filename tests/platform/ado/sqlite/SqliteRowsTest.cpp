#include "platform/ado/Support.h"
#include "runtime/Moment.h"

namespace ado::test {

/// Values as another tool may have stored them, read by the record interface.
class SqliteRows : public testing::Test
{
protected:
    SqliteRows()
    {
        Tool(m_file.path())
            .run("CREATE TABLE T (Kort SHORT, Langt LONG, Enkel SINGLE, Dobbel DOUBLE, Kroner "
                 "CURRENCY, Dato DATE, Sant BIT, Navn TEXT(10), Bilde LONGBINARY)");
    }
    /// Puts `sql` into one column of the only row.
    void store(const char *column, const char *sql)
    {
        Tool tool(m_file.path());
        tool.run("DELETE FROM T; INSERT INTO T DEFAULT VALUES");
        tool.run(("UPDATE T SET " + std::string(column) + " = " + sql).c_str());
    }
    Value read(const char *column)
    {
        return Opened(m_file).value(u"SELECT %1 FROM T"_s.arg(QString::fromLatin1(column)));
    }
    int errorAt(const char *column)
    {
        return errorOf([&] { static_cast<void>(read(column)); });
    }

    Database m_file;
};

TEST_F(SqliteRows, ValuesComeOutByTheirColumnsType)
{
    store("Kort", "-32768");
    EXPECT_EQ(read("Kort"), Value(qint16{-32768}));
    store("Langt", "2147483647");
    EXPECT_EQ(read("Langt"), Value(qint32{2147483647}));
    store("Enkel", "0.1");
    EXPECT_EQ(read("Enkel"), Value(0.1F));
    store("Enkel", "25.0"); // lies as a whole number
    EXPECT_EQ(read("Enkel"), Value(25.0F));
    store("Dobbel", "1e300");
    EXPECT_EQ(read("Dobbel"), Value(1e300));
    store("Kroner", "9223372036854775807");
    EXPECT_EQ(read("Kroner"),
              Value(Currency::fromTenThousandths(std::numeric_limits<qint64>::max())));
    store("Dato", "'2014-03-09 13:30:00'");
    EXPECT_EQ(read("Dato"), Value(utcMoment(QDate(2014, 3, 9), QTime(13, 30))));
    store("Sant", "-1");
    EXPECT_EQ(read("Sant"), Value(true));
    store("Sant", "0");
    EXPECT_EQ(read("Sant"), Value(false));
    store("Navn", "'Blåbær'");
    EXPECT_EQ(read("Navn"), Value(u"Blåbær"_s));
    store("Bilde", "x'00ff00'");
    EXPECT_EQ(read("Bilde"), Value(QByteArray("\0\xff\0", 3)));
}

TEST_F(SqliteRows, NullIsNullInEveryType)
{
    store("Kort", "NULL");
    Recordset rows = Opened(m_file).rows(u"SELECT * FROM T"_s);
    ASSERT_EQ(rows.fieldCount(), 9);
    for (int i = 0; i < rows.fieldCount(); ++i)
        EXPECT_TRUE(rows.isNull(i)) << i;
}

TEST_F(SqliteRows, ValueOfAnotherTypeIsAMismatch)
{
    const std::pair<const char *, const char *> cases[] = {
        {"Kort", "'tolv'"},       {"Kort", "1.5"},     {"Langt", "x'01'"},
        {"Enkel", "'mange'"},     {"Dobbel", "x'00'"}, {"Kroner", "12.5"},
        {"Kroner", "'12,50'"},    {"Dato", "41706"},   {"Dato", "'9.3.2014'"},
        {"Dato", "'2014-02-30'"}, {"Sant", "'ja'"},    {"Navn", "x'4142'"},
        {"Bilde", "'tekst'"},     {"Bilde", "5"}};
    for (const auto &[column, sql] : cases) {
        store(column, sql);
        EXPECT_EQ(errorAt(column), errors::kTypeMismatch) << column << " = " << sql;
        const QString text = textOf([&, name = column] { static_cast<void>(read(name)); });
        EXPECT_TRUE(text.contains(QString::fromLatin1(column))) << text.toStdString();
    }
}

TEST_F(SqliteRows, NumberBeyondItsTypeOverflows)
{
    store("Kort", "32768");
    EXPECT_EQ(errorAt("Kort"), ::errors::kOverflow);
    store("Kort", "-32769");
    EXPECT_EQ(errorAt("Kort"), ::errors::kOverflow);
    store("Langt", "2147483648");
    EXPECT_EQ(errorAt("Langt"), ::errors::kOverflow);
    store("Langt", "-2147483649");
    EXPECT_EQ(errorAt("Langt"), ::errors::kOverflow);
    store("Enkel", "1e39");
    EXPECT_EQ(errorAt("Enkel"), ::errors::kOverflow);
    store("Kroner", "9223372036854775808"); // lies as a real number
    EXPECT_EQ(errorAt("Kroner"), errors::kTypeMismatch);
}

// A file may come from another tool, or from before columns kept their ranges.
TEST_F(SqliteRows, NumberWithoutEndSpoilsNoMoreThanItsOwnColumn)
{
    Tool(m_file.path()).run("INSERT INTO T (Kort, Enkel, Dobbel) VALUES (7, 1e999, -1e999)");
    EXPECT_EQ(errorAt("Enkel"), ::errors::kOverflow);
    EXPECT_EQ(errorAt("Dobbel"), ::errors::kOverflow);
    EXPECT_TRUE(textOf([&] { static_cast<void>(read("Dobbel")); }).contains(u"«Dobbel»"));
    EXPECT_EQ(read("Kort"), Value(qint16{7}));
    Opened(m_file).run(u"UPDATE T SET Enkel=1,Dobbel=2 WHERE Kort=7"_s);
    EXPECT_EQ(read("Dobbel"), Value(2.0));
}

// The database goes on with a real number where 64 bits end, and it comes back without its øre.
TEST_F(SqliteRows, AmountThatWasBeyondItsTypeOnTheWayIsNoResult)
{
    Opened connection(m_file);
    connection.run(u"INSERT INTO T (Kroner) VALUES (900000000000000.0001)"_s);
    for (const char16_t *statement :
         {u"SELECT Kroner+Kroner-Kroner FROM T", u"SELECT Kroner*2-Kroner FROM T",
          u"UPDATE T SET Kroner=Kroner+Kroner-Kroner"})
        EXPECT_EQ(errorOf([&] { connection.run(QString::fromUtf16(statement)); }),
                  errors::kOutOfRange);
    EXPECT_EQ(connection.value(u"SELECT Kroner FROM T"_s),
              Value(Currency::fromTenThousandths(9000000000000000001)));
}

TEST_F(SqliteRows, WholeNumberMayLieAsARealOne)
{
    Tool tool(m_file.path());
    tool.run("CREATE TABLE R (Langt LONG); INSERT INTO R VALUES (1e9)");
    EXPECT_EQ(Opened(m_file).value(u"SELECT Langt FROM R"_s), Value(qint32{1000000000}));
}

TEST_F(SqliteRows, BrokenTextIsShownWithReplacements)
{
    store("Navn", "CAST(x'41ff42' AS TEXT)");
    EXPECT_EQ(read("Navn").toText(), u"A\ufffdB"_s);
}

TEST_F(SqliteRows, SingleIsStoredAsItsShortestDecimal)
{
    Opened connection(m_file);
    connection.run(u"INSERT INTO T (Enkel) VALUES (0.1)"_s);
    Tool tool(m_file.path());
    EXPECT_EQ(tool.text("SELECT Enkel FROM T"), "0.1");
    EXPECT_EQ(connection.value(u"SELECT Enkel FROM T"_s), Value(0.1F));
}

TEST_F(SqliteRows, LargestSingleComesBack)
{
    constexpr float kLargest = std::numeric_limits<float>::max();
    store("Enkel", "3.4028235e38");
    EXPECT_EQ(read("Enkel"), Value(kLargest));
    store("Enkel", "-3.4028235e38");
    EXPECT_EQ(read("Enkel"), Value(-kLargest));
}

TEST_F(SqliteRows, MoneyIsStoredAsTenThousandths)
{
    Opened connection(m_file);
    connection.run(u"INSERT INTO T (Kroner, Sant, Dato) VALUES (-1234.5678, -1, #03/09/2014#)"_s);
    Tool tool(m_file.path());
    EXPECT_EQ(tool.text("SELECT Kroner FROM T"), "-12345678");
    EXPECT_EQ(tool.text("SELECT typeof(Kroner) FROM T"), "integer");
    EXPECT_EQ(tool.text("SELECT Sant FROM T"), "1");
    EXPECT_EQ(tool.text("SELECT Dato FROM T"), "2014-03-09");
}

} // namespace ado::test
