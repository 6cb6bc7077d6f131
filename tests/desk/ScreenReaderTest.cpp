#include "desk/DeskTest.h"

#include <QAccessible>

using namespace Qt::StringLiterals;

namespace {

/// What a screen reader is told.
class ScreenReaderTest : public DeskTest
{
protected:
    static QAccessible::Role roleOf(QWidget &window)
    {
        return QAccessible::queryAccessibleInterface(&window)->role();
    }
};

TEST_F(ScreenReaderTest, EachWindowHasTheRoleOfOne)
{
    QWidget &menu = window(u"frmRegningsdel"_s);
    EXPECT_EQ(roleOf(menu), QAccessible::Window);
    click(control(menu, u"Command3"_s));
    QWidget &orders = window(u"frmOrdre"_s);
    EXPECT_EQ(roleOf(orders), QAccessible::Window);
    EXPECT_TRUE(comes([&] { return orders.isActiveWindow(); }));
    key(u"F1"_s);
    EXPECT_EQ(roleOf(window(u"HtmlHelp"_s)), QAccessible::Window);
    key(u"Escape"_s);
    click(control(orders, u"btnPrint"_s));
    EXPECT_EQ(roleOf(window(u"frmUtskrift"_s)), QAccessible::Dialog);
}

} // namespace
