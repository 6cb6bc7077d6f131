#include "platform/registry/KeyPath.h"

#include "platform/registry/TextForm.h"
#include "runtime/CodePage.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace registry {

namespace {

/// Levels of the path that name the file: "Software", company, application.
constexpr qsizetype kFileLevels = 3;

constexpr std::array kRootNames{"HKEY_CLASSES_ROOT"_L1, "HKEY_CURRENT_USER"_L1,
                                "HKEY_LOCAL_MACHINE"_L1, "HKEY_USERS"_L1};

QString configurationFolder()
{
    const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    // A relative folder would move with the working directory; it counts as none.
    return QDir::isAbsolutePath(folder) ? QDir::cleanPath(folder)
                                        : QDir::homePath() + "/.config"_L1;
}

/// `folder`/`name`, spelt as it is on the disk when only the case differs there.
QString present(const QString &folder, const QString &name)
{
    QString exact = folder + u'/' + name;
    if (QFileInfo::exists(exact))
        return exact;
    const QStringList entries = QDir(folder).entryList(
        QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const QString &entry) {
        return entry.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == entries.end() ? exact : folder + u'/' + *found;
}

bool isSoftware(const KeyPath &path)
{
    return path.root == HKEY_CURRENT_USER && !path.levels.isEmpty() &&
           path.levels.first().compare("software"_L1, Qt::CaseInsensitive) == 0;
}

/// A level as the name of a file, which cannot be empty.
QString fileName(const QString &level)
{
    return level.isEmpty() ? u"%00"_s : escapedName(level);
}

QString companyFolder(const KeyPath &path)
{
    return present(configurationFolder(), fileName(path.levels[1]));
}

} // namespace

KeyPath KeyPath::below(QByteArrayView subKey) const
{
    QStringList names = nameFromBytes(subKey).split(u'\\');
    while (!names.isEmpty() && names.last().isEmpty())
        names.removeLast();
    return {root, levels + names};
}

bool KeyPath::isSame(const KeyPath &other) const
{
    return root == other.root &&
           levels.join(u'\\').compare(other.levels.join(u'\\'), Qt::CaseInsensitive) == 0;
}

QString nameFromBytes(QByteArrayView bytes)
{
    const qsizetype end = bytes.indexOf('\0');
    return codepage::decode(end < 0 ? bytes : bytes.first(end));
}

KeyPlace placeOf(const KeyPath &path)
{
    if (isSoftware(path) && path.levels.size() >= kFileLevels) {
        const QString folder = companyFolder(path);
        return {folder, present(folder, fileName(path.levels[2]) + ".ini"_L1),
                path.levels.sliced(kFileLevels).join(u'\\')};
    }
    const QString folder = configurationFolder();
    return {folder, folder + u'/' + kRootNames[path.root - HKEY_CLASSES_ROOT] + ".ini"_L1,
            path.levels.join(u'\\')};
}

bool isFixed(const KeyPath &path)
{
    if (path.levels.size() <= 1)
        return path.levels.isEmpty() || isSoftware(path);
    return isSoftware(path) && path.levels.size() == kFileLevels - 1 &&
           !QDir(companyFolder(path)).entryList({u"*.ini"_s}, QDir::Files | QDir::Hidden).isEmpty();
}

bool isRoot(Handle key)
{
    return key >= HKEY_CLASSES_ROOT && key - HKEY_CLASSES_ROOT < kRootNames.size();
}

} // namespace registry
