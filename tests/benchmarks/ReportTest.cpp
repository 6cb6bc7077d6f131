#include "benchmarks/support/Report.h"

TEST(BenchReport, TheMiddleOneIsTheUpperOfTwo)
{
    EXPECT_EQ(bench::median({3, 1, 2}), 2);
    EXPECT_EQ(bench::median({4, 1, 3, 2}), 3);
    EXPECT_EQ(bench::median({7}), 7);
}

TEST(BenchReport, EachGoesFirstInEveryOtherRound)
{
    std::string order;
    const bench::Pair pair = bench::inTurn(
        4,
        [&] {
            order += 'o';
            return 6.0;
        },
        [&] {
            order += 'p';
            return 2.0;
        });
    EXPECT_EQ(order, "pooppoop");
    EXPECT_EQ(pair.ours, 6);
    EXPECT_EQ(pair.plain, 2);
    EXPECT_EQ(pair.ratio, 3);
}

TEST(BenchReport, TheRatioIsTheMiddleOneOfTheRounds)
{
    // Ratios of 8, 2 and 1, where that of the middle costs is 8 to 3.
    std::vector<double> ours{8, 6, 9};
    std::vector<double> plain{1, 3, 9};
    size_t oursAt = 0, plainAt = 0;
    const bench::Pair pair =
        bench::inTurn(3, [&] { return ours[oursAt++]; }, [&] { return plain[plainAt++]; });
    EXPECT_EQ(pair.ours, 8);
    EXPECT_EQ(pair.plain, 3);
    EXPECT_EQ(pair.ratio, 2);
}

TEST(BenchReport, AmountsHaveTwoDecimalsBelowTen)
{
    EXPECT_EQ(bench::amount(9.876, "ms"), "9.88 ms");
    EXPECT_EQ(bench::amount(118.26, "ms"), "118.3 ms");
}
