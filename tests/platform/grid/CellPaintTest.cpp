#include "GridFixture.h"

#include <ctime>

namespace {

class CellPaint : public GridFixture
{
protected:
    /// The cell without the lines around it.
    QImage image(int col, int row)
    {
        const QRect rect = grid.visualRect(grid.model()->index(row - 1, col - 1));
        return grid.viewport()->grab(rect.adjusted(0, 0, -1, -1)).toImage();
    }
    /// The background, beside all text and inside a frame.
    QColor ground(int col, int row) { return image(col, row).pixelColor(5, 3); }
    QColor base() const { return grid.palette().color(QPalette::Base); }
    QColor highlight() const { return grid.palette().color(QPalette::Highlight); }
};

} // namespace

TEST_F(CellPaint, ACellHasItsColour)
{
    EXPECT_EQ(ground(2, 2), base());
    grid.setCurrent(2, 2);
    grid.setBackColor(0xC0FFFF);
    EXPECT_EQ(ground(2, 2), QColor(255, 255, 192));
    EXPECT_EQ(ground(3, 2), base());
}

TEST_F(CellPaint, TheActiveCellHasAFrame)
{
    activate(2, 2);
    EXPECT_EQ(image(2, 2).pixelColor(0, 0), highlight());
    EXPECT_EQ(ground(2, 2), base());
    EXPECT_NE(image(3, 2).pixelColor(0, 0), highlight());
}

TEST_F(CellPaint, InABlockTheActiveCellKeepsItsOwnColour)
{
    fill(2, 2, u"tekst"_s);
    click(2, 2);
    click(3, 3, Qt::ShiftModifier);
    EXPECT_EQ(ground(2, 2), base());
    EXPECT_EQ(ground(3, 3), highlight());
    EXPECT_EQ(ground(4, 3), base());
}

TEST_F(CellPaint, ARowThatIsSelectedWholeIsFilledWhole)
{
    grid.setRowSelect(true);
    click(2, 2);
    EXPECT_EQ(ground(1, 2), highlight());
    EXPECT_EQ(ground(2, 2), highlight());
}

TEST_F(CellPaint, ACheckCellShowsItsMarkAndNoText)
{
    setType(2, kAll, CellType::ofNumber(10));
    fill(2, 2, u"1"_s);
    fill(2, 3, u"0"_s);
    EXPECT_NE(image(2, 2), image(2, 3));
    EXPECT_EQ(image(2, 3), image(2, 4));
    EXPECT_NE(image(2, 4), image(3, 4));
}

TEST_F(CellPaint, ACheckCellHasOneMarkInItsMiddle)
{
    setType(2, kAll, CellType::ofNumber(10));
    fill(2, 2, u"1"_s);
    const QImage cell = image(2, 2);
    const QImage left = cell.copy(0, 0, cell.width() / 4, cell.height());
    QImage plain(left.size(), left.format());
    plain.fill(base());
    EXPECT_EQ(left, plain);
}

TEST_F(CellPaint, AMarkGoesWithTheGroundOfItsCell)
{
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Text, Qt::white);
    grid.setPalette(dark);
    setType(2, kAll, CellType::ofNumber(10));
    grid.setCurrent(2, 2);
    grid.setBackColor(kWhite);
    const auto middle = [this](int row) {
        const QImage cell = image(2, row);
        return cell.pixelColor(cell.rect().center()).lightness();
    };
    EXPECT_GT(middle(2), 200) << "a filled box on white reads as marked";
    EXPECT_LT(middle(3), 100);
    const QImage empty = image(2, 2);
    fill(2, 2, u"1"_s);
    EXPECT_NE(image(2, 2), empty);
}

TEST_F(CellPaint, AnActiveListShowsItsArrowUnlessItIsLocked)
{
    activate(2, 2);
    const QImage plain = image(2, 2);
    setType(2, kAll, CellType::ofNumber(8));
    const QImage list = image(2, 2);
    EXPECT_NE(list, plain);
    grid.setCurrent(2, kAll);
    grid.setLock(true);
    grid.setProtect(true);
    EXPECT_EQ(image(2, 2), plain);
}

TEST_F(CellPaint, ANumberIsShownInTheCellsForm)
{
    CellType type = CellType::ofNumber(2);
    type.showThousands = true;
    setType(2, kAll, type);
    fill(2, 2, machineForm(u"1234,5"_s));
    fill(3, 2, u"1 234,50"_s);
    EXPECT_EQ(image(2, 2), image(3, 2));
}

TEST_F(CellPaint, ANumberThatDoesNotFitIsNotCutShort)
{
    const QString number = u"1234567,00"_s;
    setType(2, kAll, CellType::ofNumber(2));
    fill(2, 2, number);
    const auto showsMarks = [&](int pixels) {
        for (const int section : {1, 2})
            grid.horizontalHeader()->resizeSection(section, pixels);
        bool found = false;
        for (int count = 1; count < 20; ++count) {
            fill(3, 2, QString(count, u'#'));
            found = found || image(2, 2) == image(3, 2);
        }
        return found;
    };
    const int line = grid.columnWidth(1) - grid.visualRect(grid.model()->index(1, 1)).width();
    const int margin = grid.style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
    const int fits = grid.fontMetrics().horizontalAdvance(number) + 2 * margin + line;
    EXPECT_FALSE(showsMarks(fits));
    EXPECT_TRUE(showsMarks(fits - 1));
    EXPECT_TRUE(showsMarks(fits / 2));
}

TEST_F(CellPaint, ATextOfSeveralLinesStandsInOne)
{
    fill(2, 2, u"Storgata 1\nOslo"_s);
    fill(3, 2, u"Storgata 1 Oslo"_s);
    EXPECT_EQ(image(2, 2), image(3, 2));
}

TEST_F(CellPaint, ATextFarLongerThanItsColumnCostsNoMore)
{
    const auto timeToPaint = [&](qsizetype length) {
        fill(2, 2, QString(length, u'x'));
        const std::clock_t start = std::clock(); // of this process alone, whatever else runs
        for (int i = 0; i < 10; ++i)
            (void)image(2, 2);
        return std::clock() - start + 1;
    };
    (void)timeToPaint(10);
    EXPECT_LT(timeToPaint(1000000), 100 * timeToPaint(2000)); // with the whole text, 500 times
}

TEST_F(CellPaint, RedrawOffKeepsThePictureUntilItIsOn)
{
    const auto picture = [&] { return image(3, 3); };
    const QImage before = picture();
    grid.setRedraw(false);
    fill(3, 3, u"ny tekst"_s);
    EXPECT_FALSE(grid.updatesEnabled());
    grid.setRedraw(true);
    EXPECT_NE(picture(), before);
}
