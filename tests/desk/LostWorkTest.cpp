#include "desk/DeskTest.h"

#include <QApplication>
#include <QFrame>
#include <QPointer>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

/// What a hand does by the way: it neither writes over an order nor throws one away.
class LostWorkTest : public DeskTest
{
protected:
    /// The order screen on the demo company's last order, in the mode of a button.
    static QWidget &openOrders(const QString &button)
    {
        click(control(window(u"frmRegningsdel"_s), u"Command3"_s));
        QWidget &orders = window(u"frmOrdre"_s);
        EXPECT_TRUE(comes([&] { return orders.isActiveWindow(); }));
        click(control(orders, button));
        EXPECT_TRUE(comes([&] { return control(orders, u"btnSave"_s).isEnabled(); }));
        return orders;
    }
    static QTableView &lines(const QWidget &orders)
    {
        return static_cast<QTableView &>(control(orders, u"vaSpread1"_s));
    }
    static QString cell(const QTableView &grid, int row, int col)
    {
        return grid.model()->index(row - 1, col - 1).data().toString();
    }
    static void clickCell(QTableView &grid, int row, int col)
    {
        const QModelIndex index = grid.model()->index(row - 1, col - 1);
        clickAt(*grid.viewport(), grid.visualRect(index).center());
        EXPECT_TRUE(comes([&] { return grid.currentIndex() == index; }));
    }
    static bool hasFocus(const QWidget &orders, const QString &name)
    {
        return comes([&] { return QApplication::focusWidget() == &control(orders, name); });
    }
    /// Lets what was done before come through: a key after it has had its effect.
    static void expectDone(const QWidget &orders, const QString &fieldName)
    {
        const QWidget &field = control(orders, fieldName);
        click(field);
        EXPECT_TRUE(hasFocus(orders, fieldName));
        const QString before = text(field);
        key(u"End"_s);
        type(u"x"_s);
        EXPECT_TRUE(comes([&] { return text(field) == before + u'x'; }));
    }
};

TEST_F(LostWorkTest, AWheelThatPassesOverTheDatesLeavesThem)
{
    QWidget &orders = openOrders(u"btnNew"_s);
    for (const auto &[picker, field] : {std::pair(u"dtpOrdre"_s, u"txtFields_10"_s),
                                        std::pair(u"dtpForfall"_s, u"txtFields_13"_s)}) {
        const QString before = text(control(orders, field));
        ASSERT_FALSE(before.isEmpty());
        const QWidget &control = DeskTest::control(orders, picker);
        point(control, control.rect().center());
        press(kWheelDown);
        press(kWheelUp);
        press(kWheelUp);
        expectDone(orders, u"txtFields_15"_s);
        EXPECT_EQ(text(DeskTest::control(orders, field)), before);
    }
}

TEST_F(LostWorkTest, TheRightMouseButtonOpensNoLockedField)
{
    QWidget &orders = openOrders(u"btnChange"_s);
    for (const QString &name : {u"txtFields_16"_s, u"txtFields_17"_s}) {
        const QWidget &field = control(orders, name);
        const QString before = text(field);
        click(field, kRight);
        EXPECT_TRUE(comes([] { return QApplication::activePopupWidget() != nullptr; }));
        key(u"Escape"_s);
        EXPECT_TRUE(comes([] { return QApplication::activePopupWidget() == nullptr; }));
        type(u"7"_s);
        expectDone(orders, u"txtFields_15"_s);
        EXPECT_EQ(text(field), before);
    }
}

TEST_F(LostWorkTest, EmptiedLinesComeBackWithTheirSums)
{
    QWidget &orders = openOrders(u"btnChange"_s);
    QTableView &grid = lines(orders);
    const QString product = cell(grid, 1, 1);
    const QString sum = text(control(orders, u"txtFields_22"_s));
    ASSERT_FALSE(product.isEmpty());
    clickCell(grid, 1, 3); // the way out of the first column leads there, and opens the cell
    key(u"Tab"_s);
    EXPECT_TRUE(comes([&] { return grid.currentIndex().column() == 3; }));
    key(u"ctrl+a"_s);
    key(u"Delete"_s);
    EXPECT_TRUE(comes([&] { return cell(grid, 1, 1).isEmpty(); }));
    key(u"Down"_s);
    EXPECT_TRUE(comes([&] { return text(control(orders, u"txtFields_22"_s)) != sum; }));
    key(u"ctrl+z"_s);
    EXPECT_TRUE(comes([&] { return cell(grid, 1, 1) == product; }));
    EXPECT_EQ(text(control(orders, u"txtFields_22"_s)), sum);
    key(u"ctrl+shift+z"_s);
    EXPECT_TRUE(comes([&] { return cell(grid, 1, 1).isEmpty(); }));
}

TEST_F(LostWorkTest, ARefusedQuantityIsMarked)
{
    QWidget &orders = openOrders(u"btnCopy"_s);
    QTableView &grid = lines(orders);
    clickCell(grid, 1, 3);
    const QString before = cell(grid, 1, 3);
    type(u"-2"_s);
    key(u"Tab"_s);
    EXPECT_TRUE(
        comes([&] { return grid.viewport()->findChild<QFrame *>(u"avvist"_s) != nullptr; }));
    EXPECT_EQ(cell(grid, 1, 3), before);
}

TEST_F(LostWorkTest, EscapeThatIsHeldInTheHelpLeavesTheOrderBehindIt)
{
    const QPointer<QWidget> orders = &openOrders(u"btnNew"_s);
    key(u"F1"_s);
    const QPointer<QWidget> help = &window(u"HtmlHelp"_s);
    EXPECT_TRUE(comes([&] { return help->isActiveWindow(); }));
    hold(u"Escape"_s, 10);
    EXPECT_TRUE(!help || !help->isVisible());
    EXPECT_TRUE(orders && orders->isVisible());
}

TEST_F(LostWorkTest, EnterAfterASaveOpensThePrintDialog)
{
    QWidget &orders = openOrders(u"btnCopy"_s);
    // The note goes by itself as well, so that a slow desk may find it gone.
    inModal(u"frmTMsgBox"_s, [&] { click(control(orders, u"btnSave"_s)); }, [](QWidget &) {});
    EXPECT_TRUE(comes([&] { return control(orders, u"btnPrint"_s).isEnabled(); }));
    EXPECT_TRUE(hasFocus(orders, u"btnPrint"_s));
    key(u"Return"_s);
    EXPECT_TRUE(window(u"frmUtskrift"_s).isVisible());
}

} // namespace
