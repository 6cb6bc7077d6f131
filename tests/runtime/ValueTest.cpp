#include "runtime/Value.h"

#include "runtime/Conversions.h"
#include "runtime/Moment.h"
#include "runtime/Support.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

const QDateTime kMorning = utcMoment(QDate(2014, 3, 9), QTime(6, 0));

Value smallInt(int v)
{
    return Value(static_cast<qint16>(v));
}
Value text(const QString &t)
{
    return Value(t);
}
Value bytes()
{
    return Value(QByteArray("ab"));
}

class ValueTest : public testing::Test
{
    ScopedLocale m_comma{commaLocale()};
};

/// The errors that the nine conversions raise for `value`, in the order of the header.
std::vector<int> errorsOf(const Value &value)
{
    return {errorOf([&] { (void)value.toText(); }),    errorOf([&] { (void)value.toLong(); }),
            errorOf([&] { (void)value.toInteger(); }), errorOf([&] { (void)value.toSingle(); }),
            errorOf([&] { (void)value.toDouble(); }),  errorOf([&] { (void)value.toCurrency(); }),
            errorOf([&] { (void)value.toDate(); }),    errorOf([&] { (void)value.toBoolean(); }),
            errorOf([&] { (void)value.toBytes(); })};
}

} // namespace

TEST_F(ValueTest, KnowsItsType)
{
    EXPECT_EQ(Value().type(), DataType::Empty);
    EXPECT_EQ(smallInt(1).type(), DataType::SmallInt);
    EXPECT_EQ(Value(1).type(), DataType::Integer);
    EXPECT_EQ(Value(1.0F).type(), DataType::Single);
    EXPECT_EQ(Value(1.0).type(), DataType::Double);
    EXPECT_EQ(Value(Currency()).type(), DataType::Currency);
    EXPECT_EQ(Value(kMorning).type(), DataType::Date);
    EXPECT_EQ(Value(true).type(), DataType::Boolean);
    EXPECT_EQ(text(u"x"_s).type(), DataType::VarWChar);
    EXPECT_EQ(bytes().type(), DataType::LongVarBinary);
}

TEST_F(ValueTest, TypesHaveTheCodesOfTheDatabaseInterface)
{
    EXPECT_EQ(static_cast<int>(DataType::SmallInt), 2);
    EXPECT_EQ(static_cast<int>(DataType::Integer), 3);
    EXPECT_EQ(static_cast<int>(DataType::Single), 4);
    EXPECT_EQ(static_cast<int>(DataType::Double), 5);
    EXPECT_EQ(static_cast<int>(DataType::Currency), 6);
    EXPECT_EQ(static_cast<int>(DataType::Date), 7);
    EXPECT_EQ(static_cast<int>(DataType::Boolean), 11);
    EXPECT_EQ(static_cast<int>(DataType::VarWChar), 202);
    EXPECT_EQ(static_cast<int>(DataType::LongVarBinary), 205);
}

TEST_F(ValueTest, NullRaisesInvalidUseOfNull)
{
    EXPECT_TRUE(Value().isNull());
    EXPECT_FALSE(text(QString()).isNull());
    EXPECT_EQ(errorsOf(Value()), std::vector<int>(9, 94));
}

TEST_F(ValueTest, BytesReadAsBytesOnly)
{
    EXPECT_EQ(errorsOf(bytes()), (std::vector<int>{13, 13, 13, 13, 13, 13, 13, 13, 0}));
    EXPECT_EQ(bytes().toBytes(), QByteArray("ab"));
    for (const Value &value : {smallInt(1), Value(1), Value(1.0F), Value(1.0), Value(Currency()),
                               Value(kMorning), Value(true), text(u"ab"_s)})
        EXPECT_EQ(errorOf([&] { (void)value.toBytes(); }), 13);
}

TEST_F(ValueTest, TextThatDoesNotReadRaisesTypeMismatch)
{
    EXPECT_EQ(errorsOf(text(u"abc"_s)), (std::vector<int>{0, 13, 13, 13, 13, 13, 13, 13, 13}));
    EXPECT_EQ(errorsOf(text(u""_s)), (std::vector<int>{0, 13, 13, 13, 13, 13, 13, 13, 13}));
}

TEST_F(ValueTest, TextOfNumbersHasNoLeadingBlankAndTheMachinesMark)
{
    EXPECT_EQ(smallInt(-7).toText(), u"-7"_s);
    EXPECT_EQ(Value(1000000).toText(), u"1000000"_s);
    EXPECT_EQ(Value(0.1F).toText(), u"0,1"_s);
    EXPECT_EQ(Value(-0.5).toText(), u"-0,5"_s);
    EXPECT_EQ(Value(123456789.0F).toText(), u"1,234568E+08"_s);
    EXPECT_EQ(Value(1.0 / 3).toText(), u"0,333333333333333"_s);
    EXPECT_EQ(Value(tenThousandths(-12345)).toText(), u"-1,2345"_s);
    EXPECT_EQ(Value(tenThousandths(12500000)).toText(), u"1250"_s);
    const ScopedLocale point(pointLocale());
    EXPECT_EQ(Value(0.5).toText(), u"0.5"_s);
    EXPECT_EQ(Value(tenThousandths(-12345)).toText(), u"-1.2345"_s);
}

TEST_F(ValueTest, TextOfNumbersIsReadBack)
{
    for (const MachineLocale &locale : {commaLocale(), pointLocale()}) {
        const ScopedLocale scope(locale);
        for (const double number : {0.0, -0.5, 1234.5, 1e20, -2.5e-9}) {
            EXPECT_EQ(text(Value(number).toText()).toDouble(), number);
            const auto single = static_cast<float>(number);
            EXPECT_EQ(text(Value(single).toText()).toSingle(), single);
        }
    }
}

TEST_F(ValueTest, TextOfDatesAndTruths)
{
    EXPECT_EQ(Value(utcMoment(QDate(2014, 3, 9))).toText(), u"09.03.2014"_s);
    EXPECT_EQ(Value(kMorning).toText(), u"09.03.2014 06:00:00"_s);
    EXPECT_EQ(text(Value(kMorning).toText()).toDate(), kMorning);
    EXPECT_EQ(Value(true).toText(), u"True"_s);
    EXPECT_EQ(Value(false).toText(), u"False"_s);
    EXPECT_EQ(text(u" x "_s).toText(), u" x "_s);
    EXPECT_EQ(errorOf([] { (void)Value(QDateTime()).toText(); }), 13);
}

TEST_F(ValueTest, WholeNumbers)
{
    EXPECT_EQ(Value(2147483647).toLong(), 2147483647);
    EXPECT_EQ(smallInt(-5).toLong(), -5);
    EXPECT_EQ(Value(2.5).toLong(), 2);
    EXPECT_EQ(Value(tenThousandths(35000)).toLong(), 4);
    EXPECT_EQ(Value(tenThousandths(34999)).toInteger(), 3);
    EXPECT_EQ(text(u"1 234,5"_s).toLong(), 1234);
    EXPECT_EQ(Value(true).toInteger(), -1);
    EXPECT_EQ(Value(false).toLong(), 0);
    EXPECT_EQ(errorOf([] { (void)Value(40000).toInteger(); }), 6);
    EXPECT_EQ(errorOf([] { (void)Value(3e9).toLong(); }), 6);
    EXPECT_EQ(errorOf([] { (void)Value(std::nan("")).toLong(); }), 6);
}

TEST_F(ValueTest, FloatingNumbers)
{
    EXPECT_EQ(Value(0.1F).toDouble(), double{0.1F});
    EXPECT_EQ(Value(0.1).toSingle(), 0.1F);
    EXPECT_EQ(text(u"0,1"_s).toSingle(), 0.1F);
    EXPECT_EQ(Value(tenThousandths(12345)).toDouble(), 1.2345);
    EXPECT_EQ(Value(true).toDouble(), -1.0);
    const float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(Value(double{largest}).toSingle(), largest);
    EXPECT_EQ(Value(-std::nextafter(double{largest}, HUGE_VAL)).toSingle(), -largest);
    EXPECT_EQ(errorOf([] { (void)Value(3.5e38).toSingle(); }), 6);
    EXPECT_EQ(errorOf([] { (void)Value(0x1.ffffffp127).toSingle(); }), 6);
    EXPECT_EQ(errorOf([] { (void)Value(std::nan("")).toSingle(); }), 6);
}

TEST_F(ValueTest, Amounts)
{
    EXPECT_EQ(Value(tenThousandths(kSmallestCount)).toCurrency(), tenThousandths(kSmallestCount));
    EXPECT_EQ(text(u"922337203685477,5807"_s).toCurrency(), tenThousandths(kLargestCount));
    EXPECT_EQ(Value(7).toCurrency(), Currency::fromInteger(7));
    EXPECT_EQ(Value(0.1F).toCurrency(), tenThousandths(1000));
    EXPECT_EQ(Value(1.00005).toCurrency(), tenThousandths(10001));
    EXPECT_EQ(errorOf([] { (void)Value(1e15).toCurrency(); }), 6);
}

TEST_F(ValueTest, ANumberCountsAsDaysFromTheZeroDate)
{
    EXPECT_EQ(Value(0).toDate(), dateZero());
    EXPECT_EQ(Value(41707.25).toDate(), kMorning);
    EXPECT_EQ(Value(kMorning).toDouble(), 41707.25);
    EXPECT_EQ(Value(kMorning).toLong(), 41707);
    // Before the zero date the time of day still counts onwards.
    const QDateTime before = utcMoment(QDate(1899, 12, 29), QTime(6, 0));
    EXPECT_EQ(Value(-1.25).toDate(), before);
    EXPECT_EQ(Value(before).toDouble(), -1.25);
    EXPECT_EQ(Value(kMorning).toDate(), kMorning);
    EXPECT_EQ(text(u"9.3.14 06:00"_s).toDate(), kMorning);
}

TEST_F(ValueTest, DatesAtTheEndsOfTheirRange)
{
    EXPECT_EQ(Value(-657434).toDate().date(), QDate(100, 1, 1));
    EXPECT_EQ(Value(2958465).toDate().date(), QDate(9999, 12, 31));
    for (const double days : {-657435.0, 2958466.0, 2958465.999999999, 1e300, std::nan("")})
        EXPECT_EQ(errorOf([=] { (void)Value(days).toDate(); }), 6) << days;
    EXPECT_EQ(errorOf([] { (void)Value(QDateTime()).toDouble(); }), 13);
}

TEST_F(ValueTest, Truths)
{
    EXPECT_TRUE(Value(true).toBoolean());
    EXPECT_FALSE(Value(false).toBoolean());
    EXPECT_TRUE(smallInt(-1).toBoolean());
    EXPECT_TRUE(Value(1).toBoolean());
    EXPECT_TRUE(Value(0.001).toBoolean());
    EXPECT_FALSE(Value(Currency()).toBoolean());
    EXPECT_TRUE(text(u" true "_s).toBoolean());
    EXPECT_FALSE(text(u"FALSE"_s).toBoolean());
    EXPECT_TRUE(text(u"-1"_s).toBoolean());
    EXPECT_FALSE(text(u"0,0"_s).toBoolean());
}

TEST_F(ValueTest, EqualsTheSameTypeWithTheSameContent)
{
    EXPECT_EQ(Value(), Value());
    EXPECT_NE(Value(), Value(0));
    EXPECT_EQ(Value(1), Value(1));
    EXPECT_NE(Value(1), Value(2));
    EXPECT_NE(Value(1), smallInt(1));
    EXPECT_NE(Value(1), Value(1.0));
    EXPECT_EQ(text(u"a"_s), text(u"a"_s));
    EXPECT_NE(text(u"a"_s), text(u"A"_s));
    EXPECT_EQ(Value(tenThousandths(1)), Value(tenThousandths(1)));
}
