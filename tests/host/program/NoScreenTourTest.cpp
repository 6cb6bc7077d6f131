#include "host/program/HostTest.h"

using namespace Qt::StringLiterals;

namespace {

/// The host of a build without the tour.
using NoScreenTourTest = HostTest;

TEST_F(NoScreenTourTest, TourIsRefusedInOneLine)
{
    expectRefusal(host({u"--tur"_s, path(u"tur"_s)}), 1, u"bygget uten turen"_s);
    EXPECT_TRUE(files().isEmpty());
}

} // namespace
