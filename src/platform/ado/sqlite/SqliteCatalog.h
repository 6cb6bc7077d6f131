#pragma once

#include "platform/ado/dialect/Catalog.h"

#include <QStringView>

struct sqlite3;

namespace ado {

/// What a declared type means to the module.
struct DeclaredType
{
    DataType type = DataType::VarWChar;
    int width = 0; ///< of a text; 0 for no limit
};

/// Understands the dialect's names, which our own tables carry, the usual names of other tools'
/// tables, and for the rest SQLite's rules of affinity. Names match without regard to case.
[[nodiscard]] DeclaredType declaredType(QStringView declaration);

/// The tables of the file as they are now, in the order in which they were created.
[[nodiscard]] dialect::Catalog readCatalog(sqlite3 *database);

} // namespace ado
