#include "platform/grid/SheetModel.h"

#include "runtime/Support.h"

#include <QAbstractItemModelTester>
#include <QBrush>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

class SheetModelTest : public ::testing::Test
{
protected:
    SheetModelTest()
    {
        sheet.setMaxCols(3);
        sheet.setMaxRows(4);
        model.takeSize();
    }

    void setText(int col, int row, const QString &text)
    {
        sheet.setText(col, row, text);
        model.cellChanged(col, row);
    }
    void setMaxRows(int count)
    {
        sheet.setMaxRows(count);
        model.sizeChanged();
    }

    Sheet sheet;
    SheetModel model{sheet};
};

} // namespace

TEST_F(SheetModelTest, SatisfiesTheModelTesterThroughAllChanges)
{
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    setText(1, 1, u"a"_s);
    setMaxRows(9);
    setText(3, 9, u"b"_s);
    setMaxRows(2);
    model.hold();
    setMaxRows(50);
    setText(2, 40, u"c"_s);
    model.release();
    model.hold();
    setMaxRows(5);
    model.release();
    sheet.setMaxCols(6);
    model.sizeChanged();
    sheet.setMaxCols(0);
    model.sizeChanged();
    EXPECT_EQ(model.columnCount(), 0);
    EXPECT_EQ(model.rowCount(), 5);
}

TEST_F(SheetModelTest, AnswersDisplayRoleAtRowAndColumnLessOne)
{
    setText(2, 3, u"Kari"_s);
    EXPECT_EQ(model.index(2, 1).data(), u"Kari"_s);
    EXPECT_EQ(model.index(2, 1).data(Qt::EditRole), u"Kari"_s);
    EXPECT_EQ(model.index(0, 0).data(), QString());
}

TEST_F(SheetModelTest, HeadersAreRowZeroAndTheRowNumbers)
{
    QSignalSpy changed(&model, &QAbstractItemModel::headerDataChanged);
    setText(2, 0, u"Beløp"_s);
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole), u"Beløp"_s);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::DisplayRole), QString());
    EXPECT_EQ(model.headerData(2, Qt::Vertical, Qt::DisplayRole), u"3"_s);
    setText(0, 3, u"Sum"_s);
    EXPECT_EQ(model.headerData(2, Qt::Vertical, Qt::DisplayRole), u"Sum"_s);
    setText(0, 0, u"Nr"_s); // of the corner, which is no section
    ASSERT_EQ(changed.count(), 2);
    EXPECT_EQ(changed[0], (QVariantList{QVariant::fromValue(Qt::Horizontal), 1, 1}));
    EXPECT_EQ(changed[1], (QVariantList{QVariant::fromValue(Qt::Vertical), 2, 2}));
}

TEST_F(SheetModelTest, TellsOfEachChangeUnlessHeld)
{
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    setText(1, 1, u"a"_s);
    EXPECT_EQ(changed.count(), 1);

    model.hold();
    for (int i = 0; i < 100; ++i) {
        setMaxRows(10 + i);
        setText(1, 10 + i, u"b"_s);
    }
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(inserted.count(), 0);
    EXPECT_EQ(model.rowCount(), 4);

    model.release();
    EXPECT_EQ(model.rowCount(), 109);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(model.index(108, 0).data(), u"b"_s);
}

TEST_F(SheetModelTest, WhileHeldRowsThatAreGoneReadAsEmpty)
{
    setText(1, 4, u"a"_s);
    model.hold();
    setMaxRows(1);
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_EQ(model.index(3, 0).data(), QString());
}

TEST_F(SheetModelTest, RefusesTheUserWhereACellIsLockedAndTheSheetProtected)
{
    const QModelIndex cell = model.index(0, 0);
    sheet.setLocked(CellRange::cell(1, 1), true);
    EXPECT_TRUE(cell.flags().testFlag(Qt::ItemIsEditable));
    EXPECT_TRUE(model.setData(cell, u"a"_s, Qt::EditRole));

    model.setProtected(true);
    EXPECT_FALSE(cell.flags().testFlag(Qt::ItemIsEditable));
    EXPECT_TRUE(cell.flags().testFlag(Qt::ItemIsSelectable));
    EXPECT_FALSE(model.setData(cell, u"b"_s, Qt::EditRole));
    EXPECT_EQ(cell.data(), u"a"_s);
    EXPECT_TRUE(model.index(0, 1).flags().testFlag(Qt::ItemIsEditable));
}

TEST_F(SheetModelTest, TakesTypedTextByTheCellsType)
{
    sheet.setType(CellRange::column(1), CellType::ofNumber(2));
    EXPECT_TRUE(model.setData(model.index(0, 0), u"2"_s, Qt::EditRole));
    EXPECT_EQ(model.index(0, 0).data(), machineForm(u"2,00"_s));
    EXPECT_FALSE(model.setData(model.index(0, 0), u"to"_s, Qt::EditRole));
    EXPECT_EQ(model.index(0, 0).data(), machineForm(u"2,00"_s));
}

TEST_F(SheetModelTest, ACheckCellIsCheckableAndNotEditable)
{
    sheet.setType(CellRange::column(2), CellType::ofNumber(10));
    setText(2, 0, u"Bokfør"_s);
    const QModelIndex cell = model.index(0, 1);
    EXPECT_EQ(cell.data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    EXPECT_TRUE(cell.flags().testFlag(Qt::ItemIsUserCheckable));
    EXPECT_FALSE(cell.flags().testFlag(Qt::ItemIsEditable));
    EXPECT_TRUE(model.setData(cell, int(Qt::Checked), Qt::CheckStateRole));
    EXPECT_EQ(sheet.text(2, 1), u"1");
    EXPECT_EQ(cell.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    EXPECT_TRUE(model.setData(cell, int(Qt::Unchecked), Qt::CheckStateRole));
    EXPECT_EQ(sheet.text(2, 1), u"0");
    EXPECT_EQ(cell.data(Qt::AccessibleTextRole), u"Bokfør"_s);
    EXPECT_FALSE(model.index(0, 0).data(Qt::CheckStateRole).isValid());
    EXPECT_FALSE(model.setData(model.index(0, 0), int(Qt::Checked), Qt::CheckStateRole));
}

TEST_F(SheetModelTest, ATextGoesWithTheGroundItStandsOn)
{
    const QPalette former = QGuiApplication::palette();
    QPalette dark(Qt::black);
    dark.setColor(QPalette::Text, Qt::lightGray);
    QGuiApplication::setPalette(dark);
    const QModelIndex cell = model.index(0, 0);
    const auto textColour = [&](SheetColor told, SheetColor ground) {
        sheet.setForeColor(CellRange::cell(1, 1), told);
        sheet.setBackColor(CellRange::cell(1, 1), ground);
        const QVariant brush = cell.data(Qt::ForegroundRole);
        return brush.isValid() ? brush.value<QBrush>().color() : QColor();
    };
    EXPECT_EQ(textColour(kBlack, kWhite), QColor(Qt::black));
    EXPECT_EQ(textColour(kBlack, kWindowBackground), QColor(Qt::white));
    EXPECT_EQ(textColour(kBlack, kButtonFace), QColor(Qt::white));
    EXPECT_EQ(textColour(kWindowText, kWindowBackground), QColor()) << "the view's own";
    EXPECT_EQ(textColour(kWindowText, sheetColor(255, 255, 192)), QColor(Qt::black));
    EXPECT_EQ(textColour(sheetColor(200, 0, 0), kWhite), QColor(200, 0, 0));
    QGuiApplication::setPalette(former);
}

TEST_F(SheetModelTest, AnswersColoursAndAlignment)
{
    EXPECT_FALSE(model.index(0, 0).data(Qt::BackgroundRole).isValid());
    EXPECT_FALSE(model.index(0, 0).data(Qt::ForegroundRole).isValid());
    sheet.setBackColor(CellRange::cell(1, 1), 0xC0FFFF);
    sheet.setForeColor(CellRange::cell(1, 1), sheetColor(1, 2, 3));
    sheet.setAlign(CellRange::column(2), CellAlign::Right);
    sheet.setAlign(CellRange::column(3), CellAlign::Centre);
    EXPECT_EQ(model.index(0, 0).data(Qt::BackgroundRole).value<QBrush>().color(),
              QColor(255, 255, 192));
    EXPECT_EQ(model.index(0, 0).data(Qt::ForegroundRole).value<QBrush>().color(), QColor(1, 2, 3));
    EXPECT_TRUE(model.index(0, 0).data(Qt::TextAlignmentRole).toInt() & Qt::AlignLeft);
    EXPECT_TRUE(model.index(0, 1).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    EXPECT_TRUE(model.index(0, 2).data(Qt::TextAlignmentRole).toInt() & Qt::AlignHCenter);
    sheet.setBackColor(CellRange::cell(1, 1), kButtonFace);
    EXPECT_TRUE(model.index(0, 0).data(Qt::BackgroundRole).isValid());
    sheet.setBackColor(CellRange::cell(1, 1), kWindowBackground);
    EXPECT_FALSE(model.index(0, 0).data(Qt::BackgroundRole).isValid());
}
