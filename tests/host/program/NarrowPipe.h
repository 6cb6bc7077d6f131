#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

/// What a program prints into while nobody reads: a pipe with so little room that the program
/// stands still when it is used up.
class NarrowPipe
{
public:
    explicit NarrowPipe(qsizetype room) : m_path(m_folder.filePath(QStringLiteral("utskrift")))
    {
        const QByteArray name = QFile::encodeName(m_path);
        EXPECT_EQ(::mkfifo(name.constData(), 0600), 0);
        m_pipe = ::open(name.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
        m_filled = ::fcntl(m_pipe, F_SETPIPE_SZ, kSize) - room;
        EXPECT_EQ(::write(m_pipe, QByteArray(m_filled, '\n').constData(),
                          static_cast<std::size_t>(m_filled)),
                  m_filled);
    }
    ~NarrowPipe() { ::close(m_pipe); }
    NarrowPipe(const NarrowPipe &) = delete;
    NarrowPipe &operator=(const NarrowPipe &) = delete;

    /// Starts a program that prints into it, and returns when it has printed something. It stands
    /// still then, or soon.
    void holdUp(QProcess &process, const QString &program, const QStringList &arguments) const
    {
        process.setStandardOutputFile(m_path);
        process.start(program, arguments);
        while (!holdsSomething())
            ASSERT_FALSE(process.waitForFinished(1))
                << process.readAllStandardError().toStdString();
    }
    /// Makes room for all that may still come, and returns what was printed.
    QByteArray empty()
    {
        QByteArray all;
        char bytes[kSize];
        for (ssize_t count = 0; (count = ::read(m_pipe, bytes, sizeof bytes)) > 0;)
            all.append(bytes, count);
        return all.sliced(std::exchange(m_filled, 0));
    }

private:
    static constexpr int kSize = 4096;

    [[nodiscard]] bool holdsSomething() const
    {
        int bytes = 0;
        EXPECT_EQ(::ioctl(m_pipe, FIONREAD, &bytes), 0);
        return bytes > m_filled;
    }
    QTemporaryDir m_folder;
    const QString m_path;
    int m_pipe = -1;
    qsizetype m_filled = 0;
};
