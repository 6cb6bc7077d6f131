#include "platform/grid/GridFixture.h"

#include <QClipboard>
#include <QFrame>
#include <QTimer>
#include <QToolTip>

namespace {

/// What one key has changed is taken back and done again; blocks are pasted.
class fpSpreadHistory : public GridFixture
{
protected:
    void undo() { key(Qt::Key_Z, Qt::ControlModifier); }
    void redo() { key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
    void paste(int col, int row, const QString &text)
    {
        activate(col, row);
        QGuiApplication::clipboard()->setText(text);
        key(Qt::Key_V, Qt::ControlModifier);
    }
    void enter(int col, int row, const QString &text)
    {
        activate(col, row);
        type(text);
        key(Qt::Key_Return);
    }
    /// The texts of a block of cells, rows parted by "/".
    QString block(int col, int row, int col2, int row2)
    {
        QStringList rows;
        for (int r = row; r <= row2; ++r) {
            QStringList cells;
            for (int c = col; c <= col2; ++c)
                cells += at(c, r);
            rows += cells.join(u'|');
        }
        return rows.join(u'/');
    }
    /// A screen that writes the double of a number beside it, and counts what it is told of.
    void answerWithTheDouble()
    {
        QObject::connect(&grid, &fpSpread::LeaveCell, &grid, [this](int col, int row) {
            if (col == 1)
                fill(2, row, QString::number(2 * at(1, row).toInt()));
            sum = 0;
            for (int r = 1; r <= grid.maxRows(); ++r)
                sum += at(2, r).toInt();
        });
    }
    /// As a screen loads: the sheet is cleared, and the first cell gets what was read.
    void load()
    {
        grid.setBlockMode(true);
        grid.setCurrent(1, 1);
        grid.setCol2(kAll);
        grid.setRow2(kAll);
        grid.setAction(fpSpread::ClearTextAction);
        grid.setBlockMode(false);
        fill(1, 1, u"lest"_s);
    }
    QFrame *mark() const { return grid.viewport()->findChild<QFrame *>(u"avvist"_s); }

    int sum = 0;
};

} // namespace

// --- Undo and redo

TEST_F(fpSpreadHistory, AnEditIsUndoneAndDoneAgain)
{
    fill(2, 3, u"ab"_s);
    enter(2, 3, u"c"_s);
    enter(1, 1, u"x"_s);
    undo();
    EXPECT_EQ(block(1, 1, 2, 3), u"|/|/|abc");
    EXPECT_EQ(active(), std::pair(1, 1));
    undo();
    EXPECT_EQ(at(2, 3), u"ab");
    EXPECT_EQ(active(), std::pair(2, 3)) << "where the user sees it";
    undo();
    EXPECT_EQ(at(2, 3), u"ab") << "there is no more";
    redo();
    EXPECT_EQ(at(2, 3), u"abc");
    redo();
    EXPECT_EQ(at(1, 1), u"x");
    redo();
    EXPECT_EQ(block(1, 1, 2, 3), u"x|/|/|abc");
}

TEST_F(fpSpreadHistory, AClearedBlockIsOneStep)
{
    fill(1, 1, u"a"_s);
    fill(2, 2, u"b"_s);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    EXPECT_EQ(grid.dataRowCnt(), 0);
    undo();
    EXPECT_EQ(block(1, 1, 2, 2), u"a|/|b");
    redo();
    EXPECT_EQ(grid.dataRowCnt(), 0);
    undo();
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_X, Qt::ControlModifier);
    undo();
    EXPECT_EQ(block(1, 1, 2, 2), u"a|/|b");
}

TEST_F(fpSpreadHistory, EachCellOfAClearedBlockIsToldAndStaysEmpty)
{
    answerWithTheDouble();
    enter(1, 1, u"3"_s);
    enter(1, 2, u"4"_s);
    activate(1, 1);
    key(Qt::Key_Down, Qt::ShiftModifier);
    events.clear();
    key(Qt::Key_Delete);
    EXPECT_EQ(events, (QStringList{u"LeaveCell 1 1 -1 -1"_s, u"LeaveCell 1 2 -1 -1"_s}));
    EXPECT_EQ(block(1, 1, 2, 2), u"|0/|0");
    EXPECT_EQ(sum, 0);
    undo();
    EXPECT_EQ(block(1, 1, 2, 2), u"3|6/4|8");
    EXPECT_EQ(sum, 14);

    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    EXPECT_EQ(grid.dataRowCnt(), 0) << "an answer to what was emptied is none";
    undo();
    EXPECT_EQ(block(1, 1, 2, 2), u"3|6/4|8");
}

TEST_F(fpSpreadHistory, AScreenMayCloseWhenItIsToldOfAClearedBlock)
{
    auto *other = new fpSpread;
    const QPointer<fpSpread> guard(other);
    other->setCurrent(1, 1);
    for (const QString &text : {u"a"_s, u"b"_s}) {
        QTest::keyClicks(other, text);
        QTest::keyClick(other, Qt::Key_Return);
    }
    QObject::connect(other, &fpSpread::LeaveCell, [&] { delete other; });
    QTest::keyClick(other, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(other, Qt::Key_Delete);
    EXPECT_FALSE(guard);
}

TEST_F(fpSpreadHistory, ANewEditEndsWhatCouldBeDoneAgain)
{
    enter(1, 1, u"a"_s);
    undo();
    enter(1, 2, u"b"_s);
    redo();
    EXPECT_EQ(block(1, 1, 1, 2), u"/b");
}

TEST_F(fpSpreadHistory, OfVeryManyStepsTheOldestFallAway)
{
    constexpr int kMany = 300;
    for (int edit = 0; edit < kMany; ++edit)
        paste(1, 1, QString::number(edit) + u"\t\n"_s);
    for (int edit = 0; edit < kMany; ++edit)
        undo();
    EXPECT_EQ(at(1, 1), u"99") << "200 of them were taken back";
}

TEST_F(fpSpreadHistory, TheScreensAnswerBelongsToTheStep)
{
    answerWithTheDouble();
    enter(1, 1, u"3"_s);
    enter(1, 2, u"4"_s);
    EXPECT_EQ(block(1, 1, 2, 2), u"3|6/4|8");
    EXPECT_EQ(sum, 14);
    undo();
    EXPECT_EQ(block(1, 1, 2, 2), u"3|6/|");
    EXPECT_EQ(sum, 6) << "the screen has been told";
    undo();
    EXPECT_EQ(block(1, 1, 2, 2), u"|/|");
    EXPECT_EQ(sum, 0);
    redo();
    redo();
    EXPECT_EQ(block(1, 1, 2, 2), u"3|6/4|8");
    EXPECT_EQ(sum, 14);
}

TEST_F(fpSpreadHistory, WhatTheUserHadChangedAfterTheAnswerComesBack)
{
    answerWithTheDouble();
    enter(1, 1, u"3"_s);
    activate(2, 1);
    key(Qt::Key_Delete);
    enter(2, 1, u"9"_s);
    enter(1, 1, u"4"_s); // 34, and the answer 68 over the 9
    EXPECT_EQ(block(1, 1, 2, 1), u"34|68");
    undo();
    EXPECT_EQ(block(1, 1, 2, 1), u"3|9");
    EXPECT_EQ(sum, 9);
}

TEST_F(fpSpreadHistory, AnAnswerThatComesLaterJoinsTheCellThatWasCleared)
{
    answerWithTheDouble();
    enter(1, 1, u"3"_s);
    activate(1, 1);
    key(Qt::Key_Delete);
    key(Qt::Key_Return);
    EXPECT_EQ(block(1, 1, 2, 1), u"|0");
    undo();
    EXPECT_EQ(block(1, 1, 2, 1), u"3|6");
}

TEST_F(fpSpreadHistory, EachChangedCellIsToldAsAnEdit)
{
    paste(1, 1, u"a\tb\n"_s);
    events.clear();
    undo();
    EXPECT_EQ(events, (QStringList{u"LeaveCell 1 1 -1 -1"_s, u"LeaveCell 2 1 -1 -1"_s,
                                   u"SelChange 1 1 1 1 at 1 1"_s}));
}

TEST_F(fpSpreadHistory, AMarkIsToldAsOneThatWasTurned)
{
    setType(1, kAll, CellType::ofNumber(10));
    key(Qt::Key_Space);
    EXPECT_EQ(at(1, 1), u"1");
    events.clear();
    undo();
    EXPECT_EQ(at(1, 1), QString());
    EXPECT_EQ(events.first(), u"ButtonClicked 1 1");
    redo();
    EXPECT_EQ(at(1, 1), u"1");
}

TEST_F(fpSpreadHistory, AnOpenCellUndoesItsOwnTypingFirst)
{
    enter(1, 1, u"a"_s);
    activate(2, 2);
    type(u"b"_s);
    undo();
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(qobject_cast<QLineEdit *>(editor())->text(), QString());
    EXPECT_EQ(at(1, 1), u"a");
    undo();
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(at(1, 1), QString());
    key(Qt::Key_F2);
    redo();
    EXPECT_EQ(at(1, 1), u"a");
}

TEST_F(fpSpreadHistory, ALoadEndsIt)
{
    enter(1, 1, u"a"_s);
    load();
    undo();
    EXPECT_EQ(at(1, 1), u"lest");

    enter(1, 2, u"b"_s);
    grid.forgetEdits();
    undo();
    EXPECT_EQ(at(1, 2), u"b");
}

TEST_F(fpSpreadHistory, WhatWasUndoneEndsWithItToo)
{
    enter(1, 1, u"a"_s);
    undo();
    grid.forgetEdits();
    redo();
    EXPECT_EQ(at(1, 1), QString());
}

TEST_F(fpSpreadHistory, AScreenThatLoadsInAnswerLeavesNothingToUndo)
{
    QObject::connect(&grid, &fpSpread::LeaveCell, &grid, [this] {
        fill(3, 3, u"før"_s);
        load();
    });
    enter(1, 1, u"a"_s);
    undo();
    EXPECT_EQ(block(1, 1, 3, 3), u"lest||/||/||");
}

TEST_F(fpSpreadHistory, AScreenMayCloseWhenItIsToldOfAnUndo)
{
    auto *other = new fpSpread;
    const QPointer<fpSpread> guard(other);
    other->setCurrent(1, 1);
    QTest::keyClick(other, Qt::Key_Delete);
    QTest::keyClicks(other, u"a"_s);
    QTest::keyClick(other, Qt::Key_Return);
    QObject::connect(other, &fpSpread::LeaveCell, [&] { delete other; });
    QTest::keyClick(other, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(guard);
}

// --- Blocks from a spreadsheet

TEST_F(fpSpreadHistory, APastedBlockFillsTheCellsInSight)
{
    grid.setColHidden(3, true);
    fill(5, 5, u"gammel"_s);
    fill(3, 4, u"skjult"_s);
    paste(2, 4, u"a\tb\tc\td\r\ne\t\t\r\n"_s);
    EXPECT_EQ(block(1, 4, 5, 5), u"|a|skjult|b|c/|e|||");
    EXPECT_EQ(grid.selectedRowCount(), 2);
    EXPECT_EQ(active(), std::pair(2, 4));
    undo();
    EXPECT_EQ(block(1, 4, 5, 5), u"||skjult||/||||gammel");
}

TEST_F(fpSpreadHistory, APastedBlockBeginsWithTheFirstCellChosenAndEndsWithTheSheet)
{
    activate(2, 10);
    key(Qt::Key_Up, Qt::ShiftModifier);
    QGuiApplication::clipboard()->setText(u"a\nb\nc\n"_s);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(block(2, 8, 2, 10), u"/a/b");
}

TEST_F(fpSpreadHistory, LinesThatFindNoRoomAreTold)
{
    paste(2, 9, u"a\nb\nc\n"_s);
    EXPECT_NE(mark(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(QToolTip::text(), u"Det var plass til 2 av 3 linjer.");
}

TEST_F(fpSpreadHistory, EachPastedCellIsJudgedByItsType)
{
    CellType list = CellType::ofNumber(8);
    list.items = u"P1\tP2"_s;
    setType(1, kAll, list);
    setType(2, kAll, CellType::ofNumber(2));
    CellType locked;
    grid.setCurrent(3, 1);
    grid.setLock(true);
    grid.setProtect(true);
    for (int row = 1; row <= 3; ++row) {
        for (const int col : {1, 2, 4}) {
            grid.setCurrent(col, row);
            grid.setLock(false);
        }
    }
    paste(1, 1, u"P1\t12\tx\tfritt\nP9\tmange\n"_s);
    EXPECT_EQ(at(1, 1), u"P1");
    EXPECT_EQ(at(2, 1).first(2), u"12");
    EXPECT_EQ(block(3, 1, 4, 1), u"|fritt");
    EXPECT_EQ(block(1, 2, 2, 2), u"|");
    EXPECT_NE(mark(), nullptr);
}

TEST_F(fpSpreadHistory, ABlockThatNoCellTakesLeavesTheChoiceAsItIs)
{
    grid.setCurrent(kAll, kAll);
    grid.setLock(true);
    grid.setProtect(true);
    paste(2, 2, u"a\tb\nc\td\n"_s);
    EXPECT_EQ(grid.dataRowCnt(), 0);
    EXPECT_EQ(events, QStringList());
    EXPECT_EQ(mark(), nullptr) << "it is no list to be written in";
}

TEST_F(fpSpreadHistory, TheScreenIsToldOfEachPastedCell)
{
    answerWithTheDouble();
    paste(1, 1, u"3\n4\n"_s);
    EXPECT_EQ(block(1, 1, 2, 2), u"3|6/4|8");
    EXPECT_EQ(sum, 14);
    undo();
    EXPECT_EQ(block(1, 1, 2, 2), u"|/|");
    EXPECT_EQ(sum, 0);
    paste(1, 1, u"3\t9\n"_s);
    EXPECT_EQ(block(1, 1, 2, 1), u"3|9") << "what is pasted stands over the answer";
    EXPECT_EQ(sum, 9);
}

// --- What a cell refuses

TEST_F(fpSpreadHistory, ARefusedNumberIsShownForAMoment)
{
    setType(3, kAll, CellType::ofNumber(2));
    fill(3, 2, u"3"_s);
    activate(3, 2);
    key(Qt::Key_F2);
    type(u"-2"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(at(3, 2), u"3");
    const QPointer<QFrame> shown = mark();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->geometry(), grid.visualRect(grid.model()->index(1, 2)));
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(QToolTip::text(), u"«3,00-2» er ikke et tall. Cellen er som før.");
    shown->findChild<QTimer *>()->start(0); // the moment is over
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shown; }));
}

TEST_F(fpSpreadHistory, ARefusedDateIsToldAsOne)
{
    setType(3, kAll, CellType::ofNumber(0));
    fill(3, 2, u"24.12.2026"_s);
    activate(3, 2);
    key(Qt::Key_F2);
    type(u"x"_s);
    key(Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([] { return QToolTip::isVisible(); }));
    EXPECT_TRUE(QToolTip::text().endsWith(u" er ikke en dato som kan stå her. Cellen er som før."))
        << QToolTip::text().toStdString();
}

TEST_F(fpSpreadHistory, WhatIsTakenIsNotMarked)
{
    setType(3, kAll, CellType::ofNumber(2));
    activate(3, 2);
    type(u"2"_s);
    key(Qt::Key_Return);
    key(Qt::Key_F2);
    key(Qt::Key_Return);
    EXPECT_EQ(mark(), nullptr);
    EXPECT_FALSE(QToolTip::isVisible());
}
