#include "platform/registry/KeyPath.h"

#include "platform/registry/TextForm.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace registry {

namespace {

/// Levels of the path that name the file: "Software", company, application.
constexpr qsizetype kFileLevels = 3;

QString configurationFolder()
{
    const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    // A relative folder would move with the working directory; it counts as none.
    return QDir::isAbsolutePath(folder) ? QDir::cleanPath(folder)
                                        : QDir::homePath() + "/.config"_L1;
}

QString rootName(Handle root)
{
    switch (root) {
    case HKEY_CLASSES_ROOT:
        return u"HKEY_CLASSES_ROOT"_s;
    case HKEY_CURRENT_USER:
        return u"HKEY_CURRENT_USER"_s;
    case HKEY_LOCAL_MACHINE:
        return u"HKEY_LOCAL_MACHINE"_s;
    case HKEY_USERS:
        return u"HKEY_USERS"_s;
    default:
        return {};
    }
}

/// `folder`/`name`, spelt as it is on the disk when only the case differs there.
QString present(const QString &folder, const QString &name)
{
    QString exact = folder + u'/' + name;
    if (QFileInfo::exists(exact))
        return exact;
    const QString folded = name.toCaseFolded();
    const QStringList entries = QDir(folder).entryList(
        QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &entry : entries) {
        if (entry.toCaseFolded() == folded)
            return folder + u'/' + entry;
    }
    return exact;
}

bool isSoftware(const KeyPath &path)
{
    return path.root == HKEY_CURRENT_USER && !path.levels.isEmpty() &&
           path.levels.first().toCaseFolded() == "software"_L1;
}

} // namespace

KeyPath KeyPath::below(QByteArrayView subKey) const
{
    const qsizetype end = subKey.indexOf('\0');
    QStringList names = nameFromBytes(end < 0 ? subKey : subKey.first(end)).split(u'\\');
    while (!names.isEmpty() && names.last().isEmpty())
        names.removeLast();
    return {root, levels + names};
}

bool KeyPath::isSame(const KeyPath &other) const
{
    return root == other.root &&
           std::equal(levels.begin(), levels.end(), other.levels.begin(), other.levels.end(),
                      [](const QString &a, const QString &b) {
                          return a.toCaseFolded() == b.toCaseFolded();
                      });
}

KeyPlace placeOf(const KeyPath &path)
{
    KeyPlace place;
    place.isApplication = isSoftware(path) && path.levels.size() >= kFileLevels;
    if (place.isApplication) {
        place.folder = present(configurationFolder(), escapedName(path.levels[1]));
        place.file = present(place.folder, escapedName(path.levels[2]) + ".ini"_L1);
        place.key = path.levels.sliced(kFileLevels).join(u'\\');
    } else {
        place.folder = configurationFolder();
        place.file = place.folder + u'/' + rootName(path.root) + ".ini"_L1;
        place.key = path.levels.join(u'\\');
    }
    return place;
}

QString companyFolder(const KeyPath &path)
{
    if (!isSoftware(path) || path.levels.size() != kFileLevels - 1)
        return {};
    return present(configurationFolder(), escapedName(path.levels[1]));
}

bool isFixed(const KeyPath &path)
{
    return path.levels.isEmpty() || (isSoftware(path) && path.levels.size() == 1);
}

bool isRoot(Handle key)
{
    return !rootName(key).isEmpty();
}

} // namespace registry
