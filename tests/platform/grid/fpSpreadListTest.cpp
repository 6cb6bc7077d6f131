#include "GridFixture.h"
#include "runtime/Clock.h"

#include <QToolTip>

namespace {

class StandingClock : public Clock
{
public:
    [[nodiscard]] QDateTime now() const override { return m_now; }
    void pass(qint64 milliseconds) { m_now = m_now.addMSecs(milliseconds); }

private:
    QDateTime m_now{QDate(2014, 3, 9), QTime(12, 0)};
};

/// A list of invoices: numbers falling, numbers of customers, names.
class GridList : public GridFixture
{
protected:
    GridList()
    {
        const QStringList rows[] = {{u"1012"_s, u" 10003"_s, u"Ås Grus"_s},
                                    {u"1011"_s, u" 10001"_s, u"Berg Transport"_s},
                                    {u"1010"_s, u" 10002"_s, u"Bergen Havn"_s},
                                    {u"1009"_s, u" 10001"_s, u"Anne Sand"_s}};
        for (int row = 1; row <= 4; ++row) {
            for (int col = 1; col <= 3; ++col)
                fill(col, row, rows[row - 1][col - 1]);
        }
    }
    void lock()
    {
        grid.setCurrent(kAll, kAll);
        grid.setLock(true);
        grid.setProtect(true);
    }
    /// From here on the screen listens to double clicks.
    void listen()
    {
        QObject::connect(&grid, &fpSpread::DblClick, &grid, [this](int col, int row) {
            events << u"DblClick %1 %2"_s.arg(col).arg(row);
        });
        events.clear();
    }
    int sortedColumn() const
    {
        const QHeaderView &header = *grid.horizontalHeader();
        return header.isSortIndicatorShown() ? header.sortIndicatorSection() + 1 : 0;
    }

    StandingClock clock;
    const ScopedClock inForce{clock};
};

} // namespace

TEST_F(GridList, EnterDoesWhatADoubleClickDoes)
{
    lock();
    activate(2, 3);
    listen();
    key(Qt::Key_Return);
    EXPECT_EQ(events, QStringList{u"DblClick 2 3"_s});
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(events.last(), u"DblClick 2 3"_s);
    EXPECT_EQ(events.size(), 2);
}

TEST_F(GridList, EnterOpensFromACellThatTakesInputToo)
{
    listen();
    activate(2, 3);
    key(Qt::Key_Return);
    EXPECT_EQ(events, QStringList{u"DblClick 2 3"_s});
    EXPECT_EQ(active(), std::pair(2, 3));
}

TEST_F(GridList, CtrlEnterDoesWhatADoubleClickOnTheHeaderDoes)
{
    activate(3, 2);
    listen();
    key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(events, QStringList{u"DblClick 3 0"_s});
}

TEST_F(GridList, TypingFindsANameWhereverTheUserIs)
{
    lock();
    type(u"ber"_s);
    EXPECT_EQ(active(), std::pair(1, 2));
    type(u"gen"_s);
    EXPECT_EQ(active(), std::pair(1, 3));
    EXPECT_EQ(QToolTip::text(), u"Finn: bergen"_s);
    EXPECT_EQ(events.last(), u"SelChange 1 3 1 3 at 1 3"_s);
}

TEST_F(GridList, ACapitalGoesOnWithWhatIsLookedFor)
{
    key(Qt::Key_F, Qt::ControlModifier);
    type(u"ber"_s);
    key(Qt::Key_Shift, Qt::ShiftModifier); // down, ahead of its letter
    type(u"G"_s);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(QToolTip::text(), u"Finn: berG"_s);
}

TEST_F(GridList, TypingFindsANumberInTheLeftmostColumnThatHasIt)
{
    lock();
    type(u"1009"_s);
    EXPECT_EQ(active(), std::pair(1, 4));
    clock.pass(5000);
    type(u"10002"_s);
    EXPECT_EQ(active(), std::pair(1, 3));
}

TEST_F(GridList, AHiddenColumnIsNotSearched)
{
    lock();
    grid.setColHidden(3, true);
    type(u"anne"_s);
    EXPECT_EQ(active(), std::pair(1, 1));
    EXPECT_EQ(QToolTip::text(), u"Finner ikke «anne»"_s);
}

TEST_F(GridList, APauseBeginsANewText)
{
    lock();
    type(u"b"_s);
    EXPECT_EQ(active(), std::pair(1, 2));
    clock.pass(5000);
    type(u"a"_s);
    EXPECT_EQ(active(), std::pair(1, 4));
}

TEST_F(GridList, AnotherKeyBeginsANewText)
{
    lock();
    type(u"b"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(active(), std::pair(1, 3));
    type(u"a"_s);
    EXPECT_EQ(active(), std::pair(1, 4));
}

TEST_F(GridList, BackspaceTakesALetterBack)
{
    lock();
    type(u"bergx"_s);
    EXPECT_EQ(QToolTip::text(), u"Finner ikke «bergx»"_s);
    key(Qt::Key_Backspace);
    EXPECT_EQ(QToolTip::text(), u"Finn: berg"_s);
    EXPECT_EQ(active(), std::pair(1, 2));
}

TEST_F(GridList, ABlankGoesOnWithATextAndBeginsNone)
{
    lock();
    key(Qt::Key_Space);
    EXPECT_EQ(active(), std::pair(1, 1));
    type(u"berg t"_s);
    EXPECT_EQ(active(), std::pair(1, 2));
}

TEST_F(GridList, NorwegianLettersAreFoundInEitherCase)
{
    lock();
    activate(1, 3);
    QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_Aring, u"å"_s,
                        Qt::NoModifier);
    EXPECT_EQ(active(), std::pair(1, 1));
}

TEST_F(GridList, TypingInACellThatTakesInputEditsAndCtrlFFinds)
{
    type(u"b"_s);
    EXPECT_TRUE(grid.editMode());
    key(Qt::Key_Escape);
    key(Qt::Key_F, Qt::ControlModifier);
    type(u"berg"_s);
    clock.pass(60000);
    type(u"en"_s);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(active(), std::pair(1, 3));
    key(Qt::Key_Up);
    type(u"7"_s);
    EXPECT_TRUE(grid.editMode());
}

TEST_F(GridList, CtrlFWithNothingTypedLeavesTheCellsAlone)
{
    key(Qt::Key_F, Qt::ControlModifier);
    key(Qt::Key_Backspace);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(1, 1), u"1012"_s);
}

TEST_F(GridList, F6AndCtrlTabLeaveTheGrid)
{
    for (const auto &[pressed, modifiers] :
         {std::pair(Qt::Key_F6, Qt::NoModifier), std::pair(Qt::Key_Tab, Qt::ControlModifier),
          std::pair(Qt::Key_F6, Qt::ShiftModifier),
          std::pair(Qt::Key_Backtab, Qt::ControlModifier)}) {
        grid.setFocus();
        activate(2, 2);
        key(pressed, modifiers);
        EXPECT_TRUE(button.hasFocus());
        EXPECT_EQ(active(), std::pair(2, 2));
    }
}

TEST_F(GridList, TheGridIsLeftForwardsAndBackwards)
{
    QLineEdit above;
    window.layout()->addWidget(&above);
    above.show();
    QWidget::setTabOrder(&above, &grid);
    grid.setFocus();
    key(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_TRUE(above.hasFocus());
    grid.setFocus();
    key(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(above.hasFocus());
    grid.setFocus();
    key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(button.hasFocus());
}

TEST_F(GridList, LeavingKeepsWhatIsTypedAndTellsOfTheCell)
{
    for (const auto &[pressed, modifiers] :
         {std::pair(Qt::Key_F6, Qt::NoModifier), std::pair(Qt::Key_Tab, Qt::ControlModifier)}) {
        grid.setFocus();
        activate(4, 2);
        events.clear();
        type(u"x"_s);
        key(pressed, modifiers);
        EXPECT_TRUE(button.hasFocus());
        EXPECT_EQ(events, QStringList{u"LeaveCell 4 2 -1 -1"_s});
    }
    EXPECT_EQ(at(4, 2), u"xx"_s);
}

TEST_F(GridList, SortingShowsItsArrow)
{
    EXPECT_EQ(sortedColumn(), 0);
    grid.setSortKey(3, false);
    grid.setAction(fpSpread::SortAction);
    EXPECT_EQ(sortedColumn(), 3);
    EXPECT_EQ(grid.horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    grid.setSortMark(0, true);
    EXPECT_EQ(sortedColumn(), 0);
}

TEST_F(GridList, AClickOnAnotherHeaderLeavesTheArrowWhereItIs)
{
    grid.setSortMark(3, true);
    QTest::mouseClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, headerMiddle(1));
    EXPECT_EQ(sortedColumn(), 3);
    QTest::mouseClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, headerMiddle(3));
    EXPECT_EQ(grid.horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(GridList, ACutCellShowsItsTextInATip)
{
    const auto hover = [this](int col, int row) {
        QHelpEvent event(QEvent::ToolTip, middle(col, row),
                         grid.viewport()->mapToGlobal(middle(col, row)));
        QApplication::sendEvent(grid.viewport(), &event);
        return QToolTip::text();
    };
    grid.setColWidth(3, 30);
    EXPECT_EQ(hover(3, 2), QString());
    grid.setColWidth(3, 6);
    EXPECT_EQ(hover(1, 2), QString());
    EXPECT_EQ(hover(3, 2), u"Berg Transport"_s);
}

TEST_F(GridList, ACutNumberShowsItAsTheCellWould)
{
    const ScopedLocale norwegian(commaLocale());
    CellType amount;
    amount.kind = CellKind::Float;
    amount.showThousands = true;
    setType(2, 1, amount);
    fill(2, 1, u"1234567,5"_s);
    grid.setColWidth(2, 4);
    QHelpEvent event(QEvent::ToolTip, middle(2, 1), grid.viewport()->mapToGlobal(middle(2, 1)));
    QApplication::sendEvent(grid.viewport(), &event);
    EXPECT_EQ(QToolTip::text(), u"1 234 567,50"_s);
}
