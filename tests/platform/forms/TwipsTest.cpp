#include "platform/forms/Twips.h"

#include <gtest/gtest.h>

TEST(Twips, FifteenToThePixel)
{
    EXPECT_EQ(twipsToPixels(15), 1);
    EXPECT_EQ(twipsToPixels(10635), 709);
    EXPECT_EQ(pixelsToTwips(709), 10635);
    EXPECT_EQ(pixelsToTwips(twipsToPixels(1440)), 1440);
}

TEST(Twips, RoundToTheNearestPixelOnBothSidesOfZero)
{
    EXPECT_EQ(twipsToPixels(7), 0);
    EXPECT_EQ(twipsToPixels(8), 1);
    EXPECT_EQ(twipsToPixels(-7), 0);
    EXPECT_EQ(twipsToPixels(-8), -1);
    EXPECT_EQ(twipsToPixels(-20000), -1333);
}

TEST(Twips, ARectangleKeepsItsSizeWhereverItStands)
{
    EXPECT_EQ(twipsToPixels(60, 690, 1000, 360), QRect(4, 46, 67, 24));
    EXPECT_EQ(twipsToPixels(-20000, 690, 1000, 360).size(), QSize(67, 24));
}
