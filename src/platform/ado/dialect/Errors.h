#pragma once

#include "platform/ado/dialect/Lexer.h"

#include <QString>

/// The errors of the dialect layer, each with a Norwegian text that tells where it was found.
namespace ado::dialect {

/// kSyntax: the token does not belong there.
[[noreturn]] void raiseSyntax(const Token &at);
/// kSyntax with the reason, a sentence's end without capital letter and full stop.
[[noreturn]] void raiseSyntax(const Token &at, const QString &why);
[[noreturn]] void raiseNoSuchTable(QStringView table, const Token &at);
[[noreturn]] void raiseNoSuchColumn(QStringView column, const Token &at);
[[noreturn]] void raiseAmbiguousColumn(QStringView column, const Token &at);
[[noreturn]] void raiseTableExists(QStringView table);
[[noreturn]] void raiseColumnExists(QStringView column);
/// kTypeMismatch: operands or values that cannot be combined.
[[noreturn]] void raiseTypeMismatch(const Token &at);
/// kTypeMismatch of a value with the column it is for.
[[noreturn]] void raiseDoesNotFit(const Token &at, QStringView column);
/// kOutOfRange.
[[noreturn]] void raiseOutOfRange(const Token &at, QStringView column);

} // namespace ado::dialect
