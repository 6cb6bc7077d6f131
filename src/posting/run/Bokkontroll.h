#pragma once

#include <QStringList>

#include <functional>

/// What does not agree in the books of the active client and year, a line in Norwegian each, in the
/// order of the vouchers and orders: what a run leaves that was broken off, refused or disturbed,
/// and what the database itself finds wrong with its file. Empty when all is well. A run of another
/// workstation is waited for before anything is told. `steg` is told again and again how many steps
/// are done, of how many; what it raises ends the check. Reads only, past gDB; raises what the
/// database raises.
[[nodiscard]] QStringList KontrollerBoker(const std::function<void(int gjort, int alle)> &steg =
                                              [](int, int) {});

/// How many of the client's invoices that are ready for the ledger have a voucher of the active
/// year already.
[[nodiscard]] int AntallMedBilagFraFor();
