#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

namespace {

/// The value of the one literal of a statement on the table of orders.
Value valueIn(const QString &pattern, const QString &column, const QString &literal)
{
    const std::vector<Value> values = valuesOf(pattern.arg(column, literal));
    return values.size() == 1 ? values[0] : Value();
}

Value assigned(const QString &column, const QString &literal)
{
    return valueIn(u"UPDATE Ordre SET %1=%2"_s, column, literal);
}

Value compared(const QString &column, const QString &literal)
{
    return valueIn(u"SELECT ID FROM Ordre WHERE %1=%2"_s, column, literal);
}

} // namespace

TEST(Literals, SinglesAndDoublesAreTheNearest)
{
    EXPECT_EQ(assigned(u"RabattPst"_s, u"0.1"_s), Value(0.1F));
    EXPECT_EQ(assigned(u"Vekt"_s, u"0.1"_s), Value(0.1));
    EXPECT_EQ(assigned(u"Vekt"_s, u"1.5E+08"_s), Value(1.5E8));
    EXPECT_EQ(assigned(u"Vekt"_s, u"1E-400"_s), Value(0.0));
    EXPECT_EQ(assigned(u"RabattPst"_s, u"1E-60"_s), Value(0.0F));
    EXPECT_EQ(compared(u"RabattPst"_s, u"25"_s), Value(25.0F));
    EXPECT_EQ(compared(u"OrdreNr"_s, u"1.5"_s), Value(1.5));
    EXPECT_EQ(compared(u"OrdreNr"_s, u"70000000000"_s), Value(7E10));
    EXPECT_EQ(compared(u"KlientNr"_s, u"50000"_s), Value(qint32{50000}));
}

// No file of text can hold half of a pair of UTF-16 units, which is a character as well.
TEST(Literals, HalfAPairIsACharacter)
{
    const QString half = QString(QChar(0xD83D)) + u"123456789"_s;
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u'\'' + half + u"x'"_s), Value(half));
}

} // namespace ado::dialect::test
