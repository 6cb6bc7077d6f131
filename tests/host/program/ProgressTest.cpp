#include "host/tasks/Progress.h"

#include "host/tasks/HostError.h"
#include "support/StandingClock.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// A file in the place of one of this process's own, while it lives.
class InPlaceOf
{
public:
    InPlaceOf(int own, int file) : m_own(own), m_kept(::fcntl(own, F_DUPFD_CLOEXEC, 0))
    {
        ::dup2(file, own);
    }
    ~InPlaceOf()
    {
        ::dup2(m_kept, m_own);
        ::close(m_kept);
    }
    InPlaceOf(const InPlaceOf &) = delete;
    InPlaceOf &operator=(const InPlaceOf &) = delete;

private:
    const int m_own;
    const int m_kept;
};

/// Two ends: what is written to the one is read from the other.
class Ends
{
public:
    /// A terminal that shows what it is given as it is, or a pipe.
    explicit Ends(bool terminal)
    {
        termios raw{};
        ::cfmakeraw(&raw);
        EXPECT_EQ(terminal ? ::openpty(&m_ends[0], &m_ends[1], nullptr, &raw, nullptr)
                           : ::pipe2(m_ends.data(), O_CLOEXEC),
                  0);
    }
    ~Ends()
    {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }
    Ends(const Ends &) = delete;
    Ends &operator=(const Ends &) = delete;

    [[nodiscard]] int input() const { return m_ends[1]; }
    /// What has been written since it was last asked.
    QString written()
    {
        constexpr char kMark = '#';
        EXPECT_EQ(::write(m_ends[1], &kMark, 1), 1);
        QByteArray text;
        char byte = 0;
        while (::read(m_ends[0], &byte, 1) == 1 && byte != kMark)
            text += byte;
        return QString::fromUtf8(text);
    }

private:
    std::array<int, 2> m_ends{};
};

class ProgressTest : public ::testing::Test
{
protected:
    /// A task of 10,000 invoices whose messages go to `errors`.
    void begin(Ends &errors)
    {
        m_errors.emplace(STDERR_FILENO, errors.input());
        m_progress = std::make_unique<Progress>([this](const QString &line) { m_lines += line; });
        m_progress->begin(10000, u"fakturaer"_s, u"er skrevet"_s);
    }
    void end() { m_progress.reset(); }
    /// What ends the task, if anything does.
    std::optional<HostError> after(qint64 done)
    {
        try {
            m_progress->at(done);
            return std::nullopt;
        } catch (const HostError &error) {
            return error;
        }
    }

    StandingClock m_clock;
    Ends m_terminal{true};
    std::optional<InPlaceOf> m_errors;
    std::unique_ptr<Progress> m_progress;
    QStringList m_lines;
};

struct sigaction handling(int signal)
{
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    return action;
}

} // namespace

TEST_F(ProgressTest, IsToldTwiceASecondInOneLineThatGoesAgain)
{
    begin(m_terminal);
    after(1);
    EXPECT_EQ(m_terminal.written(), QString()) << "a short task tells nothing";
    m_clock.sleep(500);
    after(1250);
    EXPECT_EQ(m_terminal.written(), u"\r1 250 av 10 000 fakturaer …"_s);
    m_clock.sleep(499);
    after(1300);
    EXPECT_EQ(m_terminal.written(), QString());
    m_clock.sleep(1);
    after(10000);
    EXPECT_EQ(m_terminal.written(), u"\r10 000 av 10 000 fakturaer …"_s);
    end();
    EXPECT_EQ(m_terminal.written(), u'\r' + QString(28, u' ') + u'\r');
}

TEST_F(ProgressTest, AShorterLineLeavesNothingOfALongerOne)
{
    begin(m_terminal);
    m_clock.sleep(500);
    after(1250);
    EXPECT_EQ(m_terminal.written(), u"\r1 250 av 10 000 fakturaer …"_s);
    m_progress->begin(11, u"kontroller"_s, u"er gjort"_s);
    m_clock.sleep(500);
    after(2);
    EXPECT_EQ(m_terminal.written(),
              u"\r2 av 11 kontroller …"_s + QString(7, u' ') + u"\r2 av 11 kontroller …"_s);
}

TEST_F(ProgressTest, ALineOfTheTaskTakesItsPlace)
{
    begin(m_terminal);
    const auto tell = [this] {
        m_clock.sleep(500);
        after(1250);
        m_progress->say(u"Faktura-1001.xml"_s);
    };
    tell();
    EXPECT_EQ(m_terminal.written(),
              u"\r1 250 av 10 000 fakturaer …"_s + u'\r' + QString(27, u' ') + u'\r');
    after(1251);
    EXPECT_EQ(m_terminal.written(), QString());
    {
        // On a terminal the line is a sign itself.
        const InPlaceOf output(STDOUT_FILENO, m_terminal.input());
        end();
        begin(m_terminal);
        tell();
    }
    m_terminal.written();
    m_clock.sleep(499);
    after(1252);
    EXPECT_EQ(m_terminal.written(), QString());
    EXPECT_EQ(m_lines, QStringList(2, u"Faktura-1001.xml"_s));
}

TEST_F(ProgressTest, IsToldToATerminalAlone)
{
    Ends pipe(false);
    begin(pipe);
    m_clock.sleep(5000);
    after(1250);
    m_progress->say(u"Faktura-1001.xml"_s);
    end();
    EXPECT_EQ(pipe.written(), QString());
}

TEST_F(ProgressTest, SignalsEndTheTaskAtItsNextStep)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        begin(m_terminal);
        m_clock.sleep(500);
        EXPECT_FALSE(after(1249));
        ::raise(signal);
        const std::optional<HostError> end = after(1250);
        ASSERT_TRUE(end);
        EXPECT_EQ(end->status(), 128 + signal);
        EXPECT_EQ(end->line(), u"avbrutt: 1 250 av 10 000 fakturaer er skrevet"_s);
        EXPECT_EQ(handling(signal).sa_handler, SIG_DFL) << "a second one ends the program";
        this->end();
        EXPECT_TRUE(m_terminal.written().endsWith(u" \r"_s));
    }
}

TEST_F(ProgressTest, AfterItSignalsDoWhatTheyDidBefore)
{
    ASSERT_EQ(handling(SIGINT).sa_handler, SIG_DFL);
    ::signal(SIGTERM, SIG_IGN);
    begin(m_terminal);
    EXPECT_NE(handling(SIGINT).sa_handler, SIG_DFL);
    EXPECT_EQ(handling(SIGTERM).sa_handler, SIG_IGN) << "who ignores it goes on doing so";
    end();
    EXPECT_EQ(handling(SIGINT).sa_handler, SIG_DFL);
    EXPECT_EQ(handling(SIGTERM).sa_handler, SIG_IGN);
    ::signal(SIGTERM, SIG_DFL);
}
