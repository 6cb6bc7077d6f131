#pragma once

#include "platform/ado/dialect/Ast.h"
#include "platform/ado/dialect/Types.h"

#include <vector>

namespace ado::dialect {

/// A table as a statement knows it.
struct Source
{
    QStringView alias;
    const TableInfo *table = nullptr;
};

/// Gives every column of an expression its place in the catalogue and every node its type. Raises
/// kNoSuchColumn, kTypeMismatch and, for a misplaced aggregate, kSyntax.
class Binder
{
public:
    /// Both must outlive the binder; tables may be added in between.
    Binder(const std::vector<Token> &tokens, const std::vector<Source> &sources)
        : m_tokens(tokens), m_sources(sources)
    {
    }

    /// Names are looked up in the sources from `first` on. An aggregate is an error.
    void bindPlain(Expr &expr, size_t first = 0);
    /// The same for a condition: what gives anything but truth is an error.
    void bindCondition(Expr &expr, size_t first = 0);
    /// Names are looked up in all sources; aggregates may stand in it.
    void bindResult(Expr &expr);
    /// True when an aggregate has been bound.
    [[nodiscard]] bool hasAggregate() const { return m_hasAggregate; }

    /// Raises kTypeMismatch when the expression gives bytes, which have no order.
    void requireComparable(const Expr &expr) const;
    /// Raises kTypeMismatch when the bound expression is no condition.
    void requireCondition(const Expr &expr) const;
    /// Raises kSyntax for a column that stands neither in an aggregate nor in one of `groups`.
    void requireGrouped(const Expr &expr, const std::vector<ExprPtr> &groups) const;

    [[nodiscard]] const Token &tokenOf(const Expr &expr) const
    {
        return m_tokens[size_t(expr.token)];
    }

private:
    void bind(Expr &expr);
    void bindColumn(Expr &expr) const;
    void bindComparison(Expr &expr) const;
    void bindArithmetic(Expr &expr) const;
    void bindNegation(Expr &expr) const;
    void bindAggregate(Expr &expr);

    const std::vector<Token> &m_tokens;
    const std::vector<Source> &m_sources;
    size_t m_first = 0;
    bool m_aggregateAllowed = false;
    bool m_hasAggregate = false;
};

/// What a bound expression brings into the one that it is part of.
[[nodiscard]] OperandType operandType(const Expr &expr, const std::vector<Token> &tokens);

/// True when the bound expression may differ from row to row or group to group.
[[nodiscard]] bool dependsOnRows(const Expr &expr);

/// True when both bound expressions always have the same value. Literals never count as the same,
/// since each run gives them new values.
[[nodiscard]] bool isSame(const Expr &a, const Expr &b, const std::vector<Token> &tokens);

} // namespace ado::dialect
