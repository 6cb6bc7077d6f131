#pragma once

#include "runtime/Ref.h"

#include <QString>

class clsAdoUtils;
class clsFaktura;
class clsRegSettings;
namespace ado {
class Connection;
}

/// The values that the whole module shares. They are created at load, belong to the one thread of
/// the parent's user interface, and live until the component is unloaded.

/// The private instance that Main makes; it keeps the component's own reference to itself.
extern Ref<clsFaktura> gFaktura;
/// The settings store.
extern AutoRef<clsRegSettings> gReg;
/// Record access; every statement of a screen goes through it.
extern AutoRef<clsAdoUtils> gDB;
/// The one connection that stays open while the module runs, with client-side cursors.
extern Ref<ado::Connection> gConn;

/// The connection string, as the property ConnectStreng was last set.
extern QString gConnect;
/// The client that every statement is limited to.
extern qint16 gKlient;
/// The value behind the property Klient; it outlives the instance on which it was set.
extern qint16 gKlientInn;
/// The accounting year.
extern qint16 gAar;

/// The application folder without a trailing separator. This and the next two are in the module's
/// form, with backslashes.
extern QString gAppPath;
extern QString gHelpFile;
/// The folder of the report files.
extern QString gRptPath;
/// The topic of the next help call.
extern QString gHelpTopic;

/// The VAT rates as text; empty until Main has run.
extern QString gMva0;
extern QString gMva10;
extern QString gMva15;
extern QString gMva25;

/// Puts every value back to what it was before load. References go in the order in which nothing
/// outlives what it stands on: the instance, the record access, the open connection, the settings.
void releaseSharedState();
