#include "host/program/HostTest.h"
#include "host/program/NarrowPipe.h"

#include <QFile>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

/// Programs that make the same new database, one of them caught in the middle of it.
class MakersTest : public HostTest
{
protected:
    const QStringList m_demo{u"--demo"_s, u"--dsn"_s, u"demo.db"_s, u"--aar"_s, u"2014"_s};

    /// Room for the line that tells of the parent's tables, and not for the next one, which comes
    /// before the orders are made.
    NarrowPipe m_output{path(u"demo.db"_s).toUtf8().size() + 60};

    /// Starts a maker of demo.db and waits until it stands between those lines.
    void startToTheMidst(QProcess &maker) const
    {
        prepare(maker);
        m_output.holdUp(maker, programFile(), m_demo);
    }
    void expectDemo() const
    {
        EXPECT_EQ(single(u"SELECT COUNT (*) FROM Ordre"_s), u"60"_s);
        EXPECT_EQ(single(u"SELECT COUNT (*) FROM Klient"_s), u"1"_s);
        EXPECT_EQ(files(), QStringList{u"demo.db"_s});
    }
};

TEST_F(MakersTest, ASecondMakerIsToldAndTheFirstGoesOn)
{
    QProcess first;
    ASSERT_NO_FATAL_FAILURE(startToTheMidst(first));
    expectRefusal(host(m_demo), 1, u"et annet program lager den samme databasen nå"_s);

    m_output.empty();
    ASSERT_TRUE(first.waitForFinished(-1));
    EXPECT_EQ(first.exitCode(), 0) << first.readAllStandardError().toStdString();
    expectDemo();
    expectRefusal(host(m_demo), 1, u"finnes og har innhold"_s);
    expectDemo();
}

TEST_F(MakersTest, OfTwoAtOnceOneMakesAndOneIsTold)
{
    for (int round = 0; round < 5; ++round) {
        QProcess makers[2];
        for (QProcess &maker : makers) {
            prepare(maker);
            maker.start(programFile(), m_demo);
        }
        int made = 0;
        for (QProcess &maker : makers) {
            ASSERT_TRUE(maker.waitForFinished(-1));
            ASSERT_EQ(maker.exitStatus(), QProcess::NormalExit);
            const QByteArray error = maker.readAllStandardError();
            if (maker.exitCode() == 0) {
                ++made;
                EXPECT_EQ(error, QByteArray());
            } else {
                EXPECT_EQ(maker.exitCode(), 1);
                EXPECT_EQ(error.count('\n'), 1) << error.toStdString();
            }
        }
        EXPECT_EQ(made, 1);
        expectDemo();
        QFile::remove(path(u"demo.db"_s));
    }
}

TEST_F(MakersTest, WhatAKilledMakerLeftIsMadeAnew)
{
    QProcess killed;
    ASSERT_NO_FATAL_FAILURE(startToTheMidst(killed));
    killed.kill();
    ASSERT_TRUE(killed.waitForFinished(-1));
    EXPECT_EQ(killed.exitStatus(), QProcess::CrashExit);
    EXPECT_TRUE(files().contains(u"demo.db"_s));

    const Outcome anew = host(m_demo);
    EXPECT_EQ(anew.status, 0) << ::testing::PrintToString(anew);
    EXPECT_EQ(anew.err, QString());
    expectDemo();
}

} // namespace
