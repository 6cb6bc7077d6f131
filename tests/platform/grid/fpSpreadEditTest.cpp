#include "GridFixture.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QInputMethodEvent>

namespace {

class fpSpreadEdit : public GridFixture
{
protected:
    static CellType list(bool editable)
    {
        CellType type = CellType::ofNumber(8);
        type.items = u"0\t10\t15\t25"_s;
        type.editable = editable;
        return type;
    }
    QComboBox *combo() const { return qobject_cast<QComboBox *>(editor()); }
    /// The queued end of an edit whose list was closed. The offscreen platform makes a list the
    /// focus window and gives the focus to none when it closes.
    void settle()
    {
        QApplication::processEvents();
        window.activateWindow();
        QApplication::processEvents();
    }
};

} // namespace

TEST_F(fpSpreadEdit, ANumberIsEditedWithTheDecimalsThatItDoesNotShow)
{
    const ScopedLocale norwegian(commaLocale());
    CellType quantity;
    quantity.kind = CellKind::Float;
    quantity.shownDecimals = 1;
    setType(1, 1, quantity);
    fill(1, 1, u"1,25"_s);
    EXPECT_EQ(grid.model()->index(0, 0).data(Qt::AccessibleTextRole), u"1,3"_s);
    activate(1, 1);
    key(Qt::Key_F2);
    EXPECT_EQ(qobject_cast<QLineEdit *>(editor())->text(), u"1,25"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(at(1, 1), u"1,25"_s);
}

TEST_F(fpSpreadEdit, TypingGoesOnAtTheEndOfTheText)
{
    fill(1, 1, u"ab"_s);
    type(u"c"_s);
    EXPECT_TRUE(grid.editMode());
    type(u"d"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(at(1, 1), u"abcd");
}

TEST_F(fpSpreadEdit, ALetterComposedOfTwoKeysStartsAnEdit)
{
    fill(2, 1, u"a"_s);
    for (const bool replaces : {false, true}) {
        grid.setEditModeReplace(replaces);
        activate(2, 1);
        QInputMethodEvent composed;
        composed.setCommitString(u"ü"_s);
        QCoreApplication::sendEvent(&grid, &composed);
        key(Qt::Key_B);
        key(Qt::Key_Return);
        EXPECT_EQ(at(2, 1), replaces ? u"üb" : u"aüb");
    }
}

TEST_F(fpSpreadEdit, ACharacterOfAnyPlaneStartsAnEdit)
{
    const QString lorry = u"\U0001F69B"_s;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, lorry);
    QApplication::sendEvent(&grid, &press);
    EXPECT_TRUE(grid.editMode());
    key(Qt::Key_Tab);
    EXPECT_EQ(at(1, 1), lorry);
}

TEST_F(fpSpreadEdit, TypingReplacesTheTextWhenSwitched)
{
    grid.setEditModeReplace(true);
    fill(1, 1, u"ab"_s);
    type(u"cd"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(at(1, 1), u"cd");
}

TEST_F(fpSpreadEdit, F2GoesOnWithTheTextEvenWhenTypingReplaces)
{
    grid.setEditModeReplace(true);
    fill(1, 1, u"ab"_s);
    key(Qt::Key_F2);
    ASSERT_TRUE(grid.editMode());
    type(u"c"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(at(1, 1), u"abc");
}

TEST_F(fpSpreadEdit, EscapeBringsTheTextBack)
{
    fill(1, 1, u"ab"_s);
    type(u"xyz"_s);
    key(Qt::Key_Escape);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(1, 1), u"ab");
    EXPECT_TRUE(grid.hasFocus());
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(fpSpreadEdit, DeleteEmptiesTheCellAndBackspaceStartsAfresh)
{
    fill(1, 1, u"ab"_s);
    key(Qt::Key_Delete);
    EXPECT_EQ(at(1, 1), QString());
    EXPECT_FALSE(grid.editMode());
    fill(1, 1, u"ab"_s);
    key(Qt::Key_Backspace);
    type(u"c"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(at(1, 1), u"c");
}

TEST_F(fpSpreadEdit, ProtectedAndLockedCellsRefuseEdits)
{
    fill(1, 1, u"ab"_s);
    grid.setCurrent(1, 1);
    grid.setLock(true);
    grid.setProtect(true);
    type(u"c"_s);
    EXPECT_FALSE(grid.editMode());
    key(Qt::Key_F2);
    EXPECT_FALSE(grid.editMode());
    key(Qt::Key_Delete);
    grid.setEditMode(true);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(1, 1), u"ab");
    activate(2, 1);
    type(u"c"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(at(2, 1), u"c");
}

TEST_F(fpSpreadEdit, TheProgramWritesLockedCells)
{
    grid.setCurrent(kAll, kAll);
    grid.setLock(true);
    grid.setProtect(true);
    fill(1, 1, u"a"_s);
    EXPECT_EQ(at(1, 1), u"a");
}

TEST_F(fpSpreadEdit, ANumberIsTypedAndKeptInTheCellsForm)
{
    CellType type = CellType::ofNumber(2);
    type.showThousands = true;
    setType(3, kAll, type);
    activate(3, 2);
    this->type(u"1234,5x+e"_s); // letters and signs that are of no number do not get in
    key(Qt::Key_Return);
    EXPECT_EQ(at(3, 2), machineForm(u"1 234,50"_s));
}

TEST_F(fpSpreadEdit, TheDecimalKeyOfTheNumberPadIsTheCellsDecimalMark)
{
    setType(3, kAll, CellType::ofNumber(2));
    for (const char sign : {'.', ','}) {
        activate(3, 2);
        grid.setEditModeReplace(true);
        type(u"1"_s);
        QTest::keyClick(QApplication::focusWidget(), sign, Qt::KeypadModifier);
        type(u"25"_s);
        key(Qt::Key_Return);
        EXPECT_EQ(at(3, 2), machineForm(u"1,25"_s)) << sign;
    }
    activate(3, 2);
    QTest::keyClick(QApplication::focusWidget(), '.', Qt::KeypadModifier);
    type(u"5"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(at(3, 2), machineForm(u"0,50"_s)) << "also as the first key";
}

TEST_F(fpSpreadEdit, TheDecimalKeyTypesItsOwnSignWhereNoFractionStands)
{
    setType(3, kAll, CellType::ofNumber(3));
    for (const int col : {1, 3}) {
        activate(col, 2);
        type(u"1"_s);
        QTest::keyClick(QApplication::focusWidget(), '.', Qt::KeypadModifier);
        type(u"5"_s);
        key(Qt::Key_Return);
    }
    EXPECT_EQ(at(1, 2), u"1.5") << "a text";
    EXPECT_EQ(at(3, 2), u"15") << "a whole number";
}

TEST_F(fpSpreadEdit, ATypedPointIsReadAsTheMachineReadsIt)
{
    setType(3, kAll, CellType::ofNumber(2));
    grid.setEditModeReplace(true);
    const auto typed = [&](const MachineLocale &machine) {
        const ScopedLocale locale(machine);
        fill(3, 2, u"7"_s);
        activate(3, 2);
        type(u"1.25"_s);
        key(Qt::Key_Return);
        return at(3, 2);
    };
    EXPECT_EQ(typed(commaLocale()), u"7") << "no number, and not a hundred and twenty-five";
    EXPECT_EQ(typed(pointLocale()), u"1.25");
}

TEST_F(fpSpreadEdit, AnUntouchedNumberKeepsTheTextThatTheProgramWrote)
{
    setType(3, kAll, CellType::ofNumber(2));
    fill(3, 2, u" 100,00"_s);
    activate(3, 2);
    key(Qt::Key_F2);
    EXPECT_EQ(qobject_cast<QLineEdit *>(editor())->text(), u"100,00");
    key(Qt::Key_Return);
    EXPECT_EQ(at(3, 2), u" 100,00");
}

TEST_F(fpSpreadEdit, ARefusedNumberLeavesTheCellAsItWas)
{
    setType(3, kAll, CellType::ofNumber(2));
    fill(3, 2, u" 100,00"_s);
    activate(3, 2);
    grid.setEditModeReplace(true);
    type(u"--"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(at(3, 2), u" 100,00");
}

TEST_F(fpSpreadEdit, EditModeOpensAndClosesTheActiveCell)
{
    fill(2, 2, u"ab"_s);
    activate(2, 2);
    grid.setEditMode(true);
    ASSERT_TRUE(grid.editMode());
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(1, 1));
    type(u"c"_s);
    grid.setEditMode(false);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(2, 2), u"abc");
}

TEST_F(fpSpreadEdit, EditModeReplacesWhenTypingDoes)
{
    grid.setEditModeReplace(true);
    fill(2, 2, u"ab"_s);
    activate(2, 2);
    grid.setEditMode(true);
    type(u"c"_s);
    grid.setEditMode(false);
    EXPECT_EQ(at(2, 2), u"c");
}

TEST_F(fpSpreadEdit, EditModeWorksOnRowsAddedWhileRedrawIsOff)
{
    grid.setRedraw(false);
    grid.setMaxRows(30);
    activate(1, 25);
    grid.setEditMode(true);
    EXPECT_TRUE(grid.editMode());
    grid.setRedraw(true);
    type(u"x"_s);
    grid.setEditMode(false);
    EXPECT_EQ(at(1, 25), u"x");
}

TEST_F(fpSpreadEdit, TextWrittenByTheProgramEndsWhatWasTyped)
{
    for (const bool redraw : {true, false}) {
        activate(1, 1);
        type(u"brukeren"_s);
        grid.setRedraw(redraw);
        fill(1, 1, u"programmet"_s);
        grid.setRedraw(true);
        grid.setEditMode(false);
        EXPECT_EQ(at(1, 1), u"programmet");
    }
}

TEST_F(fpSpreadEdit, ClearingTextDropsWhatWasTyped)
{
    type(u"abc"_s);
    grid.setCurrent(kAll, kAll);
    grid.setAction(fpSpread::ClearTextAction);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(1, 1), QString());
}

TEST_F(fpSpreadEdit, MovingTheActiveCellKeepsWhatWasTyped)
{
    type(u"abc"_s);
    activate(2, 3);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(1, 1), u"abc");
}

TEST_F(fpSpreadEdit, AltDownAndF4OpenAList)
{
    setType(2, kAll, list(false));
    activate(2, 1);
    key(Qt::Key_Down, Qt::AltModifier);
    ASSERT_NE(combo(), nullptr);
    EXPECT_TRUE(combo()->view()->isVisible());
    EXPECT_EQ(combo()->count(), 4);
    combo()->hidePopup();
    settle();
    EXPECT_FALSE(grid.editMode());
    key(Qt::Key_F4);
    ASSERT_NE(combo(), nullptr);
    EXPECT_TRUE(combo()->view()->isVisible());
}

TEST_F(fpSpreadEdit, AClickOpensAListAndAPickIsKept)
{
    setType(2, kAll, list(false));
    click(2, 3);
    ASSERT_NE(combo(), nullptr);
    QAbstractItemView *items = combo()->view();
    ASSERT_TRUE(items->isVisible());
    QTest::mouseClick(items->viewport(), Qt::LeftButton, {},
                      items->visualRect(items->model()->index(2, 0)).center());
    settle();
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(2, 3), u"15");
    EXPECT_EQ(active(), std::pair(2, 3));
    EXPECT_TRUE(grid.hasFocus());
}

TEST_F(fpSpreadEdit, APickedCellThatLosesTheFocusIsLeft)
{
    setType(2, kAll, list(false));
    activate(2, 1);
    key(Qt::Key_F4);
    ASSERT_NE(combo(), nullptr);
    QTest::keyClick(combo()->view(), Qt::Key_Down);
    QTest::keyClick(combo()->view(), Qt::Key_Return);
    settle();
    EXPECT_TRUE(events.isEmpty());
    button.setFocus();
    EXPECT_EQ(events, (QStringList{u"LeaveCell 2 1 -1 -1"_s}));
}

TEST_F(fpSpreadEdit, APickWithKeysIsKept)
{
    setType(2, kAll, list(false));
    activate(2, 1);
    key(Qt::Key_Down, Qt::AltModifier);
    ASSERT_NE(combo(), nullptr);
    QAbstractItemView *items = combo()->view();
    QTest::keyClick(items, Qt::Key_Down);
    QTest::keyClick(items, Qt::Key_Down);
    QTest::keyClick(items, Qt::Key_Return);
    settle();
    EXPECT_FALSE(grid.editMode());
    EXPECT_NE(at(2, 1), QString());
}

TEST_F(fpSpreadEdit, TypingChoosesInAListThatIsNotEditable)
{
    setType(2, kAll, list(false));
    activate(2, 1);
    type(u"2"_s);
    ASSERT_NE(combo(), nullptr);
    key(Qt::Key_Tab);
    EXPECT_EQ(at(2, 1), u"25");
}

TEST_F(fpSpreadEdit, AnEditableListTakesOtherTextWithoutCompletingIt)
{
    setType(2, kAll, list(true));
    activate(2, 1);
    type(u"1"_s);
    key(Qt::Key_Tab);
    EXPECT_EQ(at(2, 1), u"1");
    activate(2, 2);
    type(u"12,5"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(at(2, 2), u"12,5");
}

TEST_F(fpSpreadEdit, WhatIsTypedOverAnOpenListIsTheTextOfAnEditableCell)
{
    setType(2, kAll, list(true));
    fill(2, 3, u"25"_s);
    click(2, 3);
    ASSERT_NE(combo(), nullptr);
    ASSERT_TRUE(combo()->view()->isVisible());
    type(u"8,5"_s);
    ASSERT_NE(combo(), nullptr);
    EXPECT_FALSE(combo()->view()->isVisible());
    key(Qt::Key_Return);
    EXPECT_EQ(at(2, 3), u"8,5");
    EXPECT_FALSE(grid.editMode());
}

TEST_F(fpSpreadEdit, TypingOverAnOpenListChoosesInOneThatIsNotEditable)
{
    setType(2, kAll, list(false));
    click(2, 3);
    ASSERT_NE(combo(), nullptr);
    type(u"2"_s);
    key(Qt::Key_Return);
    settle();
    EXPECT_EQ(at(2, 3), u"25");
}

TEST_F(fpSpreadEdit, ATextThatIsNotInTheListStays)
{
    setType(2, kAll, list(false));
    fill(2, 1, u"utgått"_s);
    activate(2, 1);
    key(Qt::Key_F4);
    ASSERT_NE(combo(), nullptr);
    combo()->hidePopup();
    settle();
    EXPECT_EQ(at(2, 1), u"utgått");
    key(Qt::Key_Delete);
    EXPECT_EQ(at(2, 1), QString());
}

TEST_F(fpSpreadEdit, AListWithoutItemsOpensEmpty)
{
    setType(2, kAll, CellType::ofNumber(8));
    activate(2, 1);
    key(Qt::Key_F2);
    ASSERT_NE(combo(), nullptr);
    EXPECT_EQ(combo()->count(), 0);
}

TEST_F(fpSpreadEdit, SpaceTurnsAMarkOver)
{
    setType(2, kAll, CellType::ofNumber(10));
    activate(2, 1);
    key(Qt::Key_Space);
    EXPECT_EQ(at(2, 1), u"1");
    key(Qt::Key_Space);
    EXPECT_EQ(at(2, 1), u"0");
    EXPECT_EQ(events, (QStringList{u"ButtonClicked 2 1"_s, u"ButtonClicked 2 1"_s}));
    type(u"7"_s);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(2, 1), u"0");
    key(Qt::Key_Delete);
    EXPECT_EQ(at(2, 1), u"0") << "nobody would be told of it";
}

TEST_F(fpSpreadEdit, ALockedMarkStays)
{
    setType(2, kAll, CellType::ofNumber(10));
    grid.setCurrent(2, kAll);
    grid.setLock(true);
    grid.setProtect(true);
    activate(2, 1);
    key(Qt::Key_Space);
    click(2, 1);
    EXPECT_EQ(at(2, 1), QString());
    EXPECT_FALSE(events.contains(u"ButtonClicked 2 1"_s));
}

TEST_F(fpSpreadEdit, KeysThatReachTheGridWhileEditingGoToTheEditor)
{
    QTest::keyClicks(&grid, u"abc"_s);
    ASSERT_TRUE(grid.editMode());
    QTest::keyClick(&grid, Qt::Key_Tab);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(1, 1), u"abc");
    EXPECT_EQ(active(), std::pair(2, 1));
}

TEST_F(fpSpreadEdit, AKeyThatTheEditorDoesNotWantReachesTheWindowOnce)
{
    struct Counter : QObject
    {
        int keys = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            keys += event->type() == QEvent::KeyPress ? 1 : 0;
            return false;
        }
    } counter;
    window.installEventFilter(&counter);
    type(u"a"_s);
    ASSERT_TRUE(grid.editMode());
    key(Qt::Key_F9);
    EXPECT_EQ(counter.keys, 1);
    QTest::keyClick(&grid, Qt::Key_F9);
    EXPECT_EQ(counter.keys, 2);
    QTest::keyClicks(&grid, u"b"_s);
    EXPECT_EQ(counter.keys, 2);
    key(Qt::Key_Return);
    EXPECT_EQ(at(1, 1), u"ab");
}

TEST_F(fpSpreadEdit, PageKeysEndAnEditAndMove)
{
    grid.setMaxRows(100);
    type(u"a"_s);
    key(Qt::Key_PageDown);
    EXPECT_FALSE(grid.editMode());
    EXPECT_EQ(at(1, 1), u"a");
    EXPECT_GT(grid.activeRow(), 3);
    type(u"b"_s);
    key(Qt::Key_PageUp);
    EXPECT_EQ(active(), std::pair(1, 1));
}

TEST_F(fpSpreadEdit, TheEditorIsNamedAfterItsColumn)
{
    grid.setColHeaders({u"Produkt nr."_s, u"Produkt navn"_s});
    activate(2, 1);
    key(Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->accessibleName(), u"Produkt navn");
}

TEST_F(fpSpreadEdit, TheEditorHasTheCellsColourAndAlignment)
{
    grid.setCurrent(2, 1);
    grid.setBackColor(0xC0FFFF);
    grid.setTypeHAlign(1);
    activate(2, 1);
    key(Qt::Key_F2);
    const auto *box = qobject_cast<QLineEdit *>(editor());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->palette().color(QPalette::Base), QColor(255, 255, 192));
    EXPECT_TRUE(box->alignment() & Qt::AlignRight);
}
