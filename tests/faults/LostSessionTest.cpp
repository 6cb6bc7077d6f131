#include "faults/Victim.h"
#include "faults/Work.h"
#include "support/ModuleTest.h"
#include "support/PostgresCluster.h"
#include "support/Rounds.h"

#include <memory>
#include <random>

using namespace Qt::StringLiterals;

namespace faults {

namespace {

constexpr int kOrdersOfProcess = 200; // of the task "save-orders"
constexpr int kLinesOfOrder = 3;

} // namespace

/// Orders that are saved while their sessions with the server are lost again and again: what is
/// told as saved is stored, whole and once.
class LostSessionTest : public testing::Test
{
protected:
    LostSessionTest() { prepareDatabase(m_database.connectionString()); }

    template<class Disturb>
    void saveDisturbed(int rounds, int apart, Disturb disturb)
    {
        std::mt19937 random(20140309);
        std::unique_ptr<Victim> saver;
        int saved = 0;
        for (int round = 0; round < rounds && !HasFailure();) {
            saver = std::make_unique<Victim>(u"save-orders"_s, m_database.connectionString());
            ASSERT_EQ(saver->next(), u"ready"_s);
            ASSERT_EQ(saver->next(), u"drawn"_s);
            saver->send();
            qsizetype due = saver->reports().size() + 1;
            for (qsizetype heard = due; const std::optional<QString> report = saver->next();
                 ++heard) {
                EXPECT_FALSE(report->startsWith(u"failed")) << report->toStdString();
                if (heard < due || round == rounds)
                    continue;
                disturb();
                ++round;
                // An order that is disturbed at each of its attempts is given up, so what was saved
                // before does not count.
                saver->watchUntil(QDeadlineTimer(1));
                due = saver->reports().size() + std::uniform_int_distribution(1, 2 * apart)(random);
            }
            EXPECT_EQ(saver->finish(), 0);
            EXPECT_EQ(saver->told(u"lost"_s), QStringList());
            EXPECT_EQ(saver->told(u"saved"_s).size(), kOrdersOfProcess);
            saved += kOrdersOfProcess;
            for (const QString &order : saver->told(u"saved"_s))
                EXPECT_EQ(
                    m_database.run(
                        u"SELECT COUNT(*) FROM \"Ordre\" o JOIN \"OrdreLinjer\" l ON "
                        u"l.\"OrdreID\" = o.\"ID\" WHERE \"OrdreNr\" = %1 AND o.\"ID\" = %2"_s.arg(
                            order.section(u'|', 0, 0), order.section(u'|', 1))),
                    QString::number(kLinesOfOrder))
                    << order.toStdString();
        }
        EXPECT_EQ(
            m_database.run(u"SELECT COUNT(*) FROM \"Ordre\" WHERE \"KundeNavn\" = 'Ny kunde AS'"_s),
            QString::number(saved));
        EXPECT_EQ(m_database.run(u"SELECT COUNT(*) FROM \"OrdreLinjer\" WHERE \"ProduktNavn\" = "
                                 u"'Ny linje'"_s),
                  QString::number(saved * kLinesOfOrder));
    }

    PostgresDatabase m_database;
};

TEST_F(LostSessionTest, TerminatedSessionsCostNoOrder)
{
    saveDisturbed(rounds(20), 4, [this] {
        m_database.run(u"SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = "
                       u"current_database() AND pid <> pg_backend_pid()"_s);
    });
}

TEST_F(LostSessionTest, RestartsCostNoOrder)
{
    saveDisturbed(rounds(3), 20, [] {
        PostgresCluster::shared().stop();
        PostgresCluster::shared().start();
    });
}

} // namespace faults
