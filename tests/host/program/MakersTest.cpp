#include "host/program/HostTest.h"

#include <QFile>
#include <QProcess>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// What a program prints into while nobody reads: a pipe with so little room that the program
/// stands still when it is used up.
class NarrowPipe
{
public:
    explicit NarrowPipe(qsizetype room) : m_path(m_folder.filePath(u"utskrift"_s))
    {
        const QByteArray name = QFile::encodeName(m_path);
        EXPECT_EQ(::mkfifo(name.constData(), 0600), 0);
        m_pipe = ::open(name.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
        m_filled = ::fcntl(m_pipe, F_SETPIPE_SZ, 4096) - room;
        EXPECT_EQ(::write(m_pipe, QByteArray(m_filled, '\n').constData(),
                          static_cast<std::size_t>(m_filled)),
                  m_filled);
    }
    ~NarrowPipe() { ::close(m_pipe); }
    NarrowPipe(const NarrowPipe &) = delete;
    NarrowPipe &operator=(const NarrowPipe &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] bool holdsSomething() const
    {
        int bytes = 0;
        EXPECT_EQ(::ioctl(m_pipe, FIONREAD, &bytes), 0);
        return bytes > m_filled;
    }
    /// Makes room for all that may still come.
    void empty() const
    {
        char bytes[4096];
        while (::read(m_pipe, bytes, sizeof bytes) > 0) {
        }
    }

private:
    QTemporaryDir m_folder;
    const QString m_path;
    int m_pipe = -1;
    qsizetype m_filled = 0;
};

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
        maker.setStandardOutputFile(m_output.path());
        maker.start(programFile(), m_demo);
        while (!m_output.holdsSomething())
            ASSERT_FALSE(maker.waitForFinished(1)) << maker.readAllStandardError().toStdString();
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
