#include "platform/ado/dialect/Types.h"

#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

namespace {

OperandType column(DataType type)
{
    return {type, TokenKind::End};
}

OperandType literal(TokenKind kind)
{
    return {ownType(kind), kind};
}

std::optional<DataType> equal(const OperandType &a, const OperandType &b)
{
    const std::optional<DataType> there = comparedAs(a, b, true);
    EXPECT_EQ(comparedAs(b, a, true), there);
    return there;
}

std::optional<DataType> result(TokenKind sign, const OperandType &a, const OperandType &b)
{
    const auto types = arithmeticTypes(sign, a, b);
    return types ? std::optional(types->result) : std::nullopt;
}

constexpr DataType kAll[] = {DataType::SmallInt, DataType::Integer,  DataType::Single,
                             DataType::Double,   DataType::Currency, DataType::Boolean,
                             DataType::Date,     DataType::VarWChar, DataType::LongVarBinary};

} // namespace

TEST(Types, ALiteralMeetsAColumnInTheColumnsType)
{
    EXPECT_EQ(equal(column(DataType::SmallInt), literal(TokenKind::Integer)), DataType::Integer);
    EXPECT_EQ(equal(column(DataType::Currency), literal(TokenKind::Decimal)), DataType::Currency);
    EXPECT_EQ(equal(column(DataType::Single), literal(TokenKind::Decimal)), DataType::Single);
    EXPECT_EQ(equal(column(DataType::Double), literal(TokenKind::Integer)), DataType::Double);
    EXPECT_EQ(equal(column(DataType::Date), literal(TokenKind::Date)), DataType::Date);
    EXPECT_EQ(equal(column(DataType::VarWChar), literal(TokenKind::Text)), DataType::VarWChar);
}

TEST(Types, ALiteralThatDoesNotFitIsComparedAsDouble)
{
    EXPECT_EQ(equal(column(DataType::Integer), literal(TokenKind::Decimal)), DataType::Double);
    EXPECT_EQ(equal(column(DataType::SmallInt), literal(TokenKind::Huge)), DataType::Double);
    EXPECT_EQ(equal(column(DataType::Currency), literal(TokenKind::Huge)), DataType::Double);
    EXPECT_EQ(equal(column(DataType::Single), literal(TokenKind::Huge)), DataType::Double);
}

TEST(Types, NumbersMeetWithoutLoss)
{
    EXPECT_EQ(equal(column(DataType::SmallInt), column(DataType::Integer)), DataType::Integer);
    EXPECT_EQ(equal(column(DataType::SmallInt), column(DataType::Currency)), DataType::Currency);
    EXPECT_EQ(equal(column(DataType::Currency), column(DataType::Currency)), DataType::Currency);
    EXPECT_EQ(equal(column(DataType::Currency), column(DataType::Single)), DataType::Double);
    EXPECT_EQ(equal(column(DataType::Single), column(DataType::Single)), DataType::Single);
    EXPECT_EQ(equal(column(DataType::Integer), column(DataType::Single)), DataType::Double);
}

TEST(Types, TruthMeetsLiteralsAsTruthWhenTestedForEquality)
{
    const OperandType truth = column(DataType::Boolean);
    EXPECT_EQ(equal(truth, literal(TokenKind::Integer)), DataType::Boolean);
    EXPECT_EQ(equal(truth, truth), DataType::Boolean);
    EXPECT_EQ(comparedAs(truth, literal(TokenKind::Integer), false), DataType::Integer);
    EXPECT_EQ(equal(truth, column(DataType::SmallInt)), DataType::Integer);
    EXPECT_EQ(equal(truth, literal(TokenKind::Text)), std::nullopt);
}

TEST(Types, KindsDoNotMix)
{
    for (const DataType type : kAll) {
        const bool bytes = type == DataType::LongVarBinary;
        EXPECT_EQ(equal(column(DataType::VarWChar), column(type)).has_value(),
                  type == DataType::VarWChar);
        EXPECT_EQ(equal(column(DataType::Date), column(type)).has_value(), type == DataType::Date);
        EXPECT_EQ(equal(column(DataType::LongVarBinary), column(type)), std::nullopt);
        EXPECT_EQ(equal(column(DataType::Empty), column(type)), type);
        EXPECT_EQ(isAssignable(column(type), DataType::LongVarBinary), bytes);
    }
}

TEST(Types, ResultsOfArithmetic)
{
    using enum TokenKind;
    const OperandType small = column(DataType::SmallInt);
    const OperandType whole = column(DataType::Integer);
    const OperandType single = column(DataType::Single);
    const OperandType money = column(DataType::Currency);
    EXPECT_EQ(result(Plus, small, literal(Integer)), DataType::Integer);
    EXPECT_EQ(result(Minus, whole, literal(Integer)), DataType::Integer);
    EXPECT_EQ(result(Plus, whole, literal(Decimal)), DataType::Double);
    EXPECT_EQ(result(Plus, single, single), DataType::Double);
    EXPECT_EQ(result(Plus, money, literal(Integer)), DataType::Currency);
    EXPECT_EQ(result(Minus, literal(Decimal), money), DataType::Currency);
    EXPECT_EQ(result(Plus, money, single), DataType::Currency);
    EXPECT_EQ(result(Star, money, literal(Integer)), DataType::Currency);
    EXPECT_EQ(result(Star, small, money), DataType::Currency);
    EXPECT_EQ(result(Star, money, literal(Decimal)), DataType::Double);
    EXPECT_EQ(result(Star, money, money), DataType::Double);
    EXPECT_EQ(result(Star, whole, whole), DataType::Double);
    EXPECT_EQ(result(Slash, whole, whole), DataType::Double);
    EXPECT_EQ(result(Slash, money, whole), DataType::Double);
    EXPECT_EQ(result(Plus, column(DataType::Boolean), small), DataType::Integer);
    EXPECT_EQ(result(Plus, column(DataType::Empty), small), DataType::Integer);
}

TEST(Types, OnlyNumbersAndTruthAreReckonedWith)
{
    for (const DataType type : {DataType::Date, DataType::VarWChar, DataType::LongVarBinary}) {
        EXPECT_EQ(result(TokenKind::Plus, column(type), column(DataType::Integer)), std::nullopt);
        EXPECT_EQ(result(TokenKind::Plus, column(DataType::Empty), column(type)), std::nullopt);
    }
}

TEST(Types, AnyLiteralButADateMayBecomeANumber)
{
    for (const DataType type : kAll) {
        const bool bytes = type == DataType::LongVarBinary;
        EXPECT_EQ(isAssignable(literal(TokenKind::Integer), type), !bytes);
        EXPECT_EQ(isAssignable(literal(TokenKind::Text), type), !bytes);
        EXPECT_EQ(isAssignable(literal(TokenKind::Date), type), type == DataType::Date);
        EXPECT_TRUE(isAssignable(column(DataType::Empty), type));
    }
    EXPECT_TRUE(isAssignable(column(DataType::Single), DataType::SmallInt));
    EXPECT_TRUE(isAssignable(column(DataType::Boolean), DataType::Currency));
    EXPECT_FALSE(isAssignable(column(DataType::VarWChar), DataType::Integer));
    EXPECT_FALSE(isAssignable(column(DataType::Integer), DataType::VarWChar));
}

} // namespace ado::dialect::test
