#include "shell/component/Screens.h"
#include "support/Heap.h"

namespace {

class ScreenHeapTest : public ModuleTest, public ::testing::WithParamInterface<Screen>
{
protected:
    void TearDown() override
    {
        unloadForms();
        runEvents();
    }
    /// Shows the screen and closes it again, as often.
    static void openAndClose(int times)
    {
        for (int time = 0; time < times; ++time) {
            QWidget *const screen = GetParam().make().release();
            screen->setAttribute(Qt::WA_DeleteOnClose);
            screen->show();
            runEvents();
            screen->close();
            runEvents();
        }
    }
};

} // namespace

TEST_P(ScreenHeapTest, OpeningAndClosingLeavesTheHeapWhereItWas)
{
    makeParentTables();
    ASSERT_EQ(startModule(), 1);
    // What is made once, for whatever screen needs it first, is all made after some rounds.
    constexpr int kRounds = 12;
    constexpr int kTimes = 25;
    qint64 growth = 0;
    for (int round = 0; round < kRounds; ++round) {
        const qint64 before = heapInUse();
        openAndClose(kTimes);
        growth = heapInUse() - before;
        if (qAbs(growth) < kTimes * 40)
            return;
    }
    ADD_FAILURE() << "the heap grows by " << growth / kTimes << " bytes a time";
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenHeapTest, ::testing::ValuesIn(kScreens),
                         [](const auto &screen) { return screen.param.name.toStdString(); });
