#include "platform/grid/CellType.h"

#include "runtime/Support.h"

using namespace Qt::StringLiterals;

namespace {

CellType amount()
{
    CellType type = CellType::ofNumber(2);
    type.showThousands = true;
    return type;
}

} // namespace

TEST(CellType, KnowsTheNumbersOfTheKinds)
{
    for (const int number : {0, 1, 2, 3, 6, 8, 10})
        EXPECT_EQ(int(CellType::ofNumber(number).kind), number);
    for (const int number : {-1, 4, 5, 7, 9, 11}) {
        try {
            (void)CellType::ofNumber(number);
            FAIL() << number;
        } catch (const RunTimeError &error) {
            EXPECT_EQ(error.number(), errors::kInvalidCall);
        }
    }
}

TEST(CellType, ShowsAFloatWithItsSignsAndDecimals)
{
    const CellType type = amount();
    EXPECT_EQ(type.shown(machineForm(u"1234,5"_s)), u"1 234,50");
    EXPECT_EQ(type.shown(machineForm(u" 100,00"_s)), u"100,00");
    EXPECT_EQ(type.shown(machineForm(u"1234 567,00"_s)), u"1 234 567,00");
    EXPECT_EQ(type.shown(machineForm(u"-1234,5"_s)), u"-1 234,50");
    EXPECT_EQ(type.shown(machineForm(u"0,005"_s)), u"0,01");
    EXPECT_EQ(type.shown(machineForm(u"-0,004"_s)), u"0,00");
    EXPECT_EQ(type.shown(machineForm(u"922337203685477,5807"_s)), u"922 337 203 685 477,58");
}

TEST(CellType, ShowsWithoutThousandsAndWithOtherDecimalsWhenToldSo)
{
    CellType type = CellType::ofNumber(2);
    type.decimals = 4;
    EXPECT_EQ(type.shown(machineForm(u"1234,5"_s)), u"1234,5000");
    type.decimals = 0;
    EXPECT_EQ(type.shown(machineForm(u"1234,5"_s)), u"1235");
    EXPECT_EQ(CellType::ofNumber(3).shown(machineForm(u"7,4"_s)), u"7");
}

TEST(CellType, ShowsATextThatIsNoNumberAsItIs)
{
    EXPECT_EQ(amount().shown(u"abc"_s), u"abc");
    EXPECT_EQ(amount().shown(QString()), QString());
    EXPECT_EQ(CellType().shown(u" 1234,5"_s), u" 1234,5");
}

TEST(CellType, TakesTypedNumbersInTheMachinesForm)
{
    EXPECT_EQ(amount().accepted(u"1234,5"_s), machineForm(u"1 234,50"_s));
    EXPECT_EQ(amount().accepted(u"1 234"_s), machineForm(u"1 234,00"_s));
    EXPECT_EQ(amount().accepted(u"-2"_s), machineForm(u"-2,00"_s));
    EXPECT_EQ(CellType::ofNumber(3).accepted(u"12"_s), u"12");
}

TEST(CellType, RefusesWhatIsNoNumber)
{
    EXPECT_FALSE(amount().accepted(u"abc"_s));
    EXPECT_FALSE(amount().accepted(u"-"_s));
    EXPECT_FALSE(amount().accepted(u"99999999999999999999"_s));
}

TEST(CellType, AlwaysTakesAnEmptyText)
{
    for (const int number : {0, 1, 2, 3, 6, 8, 10})
        EXPECT_EQ(CellType::ofNumber(number).accepted(QString()), QString());
}

TEST(CellType, KeepsNumbersReadableUnderAPointLocale)
{
    const ScopedLocale locale(pointLocale());
    EXPECT_EQ(amount().accepted(u"1234,5"_s), u"1 234.50");
    EXPECT_EQ(amount().shown(u"1 234.50"_s), u"1 234,50");
}

TEST(CellType, LetsOnlyCharactersOfNumbersIn)
{
    for (const QChar c : u"0123456789-,. "_s)
        EXPECT_TRUE(amount().takesCharacter(c)) << int(c.unicode());
    for (const QChar c : u"aE+%"_s)
        EXPECT_FALSE(amount().takesCharacter(c)) << int(c.unicode());
    EXPECT_FALSE(CellType::ofNumber(3).takesCharacter(u','));
    EXPECT_FALSE(CellType::ofNumber(3).takesCharacter(u'.'));
}

TEST(CellType, TakesDatesWithinTheirRange)
{
    const ScopedLocale norwegian(commaLocale());
    CellType type = CellType::ofNumber(0);
    EXPECT_EQ(type.accepted(u"9.3.2014"_s), u"09.03.2014");
    EXPECT_FALSE(type.accepted(u"31.2.2014"_s));
    type.minimum = u"01.01.2014"_s;
    type.maximum = u"31.12.2014"_s;
    EXPECT_EQ(type.accepted(u"1.1.2014"_s), u"01.01.2014");
    EXPECT_EQ(type.accepted(u"31.12.2014"_s), u"31.12.2014");
    EXPECT_FALSE(type.accepted(u"31.12.2013"_s));
    EXPECT_FALSE(type.accepted(u"1.1.2015"_s));
}

TEST(CellType, HasARangeForDatesOnly)
{
    CellType type = amount();
    type.minimum = u"10"_s;
    type.maximum = u"20"_s;
    EXPECT_EQ(type.accepted(u"99"_s), machineForm(u"99,00"_s));
}

TEST(CellType, TakesTimes)
{
    const CellType type = CellType::ofNumber(6);
    EXPECT_EQ(type.accepted(u"9:5"_s), u"09:05");
    EXPECT_FALSE(type.accepted(u"25:00"_s));
    EXPECT_FALSE(type.accepted(u"nå"_s));
}

TEST(CellType, TakesOnlyItemsIntoAListThatIsNotEditable)
{
    CellType type = CellType::ofNumber(8);
    type.items = u"0\t10\t15\t25"_s;
    EXPECT_EQ(type.accepted(u"15"_s), u"15");
    EXPECT_FALSE(type.accepted(u"5"_s));
    type.editable = true;
    EXPECT_EQ(type.accepted(u"5"_s), u"5");
}

TEST(CellType, TakesOnlyMarksIntoACheckCell)
{
    EXPECT_EQ(CellType::ofNumber(10).accepted(u"1"_s), u"1");
    EXPECT_EQ(CellType::ofNumber(10).accepted(u"0"_s), u"0");
    EXPECT_FALSE(CellType::ofNumber(10).accepted(u"ja"_s));
}
