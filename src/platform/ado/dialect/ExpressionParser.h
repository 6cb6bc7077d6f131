#pragma once

#include "platform/ado/dialect/Ast.h"
#include "platform/ado/dialect/TokenStream.h"

namespace ado::dialect {

/// Reads conditions and other expressions by recursive descent. Nesting is limited, so that no
/// statement can exhaust the stack here or in what walks the tree later; kSyntax beyond the limit.
class ExpressionParser
{
public:
    explicit ExpressionParser(TokenStream &tokens) : m_tokens(tokens) {}

    [[nodiscard]] ExprPtr parse() { return disjunction(); }

private:
    ExprPtr disjunction();
    ExprPtr conjunction();
    ExprPtr negation();
    ExprPtr comparison();
    ExprPtr inList(ExprPtr operand);
    ExprPtr range(ExprPtr operand);
    ExprPtr sum();
    ExprPtr product();
    ExprPtr sign();
    ExprPtr primary();
    ExprPtr column();
    ExprPtr function();
    ExprPtr node(ExprKind kind, int token, ExprPtr first = {}, ExprPtr second = {});
    void add(Expr &parent, ExprPtr argument);

    TokenStream &m_tokens;
    int m_nesting = 0;
};

} // namespace ado::dialect
