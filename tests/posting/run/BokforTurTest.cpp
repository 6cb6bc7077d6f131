#include "platform/ado/Connection.h"
#include "posting/run/BokforProsessTest.h"
#include "support/Child.h"
#include "support/Rounds.h"
#include "support/StandingClock.h"

#include <algorithm>
#include <numeric>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvoices = 12;
constexpr int kMinute = 60'000; // milliseconds

int waited(const StandingClock &clock)
{
    return std::accumulate(clock.sleeps.begin(), clock.sleeps.end(), 0);
}

/// Looks into the work table when a journal is run, as the journal would.
class JournalSkjerm final : public NoterendeSkjerm
{
public:
    explicit JournalSkjerm(std::function<int()> countWorkRows) : m_count(std::move(countWorkRows))
    {
    }
    void melding(const QString &text, int) override
    {
        m_told = text.trimmed().section(u' ', 0, 0).toInt();
    }
    void skrivRapport(const QString &, qint16, const QString &, const QString &,
                      const QString &) override
    {
        m_whole = m_whole && m_count() == m_told;
    }

    [[nodiscard]] int told() const { return m_told; }
    /// Each journal saw a row for each invoice that the run told of.
    [[nodiscard]] bool sawWholeTable() const { return m_whole; }

private:
    const std::function<int()> m_count;
    int m_told = 0;
    bool m_whole = true;
};

} // namespace

/// Runs that want to post in the same database at once.
class BokforTurTest : public BokforProsessTest
{
protected:
    /// Each process has loaded the whole list and posts all of it.
    void postAtOnce(int processes)
    {
        startAnew();
        prepare(kInvoices);
        NoterendeSkjerm list;
        loadList(list);
        const std::vector<int> results = inProcesses(processes, [&] {
            JournalSkjerm screen([this] { return count(u"tmpTbl"_s); });
            screen.rader = list.rader;
            BokforMerkede(screen);
            return screen.sawWholeTable() ? screen.told() : 99;
        });
        EXPECT_EQ(int(results.size()), processes);
        EXPECT_EQ(std::count(results.begin(), results.end(), 99), 0) << "a journal lacked rows";
        EXPECT_EQ(std::accumulate(results.begin(), results.end(), 0), kInvoices);
        expectEachOnce();
    }

    void expectEachOnce()
    {
        QStringList texts = rows(u"SELECT Tekst FROM Bilag"_s);
        EXPECT_EQ(texts.size(), kInvoices);
        EXPECT_EQ(texts.removeDuplicates(), 0) << "an invoice was posted twice";
        QStringList numbers = rows(u"SELECT BilagNr FROM Bilag"_s);
        EXPECT_EQ(numbers.removeDuplicates(), 0) << "a voucher number was given twice";
        EXPECT_EQ(count(u"BilagLinjer"_s), 4 * kInvoices);
        EXPECT_EQ(count(u"Ordre WHERE OrdreStatus='Bokført'"_s), kInvoices);
    }
};

TEST_F(BokforTurTest, TwoProcessesPostEachInvoiceOnce)
{
    for (int round = 0; round < rounds(3) && !HasFailure(); ++round)
        postAtOnce(2);
}

TEST_F(BokforTurTest, FourProcessesPostEachInvoiceOnce)
{
    for (int round = 0; round < rounds(3) && !HasFailure(); ++round)
        postAtOnce(4);
}

TEST_F(BokforTurTest, ARunWaitsAMinuteAndGoesOnAsTold)
{
    prepare(2);
    NoterendeSkjerm list;
    loadList(list);
    ado::Connection other;
    other.open(connectionString());
    ASSERT_TRUE(other.takeTurn());

    StandingClock clock;
    const QStringList statements = statementsOf([&] { BokforMerkede(list); });
    EXPECT_EQ(waited(clock), kMinute);
    EXPECT_EQ(statements.value(0), u"DROP TABLE tmpTbl"_s);
    EXPECT_EQ(count(u"Ordre WHERE OrdreStatus='Bokført'"_s), 2);
    // The hourglass stood all the while.
    EXPECT_EQ(list.hendelser.count(u"framdrift 0 av 2"_s), 1 + clock.sleeps.size());
}

TEST_F(BokforTurTest, ARunWithinARunDoesNotWaitForItself)
{
    class NestedSkjerm final : public NoterendeSkjerm
    {
    public:
        explicit NestedSkjerm(NoterendeSkjerm &inner) : m_inner(inner) {}
        void slippHendelser() override { BokforMerkede(m_inner); }

    private:
        NoterendeSkjerm &m_inner;
    };
    prepare(1);
    NoterendeSkjerm inner;
    NestedSkjerm outer(inner);
    loadList(outer);
    const StandingClock clock;
    BokforMerkede(outer);
    EXPECT_LT(waited(clock), kMinute); // some seconds, where the server has just started
    EXPECT_TRUE(inner.hendelser.contains(u"les fakturaer"));

    ado::Connection next; // and the turn is free again
    next.open(connectionString());
    EXPECT_TRUE(next.takeTurn());
}

TEST_F(BokforTurTest, AKilledRunLeavesTheTurnFree)
{
    prepare(kInvoices);
    NoterendeSkjerm list;
    loadList(list);
    reload();
    int ends[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    Child holder([&] {
        char byte = '!';
        startAnew();
        ado::Connection connection;
        connection.open(connectionString());
        const bool taken = connection.takeTurn();
        static_cast<void>(::write(ends[1], &byte, 1));
        return taken ? static_cast<int>(::read(ends[1], &byte, 1)) : 1; // until it is killed
    });
    char byte = 0;
    ASSERT_TRUE(readByte(ends[0], byte));
    startAnew();
    {
        ado::Connection second;
        second.open(connectionString());
        EXPECT_FALSE(second.takeTurn());
    }
    holder.kill();
    ::close(ends[0]);
    ::close(ends[1]);
    ado::SessionPool::shared().clear();
    ASSERT_EQ(underlag().integrity(ModuleTest::connectionString()), u"ok"_s);
    const StandingClock clock;
    BokforMerkede(list);
    EXPECT_LT(waited(clock), kMinute); // some seconds, where the server has just started
    expectEachOnce();
}
