#include "benchmarks/support/Aim.h"

using bench::Aim;

TEST(BenchAim, ARatioIsJudgedAndNotTheValue)
{
    EXPECT_FALSE(Aim::ratioAtMost(1.3).isMissed(900, 1.3));
    EXPECT_TRUE(Aim::ratioAtMost(1.3).isMissed(0.9, 1.31));
    EXPECT_FALSE(Aim::ratioAtLeast(2).isMissed(1, 2));
    EXPECT_TRUE(Aim::ratioAtLeast(2).isMissed(3, 1.99));
}

TEST(BenchAim, AValueIsJudgedAndNotTheRatio)
{
    EXPECT_FALSE(Aim::valueAtMost(16).isMissed(16, 50));
    EXPECT_TRUE(Aim::valueAtMost(16).isMissed(16.1, 1));
}

TEST(BenchAim, WithoutAnAimNothingIsMissed)
{
    EXPECT_FALSE(Aim::none().isMissed(1e9, 1e9));
    EXPECT_EQ(Aim::none().text("ms"), "-");
}

TEST(BenchAim, IsToldWithItsSideAndItsUnit)
{
    EXPECT_EQ(Aim::ratioAtMost(1.3).text("ms"), "<= 1.3 x");
    EXPECT_EQ(Aim::ratioAtLeast(2).text("/s"), ">= 2 x");
    EXPECT_EQ(Aim::valueAtMost(16).text("ms"), "<= 16 ms");
}
