#include "data/clsAdoUtils.h"
#include "faults/FailingVfs.h"
#include "faults/SqliteFile.h"
#include "faults/Work.h"
#include "host/parent/ParentTables.h"
#include "platform/ado/Connection.h"
#include "state/SharedState.h"
#include "support/ModuleTest.h"
#include "support/Rows.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace faults {

/// A SQLite file on a disk that stops taking what is written to it, and takes it again later.
class DiskFaultTest : public testing::Test
{
protected:
    ~DiskFaultTest() override { unloadModule(); }

    /// Saves the prepared order again. Which statements succeeded, and what the others were told.
    void save()
    {
        m_done.clear();
        m_errors.clear();
        Witness witness;
        witness.done = [this](const QString &effect) { m_done += effect; };
        witness.failed = [this](const QString &, const QString &error) { m_errors += error; };
        saveOrderAgain(witness);
    }
    [[nodiscard]] QStringList found() const
    {
        return foundEffects(m_file.connectionString(), effectsOfOrderAgain());
    }
    /// Whatever came before the fault, and whatever a later one did to the order.
    void expectWhole()
    {
        EXPECT_EQ(m_file.integrity(), u"ok"_s);
        EXPECT_EQ(rowsOf(m_file.connectionString(), u"SELECT COUNT (*),Min(OrdreNr) FROM Ordre"_s),
                  QStringList(u"26|1"_s));
    }
    /// The module on the mended disk.
    void expectUsable()
    {
        save();
        EXPECT_EQ(m_done, effectsOfOrderAgain());
        EXPECT_EQ(m_errors, QStringList());
        EXPECT_EQ(found(), m_done);
    }

    SqliteFile m_file;
    FailingVfs m_disk;
    QStringList m_done;
    QStringList m_errors;
};

TEST_F(DiskFaultTest, DiskFullAtAnyByteOfASave)
{
    startModule(m_file.connectionString());
    m_disk.mend();
    save();
    const qint64 all = m_disk.bytes();
    ASSERT_EQ(m_done, effectsOfOrderAgain());
    ASSERT_GT(all, 12 * 4096);

    constexpr qint64 step = 1999; // never at the same place of a page
    for (qint64 free = 0; free < all && !HasFailure(); free += step) {
        SCOPED_TRACE(free);
        unloadModule();
        m_file.restore();
        ASSERT_EQ(startModule(m_file.connectionString()), 1);
        m_disk.fillUpAfter(free);
        save();
        ASSERT_GT(m_errors.size(), 0);
        for (const QString &error : std::as_const(m_errors))
            EXPECT_EQ(error, u"-2147467259 - Disken er full; endringen er ikke lagret."_s);
        // Reading goes on, and finds exactly what was not refused.
        EXPECT_EQ(found(), m_done);
        expectWhole();
        if (free % 2 == 0) {
            // Loaded again before there is room.
            unloadModule();
            startModule(m_file.connectionString());
            EXPECT_EQ(found(), m_done);
        }
        m_disk.mend();
        expectWhole();
        expectUsable();
    }
}

TEST_F(DiskFaultTest, DiskThatFailsOrTurnsReadOnlyAtAnyChangeOfASave)
{
    startModule(m_file.connectionString());
    m_disk.mend();
    save();
    const qint64 all = m_disk.changes();
    ASSERT_EQ(m_done, effectsOfOrderAgain());

    struct Fault
    {
        int code;
        QString told;
    };
    const Fault faults[]{
        {SQLITE_IOERR_WRITE,
         u"-2147467259 - Databasefilen kan ikke leses eller skrives (feil 778)."_s},
        {SQLITE_READONLY, u"-2147217911 - Databasen er skrivebeskyttet."_s},
    };
    for (const Fault &fault : faults) {
        for (qint64 change = 0; change < all && !HasFailure(); ++change) {
            SCOPED_TRACE(std::to_string(fault.code) + " after " + std::to_string(change));
            unloadModule();
            m_file.restore();
            ASSERT_EQ(startModule(m_file.connectionString()), 1);
            m_disk.failAfter(change, fault.code);
            save();
            ASSERT_GT(m_errors.size(), 0);
            for (const QString &error : std::as_const(m_errors))
                EXPECT_EQ(error, fault.told);
            EXPECT_EQ(found(), m_done);
            expectWhole();
            m_disk.mend();
            expectUsable();
        }
    }
}

TEST_F(DiskFaultTest, SyncThatFailsAtAnyStatementOfASave)
{
    startModule(m_file.connectionString());
    m_disk.mend();
    save();
    const qint64 all = m_disk.syncs();
    // Each statement reached the disk before it was told as done.
    ASSERT_GE(all, effectsOfOrderAgain().size());

    for (qint64 sync = 0; sync < all && !HasFailure(); ++sync) {
        SCOPED_TRACE(sync);
        unloadModule();
        m_file.restore();
        ASSERT_EQ(startModule(m_file.connectionString()), 1);
        m_disk.failSyncAfter(sync, SQLITE_IOERR_FSYNC);
        save();
        ASSERT_GT(m_errors.size(), 0);
        for (const QString &error : std::as_const(m_errors))
            EXPECT_EQ(error,
                      u"-2147467259 - Databasefilen kan ikke leses eller skrives (feil 1034)."_s);
        EXPECT_EQ(found(), m_done);
        expectWhole();
        m_disk.mend();
        expectUsable();
    }
}

TEST_F(DiskFaultTest, LongListsAreSortedWithoutTheTemporaryFolder)
{
    constexpr int kMany = 30'000; // more than SQLite keeps of a file in memory
    ASSERT_EQ(startModule(m_file.connectionString()), 1);
    gConn->beginTrans();
    for (int nr = 1; nr <= kMany; ++nr)
        gConn->execute(u"INSERT INTO Produkt (KlientNr,ProduktNr,ProduktNavn) VALUES (5,'%1',"
                       u"'Kjøring med lang tekst, nummer %2 av mange')"_s.arg(nr)
                           .arg(nr * 7919 % kMany));
    gConn->commitTrans();
    m_disk.refuseTemporary();
    const Ref<ado::Recordset> sorted =
        gDB->GetRS(u"SELECT * FROM Produkt ORDER BY ProduktNavn"_s, true);
    EXPECT_EQ(gDB->LastError(), QString());
    ASSERT_TRUE(sorted);
    EXPECT_EQ(sorted->recordCount(), kMany);
    EXPECT_TRUE(gDB->Execute(u"UPDATE Produkt SET ProduktNavn='Alle like'"_s));
    EXPECT_EQ(gDB->LastError(), QString());
}

TEST_F(DiskFaultTest, DiskFullAtAnyChangeOfTheFirstStart)
{
    const auto makeParentsDatabase = [this] {
        unloadModule();
        m_disk.mend();
        m_file.clear();
        ado::Connection connection;
        connection.open(m_file.connectionString());
        createParentTables(connection);
    };
    makeParentsDatabase();
    m_disk.mend();
    ASSERT_EQ(startModule(m_file.connectionString()), 1);
    const qint64 all = m_disk.changes();

    for (qint64 change = 0; change < all && !HasFailure(); ++change) {
        SCOPED_TRACE(change);
        makeParentsDatabase();
        m_disk.failAfter(change, SQLITE_FULL);
        EXPECT_EQ(startModule(m_file.connectionString()), 0);
        EXPECT_EQ(m_file.integrity(), u"ok"_s);
        m_disk.mend();
        // As a user who has made room and starts once more.
        unloadModule();
        EXPECT_EQ(startModule(m_file.connectionString()), 1);
        // A first start is refused columns that its new tables have already; that is no fault here.
        static_cast<void>(gDB->LastError());
        EXPECT_EQ(saveNewOrder(kLines).error, QString());
        EXPECT_EQ(m_file.integrity(), u"ok"_s);
    }
}

} // namespace faults
