#include "data/clsAdoUtils.h"
#include "faults/Victim.h"
#include "faults/Work.h"
#include "platform/ado/Connection.h"
#include "state/SharedState.h"
#include "support/ModuleTest.h"
#include "support/PostgresCluster.h"
#include "support/StandingClock.h"

#include <libpq-fe.h>

using namespace Qt::StringLiterals;

namespace faults {

/// The server stopped and started under a running module.
class RestartTest : public testing::Test
{
protected:
    RestartTest() { prepareDatabase(connectionString()); }
    ~RestartTest() override { unloadModule(); }

    [[nodiscard]] QString connectionString() const { return m_database.connectionString(); }
    static void restart()
    {
        PostgresCluster::shared().stop();
        PostgresCluster::shared().start();
    }
    [[nodiscard]] QString stored(const QString &sql) const { return m_database.run(sql); }
    void waitForLockedStatement() const
    {
        while (stored(u"SELECT COUNT(*) FROM pg_stat_activity WHERE datname = current_database() "
                      u"AND wait_event_type = 'Lock'"_s) == u"0"_s) {
        }
    }

    PostgresDatabase m_database;
};

/// Another user, who holds a table while he lives.
class TableHolder
{
public:
    TableHolder(const PostgresDatabase &database, const char *lock)
        : m_connection(PQconnectdb(database.connectionString().sliced(4).toUtf8().constData()),
                       PQfinish)
    {
        PQclear(PQexec(m_connection.get(), "BEGIN"));
        PQclear(PQexec(m_connection.get(), lock));
        EXPECT_EQ(PQtransactionStatus(m_connection.get()), PQTRANS_INTRANS);
    }

private:
    std::unique_ptr<PGconn, void (*)(PGconn *)> m_connection;
};

TEST_F(RestartTest, RestartBetweenTwoStatementsIsNotSeen)
{
    ASSERT_EQ(startModule(connectionString()), 1);
    QStringList failures;
    Witness witness;
    witness.failed = [&](const QString &effect, const QString &error) {
        failures += effect + u": "_s + error;
    };
    for (int saved = 1; saved <= 3; ++saved) {
        EXPECT_EQ(saveNewOrder(kLines, witness).number, kInvoices + 1 + saved);
        restart();
        // By the connection that stays open, too.
        EXPECT_EQ(raised([] { static_cast<void>(gConn->openSchema(ado::SchemaList::Columns)); }),
                  0);
        restart();
    }
    EXPECT_EQ(failures, QStringList());
    EXPECT_EQ(gDB->LastError(), QString());
    EXPECT_EQ(gDB->GetCount(u"OrdreLinjer"_s, u"ProduktNavn='Ny linje'"_s), 3 * kLines);
}

TEST_F(RestartTest, RestartBelowAStatementIsItsErrorAndTheNextOneRuns)
{
    // The statement waits for the holder until the crash, however long that takes to come.
    Victim module(u"statements"_s, connectionString() + u"&options=-c%20lock_timeout%3D0"_s);
    ASSERT_EQ(module.next(), u"ready"_s);
    {
        const TableHolder holder(m_database, "LOCK TABLE \"Produkt\"");
        module.send(u"INSERT INTO Produkt (KlientNr,ProduktNr) VALUES (5,'A')"_s);
        waitForLockedStatement();
        // Not stopped: the holder's session could end first, and the statement would go through.
        PostgresCluster::shared().crash();
        const std::optional<QString> report = module.next();
        ASSERT_TRUE(report.has_value());
        EXPECT_TRUE(report->startsWith(u"failed -2147467259 - ")) << report->toStdString();
    }
    PostgresCluster::shared().start();
    module.send(u"INSERT INTO Produkt (KlientNr,ProduktNr) VALUES (5,'B')"_s);
    EXPECT_EQ(module.next(), u"done"_s);
    EXPECT_EQ(stored(u"SELECT \"ProduktNr\" FROM \"Produkt\""_s), u"B"_s);
}

TEST_F(RestartTest, PostingRunLosesTheStatementsOfTheOutageAndRepeatsNone)
{
    const StandingClock clock; // nobody waits for the server in earnest
    const QStringList plan = effectsOfPosting();
    constexpr int before = 2 * kStatementsPerInvoice + 3;
    constexpr int during = 3;
    ASSERT_EQ(startModule(connectionString()), 1);
    QStringList done;
    QStringList failed;
    const auto handled = [&] { return done.size() + failed.size(); };
    Witness witness;
    witness.starts = [&](const QString &) {
        if (handled() == before)
            PostgresCluster::shared().stop();
        if (handled() == before + during)
            PostgresCluster::shared().start();
    };
    witness.done = [&](const QString &effect) { done += effect; };
    witness.failed = [&](const QString &effect, const QString &) { failed += effect; };
    postInvoices(witness);

    EXPECT_EQ(failed, plan.sliced(before, during));
    EXPECT_EQ(done, plan.first(before) + plan.sliced(before + during));
    EXPECT_EQ(foundEffects(connectionString(), plan), done);
}

TEST_F(RestartTest, ServerThatIsDownIsToldAndFoundAgain)
{
    const StandingClock clock; // nobody waits for the server in earnest
    ASSERT_EQ(startModule(connectionString()), 1);
    const QString insert = u"INSERT INTO Produkt (KlientNr,ProduktNr) VALUES (5,'A')"_s;
    PostgresCluster::shared().stop();
    EXPECT_FALSE(gDB->Execute(insert));
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147467259 - Får ikke kontakt"));
    EXPECT_EQ(gDB->ExecuteID(insert), 0);
    EXPECT_NE(gDB->LastError(), QString());
    EXPECT_EQ(gDB->GetCount(u"Produkt"_s, {}), -1);
    EXPECT_NE(gDB->LastError(), QString());
    EXPECT_FALSE(gDB->GetRS(u"SELECT * FROM Produkt"_s, true));
    EXPECT_NE(gDB->LastError(), QString());
    unloadModule();
    EXPECT_EQ(startModule(connectionString()), 0);

    PostgresCluster::shared().start();
    EXPECT_EQ(startModule(connectionString()), 1);
    EXPECT_TRUE(gDB->Execute(insert));
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Produkt\""_s), u"1"_s);
}

} // namespace faults
