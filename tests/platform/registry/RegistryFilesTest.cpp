#include "platform/registry/Registry.h"

#include "support/Child.h"
#include "support/SettingsFolder.h"

#include <QDeadlineTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace registry;

namespace {

constexpr auto kSection = "Software\\Brennmark AS\\Strekkbok\\Regningsdel";
const QString kFile = u"Brennmark AS/Strekkbok.ini"_s;

qint32 write(QByteArrayView name, QByteArrayView text)
{
    Handle key = 0;
    const qint32 status = RegCreateKeyExA(HKEY_CURRENT_USER, kSection, KEY_ALL_ACCESS, &key);
    return status == ERROR_SUCCESS ? RegSetValueExA(key, name, REG_SZ, text) : status;
}

/// The value's text, or the status of the read in "<>".
std::string read(QByteArrayView name)
{
    Handle key = 0;
    QByteArray buffer(4096, ' ');
    quint32 size = quint32(buffer.size());
    qint32 status = RegOpenKeyExA(HKEY_CURRENT_USER, kSection, KEY_ALL_ACCESS, &key);
    if (status == ERROR_SUCCESS)
        status = RegQueryValueExA(key, name, nullptr, buffer.data(), &size);
    return status == ERROR_SUCCESS ? buffer.first(size).chopped(1).toStdString()
                                   : '<' + std::to_string(status) + '>';
}

/// How many bytes this process has read so far, as the kernel counts them.
qint64 bytesRead()
{
    QFile counts(u"/proc/self/io"_s);
    if (!counts.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray line = counts.readLine(); // "rchar: 4711"
    return line.mid(line.indexOf(' ')).trimmed().toLongLong();
}

/// Rights that only hold against a user who is not the superuser.
void dropRights()
{
    if (::getuid() == 0 && ::setuid(65534) != 0)
        ::_exit(99);
}

class RegistryFiles : public ::testing::Test
{
protected:
    RegistryFiles()
    {
        // For the processes without rights.
        ::chmod(m_folder.path().toUtf8().constData(), 0777);
    }
    void setMode(const QString &name, mode_t mode) const
    {
        ASSERT_EQ(::chmod(m_folder.filePath(name).toUtf8().constData(), mode), 0);
    }
    [[nodiscard]] QStringList files() const
    {
        return QDir(m_folder.filePath(u"Brennmark AS"_s)).entryList(QDir::Files | QDir::Hidden);
    }

    SettingsFolder m_folder;
};

} // namespace

TEST_F(RegistryFiles, NoTemporaryFileRemains)
{
    ASSERT_EQ(write("a", "1"), ERROR_SUCCESS);
    ASSERT_EQ(write("b", "2"), ERROR_SUCCESS);
    EXPECT_EQ(files(), (QStringList{u"Strekkbok.ini"_s, u"Strekkbok.ini.lock"_s}));
}

TEST_F(RegistryFiles, AFileSpoiltByHandLosesNothingElse)
{
    const char spoilt[] = "\0\xff\xfe junk\n[Regningsdel\nb=2\n[Regningsdel]\n=\n"
                          "a=dword:zz\nc=3\n\n; slutt\n";
    m_folder.write(kFile, QByteArray(spoilt, sizeof spoilt - 1));
    EXPECT_EQ(read("a"), "<2>");
    EXPECT_EQ(read("b"), "<2>");
    EXPECT_EQ(read("c"), "3");
    ASSERT_EQ(write("a", "1"), ERROR_SUCCESS);
    EXPECT_EQ(m_folder.content(kFile), "[Regningsdel]\na=1\nc=3\n");
}

TEST_F(RegistryFiles, ABinaryFileIsNoTrouble)
{
    QByteArray junk;
    for (int i = 0; i < 100000; ++i)
        junk += char(i * 7919 % 256);
    m_folder.write(kFile, junk);
    EXPECT_EQ(read("a"), "<2>");
    ASSERT_EQ(write("a", "1"), ERROR_SUCCESS);
    EXPECT_EQ(read("a"), "1");
}

TEST_F(RegistryFiles, WhatIsNoFileIsRefused)
{
    ASSERT_TRUE(QDir().mkpath(m_folder.filePath(kFile)));
    EXPECT_EQ(read("a"), "<5>");
    EXPECT_EQ(write("a", "1"), ERROR_ACCESS_DENIED);
    ASSERT_TRUE(QDir().rmdir(m_folder.filePath(kFile)));
    ASSERT_EQ(::mkfifo(m_folder.filePath(kFile).toUtf8().constData(), 0666), 0);
    EXPECT_EQ(read("a"), "<5>");
    EXPECT_EQ(write("a", "1"), ERROR_ACCESS_DENIED);
}

TEST_F(RegistryFiles, AnOversizedFileIsRefusedAndKept)
{
    m_folder.write(kFile, "[Regningsdel]\na=1\n");
    QFile file(m_folder.filePath(kFile));
    ASSERT_TRUE(file.resize(17 * 1024 * 1024)); // a hole, no data
    EXPECT_EQ(read("a"), "<5>");
    EXPECT_EQ(write("a", "2"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(file.size(), 17 * 1024 * 1024);
}

TEST_F(RegistryFiles, AValueThatWouldMakeTheFileTooLargeIsRefused)
{
    ASSERT_EQ(write("Avrunding", "1"), ERROR_SUCCESS);
    EXPECT_EQ(write("FakturaTekst1", QByteArray(17 * 1024 * 1024, 'x')), ERROR_ACCESS_DENIED);
    EXPECT_EQ(read("Avrunding"), "1");
    EXPECT_EQ(read("FakturaTekst1"), "<2>");
    EXPECT_EQ(write("Avrunding", "2"), ERROR_SUCCESS);
}

TEST_F(RegistryFiles, AFileInTheFoldersPlaceIsRefused)
{
    m_folder.write(u"fil"_s, "x");
    SettingsFolder::use(m_folder.filePath(u"fil"_s));
    EXPECT_EQ(read("a"), "<2>");
    EXPECT_EQ(write("a", "1"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(m_folder.content(u"fil"_s), "x");
}

TEST_F(RegistryFiles, AnUnreadableFileIsKept)
{
    m_folder.write(kFile, "[Regningsdel]\na=1\n");
    setMode(u"Brennmark AS"_s, 0777);
    setMode(kFile, 0000);
    Child user([] {
        dropRights();
        return read("a") == "<5>" && write("a", "2") == ERROR_ACCESS_DENIED ? 0 : 1;
    });
    EXPECT_EQ(user.wait(), 0);
    setMode(kFile, 0600);
    EXPECT_EQ(m_folder.content(kFile), "[Regningsdel]\na=1\n");
}

TEST_F(RegistryFiles, AnUnreadableFolderGivesNothingAndTakesNothing)
{
    m_folder.write(kFile, "[Regningsdel]\na=1\n");
    setMode(u"Brennmark AS"_s, 0000);
    Child user([] {
        dropRights();
        return read("a") == "<2>" && write("a", "2") == ERROR_ACCESS_DENIED ? 0 : 1;
    });
    EXPECT_EQ(user.wait(), 0);
    setMode(u"Brennmark AS"_s, 0700);
    EXPECT_EQ(m_folder.content(kFile), "[Regningsdel]\na=1\n");
}

TEST_F(RegistryFiles, AReadOnlyFolderIsStillRead)
{
    m_folder.write(kFile, "[Regningsdel]\na=1\n");
    setMode(u"Brennmark AS"_s, 0555);
    Child user([] {
        dropRights();
        return read("a") == "1" && write("a", "2") == ERROR_ACCESS_DENIED ? 0 : 1;
    });
    EXPECT_EQ(user.wait(), 0);
    EXPECT_EQ(m_folder.content(kFile), "[Regningsdel]\na=1\n");
}

TEST_F(RegistryFiles, AFullDiskLeavesTheFileAsItWas)
{
    ASSERT_EQ(write("a", QByteArray(3000, 'x')), ERROR_SUCCESS);
    const QByteArray before = m_folder.content(kFile);
    Child user([] {
        // No file may grow beyond this: writing fails as it does without room on the disk.
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{2000, 2000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return write("b", "2") == ERROR_ACCESS_DENIED && read("a").size() == 3000 ? 0 : 1;
    });
    EXPECT_EQ(user.wait(), 0);
    EXPECT_EQ(m_folder.content(kFile), before);
    EXPECT_EQ(files(), (QStringList{u"Strekkbok.ini"_s, u"Strekkbok.ini.lock"_s}));
}

TEST_F(RegistryFiles, ALockThatIsNeverReleasedIsNotWaitedForWithoutEnd)
{
    ASSERT_EQ(write("verdi", "1"), ERROR_SUCCESS);
    const QByteArray before = m_folder.content(kFile);
    const int lock = ::open(QFile::encodeName(m_folder.filePath(kFile) + u".lock"_s).constData(),
                            O_RDWR | O_CLOEXEC);
    ASSERT_GE(lock, 0);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    EXPECT_EQ(write("verdi", "2"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(m_folder.content(kFile), before);
    EXPECT_EQ(read("verdi"), "1"); // reading needs no lock
    ::close(lock);
    EXPECT_EQ(write("verdi", "2"), ERROR_SUCCESS);
}

TEST_F(RegistryFiles, AFileThatStaysTheSameIsReadOnce)
{
    ASSERT_EQ(write("verdi", "1"), ERROR_SUCCESS);
    QByteArray many = m_folder.content(kFile);
    for (int i = 0; i < 20'000; ++i)
        many += "navn" + QByteArray::number(i) + "=innhold\n";
    m_folder.write(kFile, many);
    const auto readByOne = [] {
        const qint64 before = bytesRead();
        EXPECT_EQ(read("verdi"), "1");
        return bytesRead() - before;
    };
    EXPECT_GT(readByOne(), many.size());
    // What has just been written may be written again without a trace in its times.
    const QDeadlineTimer deadline(std::chrono::seconds(20));
    qint64 last = many.size();
    while (last >= many.size() && !deadline.hasExpired())
        last = readByOne();
    EXPECT_LT(last, 10'000);
}

TEST_F(RegistryFiles, WhatAnotherProgramWritesIsSeenAtOnce)
{
    ASSERT_EQ(write("verdi", "0"), ERROR_SUCCESS);
    const QByteArray form = m_folder.content(kFile);
    for (int i = 0; i < 200; ++i) {
        // In place and of the same size, as an editor does it.
        const char digit = char('0' + i % 10);
        m_folder.write(kFile, QByteArray(form).replace("verdi=0", QByteArray("verdi=") + digit));
        ASSERT_EQ(read("verdi"), std::string(1, digit)) << i;
    }
    ASSERT_TRUE(QFile::remove(m_folder.filePath(kFile)));
    EXPECT_EQ(read("verdi"), "<2>");
}

TEST_F(RegistryFiles, TwoProcessesWritingLoseNothing)
{
    constexpr int kValues = 50;
    const auto writer = [](char mark) {
        return [mark] {
            for (int i = 0; i < kValues; ++i) {
                const QByteArray name = mark + QByteArray::number(i);
                if (write(name, name) != ERROR_SUCCESS || write("felles", name) != ERROR_SUCCESS)
                    return 1;
            }
            return 0;
        };
    };
    Child first(writer('a'));
    Child second(writer('b'));
    // A reader beside them meets whole files only.
    int torn = 0;
    for (int i = 0; i < kValues; ++i) {
        const std::string value = read("a0");
        torn += value != "a0" && value != "<2>" ? 1 : 0;
    }
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
    for (int i = 0; i < kValues; ++i) {
        const std::string number = std::to_string(i);
        EXPECT_EQ(read(("a" + number).c_str()), "a" + number);
        EXPECT_EQ(read(("b" + number).c_str()), "b" + number);
    }
}

TEST_F(RegistryFiles, TwoProcessesCreatingTheFirstKeyLoseNothing)
{
    for (int round = 0; round < 10; ++round) {
        Child first([] { return write("a", "1"); });
        Child second([] { return write("b", "2"); });
        ASSERT_EQ(first.wait(), 0);
        ASSERT_EQ(second.wait(), 0);
        ASSERT_EQ(read("a"), "1");
        ASSERT_EQ(read("b"), "2");
        ASSERT_TRUE(QDir(m_folder.filePath(u"Brennmark AS"_s)).removeRecursively());
    }
}

TEST_F(RegistryFiles, ALinkedFileStaysALink)
{
    m_folder.write(u"annet.ini"_s, "[Regningsdel]\na=1\n");
    ASSERT_TRUE(QDir().mkpath(m_folder.filePath(u"Brennmark AS"_s)));
    ASSERT_TRUE(QFile::link(m_folder.filePath(u"annet.ini"_s), m_folder.filePath(kFile)));
    ASSERT_EQ(write("a", "2"), ERROR_SUCCESS);
    EXPECT_TRUE(QFileInfo(m_folder.filePath(kFile)).isSymLink());
    EXPECT_EQ(m_folder.content(u"annet.ini"_s), "[Regningsdel]\na=2\n");
}
