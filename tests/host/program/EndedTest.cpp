#include "host/program/HostTest.h"
#include "host/program/NarrowPipe.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// Long tasks that are asked in the midst of them to end.
class EndedTest : public HostTest
{
protected:
    void SetUp() override { makeDemo(); }

    /// A task that prints, and gets the signal when it has told of something and has to wait until
    /// it can tell of more.
    [[nodiscard]] Outcome endedBy(int signal, const QStringList &arguments) const
    {
        NarrowPipe output(60);
        QProcess process;
        prepare(process);
        output.holdUp(process, programFile(), arguments);
        ::kill(pid_t(process.processId()), signal);
        Outcome outcome;
        outcome.out = output.empty();
        EXPECT_TRUE(process.waitForFinished(-1));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        outcome.status = process.exitCode();
        outcome.out += output.empty();
        outcome.err = QString::fromUtf8(process.readAllStandardError());
        return outcome;
    }
    [[nodiscard]] Outcome copyEndedBy(int signal) const
    {
        return endedBy(signal, {u"--kopier"_s, u"demo.db"_s, u"kopi.db"_s});
    }
};

} // namespace

TEST_F(EndedTest, ACopyLeavesNothing)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        const Outcome outcome = copyEndedBy(signal);
        EXPECT_EQ(outcome.status, 128 + signal);
        static const QRegularExpression sentence(
            u"^strekkbok-vert: avbrutt: \\d+ av \\d+ rader i \\w+ er kopiert, "
            "men ingenting er lagret\\n$"_s);
        EXPECT_TRUE(sentence.match(outcome.err).hasMatch()) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.out.startsWith("Klient: 1 rad\n")) << outcome.out.toStdString();
        EXPECT_FALSE(outcome.out.contains("OrdreLinjer")) << outcome.out.toStdString();
        EXPECT_EQ(files(), QStringList{u"demo.db"_s});
    }
    EXPECT_EQ(host({u"--kopier"_s, u"demo.db"_s, u"kopi.db"_s}).status, 0);
}

TEST_F(EndedTest, ACopyLeavesAnEmptyTargetEmpty)
{
    write(u"kopi.db"_s, {});
    EXPECT_EQ(copyEndedBy(SIGINT).status, 130);
    EXPECT_EQ(files(), (QStringList{u"demo.db"_s, u"kopi.db"_s}));
    EXPECT_EQ(content(u"kopi.db"_s), QByteArray());
}

TEST_F(EndedTest, AFolderHasWholeFilesAlone)
{
    for (const auto &[option, end] : {std::pair(u"--ehf3-alle"_s, QByteArray(">\n")),
                                      std::pair(u"--pdf-alle"_s, QByteArray("%%EOF\n"))}) {
        const QDir folder(path(option));
        ASSERT_TRUE(QDir().mkpath(folder.path()));
        const Outcome outcome = endedBy(SIGINT, {u"--dsn"_s, u"demo.db"_s, option, folder.path()});
        EXPECT_EQ(outcome.status, 130);
        const QStringList written = folder.entryList(QDir::Files | QDir::Hidden);
        EXPECT_FALSE(written.isEmpty());
        EXPECT_LT(written.size(), 30);
        EXPECT_EQ(outcome.err, u"strekkbok-vert: avbrutt: %1 av 52 fakturaer er skrevet\n"_s.arg(
                                   written.size()));
        for (const QString &name : written)
            EXPECT_TRUE(content(option + u'/' + name).endsWith(end)) << name.toStdString();
    }
}
