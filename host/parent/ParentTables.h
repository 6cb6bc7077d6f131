#pragma once

namespace ado {
class Connection;
}

/// Makes the bookkeeping program's own tables in the database that `connection` has open: `Klient`,
/// `KundeLev`, `Poststed`, `Kontoplan`, `Hovedbok`, `Bilag`, `BilagLinjer` and `Bil`, all empty and
/// without the columns that the invoicing module adds for itself.
///
/// Raises the database's RunTimeError when a table exists already or the database refuses; outside
/// a transaction the tables made before the failure stay.
void createParentTables(ado::Connection &connection);

/// Makes what is missing of the indexes over the parent's tables: the one by which a posting run
/// finds the last voucher number of a year without reading all vouchers. Raises the database's
/// RunTimeError.
void provideParentIndexes(ado::Connection &connection);
