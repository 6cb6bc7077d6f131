#pragma once

#include "data/clsAdoUtils.h"
#include "shell/clsFaktura.h"
#include "state/SharedState.h"
#include "vert/ParentTables.h"

#include <QFile>

namespace bench {

/// Makes a parent's database in a new file and starts the module on it, for client 5 in 2014. Ends
/// the program when that fails.
inline void startModuleOnNewDatabase(const QString &path)
{
    const QString dsn = QStringLiteral("dsn=") + path;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot make the database file");
    file.close();
    {
        ado::Connection connection;
        connection.open(dsn);
        createParentTables(connection);
    }
    clsFaktura module;
    module.setConnectStreng(dsn);
    module.setKlient(5);
    module.setCurrentYear(2014);
    module.StartModul();
    if (module.ModuleInit() == 0)
        qFatal("the module did not start: %s", qPrintable(gDB->LastError()));
}

} // namespace bench
