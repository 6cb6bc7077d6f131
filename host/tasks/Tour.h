#pragma once

#include "host/tasks/Database.h"
#include "host/tasks/Options.h"

#include <QString>

#include <functional>

class Component;

/// The host's larger tasks, told line by line through `say`. Those raise HostError.
namespace tour {

using Say = std::function<void(const QString &line)>;

/// Starts the module on the database. When its tables had to be made, the component is unloaded and
/// started anew. A failed start is a HostError with the reason, where it can be had.
void startModule(Component &component, const database::Place &place, const Options &options,
                 const Say &say);

/// Makes the demo company in a new database and starts the module on it. When that fails, the
/// database is as it was, or not there.
void makeDemo(Component &component, const database::Place &place, const Options &options,
              const Say &say);

/// What is done without any task: makeDemo, or startModule when the database is there from before,
/// then the newest invoiced invoice and credit note beside the database, a file, each as EHF and as
/// EHF 3.0.
void run(Component &component, const database::Place &place, const Options &options,
         const Say &say);

/// The highest number of the client's orders that `clause` limits, or 0.
[[nodiscard]] int newestOrder(QStringView clause);

/// Writes an order in both electronic formats to files of that name, to which the endings are
/// added, and tells of each. What EHF 3.0 lacks is told and passed over, as is number 0 for no
/// order.
void writeEhfs(const QString &file, int orderNumber, bool replace, const Say &say);

/// Lets the module's own code in this process work on the database.
void useDatabase(const database::Place &place, const Options &options);

} // namespace tour
