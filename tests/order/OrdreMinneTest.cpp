#include "order/OrdreMedKommandoer.h"
#include "support/Heap.h"

TEST_F(OrdreMedKommandoer, MovesBetweenOrdersLeaveTheHeapWhereItWas)
{
    const auto flytt = [](int ganger) {
        for (int gang = 0; gang < ganger; ++gang)
            klikk(gang % 2 == 0 ? u"cmdPrevious"_s : u"cmdNext"_s);
    };
    for (int nr = 1; nr <= 3; ++nr)
        leggOrdre({.ordreNr = nr});
    apne();
    flytt(1000);
    const qint64 before = heapInUse();
    flytt(2000);
    EXPECT_LT(heapInUse() - before, 4096) << "two bytes a move";
}
