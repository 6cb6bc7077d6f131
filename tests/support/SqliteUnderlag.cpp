#include "platform/ado/sqlite/NorwegianCollation.h"
#include "support/Underlag.h"

#include <QFile>

#include <sqlite3.h>

namespace {

class SqliteUnderlag final : public Underlag
{
public:
    QString connectionString(const QString &file) const override { return file; }
    QString integrity(const QString &file) const override
    {
        sqlite3 *opened = nullptr;
        sqlite3_open(QFile::encodeName(file.sliced(file.indexOf(u'=') + 1)).constData(), &opened);
        const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> database(opened, sqlite3_close);
        ado::addNorwegianCollation(opened); // by which the indexes of text are sorted
        QString found;
        const auto line = [](void *out, int, char **values, char **) {
            *static_cast<QString *>(out) += QString::fromUtf8(values[0]);
            return 0;
        };
        sqlite3_exec(opened, "PRAGMA integrity_check", line, &found, nullptr);
        sqlite3_exec(opened, "PRAGMA foreign_key_check", line, &found, nullptr);
        return found;
    }
    int killPoints() const override { return 50; }
};

} // namespace

std::unique_ptr<Underlag> makeUnderlag()
{
    return std::make_unique<SqliteUnderlag>();
}
