#include "runtime/Decimal.h"

#include "runtime/Support.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// The digits as text, "-" before a negative one, "e" and the exponent behind.
QString shown(const Decimal &d)
{
    return (d.negative ? u"-"_s : u""_s) + QString::fromLatin1(d.digits.data(), d.digits.size()) +
           u'e' + QString::number(d.exponent);
}

} // namespace

TEST(Decimal, HasNoZerosAtItsEnds)
{
    EXPECT_EQ(shown(Decimal::fromInteger(1200)), u"12e4"_s);
    EXPECT_EQ(shown(Decimal::fromCurrency(tenThousandths(-50))), u"-5e-2"_s);
    EXPECT_EQ(shown(Decimal::fromDouble(0.0125, 15)), u"125e-1"_s);
    EXPECT_EQ(shown(*Decimal::read(u"-000,00120", u',')), u"-12e-2"_s);
}

TEST(Decimal, ZeroHasNeitherDigitsNorSign)
{
    for (const Decimal &zero : {Decimal(), Decimal::fromInteger(0), Decimal::fromDouble(-0.0, 7),
                                Decimal::fromCurrency(Currency()), *Decimal::read(u"-0,0e5", u',')})
        EXPECT_EQ(shown(zero), u"e0"_s);
}

TEST(Decimal, OfADoubleHasThePlacesAskedFor)
{
    EXPECT_EQ(shown(Decimal::fromDouble(1.0 / 3, 7)), u"3333333e0"_s);
    EXPECT_EQ(shown(Decimal::fromDouble(2.0 / 3, 15)), u"666666666666667e0"_s);
    EXPECT_EQ(shown(Decimal::fromDouble(9.99999999, 7)), u"1e2"_s);
    EXPECT_EQ(shown(Decimal::fromDouble(std::numeric_limits<double>::denorm_min(), 1)),
              u"5e-323"_s);
}

TEST(Decimal, RoundsHalfAwayFromZero)
{
    const auto rounded = [](QStringView text, int decimals) {
        Decimal d = *Decimal::read(text, u'.');
        d.roundTo(decimals);
        return shown(d);
    };
    EXPECT_EQ(rounded(u"1.245", 2), u"125e1"_s);
    EXPECT_EQ(rounded(u"-1.245", 2), u"-125e1"_s);
    EXPECT_EQ(rounded(u"1.2449999", 2), u"124e1"_s);
    EXPECT_EQ(rounded(u"99.995", 2), u"1e3"_s);
    EXPECT_EQ(rounded(u"0.005", 2), u"1e-1"_s);
    EXPECT_EQ(rounded(u"-0.0049", 2), u"e0"_s);
    EXPECT_EQ(rounded(u"0.0009", 2), u"e0"_s);
    EXPECT_EQ(rounded(u"0.5", 0), u"1e1"_s);
    EXPECT_EQ(rounded(u"7", 2), u"7e1"_s);
}

TEST(Decimal, TextOfMoreDigitsThanAnyNumberTakesIsNone)
{
    EXPECT_TRUE(Decimal::read(QString(100'000, u'7'), u',').has_value());
    EXPECT_FALSE(Decimal::read(QString(100'001, u'7'), u',').has_value());
}

TEST(Decimal, TellsWhetherADoubleHoldsIt)
{
    EXPECT_TRUE(Decimal::read(u"1.797e308", u'.')->fitsDouble());
    EXPECT_FALSE(Decimal::read(u"1.798e308", u'.')->fitsDouble());
    EXPECT_TRUE(Decimal::read(u"1e-9999", u'.')->fitsDouble());
}

TEST(Decimal, TextGoesToExponentFormBeyondThePlaces)
{
    const Decimal number = Decimal::fromDouble(1234.5, kDoubleDigits);
    EXPECT_EQ(number.toText(4, u',', true), u"1234,5"_s);
    EXPECT_EQ(number.toText(3, u',', true), u"1,2345E+03"_s);
    const Decimal fraction = Decimal::fromDouble(0.0125, kDoubleDigits);
    EXPECT_EQ(fraction.toText(4, u'.', true), u"0.0125"_s);
    EXPECT_EQ(fraction.toText(4, u'.', false), u".0125"_s);
    EXPECT_EQ(fraction.toText(3, u'.', false), u"1.25E-02"_s);
    EXPECT_EQ(Decimal().toText(1, u'.', false), u"0"_s);
}
