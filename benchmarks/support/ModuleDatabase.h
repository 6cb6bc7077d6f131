#pragma once

#include "benchmarks/support/Database.h"
#include "data/clsAdoUtils.h"
#include "host/parent/ParentTables.h"
#include "platform/ado/SessionPool.h"
#include "shell/component/Main.h"
#include "state/SharedState.h"
#include "tests/support/StartModule.h"

#include <QFile>

namespace bench {

/// The module, started for client 5 in 2014 on an empty database that gets a parent's tables, with
/// settings of its own. Ends the module with itself and leaves the database. What fails ends the
/// program.
class ModuleDatabase
{
public:
    explicit ModuleDatabase(const Database &database)
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(database.folder()));
        {
            ado::Connection connection;
            connection.open(database.connectionString());
            createParentTables(connection);
        }
        Main();
        if (startAsParent(database.connectionString()) == 0)
            qFatal("the module did not start: %s", qPrintable(gDB->LastError()));
        // What a start in a new database leaves, which the first order saved would take for its
        // own.
        static_cast<void>(gDB->LastError());
    }
    ~ModuleDatabase()
    {
        Unload();
        ado::SessionPool::shared().clear();
    }
    ModuleDatabase(const ModuleDatabase &) = delete;
    ModuleDatabase &operator=(const ModuleDatabase &) = delete;
};

} // namespace bench
