#include "platform/ado/AnyDatabase.h"

namespace ado::test {

/// An index that a parent asks for.
class IndexTest : public AnyDatabaseTest
{
protected:
    IndexTest()
    {
        m_connection.run(u"CREATE TABLE Bilag (ID COUNTER CONSTRAINT ID PRIMARY KEY, "
                         u"KlientNr SHORT, BilagNr LONG, BilagDato DATE)"_s);
    }
    void provide() { m_connection.provideIndex(u"bilag"_s, u"KlientAarNr"_s, kItems); }
    void insert(int number, const QString &date)
    {
        m_connection.run(
            u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato) VALUES (5,%1,%2)"_s.arg(number).arg(
                date));
    }
    QString largest(int year)
    {
        return m_connection.column(u"SELECT Max(BilagNr) AS MaxNr FROM Bilag WHERE KlientNr= 5 AND "
                                   u"Year(Bilag.BilagDato)= %1"_s.arg(year));
    }

    const QStringList kItems{u"KlientNr"_s, u"Year(BilagDato)"_s, u"BilagNr"_s};
    Opened m_connection{dsn()};
};

TEST_F(IndexTest, ChangesNoAnswer)
{
    insert(7, u"#12/31/2013#"_s);
    insert(9, u"#01/01/2014#"_s);
    insert(8, u"#06/01/2014#"_s);
    provide();
    provide(); // it is there
    insert(3, u"Null"_s);
    insert(10, u"#12/31/2014#"_s);
    EXPECT_EQ(largest(2013), u"7"_s);
    EXPECT_EQ(largest(2014), u"10"_s);
    EXPECT_EQ(largest(2015), u"Null"_s);
    EXPECT_EQ(m_connection.column(u"SELECT BilagNr FROM Bilag WHERE KlientNr=5"_s),
              u"7 9 8 3 10"_s);
}

TEST_F(IndexTest, TakenBackItCanBeMadeAgain)
{
    m_connection.beginTrans();
    provide();
    insert(1, u"#01/01/2014#"_s);
    m_connection.rollbackTrans();
    provide();
    insert(2, u"#01/01/2014#"_s);
    EXPECT_EQ(largest(2014), u"2"_s);
}

TEST_F(IndexTest, OfATextChangesNoAnswer)
{
    m_connection.run(u"CREATE TABLE Vare (Nr TEXT(10), Rad LONG)"_s);
    const auto insert = [this](const QString &text, int row) {
        m_connection.run(u"INSERT INTO Vare (Nr,Rad) VALUES (%1,%2)"_s.arg(text).arg(row));
    };
    insert(u"'Ås'"_s, 1);
    m_connection.provideIndex(u"Vare"_s, u"Nr"_s, {u"Nr"_s});
    insert(u"'ås'"_s, 2); // no key
    insert(u"Null"_s, 3);
    insert(u"'as'"_s, 4);
    EXPECT_EQ(m_connection.column(u"SELECT Rad FROM Vare WHERE Nr='åS' ORDER BY Rad"_s), u"1 2"_s);
}

TEST_F(IndexTest, UnknownNamesAreRefused)
{
    EXPECT_EQ(errorOf([&] { m_connection.provideIndex(u"Finnes"_s, u"I"_s, kItems); }),
              errors::kNoSuchTable);
    EXPECT_EQ(errorOf([&] { m_connection.provideIndex(u"Bilag"_s, u"I"_s, {u"Aar"_s}); }),
              errors::kNoSuchColumn);
    m_connection.close();
    EXPECT_EQ(errorOf([&] { provide(); }), errors::kObjectClosed);
}

TEST_F(IndexTest, TableMadeByAnotherConnectionIsKnown)
{
    EXPECT_EQ(largest(2014), u"Null"_s);
    Opened other(dsn());
    other.run(u"CREATE TABLE Ny (Nr LONG)"_s);
    m_connection.provideIndex(u"Ny"_s, u"Nr"_s, {u"Nr"_s});
    m_connection.run(u"DROP TABLE Ny"_s);
}

} // namespace ado::test
