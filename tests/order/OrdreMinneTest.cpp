#include "order/OrdreMedKommandoer.h"
#include "support/Heap.h"

TEST_F(OrdreMedKommandoer, MovesBetweenOrdersLeaveTheHeapWhereItWas)
{
    for (int nr = 1; nr <= 3; ++nr)
        leggOrdre({.ordreNr = nr});
    apne();
    constexpr int kFlytt = 1000;
    const auto runde = [] {
        for (int gang = 0; gang < kFlytt; ++gang)
            klikk(gang % 2 == 0 ? u"cmdPrevious"_s : u"cmdNext"_s);
    };
    EXPECT_LT(qAbs(heapChange(2 * kFlytt, runde)), 2 * kFlytt) << "two bytes a move";
}
