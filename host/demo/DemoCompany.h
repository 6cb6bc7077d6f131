#pragma once

#include <QtGlobal>

namespace ado {
class Connection;
}

/// The demo company, a haulage firm that does not exist, in two steps around the module's first
/// start: the parent's registers before it, and after it what lies in tables and columns that the
/// module makes. The same client and year give the same rows every time. Both raise the database's
/// RunTimeError; the caller owns the transaction.

/// The firm, its customers and suppliers, vehicles, postal places, and the chart of accounts with
/// the opening balances of `year` and of the year before. Account 3000 is left to the module.
void fillParentTables(ado::Connection &connection, qint16 client, qint16 year);

/// The products and what the module knows of the firm and its customers.
void fillModuleRegisters(ado::Connection &connection, qint16 client);
