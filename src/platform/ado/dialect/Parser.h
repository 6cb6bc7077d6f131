#pragma once

#include "platform/ado/dialect/Ast.h"

namespace ado::dialect {

/// Reads exactly one statement with one optional ";" behind it. Raises kSyntax with the position of
/// the first token that does not belong there. The result refers to the statement's text.
[[nodiscard]] Statement parse(const Lexed &statement);

} // namespace ado::dialect
