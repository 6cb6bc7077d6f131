#pragma once

#include "platform/ado/dialect/Ast.h"
#include "platform/ado/dialect/TokenStream.h"

namespace ado::dialect {

/// Reads the statements that change the schema, from behind their first word. kSyntax as in
/// parse().
[[nodiscard]] Statement parseCreate(TokenStream &tokens);
[[nodiscard]] Statement parseAlter(TokenStream &tokens);
[[nodiscard]] Statement parseDrop(TokenStream &tokens);

} // namespace ado::dialect
