#include "output/ehf3/Belop.h"

#include "support/ModuleTest.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

using namespace ehf3;

constexpr Currency amount(qint64 tenThousandths)
{
    return Currency::fromTenThousandths(tenThousandths);
}

TEST(Ehf3Belop, ASingleIsTheNumberThatItShows)
{
    EXPECT_EQ(fraSingle(0.1F), amount(1000));
    EXPECT_EQ(fraSingle(-2.5F), amount(-25000));
    EXPECT_EQ(fraSingle(100000.1F), amount(1000001000));
    EXPECT_EQ(fraSingle(11.1F), amount(111000));
}

TEST(Ehf3Belop, RoundsToTheOereOnceAndAHalfAwayFromNought)
{
    EXPECT_EQ(tilHundredel(amount(50)), amount(100));
    EXPECT_EQ(tilHundredel(amount(-50)), amount(-100));
    EXPECT_EQ(tilHundredel(amount(149)), amount(100));
    EXPECT_EQ(tilHundredel(amount(-149)), amount(-100));
    // 12.345 percent of 0.81 is 0.0999945, and of 100.04 is 12.349938.
    EXPECT_EQ(prosentAv(amount(8100), amount(123450)), amount(1000));
    EXPECT_EQ(prosentAv(amount(1000400), amount(123450)), amount(123500));
    // 0.0049999 must not become 0.0050 on its way.
    EXPECT_EQ(prosentAv(amount(49999), amount(1000)), amount(0));
    EXPECT_EQ(prosentAv(amount(50000), amount(1000)), amount(100));
    EXPECT_EQ(prosentAv(amount(-50000), amount(1000)), amount(-100));
}

TEST(Ehf3Belop, ARatioIsTheNearestTenThousandth)
{
    EXPECT_EQ(forhold(amount(10000), amount(30000)), amount(3333));
    EXPECT_EQ(forhold(amount(20000), amount(-30000)), amount(-6667));
    EXPECT_EQ(forhold(amount(-1), amount(-20000)), amount(1));
}

TEST(Ehf3Belop, WhatDoesNotFitRaises)
{
    const Currency most = amount(std::numeric_limits<qint64>::max());
    EXPECT_EQ(raised([&] { static_cast<void>(prosentAv(most, amount(2000000))); }),
              errors::kOverflow);
    EXPECT_EQ(raised([&] { static_cast<void>(forhold(most, amount(1))); }), errors::kOverflow);
}

TEST(Ehf3Belop, ANumberHasAPointAndNoMoreDecimalsThanItNeeds)
{
    EXPECT_EQ(tall(amount(0), 2), u"0.00"_s);
    EXPECT_EQ(tall(amount(0), 0), u"0"_s);
    EXPECT_EQ(tall(amount(-50), 2), u"-0.005"_s);
    EXPECT_EQ(tall(amount(333333), 2), u"33.3333"_s);
    EXPECT_EQ(tall(amount(12345000000), 2), u"1234500.00"_s);
    EXPECT_EQ(tall(amount(12500), 0), u"1.25"_s);
    EXPECT_EQ(tall(amount(-100000), 0), u"-10"_s);
    EXPECT_EQ(tall(amount(std::numeric_limits<qint64>::min()), 2), u"-922337203685477.5808"_s);
}

} // namespace
