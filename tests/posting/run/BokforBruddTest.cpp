#include "posting/run/BokforProsessTest.h"
#include "posting/run/Bokkontroll.h"
#include "support/Child.h"
#include "support/PostgresCluster.h"
#include "support/Rounds.h"

#include <QElapsedTimer>

#include <fcntl.h>
#include <numeric>
#include <random>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvoices = 8;
constexpr int kStatements = 2 + 12 * kInvoices; // of a run

/// Keeps what the run tells of; the last one is the number of posted invoices.
class TellendeSkjerm final : public NoterendeSkjerm
{
public:
    void melding(const QString &text, int) override
    {
        told = text.trimmed().section(u' ', 0, 0).toInt();
    }
    int told = 0;
};

} // namespace

/// Runs whose sessions with the server are lost in their midst.
class BokforBruddTest : public BokforProsessTest
{
protected:
    /// Lets so many processes post the same list, and calls `disturb` within some microseconds of
    /// a statement of one of them. How many invoices each told of.
    template<class Disturb>
    std::vector<int> runDisturbed(int processes, Disturb disturb)
    {
        startAnew();
        prepare(kInvoices);
        NoterendeSkjerm list;
        loadList(list);
        int dots[2];
        EXPECT_EQ(::pipe2(dots, O_CLOEXEC), 0);
        const auto post = [&] {
            const char dot = '.';
            nekt = [&](const QString &) { static_cast<void>(::write(dots[1], &dot, 1) == 1); };
            TellendeSkjerm screen;
            screen.rader = list.rader;
            BokforMerkede(screen);
            return screen.told;
        };
        const auto meanwhile = [&] {
            ::close(dots[1]); // with the last child the dots are at their end
            const int statement = std::uniform_int_distribution(1, kStatements)(m_random);
            char byte = 0;
            for (int seen = 0; seen < statement && readByte(dots[0], byte); ++seen) {
            }
            // No sleep: the moment is to be met within microseconds.
            const int pause = std::uniform_int_distribution(0, 400)(m_random);
            QElapsedTimer clock;
            clock.start();
            while (clock.nsecsElapsed() < 1000LL * pause) {
            }
            disturb();
        };
        const std::vector<int> told = inProcesses(processes, post, meanwhile);
        ::close(dots[0]);
        EXPECT_EQ(int(told.size()), processes);
        return told;
    }

    /// As runDisturbed; the disturbance must cost nothing.
    template<class Disturb>
    void postDisturbed(int processes, Disturb disturb)
    {
        const std::vector<int> told = runDisturbed(processes, disturb);
        EXPECT_EQ(std::accumulate(told.begin(), told.end(), 0), kInvoices);
        expectEachOnceAndWhole(processes);
    }

    void expectEachOnceAndWhole(int processes)
    {
        QStringList texts = rows(u"SELECT Tekst FROM Bilag"_s);
        EXPECT_EQ(texts.size(), kInvoices);
        EXPECT_EQ(texts.removeDuplicates(), 0);
        QStringList numbers = rows(u"SELECT BilagNr FROM Bilag"_s);
        EXPECT_EQ(numbers.removeDuplicates(), 0);
        for (const QString &id : rows(u"SELECT ID FROM Bilag"_s))
            EXPECT_EQ(count(u"BilagLinjer WHERE BilagID="_s + id), 4);
        EXPECT_EQ(count(u"BilagLinjer"_s), 4 * kInvoices);
        EXPECT_EQ(count(u"Ordre WHERE OrdreStatus='Bokført'"_s), kInvoices);
        if (processes == 1) { // else the work table is that of the last run
            EXPECT_EQ(count(u"tmpTbl"_s), kInvoices);
        }
    }

    void terminate(const QString &limit)
    {
        PostgresCluster::shared().run(
            u"postgres"_s, u"SELECT pg_terminate_backend(pid) FROM (SELECT pid FROM "
                           u"pg_stat_activity WHERE datname LIKE 'firma%' ORDER BY random() "_s +
                               limit + u") a"_s);
    }

    std::mt19937 m_random{20140309};
};

TEST_F(BokforBruddTest, OneTerminatedSessionCostsNothing)
{
    for (int round = 0; round < rounds(5) && !HasFailure(); ++round)
        postDisturbed(1, [this] { terminate(u"LIMIT 1"_s); });
}

TEST_F(BokforBruddTest, AllSessionsTerminatedCostNothing)
{
    for (int round = 0; round < rounds(5) && !HasFailure(); ++round)
        postDisturbed(1, [this] { terminate(QString()); });
}

TEST_F(BokforBruddTest, ARestartCostsNothing)
{
    for (int round = 0; round < rounds(3) && !HasFailure(); ++round)
        postDisturbed(1, [] {
            PostgresCluster::shared().stop();
            PostgresCluster::shared().start();
        });
}

TEST_F(BokforBruddTest, ARestartUnderEightRunsCostsNothing)
{
    for (int round = 0; round < rounds(2) && !HasFailure(); ++round)
        postDisturbed(8, [] {
            PostgresCluster::shared().stop();
            PostgresCluster::shared().start();
        });
}

TEST_F(BokforBruddTest, WhatACrashOfTheServerCostsIsFound)
{
    for (int round = 0; round < rounds(2) && !HasFailure(); ++round) {
        runDisturbed(2, [] {
            PostgresCluster::shared().crash();
            PostgresCluster::shared().start();
        });
        const QStringList findings = KontrollerBoker();
        EXPECT_EQ(findings.isEmpty(), booksAreWhole(kInvoices))
            << findings.join(u'\n').toStdString();
    }
}
