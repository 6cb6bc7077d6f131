#include "GridFixture.h"

#include <QClipboard>
#include <QImage>

namespace {

class fpSpreadKeys : public GridFixture
{
};

} // namespace

TEST_F(fpSpreadKeys, ArrowsMoveAndStopAtTheEdges)
{
    key(Qt::Key_Right);
    EXPECT_EQ(active(), std::pair(2, 1));
    key(Qt::Key_Down);
    EXPECT_EQ(active(), std::pair(2, 2));
    key(Qt::Key_Left);
    key(Qt::Key_Left);
    EXPECT_EQ(active(), std::pair(1, 2));
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_EQ(active(), std::pair(1, 1));
}

TEST_F(fpSpreadKeys, HiddenColumnsAreSteppedOver)
{
    grid.setColHidden(2, true);
    grid.setColHidden(5, true);
    key(Qt::Key_Right);
    EXPECT_EQ(active(), std::pair(3, 1));
    key(Qt::Key_Tab);
    EXPECT_EQ(active(), std::pair(4, 1));
    key(Qt::Key_Tab);
    EXPECT_EQ(active(), std::pair(1, 2));
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(active(), std::pair(4, 1));
    key(Qt::Key_Right);
    EXPECT_EQ(active(), std::pair(4, 1));
}

TEST_F(fpSpreadKeys, HomeEndAndTheCorners)
{
    fill(2, 7, u"x"_s);
    activate(3, 4);
    key(Qt::Key_Home);
    EXPECT_EQ(active(), std::pair(1, 4));
    key(Qt::Key_End);
    EXPECT_EQ(active(), std::pair(5, 4));
    key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(active(), std::pair(1, 1));
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(active(), std::pair(5, 7));
    key(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(active(), std::pair(5, 10));
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(active(), std::pair(1, 10));
    key(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(active(), std::pair(1, 1));
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(active(), std::pair(5, 1));
}

TEST_F(fpSpreadKeys, PageKeysMoveByAPageAndScroll)
{
    grid.setMaxRows(1000);
    key(Qt::Key_PageDown);
    const int page = grid.activeRow() - 1;
    EXPECT_GT(page, 3);
    key(Qt::Key_PageDown);
    EXPECT_EQ(grid.activeRow(), 1 + 2 * page);
    EXPECT_TRUE(grid.viewport()->rect().contains(middle(1, grid.activeRow())));
    key(Qt::Key_PageUp);
    key(Qt::Key_PageUp);
    key(Qt::Key_PageUp);
    EXPECT_EQ(grid.activeRow(), 1);
}

TEST_F(fpSpreadKeys, EnterMovesDownAndShiftEnterUp)
{
    activate(2, 9);
    key(Qt::Key_Return);
    EXPECT_EQ(active(), std::pair(2, 10));
    key(Qt::Key_Enter);
    EXPECT_EQ(active(), std::pair(2, 10));
    key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(active(), std::pair(2, 9));
}

TEST_F(fpSpreadKeys, EnterAndArrowsEndAnEditAndMove)
{
    type(u"a"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(active(), std::pair(1, 2));
    type(u"b"_s);
    key(Qt::Key_Up);
    EXPECT_EQ(active(), std::pair(1, 1));
    EXPECT_EQ(at(1, 1), u"a");
    EXPECT_EQ(at(1, 2), u"b");
}

TEST_F(fpSpreadKeys, EnterInACellThatTakesNoInputIsLeftToTheWindow)
{
    struct Counter : QObject
    {
        int enters = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            enters += event->type() == QEvent::KeyPress &&
                      static_cast<QKeyEvent *>(event)->key() == Qt::Key_Return;
            return false;
        }
    } counter;
    window.installEventFilter(&counter);
    key(Qt::Key_Return);
    EXPECT_EQ(counter.enters, 0);
    grid.setCurrent(kAll, kAll);
    grid.setLock(true);
    grid.setProtect(true);
    key(Qt::Key_Return);
    EXPECT_EQ(counter.enters, 1);
    EXPECT_EQ(active(), std::pair(1, 2));
}

TEST_F(fpSpreadKeys, TabGoesToTheNextRowAndLeavesTheGridAtTheEnd)
{
    activate(5, 9);
    key(Qt::Key_Tab);
    EXPECT_EQ(active(), std::pair(1, 10));
    activate(5, 10);
    key(Qt::Key_Tab);
    EXPECT_EQ(active(), std::pair(5, 10));
    EXPECT_TRUE(button.hasFocus());
    EXPECT_EQ(events.last(), u"LeaveCell 5 10 -1 -1");
}

TEST_F(fpSpreadKeys, TabOutOfTheLastCellWhileEditingKeepsTheText)
{
    activate(5, 10);
    type(u"slutt"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(at(5, 10), u"slutt");
    EXPECT_TRUE(button.hasFocus());
    EXPECT_EQ(events.count(u"LeaveCell 5 10 -1 -1"_s), 1);
}

TEST_F(fpSpreadKeys, BacktabLeavesTheGridAtTheStart)
{
    QLineEdit before(&window);
    window.layout()->addWidget(&before);
    before.show();
    QWidget::setTabOrder(&before, &grid);
    grid.setFocus();
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(before.hasFocus());
}

TEST_F(fpSpreadKeys, EachMoveTellsOfLeavingAndOfTheSelection)
{
    key(Qt::Key_Right);
    EXPECT_EQ(events, (QStringList{u"LeaveCell 1 1 2 1"_s, u"SelChange 2 1 2 1 at 2 1"_s}));
    events.clear();
    key(Qt::Key_Up); // there is no row above
    EXPECT_FALSE(events.contains(u"LeaveCell 2 1 2 1"_s));
}

TEST_F(fpSpreadKeys, LeavingComesAfterTheTypedTextIsKept)
{
    QString seen;
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid, [&] { seen = at(1, 1); });
    type(u"25"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(seen, u"25");
}

TEST_F(fpSpreadKeys, CancelKeepsTheCell)
{
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid,
                     [](int, int, int, int, bool *cancel) { *cancel = true; });
    key(Qt::Key_Right);
    EXPECT_EQ(active(), std::pair(1, 1));
    type(u"a"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(active(), std::pair(1, 1));
    EXPECT_EQ(at(1, 1), u"a");
}

TEST_F(fpSpreadKeys, AScreenSendsTheUserElsewhere)
{
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid, [&](int col, int row, int, int, bool *) {
        if (col != 1)
            return;
        activate(3, row);
        grid.setEditMode(true);
    });
    type(u"A1"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(active(), std::pair(3, 1));
    ASSERT_TRUE(grid.editMode());
    type(u"2"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(at(1, 1), u"A1");
    EXPECT_EQ(at(3, 1), u"2");
    EXPECT_EQ(active(), std::pair(4, 1));
    EXPECT_EQ(events.filter(u"LeaveCell"_s).size(), 2);
}

TEST_F(fpSpreadKeys, SendingTheUserBackToTheSameCellCountsToo)
{
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid,
                     [&](int col, int row, int, int, bool *) { activate(col, row); });
    key(Qt::Key_Right);
    EXPECT_EQ(active(), std::pair(1, 1));
}

TEST_F(fpSpreadKeys, AScreenMayShrinkTheGridWhileACellIsLeft)
{
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid, [&] { grid.setMaxRows(3); });
    activate(1, 3);
    key(Qt::Key_Down);
    EXPECT_EQ(active(), std::pair(1, 3));
}

TEST_F(fpSpreadKeys, AChangedCellThatLosesTheFocusIsLeft)
{
    activate(3, 1);
    type(u"2"_s);
    button.setFocus();
    EXPECT_EQ(at(3, 1), u"2");
    EXPECT_EQ(events, (QStringList{u"LeaveCell 3 1 -1 -1"_s}));
    EXPECT_EQ(active(), std::pair(3, 1));
}

TEST_F(fpSpreadKeys, AnUnchangedCellThatLosesTheFocusIsNotLeft)
{
    activate(3, 1);
    button.setFocus();
    grid.setFocus();
    key(Qt::Key_F2);
    button.setFocus();
    EXPECT_FALSE(grid.editMode());
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(fpSpreadKeys, ACellEmptiedWithDeleteThatLosesTheFocusIsLeftOnce)
{
    fill(3, 1, u"2"_s);
    activate(3, 1);
    key(Qt::Key_Delete);
    button.setFocus();
    grid.setFocus();
    button.setFocus();
    EXPECT_EQ(events, (QStringList{u"LeaveCell 3 1 -1 -1"_s}));
}

TEST_F(fpSpreadKeys, DeleteInALockedCellChangesNothingAndLeavesNothing)
{
    fill(3, 1, u"2"_s);
    activate(3, 1);
    grid.setCurrent(kAll, kAll);
    grid.setLock(true);
    grid.setProtect(true);
    for (const auto &[pressed, modifiers] : {std::pair(Qt::Key_Delete, Qt::NoModifier),
                                             {Qt::Key_X, Qt::ControlModifier},
                                             {Qt::Key_V, Qt::ControlModifier},
                                             {Qt::Key_Backspace, Qt::NoModifier}})
        key(pressed, modifiers);
    button.setFocus();
    EXPECT_EQ(at(3, 1), u"2");
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(fpSpreadKeys, KeysOfTheWindowAreLeftToIt)
{
    for (const auto &[pressed, modifiers] : {std::pair(Qt::Key_P, Qt::ControlModifier),
                                             {Qt::Key_F4, Qt::AltModifier},
                                             {Qt::Key_L, Qt::AltModifier},
                                             {Qt::Key_F1, Qt::NoModifier},
                                             {Qt::Key_S, Qt::ControlModifier}}) {
        QKeyEvent event(QEvent::KeyPress, pressed, modifiers);
        QApplication::sendEvent(&grid, &event);
        EXPECT_FALSE(event.isAccepted()) << int(pressed);
    }
    EXPECT_EQ(active(), std::pair(1, 1));
    EXPECT_FALSE(grid.editMode());
}

TEST_F(fpSpreadKeys, ShiftExtendsTheSelection)
{
    activate(2, 2);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(active(), std::pair(2, 2));
    EXPECT_EQ(grid.selectedRowCount(), 2);
    EXPECT_EQ(events, (QStringList{u"SelChange 2 2 2 3 at 2 2"_s, u"SelChange 2 2 3 3 at 2 2"_s}));
    key(Qt::Key_Up, Qt::ShiftModifier);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(grid.firstSelectedRow(), 1);
    EXPECT_EQ(grid.selectedRowCount(), 2);
    key(Qt::Key_Down);
    EXPECT_EQ(grid.selectedRowCount(), 1);
}

TEST_F(fpSpreadKeys, CopyGivesTheBlockAsTabSeparatedText)
{
    fill(1, 1, u"a"_s);
    fill(2, 1, u"b"_s);
    fill(3, 1, u"med\ttab"_s);
    fill(1, 2, u"c"_s);
    grid.setColHidden(2, true);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"a");
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"a\tmed tab\nc\t\n");
}

TEST_F(fpSpreadKeys, ACopiedCellOfSeveralLinesStandsInOne)
{
    fill(1, 1, u"a\r\nb\rc\nd"_s);
    fill(1, 2, u"e"_s);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"a b c d\ne\n");
}

TEST_F(fpSpreadKeys, CutCopiesAndEmpties)
{
    fill(1, 1, u"a"_s);
    fill(1, 2, u"b"_s);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"a\nb\n");
    EXPECT_EQ(grid.dataRowCnt(), 0);
}

TEST_F(fpSpreadKeys, PasteReplacesTheActiveCellsText)
{
    fill(1, 1, u"a"_s);
    QGuiApplication::clipboard()->setText(u"limt"_s);
    key(Qt::Key_V, Qt::ControlModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(at(1, 1), u"limt");
}

TEST_F(fpSpreadKeys, AClipboardWithoutTextLeavesTheCellAsItIs)
{
    fill(1, 1, u"a"_s);
    QGuiApplication::clipboard()->setImage(QImage(1, 1, QImage::Format_RGB32));
    key(Qt::Key_V, Qt::ControlModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(at(1, 1), u"a");
}

TEST_F(fpSpreadKeys, TabsAndLineEndsPastedIntoAnOpenCellPartNothing)
{
    CellType list = CellType::ofNumber(8);
    list.editable = true;
    setType(2, 1, list);
    for (const int col : {1, 2}) {
        activate(col, 1);
        QGuiApplication::clipboard()->setText(u"a\tb\r\nc\n"_s);
        key(Qt::Key_F2);
        key(Qt::Key_V, Qt::ControlModifier);
        key(Qt::Key_Return);
        EXPECT_EQ(at(col, 1), u"a b c");
    }
    // A cell of a spreadsheet comes with a line end.
    setType(3, 1, CellType::ofNumber(2));
    activate(3, 1);
    QGuiApplication::clipboard()->setText(u"1234\r\n"_s);
    key(Qt::Key_F2);
    key(Qt::Key_V, Qt::ControlModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(at(3, 1).first(4), u"1234");
}

TEST_F(fpSpreadKeys, APastedTextThatIsNoNumberIsRefused)
{
    setType(3, 1, CellType::ofNumber(2));
    fill(3, 1, u" 100,00"_s);
    activate(3, 1);
    for (const QString &text : {u"abc"_s, u"12 kr"_s, u"1e5"_s, QString(100000, u'9')}) {
        QGuiApplication::clipboard()->setText(text);
        key(Qt::Key_V, Qt::ControlModifier);
        key(Qt::Key_Return);
        EXPECT_EQ(at(3, 1), u" 100,00") << text.left(10).toStdString();
        activate(3, 1);
    }
}

TEST_F(fpSpreadKeys, AllOfALargeGridIsCopiedAndEmptied)
{
    constexpr int kRows = 100000;
    grid.setRedraw(false);
    grid.setMaxRows(kRows);
    for (int row = 1; row <= kRows; ++row)
        fill(2, row, u"x"_s);
    grid.setRedraw(true);
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grid.selectedRowCount(), kRows);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"\tx\t\t\t\n"_s.repeated(kRows));
    key(Qt::Key_Delete);
    EXPECT_EQ(grid.dataRowCnt(), 0);
}

TEST_F(fpSpreadKeys, ControlASelectsAll)
{
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grid.selectedRowCount(), 10);
    EXPECT_EQ(events, (QStringList{u"SelChange 1 1 5 10 at 1 1"_s}));
    EXPECT_EQ(active(), std::pair(1, 1));
}

TEST_F(fpSpreadKeys, RowSelectChoosesWholeRows)
{
    grid.setRowSelect(true);
    key(Qt::Key_Down);
    EXPECT_EQ(events.last(), u"SelChange 1 2 5 2 at 1 2");
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(events.last(), u"SelChange 1 2 5 3 at 1 2");
}

TEST_F(fpSpreadKeys, EscapeWithoutAnEditIsLeftToTheWindow)
{
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&grid, &escape);
    EXPECT_FALSE(escape.isAccepted());
}
