#pragma once

#include "platform/ado/dialect/Lexer.h"
#include "runtime/Value.h"

#include <optional>

namespace ado::dialect {

/// What is known of an operand's type before it is emitted. A literal has no firm type yet: it
/// takes that of what it meets.
struct OperandType
{
    DataType type = DataType::Empty;    ///< Empty for Null
    TokenKind literal = TokenKind::End; ///< the literal's class, End for all else
};

[[nodiscard]] bool isWhole(DataType type);  ///< SHORT or LONG
[[nodiscard]] bool isNumber(DataType type); ///< any number, CURRENCY included, BIT not

/// The type of a literal that meets nothing.
[[nodiscard]] DataType ownType(TokenKind literal);

/// The type into which both sides of a comparison are turned, so that the comparison is right;
/// nullopt when they cannot be compared. In a test of `equality` truth meets a number as truth,
/// else as the number -1 or 0.
[[nodiscard]] std::optional<DataType> comparedAs(const OperandType &a, const OperandType &b,
                                                 bool equality);

/// How `a` and `b` are turned into operands of + - * or /, and what comes out; nullopt for anything
/// but numbers and truth.
struct ArithmeticTypes
{
    DataType left;
    DataType right;
    DataType result;
};
[[nodiscard]] std::optional<ArithmeticTypes> arithmeticTypes(TokenKind sign, const OperandType &a,
                                                             const OperandType &b);

/// True when a column of type `to` can take a value of type `from`; `literal` values more than
/// others, since their text can be read anew for each run.
[[nodiscard]] bool isAssignable(const OperandType &from, DataType to);

} // namespace ado::dialect
