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
    constexpr int kTimes = 25;
    constexpr qint64 kMost = kTimes * 40;
    const qint64 change = heapChange(kMost, [] { openAndClose(kTimes); });
    EXPECT_LT(qAbs(change), kMost) << "the heap grows by " << change / kTimes << " bytes a time";
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenHeapTest, ::testing::ValuesIn(kScreens),
                         [](const auto &screen) { return screen.param.name.toStdString(); });
