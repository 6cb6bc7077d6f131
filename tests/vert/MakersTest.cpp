#include "vert/HostTest.h"

#include <QFile>
#include <QProcess>

#include <csignal>
#include <sys/wait.h>

using namespace Qt::StringLiterals;

namespace {

/// Programs that make the same new database, one of them caught in the middle of it.
class MakersTest : public HostTest
{
protected:
    const QStringList m_demo{u"--demo"_s, u"--dsn"_s, u"demo.db"_s, u"--aar"_s, u"2014"_s};

    /// Stops the program. False when it came to its end first.
    static bool stop(const QProcess &process)
    {
        const auto id = static_cast<id_t>(process.processId());
        siginfo_t info = {};
        return kill(static_cast<pid_t>(id), SIGSTOP) == 0 &&
               waitid(P_PID, id, &info, WSTOPPED | WEXITED | WNOWAIT | __WALL) == 0 &&
               info.si_code == CLD_STOPPED;
    }
    /// Starts a maker of demo.db and stops it when it has told that the parent's tables are made,
    /// and not yet that the orders are. One that was too quick is started again.
    void startAndStop(QProcess &maker) const
    {
        prepare(maker);
        for (int attempt = 0; attempt < 20; ++attempt) {
            maker.start(programFile(), m_demo);
            ASSERT_TRUE(maker.waitForReadyRead());
            if (stop(maker) && !maker.readAllStandardOutput().contains("Demofirmaet"))
                return;
            kill(static_cast<pid_t>(maker.processId()), SIGCONT);
            maker.waitForFinished();
            QFile::remove(path(u"demo.db"_s));
        }
        FAIL() << "never caught in the middle";
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
    ASSERT_NO_FATAL_FAILURE(startAndStop(first));
    expectRefusal(host(m_demo), 1, u"et annet program lager den samme databasen nå"_s);

    kill(static_cast<pid_t>(first.processId()), SIGCONT);
    ASSERT_TRUE(first.waitForFinished());
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
            ASSERT_TRUE(maker.waitForFinished());
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
    ASSERT_NO_FATAL_FAILURE(startAndStop(killed));
    killed.kill();
    ASSERT_TRUE(killed.waitForFinished());
    EXPECT_EQ(killed.exitStatus(), QProcess::CrashExit);
    EXPECT_TRUE(files().contains(u"demo.db"_s));

    const Outcome anew = host(m_demo);
    EXPECT_EQ(anew.status, 0) << ::testing::PrintToString(anew);
    EXPECT_EQ(anew.err, QString());
    expectDemo();
}

} // namespace
