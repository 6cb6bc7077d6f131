#include "desk/Desk.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kNumberPipe = 3; ///< where the server writes the number of its display

/// A program that dies with this one and is silent; `pipe` becomes its file `kNumberPipe`.
template<size_t N>
pid_t launch(const std::array<const char *, N> &words, int pipe = -1)
{
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent)
        ::_exit(EXIT_FAILURE);
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nothing, stream);
    if (pipe >= 0)
        ::dup2(pipe, kNumberPipe);
    std::array<char *, N + 1> arguments{};
    for (size_t i = 0; i < N; ++i)
        arguments[i] = const_cast<char *>(words[i]);
    ::execvp(arguments[0], arguments.data());
    ::_exit(EXIT_FAILURE);
}

void end(pid_t process)
{
    if (process <= 0)
        return;
    ::kill(process, SIGTERM);
    ::waitpid(process, nullptr, 0);
}

/// What comes through the pipe until its other end is closed or a line is whole.
QByteArray lineFrom(int pipe)
{
    QByteArray line;
    char letter = 0;
    while (::read(pipe, &letter, 1) == 1 && letter != '\n')
        line += letter;
    return line;
}

} // namespace

Desk::Desk()
{
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        m_reason = "no pipe to an X server";
        return;
    }
    // The commonest small screen, at the resolution that fonts are made for.
    m_server = launch(std::array{"Xvfb", "-displayfd", "3", "-screen", "0", "1366x768x24", "-dpi",
                                 "96", "-nolisten", "tcp", "-noreset"},
                      pipe[1]);
    ::close(pipe[1]);
    const QByteArray number = lineFrom(pipe[0]);
    ::close(pipe[0]);
    if (number.isEmpty()) {
        m_reason = "no X server can be had here (Xvfb)";
        return;
    }
    m_display = ':' + number;
    ::setenv("DISPLAY", m_display.constData(), 1);
    m_manager = launch(std::array{"openbox", "--sm-disable"});
}

Desk::~Desk()
{
    end(m_manager);
    end(m_server);
}
