#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

/// Files of this process grow to `bytes` at most while it lives, as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_handler = signal(SIGXFSZ, SIG_IGN);
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &m_before), 0);
        const rlimit limit{bytes, m_before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit()
    {
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &m_before), 0);
        signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};
