#include "desk/DeskTest.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

/// The roads through the screens without a mouse.
using KeyboardTest = DeskTest;

TEST_F(KeyboardTest, AnOrderIsBegunAndItsCustomerChosenByKeysAlone)
{
    QWidget &menu = window(u"frmRegningsdel"_s);
    EXPECT_TRUE(comes([&] { return menu.isActiveWindow(); }));
    key(u"alt+o"_s);
    QWidget &orders = window(u"frmOrdre"_s);
    EXPECT_TRUE(comes([&] { return orders.isActiveWindow(); }));
    key(u"alt+n"_s);
    EXPECT_TRUE(comes([&] { return control(orders, u"btnSave"_s).isEnabled(); }));
    key(u"Tab"_s); // from the customer's number to the button of the list
    const auto pressButton = [] { key(u"space"_s); };
    inModal(u"frmKunder"_s, pressButton, [](QWidget &customers) {
        EXPECT_TRUE(comes([&] { return customers.isActiveWindow(); }));
        key(u"Down"_s);
        key(u"Return"_s);
        const QPointer<QWidget> list = &customers;
        EXPECT_TRUE(comes([&] { return !list || !list->isVisible(); }));
    });
    EXPECT_TRUE(
        comes([&] { return text(control(orders, u"txtFields_18"_s)).trimmed() == u"10002"_s; }));
    EXPECT_TRUE(comes([&] { return orders.isActiveWindow(); }));
    const QPointer<QWidget> screen = &orders;
    key(u"Escape"_s);
    EXPECT_TRUE(comes([&] { return !screen || !screen->isVisible(); }));
}

} // namespace
