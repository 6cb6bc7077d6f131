#pragma once

#include "platform/ado/dialect/Ast.h"
#include "platform/ado/dialect/Translator.h"

namespace ado::dialect {

// Statements that change the schema; the errors are those of translate().
[[nodiscard]] Translation translateDefinition(const CreateTable &create,
                                              const std::vector<Token> &tokens,
                                              const Catalog &catalog, const Writer &writer);
[[nodiscard]] Translation translateDefinition(const AddColumn &add,
                                              const std::vector<Token> &tokens,
                                              const Catalog &catalog, const Writer &writer);
[[nodiscard]] Translation translateDefinition(const DropColumn &drop,
                                              const std::vector<Token> &tokens,
                                              const Catalog &catalog, const Writer &writer);
[[nodiscard]] Translation translateDefinition(const DropTable &drop,
                                              const std::vector<Token> &tokens,
                                              const Catalog &catalog, const Writer &writer);

} // namespace ado::dialect
