#include "posting/run/Bokkontroll.h"

#include "platform/ado/Connection.h"
#include "posting/run/BokforTest.h"
#include "posting/run/Bokfortur.h"
#include "support/StandingClock.h"

using namespace Qt::StringLiterals;

namespace {

/// A clock under which another workstation comes to the end of its run as soon as somebody waits.
class RunEnds final : public StandingClock
{
public:
    explicit RunEnds(std::function<void()> end) : m_end(std::move(end)) {}
    void sleep(int milliseconds) override
    {
        StandingClock::sleep(milliseconds);
        if (const auto end = std::exchange(m_end, {}))
            end();
    }

private:
    std::function<void()> m_end;
};

/// The check of the books where others work in the same database. Invoice 101 is posted.
class BokkontrollTest : public BokforTest
{
protected:
    BokkontrollTest()
    {
        run(u"INSERT INTO Kontoplan (KlientNr,KontoNr) VALUES (5,1500)"_s);
        legg({.nr = 101, .linjer = {{u"25"_s, u"125.00"_s}}});
        kjor();
        skjerm.rader.clear();
        EXPECT_EQ(KontrollerBoker(), QStringList());
    }

    void addVoucher(int nr)
    {
        run(u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato,Tekst,BilagType,AntPost,Aar) VALUES "
            u"(5,%1,#03/09/2014#,'Faktura','Faktura',1,2014)"_s.arg(nr));
    }
    /// The lines of the last voucher.
    void addLines()
    {
        const QString bilag = rows(u"SELECT Max(ID) FROM Bilag"_s).join(u',');
        for (const QString &line : {u"3000,0,125,Null"_s, u"1500,125,0,'X%1'"_s.arg(bilag)})
            run(u"INSERT INTO BilagLinjer (BilagID,Konto,Debet,Kredit,cFaktNr) VALUES (%1,%2)"_s
                    .arg(bilag, line));
    }
};

} // namespace

TEST_F(BokkontrollTest, ARunThatIsUnderWayIsNoFault)
{
    ado::Connection other;
    other.open(connectionString());
    ASSERT_TRUE(other.takeTurn());
    addVoucher(2);

    RunEnds clock([&] {
        addLines();
        other.close();
    });
    EXPECT_EQ(KontrollerBoker(), QStringList());
}

TEST_F(BokkontrollTest, AFaultIsToldThoughARunGoesOnForLong)
{
    ado::Connection other;
    other.open(connectionString());
    ASSERT_TRUE(other.takeTurn());
    addVoucher(2);

    const StandingClock clock;
    EXPECT_EQ(KontrollerBoker(),
              QStringList{u"bilag 2 skal ha 1 salgslinjer (AntPost), men har 0"_s});
}

TEST_F(BokkontrollTest, TellsHowFarItIs)
{
    std::vector<int> told;
    EXPECT_EQ(KontrollerBoker([&](int done, int all) {
                  EXPECT_EQ(all, 11);
                  told.push_back(done);
              }),
              QStringList());
    EXPECT_EQ(told, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST_F(BokkontrollTest, TheWaitForARunCanBeEnded)
{
    addVoucher(20); // a fault, so a run is waited for
    struct Ended
    {
    };
    int begun = 0;
    const auto endTheWait = [&](int done, int) {
        if (done == 0 && ++begun == 3)
            throw Ended();
    };
    {
        ado::Connection other;
        other.open(connectionString());
        ASSERT_TRUE(other.takeTurn());
        const RunEnds clock([] {});
        EXPECT_THROW(static_cast<void>(KontrollerBoker(endTheWait)), Ended);
        EXPECT_EQ(clock.sleeps.size(), 1U);
    }
    // The next one takes its turn as if nothing had been.
    const Bokfortur tur([] {});
    ado::Connection other;
    other.open(connectionString());
    EXPECT_FALSE(other.takeTurn());
}

TEST_F(BokkontrollTest, WhatComesWhileTheBooksAreReadIsLeftOut)
{
    // Whole vouchers and orders of another program, which knows of no turn.
    int coming = 2;
    bool comes = false;
    nekt = [&](const QString &statement) {
        if (comes || !statement.contains(u"INNER JOIN"))
            return;
        comes = true;
        addVoucher(coming);
        addLines();
        enter({.nr = 100 + coming, .linjer = {{u"25"_s, u"125.00"_s}}});
        ++coming;
        comes = false;
    };
    const StandingClock clock;
    EXPECT_EQ(KontrollerBoker(), QStringList());
    EXPECT_GT(coming, 2);
}

TEST_F(BokkontrollTest, PartsOfAnOreAreTold)
{
    run(u"UPDATE BilagLinjer SET Kredit=124.9999 WHERE Konto=3000"_s);
    const StandingClock clock;
    EXPECT_EQ(KontrollerBoker(),
              QStringList{u"bilag 1 går ikke i balanse: 0,0001 for mye i debet"_s});
}

TEST_F(BokkontrollTest, AGapIsToldHoweverWideItIs)
{
    enter({.nr = 2147483647, .linjer = {{u"25"_s, u"125.00"_s}}, .status = u"Ordre"_s});
    run(u"UPDATE Ordre SET OrdreNr=-5,OrdreStatus='Ordre' WHERE OrdreNr=101"_s);
    run(u"UPDATE BilagLinjer SET cFaktNr='F-5' WHERE cFaktNr='F101'"_s);
    const StandingClock clock;
    EXPECT_EQ(KontrollerBoker(), QStringList{u"ordrenummer -4 til 2147483646 mangler"_s});
}
