#include "platform/ado/AnyDatabase.h"

#include <algorithm>
#include <array>
#include <random>

namespace ado::test {

/// A list that is long enough to be kept, read again and again while it changes.
class LongList : public AnyDatabaseTest
{
protected:
    static constexpr int kRows = 250;

    LongList() { make(1); }

    /// The table with numbers from `first` on.
    void make(int first)
    {
        m_user.run(u"CREATE TABLE T (Nr LONG CONSTRAINT N PRIMARY KEY, Antall LONG)"_s);
        fill(first);
    }
    void fill(int first)
    {
        m_user.beginTrans();
        for (int nr = first; nr < first + kRows; ++nr)
            m_user.run(u"INSERT INTO T (Nr, Antall) VALUES (%1, 0)"_s.arg(nr));
        m_user.commitTrans();
    }
    std::string read()
    {
        return m_user.column(u"SELECT Antall FROM T ORDER BY Nr"_s).toStdString();
    }
    std::string standing()
    {
        std::string rows = stored(u"SELECT \"Antall\" FROM \"T\" ORDER BY \"Nr\""_s);
        std::replace(rows.begin(), rows.end(), '\n', ' ');
        return rows;
    }

    Opened m_user{dsn()};
};

TEST_F(LongList, IsTheOneThatStandsInTheDatabaseWhateverHappensToIt)
{
    Opened other(dsn());
    std::mt19937 chance(7); // a fixed start value
    const auto change = [&] {
        return u"UPDATE T SET Antall=%1 WHERE Nr=%2"_s.arg(chance() % 10'000).arg(chance() % 90);
    };
    const std::array<std::function<void()>, 7> happenings{
        [] {}, // nothing
        [&] { m_user.run(change()); },
        [&] { other.run(change()); },
        [&] {
            (void)stored(u"UPDATE \"T\" SET \"Antall\" = \"Antall\" + 1 WHERE \"Nr\" = %1"_s.arg(
                chance() % 90));
        },
        [&] { // what is read in a transaction may be taken back
            m_user.beginTrans();
            m_user.run(change());
            (void)read();
            m_user.rollbackTrans();
        },
        [&] { // a transaction that reads sees what others change behind its first reading later
            m_user.beginTrans();
            (void)read();
            m_user.commitTrans();
            other.run(change());
        },
        [&] {
            m_user.run(u"DROP TABLE T"_s);
            make(1 + int(chance() % 50));
        },
    };
    for (int step = 0; step < 200; ++step) {
        const size_t happening = chance() % happenings.size();
        happenings[happening]();
        ASSERT_EQ(read(), standing()) << "step " << step << ", happening " << happening;
    }
}

TEST_F(LongList, IsEmptyWhenItsTableHasBeenMadeAnew)
{
    EXPECT_EQ(read(), standing());
    EXPECT_EQ(read(), standing());
    m_user.run(u"DROP TABLE T"_s);
    m_user.run(u"CREATE TABLE T (Nr LONG CONSTRAINT N PRIMARY KEY, Antall LONG)"_s);
    EXPECT_EQ(read(), "");
    m_user.beginTrans();
    m_user.run(u"DROP TABLE T"_s);
    m_user.run(u"CREATE TABLE T (Nr LONG CONSTRAINT N PRIMARY KEY, Antall LONG)"_s);
    m_user.rollbackTrans();
    EXPECT_EQ(read(), "");
}

TEST_F(LongList, IsEachReadersOwn)
{
    const QString source = u"SELECT * FROM T ORDER BY Nr"_s;
    EXPECT_EQ(m_user.rows(source).value(u"Antall"), m_user.rows(source).value(u"Antall"));
    Recordset edited = m_user.rows(source, LockType::Optimistic);
    edited.setValue(u"Antall", Value(qint32{5}));
    EXPECT_EQ(m_user.rows(source).value(u"Antall"), Value(qint32{0}));
    EXPECT_EQ(edited.value(u"Antall"), Value(qint32{5}));
    edited.updateBatch();
    EXPECT_EQ(m_user.rows(source).value(u"Antall"), Value(qint32{5}));
}

TEST_F(LongList, IsAskedForByItsWholeStatement)
{
    const auto count = [&](const QString &condition) {
        return m_user.rows(u"SELECT * FROM T WHERE "_s + condition).recordCount();
    };
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(count(u"Nr>0"_s), kRows);
        EXPECT_EQ(count(u"Nr>0"_s), kRows);
        EXPECT_EQ(count(u"Nr>9"_s), kRows - 9);
    }
}

} // namespace ado::test
