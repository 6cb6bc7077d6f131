#pragma once

#include "benchmarks/support/Database.h"
#include "benchmarks/support/PlainDatabase.h"

#include <QTemporaryDir>

namespace bench {

/// Makes known what the module's tables, indexes and statements may refer to.
void teachModuleWords(const PlainDatabase &database);

/// A SQLite file.
class FileDatabase final : public Database
{
public:
    FileDatabase();

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("firma.db")); }
    [[nodiscard]] const char *name() const override { return "SQLite"; }
    [[nodiscard]] bool isServer() const override { return false; }
    [[nodiscard]] QString connectionString() const override
    {
        return QStringLiteral("dsn=") + path();
    }
    [[nodiscard]] QString folder() const override { return m_folder.path(); }
    [[nodiscard]] int krone() const override { return 10'000; }
    void send(const QByteArray &sql) override { m_plain.send(sql.constData()); }
    void settle() override { send("PRAGMA wal_checkpoint(TRUNCATE)"); }
    /// Copies all tables as they are now to a new file beside this one, for a yardstick that goes
    /// its own way with them; its path.
    [[nodiscard]] QString copyTo(const QString &name);

private:
    QTemporaryDir m_folder;
    PlainDatabase m_plain;
};

} // namespace bench
