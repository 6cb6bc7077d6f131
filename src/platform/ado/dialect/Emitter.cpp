#include "platform/ado/dialect/Emitter.h"

#include "platform/ado/dialect/Errors.h"

namespace ado::dialect {

namespace {

/// True for what has to stand in parentheses inside a larger expression.
bool isCompound(ExprKind kind)
{
    switch (kind) {
    case ExprKind::Literal:
    case ExprKind::Null:
    case ExprKind::Truth:
    case ExprKind::Column:
    case ExprKind::DatePart:
    case ExprKind::Aggregate:
        return false;
    default:
        return true;
    }
}

const char *spelling(TokenKind sign)
{
    switch (sign) {
    case TokenKind::Equal:
        return " = ";
    case TokenKind::NotEqual:
        return " <> ";
    case TokenKind::Less:
        return " < ";
    case TokenKind::LessEqual:
        return " <= ";
    case TokenKind::Greater:
        return " > ";
    case TokenKind::GreaterEqual:
        return " >= ";
    case TokenKind::Plus:
        return " + ";
    case TokenKind::Minus:
        return " - ";
    default:
        return " * ";
    }
}

} // namespace

QByteArray Emitter::condition(const Expr &expr)
{
    return spelled(expr);
}

QByteArray Emitter::assigned(const Expr &expr, const ColumnInfo &column)
{
    if (!isAssignable(operandType(expr, m_tokens), column.type))
        raiseDoesNotFit(tokenOf(expr), column.name);
    if (expr.kind == ExprKind::Literal)
        return parameter(expr, column.type, column.width, column.name);
    const QByteArray value = operand(expr, column.type);
    if (column.type == DataType::Boolean && expr.kind != ExprKind::Truth) // is never Null
        return "COALESCE(" + value + ", " + m_writer.truth(false) + ')';
    return column.type == DataType::VarWChar && column.width > 0 ? m_writer.cut(value, column.width)
                                                                 : value;
}

QByteArray Emitter::operand(const Expr &expr, DataType wanted)
{
    if (expr.kind == ExprKind::Literal)
        return parameter(expr, wanted == DataType::Empty ? expr.type : wanted);
    if (expr.kind == ExprKind::Null && wanted != DataType::Empty)
        return m_writer.null(wanted);
    QByteArray sql = spelled(expr);
    if (isCompound(expr.kind))
        sql = '(' + sql + ')';
    return converted(sql, expr.type, wanted);
}

QByteArray Emitter::converted(const QByteArray &operand, DataType from, DataType to) const
{
    if (from == to || from == DataType::Empty || to == DataType::Empty ||
        (isWhole(from) && isWhole(to)))
        return operand;
    return m_writer.convert(operand, from, to);
}

QByteArray Emitter::comparand(const Expr &expr, DataType type)
{
    const QByteArray sql = operand(expr, type);
    return type == DataType::VarWChar ? m_writer.collated(sql) : sql;
}

QByteArray Emitter::parameter(const Expr &literal, DataType type, int width, QString column)
{
    m_parameters.push_back({literal.token, literal.negative, type, width, std::move(column)});
    return m_writer.placeHolder(int(m_parameters.size()), type);
}

// In one piece: a case for each kind of expression.
QByteArray Emitter::spelled(const Expr &expr)
{
    switch (expr.kind) {
    case ExprKind::Literal:
        return parameter(expr, expr.type);
    case ExprKind::Null:
        return "NULL";
    case ExprKind::Truth:
        return m_writer.truth(expr.truth);
    case ExprKind::Column:
        return m_writer.column(m_sources[size_t(expr.source)].alias, expr.column->name,
                               expr.column->type);
    case ExprKind::Negate: {
        const QByteArray sql = '-' + reckoned(*expr.arguments.front(), expr.type);
        return isWhole(expr.type) ? m_writer.exact(sql, expr.type) : sql;
    }
    case ExprKind::Not:
        return "NOT " + operand(*expr.arguments.front());
    case ExprKind::And:
        return chain(expr, " AND ");
    case ExprKind::Or:
        return chain(expr, " OR ");
    case ExprKind::Compare:
    case ExprKind::In:
    case ExprKind::Between:
        return compared(expr);
    case ExprKind::Arithmetic:
        return arithmetic(expr);
    case ExprKind::IsNull:
        return operand(*expr.arguments.front()) + (expr.negative ? " IS NOT NULL" : " IS NULL");
    case ExprKind::DatePart:
        return m_writer.datePart(expr.part, operand(*expr.arguments.front()));
    case ExprKind::Aggregate:
        break;
    }
    return aggregate(expr);
}

// A long chain has no parentheses in its left end: databases limit their nesting.
QByteArray Emitter::chain(const Expr &expr, const char *sign)
{
    const Expr &left = *expr.arguments[0];
    QByteArray sql = left.kind == expr.kind ? spelled(left) : operand(left);
    sql += sign;
    return sql += operand(*expr.arguments[1]);
}

QByteArray Emitter::compared(const Expr &expr)
{
    const DataType type = expr.operandType;
    if (expr.lookup != LookupUse::None) {
        const Expr &found = *expr.arguments[1];
        const Source &joined = m_sources[size_t(found.source)];
        const QByteArray text = operand(*expr.arguments[0]);
        return expr.lookup == LookupUse::Joined
                   ? m_writer.joinedLookup(text, joined.alias, found.column->name)
                   : m_writer.lookup(text, joined.alias, joined.table->name, found.column->name);
    }
    QByteArray sql = comparand(*expr.arguments[0], type);
    if (expr.kind == ExprKind::Compare)
        return sql + spelling(tokenOf(expr).kind) + operand(*expr.arguments[1], type);
    if (expr.negative)
        sql += " NOT";
    const bool between = expr.kind == ExprKind::Between;
    sql += between ? " BETWEEN " : " IN (";
    for (size_t i = 1; i < expr.arguments.size(); ++i) {
        if (i > 1)
            sql += between ? " AND " : ", ";
        sql += operand(*expr.arguments[i], type);
    }
    return between ? sql : sql + ')';
}

// A SHORT grows to a LONG where it is reckoned with. Compared it stays as an index holds it.
QByteArray Emitter::reckoned(const Expr &expr, DataType type)
{
    const QByteArray sql = operand(expr, type);
    return expr.type == DataType::SmallInt && type == DataType::Integer
               ? m_writer.convert(sql, expr.type, type)
               : sql;
}

QByteArray Emitter::arithmetic(const Expr &expr)
{
    const Expr &left = *expr.arguments[0];
    const Expr &right = *expr.arguments[1];
    const TokenKind sign = tokenOf(expr).kind;
    const auto types =
        arithmeticTypes(sign, operandType(left, m_tokens), operandType(right, m_tokens));
    const QByteArray first = reckoned(left, types->left);
    const QByteArray second = reckoned(right, types->right);
    if (sign == TokenKind::Slash)
        return m_writer.quotient(first, second);
    const QByteArray sql = first + spelling(sign) + second;
    return expr.type == DataType::Double ? sql : m_writer.exact(sql, expr.type);
}

QByteArray Emitter::aggregate(const Expr &expr)
{
    if (expr.arguments.empty())
        return "COUNT(*)";
    const Expr &argument = *expr.arguments.front();
    const DataType type = expr.aggregate == Aggregate::Count ? argument.type : expr.operandType;
    return m_writer.aggregate(expr.aggregate, operand(argument, type), type);
}

} // namespace ado::dialect
