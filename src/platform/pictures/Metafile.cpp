#include "platform/pictures/Metafile.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kLongerSide = 1200;            // pixels
constexpr rlim_t kMostMemory = 256ull << 20; // bytes
constexpr rlim_t kMostTime = 10;             // seconds of the processor

void setLimits()
{
    const rlimit memory{kMostMemory, kMostMemory};
    ::setrlimit(RLIMIT_AS, &memory);
    const rlimit time{kMostTime, kMostTime};
    ::setrlimit(RLIMIT_CPU, &time);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
}

} // namespace

bool isMetafile(const QByteArray &beginning)
{
    // The mark of the header with a size; or in memory or on disk, nine words of header, and the
    // version.
    return beginning.startsWith("\xd7\xcd\xc6\x9a") ||
           beginning.startsWith(QByteArrayView("\x01\x00\x09\x00\x00", 5)) ||
           beginning.startsWith(QByteArrayView("\x02\x00\x09\x00\x00", 5));
}

QImage drawMetafile(const QString &systemPath, int patience)
{
    const QString converter = QStandardPaths::findExecutable(u"wmf2gd"_s);
    if (converter.isEmpty())
        return {};
    QProcess process;
    process.setChildProcessModifier(setLimits);
    process.setStandardErrorFile(QProcess::nullDevice());
    const QString side = QString::number(kLongerSide);
    process.start(converter, {u"-t"_s, u"png"_s, u"--maxpect"_s, u"--maxwidth="_s + side,
                              u"--maxheight="_s + side, QFileInfo(systemPath).absoluteFilePath()});
    if (!process.waitForFinished(patience)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {};
    return QImage::fromData(process.readAllStandardOutput(), "PNG");
}
