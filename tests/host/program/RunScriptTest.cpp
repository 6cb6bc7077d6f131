#include "host/program/HostTest.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

/// The script of a newcomer, in a folder where everything is built already.
class RunScriptTest : public HostTest
{
protected:
    RunScriptTest()
    {
        const QDir folder(path(QString()));
        EXPECT_TRUE(folder.mkpath(u"scripts"_s));
        EXPECT_TRUE(folder.mkpath(u"build/release/bin"_s));
        EXPECT_TRUE(QFile::copy(QStringLiteral(RUN_SCRIPT), path(u"run"_s)));
        EXPECT_TRUE(QFile::link(programFile(), path(u"build/release/bin/strekkbok-vert"_s)));
        write(u"scripts/setup.sh"_s,
              "root=$(cd \"$(dirname \"${BASH_SOURCE[0]}\")/..\" && pwd -P)\n"
              "say() { printf '== %s\\n' \"$*\" >&2; }\n"
              "install_missing() { :; }\n"
              "build() { :; }\n");
    }
    [[nodiscard]] Outcome run(const QStringList &options = {}) const
    {
        return start(path(u"run"_s), options);
    }
    void expectTourOfTheScreens(const Outcome &outcome) const
    {
        EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
        EXPECT_TRUE(outcome.out.contains("EHF skrevet: ")) << outcome.out.toStdString();
        EXPECT_TRUE(outcome.out.contains("Turen er ferdig.")) << outcome.out.toStdString();
        EXPECT_TRUE(QFile::exists(path(u"demo-ut/tur/01-hovedmeny.png"_s)));
        EXPECT_TRUE(QFile::exists(path(u"demo-ut/strekkbok.db"_s)));
    }
};

TEST_F(RunScriptTest, WithoutADisplayGoesThroughTheScreens)
{
    const Outcome outcome = run();
    expectTourOfTheScreens(outcome);
    EXPECT_TRUE(outcome.err.contains(u"No display here"_s)) << outcome.err.toStdString();
}

TEST_F(RunScriptTest, WithADeadDisplayGoesThroughTheScreensToo)
{
    environment.insert(u"DISPLAY"_s, u":9717"_s);
    const Outcome outcome = run();
    expectTourOfTheScreens(outcome);
    EXPECT_TRUE(outcome.err.contains(u"ingen skjerm svarer (DISPLAY=:9717)"_s));
}

TEST_F(RunScriptTest, AFailureEndsIt)
{
    write(u"demo-ut"_s, "en fil i veien");
    const Outcome outcome = run();
    EXPECT_EQ(outcome.status, 1) << ::testing::PrintToString(outcome);
    EXPECT_FALSE(outcome.out.contains("Turen"));
}

TEST_F(RunScriptTest, OptionsGoOnToTheProgram)
{
    const Outcome outcome = run({u"--sql"_s, u"SELECT 1"_s, u"--dsn"_s, u"mangler.db"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains(u"mangler.db"_s)) << outcome.err.toStdString();
}

} // namespace
