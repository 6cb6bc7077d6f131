#include "platform/ado/dialect/Types.h"

#include <algorithm>

namespace ado::dialect {

namespace {

bool isNumberOrTruth(DataType type)
{
    return isNumber(type) || type == DataType::Boolean;
}

OperandType truthAsNumber(OperandType operand)
{
    if (operand.type == DataType::Boolean)
        operand.type = DataType::Integer;
    return operand;
}

/// The type in which a number literal meets a number that is none.
DataType literalBeside(TokenKind literal, DataType other)
{
    if (literal == TokenKind::Huge)
        return DataType::Double;
    if (isWhole(other))
        return literal == TokenKind::Integer ? DataType::Integer : DataType::Double;
    return other;
}

DataType commonNumber(const OperandType &a, const OperandType &b)
{
    const bool firmA = a.literal == TokenKind::End;
    const bool firmB = b.literal == TokenKind::End;
    if (firmA != firmB)
        return firmA ? literalBeside(b.literal, a.type) : literalBeside(a.literal, b.type);
    if (isWhole(a.type) && isWhole(b.type))
        return DataType::Integer;
    if (a.type == b.type)
        return a.type;
    if ((a.type == DataType::Currency && isWhole(b.type)) ||
        (b.type == DataType::Currency && isWhole(a.type)))
        return DataType::Currency;
    return DataType::Double;
}

} // namespace

bool isWhole(DataType type)
{
    return type == DataType::SmallInt || type == DataType::Integer;
}

bool isNumber(DataType type)
{
    return isWhole(type) || type == DataType::Single || type == DataType::Double ||
           type == DataType::Currency;
}

DataType ownType(TokenKind literal)
{
    switch (literal) {
    case TokenKind::Integer:
        return DataType::Integer;
    case TokenKind::Decimal:
    case TokenKind::Huge:
        return DataType::Double;
    case TokenKind::Date:
        return DataType::Date;
    default:
        return DataType::VarWChar;
    }
}

std::optional<DataType> comparedAs(const OperandType &a, const OperandType &b, bool equality)
{
    if (a.type == DataType::Empty)
        return b.type;
    if (b.type == DataType::Empty)
        return a.type;
    if (a.type == DataType::LongVarBinary || b.type == DataType::LongVarBinary)
        return std::nullopt;
    if (isNumberOrTruth(a.type) && isNumberOrTruth(b.type)) {
        const bool truthA = a.type == DataType::Boolean;
        const bool truthB = b.type == DataType::Boolean;
        if (equality && ((truthA && truthB) || (truthA && isNumber(b.literal)) ||
                         (truthB && isNumber(a.literal))))
            return DataType::Boolean;
        return commonNumber(truthAsNumber(a), truthAsNumber(b));
    }
    return a.type == b.type ? std::optional(a.type) : std::nullopt;
}

// In one piece: the table of which types give which.
std::optional<ArithmeticTypes> arithmeticTypes(TokenKind sign, const OperandType &first,
                                               const OperandType &second)
{
    OperandType a = truthAsNumber(first);
    OperandType b = truthAsNumber(second);
    if (a.type == DataType::Empty)
        a.type = b.type == DataType::Empty ? DataType::Integer : b.type;
    if (b.type == DataType::Empty)
        b.type = a.type;
    if (!isNumber(a.type) || !isNumber(b.type))
        return std::nullopt;

    const ArithmeticTypes real{DataType::Double, DataType::Double, DataType::Double};
    const bool moneyA = a.type == DataType::Currency;
    const bool moneyB = b.type == DataType::Currency;
    if (sign == TokenKind::Slash)
        return real;
    if (sign == TokenKind::Star) {
        if (moneyA && isWhole(b.type))
            return ArithmeticTypes{DataType::Currency, DataType::Integer, DataType::Currency};
        if (moneyB && isWhole(a.type))
            return ArithmeticTypes{DataType::Integer, DataType::Currency, DataType::Currency};
        return real;
    }
    if (moneyA || moneyB)
        return ArithmeticTypes{DataType::Currency, DataType::Currency, DataType::Currency};
    if (isWhole(a.type) && isWhole(b.type))
        return ArithmeticTypes{DataType::Integer, DataType::Integer, DataType::Integer};
    return real;
}

bool isAssignable(const OperandType &from, DataType to)
{
    if (from.type == DataType::Empty)
        return true;
    if (to == DataType::LongVarBinary || from.type == DataType::LongVarBinary)
        return from.type == to;
    if (isNumber(from.literal))
        return true; // a number is a date by its days, a text by its digits
    if (from.literal == TokenKind::Text)
        return true; // if it reads as one, which shows when it is converted
    if (isNumberOrTruth(from.type))
        return isNumberOrTruth(to);
    return from.type == to;
}

} // namespace ado::dialect
