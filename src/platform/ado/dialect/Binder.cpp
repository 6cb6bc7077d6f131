#include "platform/ado/dialect/Binder.h"

#include "platform/ado/dialect/Errors.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace ado::dialect {

void Binder::bindPlain(Expr &expr, size_t first)
{
    m_aggregateAllowed = false;
    m_first = first;
    bind(expr);
}

void Binder::bindCondition(Expr &expr, size_t first)
{
    bindPlain(expr, first);
    requireCondition(expr);
}

void Binder::bindResult(Expr &expr)
{
    m_aggregateAllowed = true;
    m_first = 0;
    bind(expr);
}

void Binder::requireComparable(const Expr &expr) const
{
    if (expr.type == DataType::LongVarBinary)
        raiseTypeMismatch(tokenOf(expr));
}

void Binder::requireCondition(const Expr &expr) const
{
    if (expr.type != DataType::Boolean && expr.type != DataType::Empty)
        raiseTypeMismatch(tokenOf(expr));
}

void Binder::requireGrouped(const Expr &expr, const std::vector<ExprPtr> &groups) const
{
    if (expr.kind == ExprKind::Aggregate)
        return;
    for (const ExprPtr &group : groups) {
        if (isSame(expr, *group, m_tokens))
            return;
    }
    if (expr.kind == ExprKind::Column)
        raiseSyntax(tokenOf(expr),
                    u"feltet «%1» står verken i GROUP BY eller i en sumfunksjon"_s.arg(expr.name));
    for (const ExprPtr &argument : expr.arguments)
        requireGrouped(*argument, groups);
}

// In one piece: a case for each kind of expression.
void Binder::bind(Expr &expr)
{
    if (expr.kind == ExprKind::Aggregate) {
        bindAggregate(expr);
        return;
    }
    for (const ExprPtr &argument : expr.arguments)
        bind(*argument);
    switch (expr.kind) {
    case ExprKind::Literal:
        expr.type = ownType(tokenOf(expr).kind);
        break;
    case ExprKind::Null:
    case ExprKind::Aggregate:
        break;
    case ExprKind::Truth:
    case ExprKind::IsNull:
        expr.type = DataType::Boolean;
        break;
    case ExprKind::Column:
        bindColumn(expr);
        break;
    case ExprKind::Negate:
        bindNegation(expr);
        break;
    case ExprKind::Not:
    case ExprKind::And:
    case ExprKind::Or:
        for (const ExprPtr &argument : expr.arguments)
            requireCondition(*argument);
        expr.type = DataType::Boolean;
        break;
    case ExprKind::Compare:
    case ExprKind::In:
    case ExprKind::Between:
        bindComparison(expr);
        break;
    case ExprKind::Arithmetic:
        bindArithmetic(expr);
        break;
    case ExprKind::DatePart: {
        const DataType type = expr.arguments.front()->type;
        if (type != DataType::Date && type != DataType::Empty)
            raiseTypeMismatch(tokenOf(expr));
        expr.type = DataType::SmallInt;
        break;
    }
    }
}

void Binder::bindColumn(Expr &expr) const
{
    bool aliasKnown = false;
    for (size_t i = m_first; i < m_sources.size(); ++i) {
        const Source &source = m_sources[i];
        if (!expr.qualifier.isEmpty() &&
            expr.qualifier.compare(source.alias, Qt::CaseInsensitive) != 0)
            continue;
        aliasKnown = true;
        const ColumnInfo *column = source.table->column(expr.name);
        if (!column)
            continue;
        if (expr.column)
            raiseAmbiguousColumn(expr.name, tokenOf(expr));
        expr.column = column;
        expr.source = int(i);
    }
    if (!expr.column) {
        const bool strangeAlias = !expr.qualifier.isEmpty() && !aliasKnown;
        raiseNoSuchColumn(strangeAlias ? expr.qualifier : expr.name, tokenOf(expr));
    }
    expr.type = expr.column->type;
}

void Binder::bindComparison(Expr &expr) const
{
    bool equality = expr.kind == ExprKind::In;
    if (expr.kind == ExprKind::Compare) {
        const TokenKind sign = tokenOf(expr).kind;
        equality = sign == TokenKind::Equal || sign == TokenKind::NotEqual;
    }
    OperandType common = operandType(*expr.arguments.front(), m_tokens);
    for (size_t i = 1; i < expr.arguments.size(); ++i) {
        const Expr &argument = *expr.arguments[i];
        const std::optional<DataType> type =
            comparedAs(common, operandType(argument, m_tokens), equality);
        if (!type)
            raiseTypeMismatch(tokenOf(argument));
        common.type = *type;
        // A list of literals alone stays one, of its widest class.
        common.literal = common.literal != TokenKind::End && argument.kind == ExprKind::Literal
                             ? std::max(common.literal, tokenOf(argument).kind)
                             : TokenKind::End;
    }
    expr.operandType = common.type;
    expr.type = DataType::Boolean;
}

void Binder::bindArithmetic(Expr &expr) const
{
    const auto types =
        arithmeticTypes(tokenOf(expr).kind, operandType(*expr.arguments[0], m_tokens),
                        operandType(*expr.arguments[1], m_tokens));
    if (!types)
        raiseTypeMismatch(tokenOf(expr));
    expr.type = types->result;
}

void Binder::bindNegation(Expr &expr) const
{
    const DataType type = expr.arguments.front()->type;
    if (type != DataType::Boolean && type != DataType::Empty && !isNumber(type))
        raiseTypeMismatch(tokenOf(expr));
    // The opposite of the least SHORT is no SHORT.
    const bool grows = type == DataType::Boolean || type == DataType::SmallInt;
    expr.type = grows || type == DataType::Empty ? DataType::Integer : type;
}

void Binder::bindAggregate(Expr &expr)
{
    if (!m_aggregateAllowed)
        raiseSyntax(tokenOf(expr), u"en sumfunksjon kan ikke stå her"_s);
    m_hasAggregate = true;
    expr.type = DataType::Integer;
    if (expr.arguments.empty())
        return;
    m_aggregateAllowed = false;
    bind(*expr.arguments.front());
    m_aggregateAllowed = true;
    if (expr.aggregate == Aggregate::Count)
        return;

    const Expr &argument = *expr.arguments.front();
    requireComparable(argument);
    // Truth counts as the number -1 or 0.
    const DataType type = argument.type == DataType::Boolean ? DataType::Integer : argument.type;
    expr.operandType = type;
    if (expr.aggregate == Aggregate::Max || expr.aggregate == Aggregate::Min) {
        expr.type = type;
        return;
    }
    if (!isNumber(type) && type != DataType::Empty)
        raiseTypeMismatch(tokenOf(expr));
    expr.type = type == DataType::Currency ? DataType::Currency : DataType::Double;
}

OperandType operandType(const Expr &expr, const std::vector<Token> &tokens)
{
    const bool literal = expr.kind == ExprKind::Literal;
    return {expr.type, literal ? tokens[size_t(expr.token)].kind : TokenKind::End};
}

bool dependsOnRows(const Expr &expr)
{
    return expr.kind == ExprKind::Column || expr.kind == ExprKind::Aggregate ||
           std::any_of(expr.arguments.begin(), expr.arguments.end(),
                       [](const ExprPtr &argument) { return dependsOnRows(*argument); });
}

bool isSame(const Expr &a, const Expr &b, const std::vector<Token> &tokens)
{
    if (a.kind != b.kind || a.kind == ExprKind::Literal || a.negative != b.negative ||
        a.truth != b.truth || a.part != b.part || a.aggregate != b.aggregate ||
        a.column != b.column || a.source != b.source || a.arguments.size() != b.arguments.size())
        return false;
    const bool hasSign = a.kind == ExprKind::Compare || a.kind == ExprKind::Arithmetic;
    if (hasSign && tokens[size_t(a.token)].kind != tokens[size_t(b.token)].kind)
        return false;
    return std::equal(a.arguments.begin(), a.arguments.end(), b.arguments.begin(),
                      [&](const ExprPtr &x, const ExprPtr &y) { return isSame(*x, *y, tokens); });
}

} // namespace ado::dialect
