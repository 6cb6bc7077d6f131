#include "platform/ado/OdbcIni.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace ado {

std::optional<OdbcEntries> odbcSection(QStringView text, QStringView name)
{
    std::optional<OdbcEntries> section;
    for (const QStringView row : text.split(u'\n')) {
        const QStringView line = row.trimmed();
        if (line.startsWith(u';') || line.startsWith(u'#'))
            continue;
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            if (section)
                break;
            if (line.sliced(1).chopped(1).trimmed().compare(name, Qt::CaseInsensitive) == 0)
                section.emplace();
            continue;
        }
        const qsizetype mark = line.indexOf(u'=');
        if (section && mark > 0)
            section->try_emplace(line.first(mark).trimmed().toString().toLower(),
                                 line.sliced(mark + 1).trimmed().toString());
    }
    return section;
}

namespace {

/// One that is empty counts as none.
QString variable(const char *name, const QString &otherwise)
{
    return qEnvironmentVariableIsEmpty(name) ? otherwise : qEnvironmentVariable(name);
}

} // namespace

std::optional<OdbcEntries> odbcDataSource(QStringView name)
{
    const QString user = variable("ODBCINI", QDir::home().filePath(u".odbc.ini"_s));
    const QString system = QDir(variable("ODBCSYSINI", u"/etc"_s)).filePath(u"odbc.ini"_s);
    for (const QString &path : {user, system}) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        if (auto section = odbcSection(QString::fromUtf8(file.readAll()), name))
            return section;
    }
    return {};
}

} // namespace ado
