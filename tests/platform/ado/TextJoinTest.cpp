#include "platform/ado/AnyDatabase.h"
#include "support/Rounds.h"

#include <random>

namespace ado::test {

namespace {

/// Statements that join on text; "%1" stands behind what they join by.
const QString kJoins[] = {
    u"SELECT A.ID,B.ID,B.Navn FROM A LEFT JOIN B ON A.Tekst=B.Tekst%1"_s,
    u"SELECT A.ID,B.ID FROM A INNER JOIN B ON B.Tekst=A.Tekst%1"_s,
    u"SELECT A.ID,B.ID FROM A LEFT JOIN B ON A.Tekst=B.Tekst AND B.Tall>3%1"_s,
    u"SELECT A.ID,B.ID FROM A LEFT JOIN B ON A.Tekst=B.Tekst%1 WHERE B.Tall<4"_s,
    u"SELECT A.ID,B.ID FROM A INNER JOIN B ON A.Tekst=B.Tekst%1 WHERE B.ID=2"_s,
    u"SELECT A.ID,B.ID FROM A LEFT JOIN B ON A.Tekst=B.Tekst AND A.Navn=B.Navn%1"_s,
    u"SELECT A.ID,B.ID,C.ID FROM (A LEFT JOIN B ON A.Tekst=B.Tekst) LEFT JOIN B AS C "
    u"ON A.Navn=C.Tekst%1"_s,
    u"SELECT A.ID,B.ID,C.ID FROM A LEFT JOIN (B INNER JOIN B AS C ON B.Navn=C.Tekst%1) "
    u"ON A.Tekst=B.Tekst"_s,
    u"SELECT A.ID,B.ID,C.ID FROM (A INNER JOIN B ON A.Tekst=B.Tekst) RIGHT JOIN B AS C "
    u"ON A.Navn=C.Tekst%1"_s,
    u"SELECT A.Tall,COUNT(B.ID) AS Antall FROM A LEFT JOIN B ON A.Tekst=B.Tekst%1 "
    u"GROUP BY A.Tall"_s,
    u"SELECT DISTINCT B.Tall FROM A LEFT JOIN B ON A.Tekst=B.Tekst%1"_s,
    u"SELECT A.ID,B.ID FROM A LEFT JOIN B ON A.Tekst=B.Tekst%1 ORDER BY A.Navn DESC"_s,
};

/// An alternative that no row fulfils, and that a database has to ask for each pair of rows.
const QString kNoRow = u" OR A.ID<0 OR B.ID<0 OR C.ID<0"_s;

} // namespace

/// Joins on text, whichever way a database goes about them, while rows come, go and change.
class TextJoinTest : public AnyDatabaseTest
{
protected:
    explicit TextJoinTest(const QString &settings = {}) : m_own(dsn(settings))
    {
        for (const QString &table : {u"A"_s, u"B"_s})
            m_own.run(u"CREATE TABLE %1 (ID COUNTER CONSTRAINT ID PRIMARY KEY, Tekst TEXT(10), "
                      u"Navn TEXT(10), Tall LONG)"_s.arg(table));
    }

    int number(int from, int to) { return std::uniform_int_distribution(from, to)(m_random); }

    /// Few texts, so that many are equal, and many of them only nearly so.
    QString text()
    {
        static const QString texts[] = {
            u"Null"_s,  u"''"_s,   u"'a'"_s,  u"'A'"_s,  u"'a '"_s,  u"' a'"_s, u"'å'"_s,
            u"'Å'"_s,   u"'aa'"_s, u"'AA'"_s, u"'é'"_s,  u"'E'"_s,   u"'e'"_s,  u"'10'"_s,
            u"'010'"_s, u"'1'"_s,  u"'ø'"_s,  u"'Ø '"_s, u"'a-b'"_s, u"'ab'"_s, u"'æ'"_s,
        };
        return texts[number(0, int(std::size(texts)) - 1)];
    }

    void change(Opened &connection)
    {
        const QString table = number(0, 2) == 0 ? u"A"_s : u"B"_s;
        const int kind = number(0, 19);
        if (kind < 10)
            connection.run(u"INSERT INTO %1 (Tekst,Navn,Tall) VALUES (%2,%3,%4)"_s.arg(
                table, text(), text(), QString::number(number(1, 6))));
        else if (kind < 16)
            connection.run(u"UPDATE %1 SET Tekst=%2,Navn=%3 WHERE ID=%4"_s.arg(
                table, text(), text(), QString::number(number(1, 40))));
        else if (kind < 19)
            connection.run(u"DELETE FROM %1 WHERE ID=%2"_s.arg(table).arg(number(1, 40)));
        else
            connection.run(u"DELETE FROM %1"_s.arg(table));
    }

    /// One to three changes, by one of two connections, kept or taken back.
    void changeSome()
    {
        Opened &connection = number(0, 1) == 0 ? m_other : m_own;
        const bool whole = number(0, 1) == 0;
        if (whole)
            connection.beginTrans();
        for (int left = number(1, 3); left > 0; --left) {
            change(connection);
            if (&connection == &m_own && number(0, 1) == 0)
                expectSameRows();
        }
        if (whole && number(0, 2) == 0)
            connection.rollbackTrans();
        else if (whole)
            connection.commitTrans();
    }

    QStringList lines(const QString &statement)
    {
        QStringList lines;
        for (Recordset set = m_own.rows(statement); !set.eof(); set.moveNext()) {
            QStringList cells;
            for (int i = 0; i < set.fieldCount(); ++i)
                cells += set.isNull(i) ? u"Null"_s : set.text(i);
            lines += cells.join(u'|');
        }
        if (!m_joinsInOrder)
            lines.sort();
        return lines;
    }

    void expectSameRows()
    {
        for (const QString &join : kJoins) {
            QString noRow = kNoRow;
            if (!join.contains(u" AS C "))
                noRow.remove(u" OR C.ID<0"_s);
            else if (join.contains(u"(B INNER JOIN"))
                noRow.remove(u" OR A.ID<0"_s);
            EXPECT_EQ(lines(join.arg(QString())).join(u'\n').toStdString(),
                      lines(join.arg(noRow)).join(u'\n').toStdString())
                << join.toStdString();
        }
    }

    void expectSameRowsWhileChanging()
    {
        for (int round = rounds(30); round > 0 && !HasFailure(); --round) {
            changeSome();
            expectSameRows();
        }
        m_database->check();
    }

    /// With settings that only a server takes.
    QString dsn(const QString &settings = {}) const
    {
        const QString dsn = AnyDatabaseTest::dsn();
        return isServerAddress(ConnectionString(dsn).value(u"dsn")) ? dsn + settings : dsn;
    }

    Opened m_own;
    Opened m_other{dsn()};
    // A server may give the rows that join one row in any order.
    const bool m_joinsInOrder = !isServerAddress(ConnectionString(dsn()).value(u"dsn"));
    std::mt19937 m_random{startValue(20140309)};
};

TEST_F(TextJoinTest, GivesTheRowsThatReadingAllPairsGives)
{
    expectSameRowsWhileChanging();
}

/// The same where all texts have an index, by which a server looks up even in tables of few rows.
class IndexedTextJoinTest : public TextJoinTest
{
protected:
    IndexedTextJoinTest()
        : TextJoinTest(u"&options=-c%20enable_seqscan%3Doff%20-c%20enable_hashjoin%3Doff%20"
                       "-c%20enable_mergejoin%3Doff%20-c%20jit%3Doff"_s)
    {
        for (const QString &table : {u"A"_s, u"B"_s}) {
            for (const QString &column : {u"Tekst"_s, u"Navn"_s})
                m_other.provideIndex(table, column, {column});
        }
    }
};

TEST_F(IndexedTextJoinTest, GivesTheRowsThatReadingAllPairsGives)
{
    expectSameRowsWhileChanging();
}

} // namespace ado::test
