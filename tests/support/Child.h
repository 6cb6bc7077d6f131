#pragma once

#include <cerrno>
#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

/// Reads the next byte of a pipe; false at its end. The end of any child interrupts a process that
/// has used Qt's, so calls that wait are begun again here.
inline bool readByte(int pipe, char &byte)
{
    return TEMP_FAILURE_RETRY(::read(pipe, &byte, 1)) == 1;
}

/// A process that runs `work` and exits with what it returns, at most so many `seconds` long. An
/// open standard stream of the parent is never flushed by it.
class Child
{
public:
    explicit Child(const std::function<int()> &work, unsigned seconds = 30) : m_id(::fork())
    {
        if (m_id == 0) {
            ::alarm(seconds);
            ::_exit(work());
        }
    }
    ~Child() { wait(); }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    /// Ends it at once, wherever it is in its work.
    void kill()
    {
        if (m_id > 0)
            ::kill(m_id, SIGKILL);
        wait();
    }

    /// What `work` returned, or -1 when the process died or was never made.
    int wait()
    {
        if (m_id > 0) {
            int status = 0;
            if (TEMP_FAILURE_RETRY(::waitpid(m_id, &status, 0)) == m_id && WIFEXITED(status))
                m_result = WEXITSTATUS(status);
            m_id = -1;
        }
        return m_result;
    }

private:
    pid_t m_id;
    int m_result = -1;
};
