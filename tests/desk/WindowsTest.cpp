#include "desk/DeskTest.h"

#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

/// How the windows of the screens stand to each other, as the window manager has it.
class WindowsTest : public DeskTest
{
protected:
    /// Opens a screen from the menu.
    static QWidget &open(const QString &button, const QString &screen)
    {
        click(control(window(u"frmRegningsdel"_s), button));
        return window(screen);
    }
    static QWidget &openOrders() { return open(u"Command3"_s, u"frmOrdre"_s); }

    /// A dialog of `owner`: over it, with no entry of its own in the task bar, not minimised.
    static void expectDialogOf(const QWidget &owner, const QWidget &dialog)
    {
        EXPECT_EQ(property(dialog, u"WM_TRANSIENT_FOR"_s),
                  u"WM_TRANSIENT_FOR(WINDOW): window id # 0x%1"_s.arg(owner.winId(), 0, 16));
        EXPECT_TRUE(property(dialog, u"_NET_WM_WINDOW_TYPE"_s).contains(u"_TYPE_DIALOG"_s));
        // Flags, then what the window lets be done with it.
        constexpr uint kMinimise = 0x8;
        const QString functions = property(dialog, u"_MOTIF_WM_HINTS"_s).section(u',', 1, 1);
        bool told = false;
        EXPECT_EQ(functions.trimmed().toUInt(&told, 16) & kMinimise, 0u);
        EXPECT_TRUE(told);
    }
    static void expectOrder(const QStringList &names)
    {
        EXPECT_TRUE(comes([&] { return stack() == names; })) << stack().join(u' ').toStdString();
    }
};

TEST_F(WindowsTest, TheMenuStaysAboveWhatItOpensTheFirstTimeAndTheSecond)
{
    open(u"Command3"_s, u"frmOrdre"_s);
    expectOrder({u"frmOrdre"_s, u"frmRegningsdel"_s});
    EXPECT_TRUE(comes([] { return window(u"frmOrdre"_s).isActiveWindow(); }));
    open(u"Command5"_s, u"frmOversikt"_s);
    expectOrder({u"frmOrdre"_s, u"frmOversikt"_s, u"frmRegningsdel"_s});
    open(u"Command3"_s, u"frmOrdre"_s);
    expectOrder({u"frmOversikt"_s, u"frmOrdre"_s, u"frmRegningsdel"_s});
    EXPECT_TRUE(comes([] { return window(u"frmOrdre"_s).isActiveWindow(); }));
}

TEST_F(WindowsTest, TheMenuStartsBesideWhatItOpens)
{
    QWidget &menu = window(u"frmRegningsdel"_s);
    EXPECT_TRUE(menu.screen()->availableGeometry().contains(menu.frameGeometry()));
    for (const auto &[button, screen] :
         {std::pair(u"Command2"_s, u"frmProdukt"_s), std::pair(u"Command3"_s, u"frmOrdre"_s),
          std::pair(u"Command5"_s, u"frmOversikt"_s), std::pair(u"Command7"_s, u"frmOptions"_s),
          std::pair(u"Command8"_s, u"frmBokfor"_s)}) {
        QWidget &opened = open(button, screen);
        const QRect common = menu.frameGeometry() & opened.frameGeometry();
        EXPECT_TRUE(common.isEmpty()) << screen.toStdString() << ": " << common.width() << " x "
                                      << common.height() << " pixels are covered";
        opened.close();
    }
}

TEST_F(WindowsTest, TheNoteIsADialogOverTheMiddleOfItsScreen)
{
    QWidget &products = open(u"Command2"_s, u"frmProdukt"_s);
    clickTab(control(products, u"TabStrip1"_s), 2);
    EXPECT_TRUE(comes([&] { return control(products, u"btnNew"_s).isEnabled(); }));
    click(control(products, u"btnNew"_s));
    EXPECT_TRUE(comes([&] { return control(products, u"btnSave"_s).isEnabled(); }));
    inModal(
        u"frmTMsgBox"_s, [&] { click(control(products, u"btnSave"_s)); },
        [&](QWidget &note) {
            expectDialogOf(products, note);
            EXPECT_TRUE(comes([&] {
                const QPoint beside =
                    note.frameGeometry().center() - products.frameGeometry().center();
                return beside.manhattanLength() <= 40;
            }));
        });
}

TEST_F(WindowsTest, TheCustomerListIsADialogOfTheOrderScreen)
{
    QWidget &orders = openOrders();
    click(control(orders, u"btnNew"_s));
    inModal(
        u"frmKunder"_s, [&] { click(control(orders, u"cmdKunder"_s)); },
        [&](QWidget &customers) { expectDialogOf(orders, customers); });
}

TEST_F(WindowsTest, ThePrintDialogIsADialogOfTheOrderScreen)
{
    QWidget &orders = openOrders();
    click(control(orders, u"btnPrint"_s));
    expectDialogOf(orders, window(u"frmUtskrift"_s));
    expectOrder({u"frmRegningsdel"_s, u"frmOrdre"_s, u"frmUtskrift"_s});
}

} // namespace
