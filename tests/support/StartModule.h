#pragma once

#include "shell/component/clsFaktura.h"

/// Starts the module as a parent does; ModuleInit.
inline qint16 startAsParent(const QString &connectionString, qint16 client = 5, qint16 year = 2014)
{
    clsFaktura module;
    module.setConnectStreng(connectionString);
    module.setKlient(client);
    module.setCurrentYear(year);
    module.StartModul();
    return module.ModuleInit();
}
