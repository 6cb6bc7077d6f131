#pragma once

#include "benchmarks/PlainDatabase.h"
#include "data/clsAdoUtils.h"
#include "host/parent/ParentTables.h"
#include "shell/component/Main.h"
#include "state/SharedState.h"
#include "tests/support/StartModule.h"

#include <QFileInfo>

namespace bench {

/// The module, started on a parent's database in a new file for client 5 in 2014, with settings of
/// its own. Ends the module with itself and leaves the file. What fails ends the program.
class ModuleDatabase
{
public:
    /// The settings are kept in the folder of the new file.
    explicit ModuleDatabase(const QString &path)
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(QFileInfo(path).path()));
        const QString dsn = QStringLiteral("dsn=") + path;
        makeEmptyFile(path);
        {
            ado::Connection connection;
            connection.open(dsn);
            createParentTables(connection);
        }
        Main();
        if (startAsParent(dsn) == 0)
            qFatal("the module did not start: %s", qPrintable(gDB->LastError()));
    }
    ~ModuleDatabase() { Unload(); }
    ModuleDatabase(const ModuleDatabase &) = delete;
    ModuleDatabase &operator=(const ModuleDatabase &) = delete;

    /// Puts in the client's own name, address and numbers, which its documents carry.
    static void insertClient()
    {
        gConn->execute(QStringLiteral(
            "INSERT INTO Klient (KlientNr,Navn,Adr1,Adr2,PostNr,OrganisasjonsNr,Giro1) VALUES "
            "(5,'Fjell Frakt AS','Postboks 1','Åsveien 2','2317','912345678','15034012345')"));
        gConn->execute(
            QStringLiteral("INSERT INTO Poststed (PostNr,PostSted) VALUES ('2317','Hamar')"));
    }
};

} // namespace bench
