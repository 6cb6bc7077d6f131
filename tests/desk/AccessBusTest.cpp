#include "desk/AccessBus.h"
#include "desk/HostOnDesk.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// The host program as a screen reader has it: over the accessibility bus, from another program.
class AccessBusTest : public HostOnDesk
{
protected:
    void SetUp() override
    {
        HostOnDesk::SetUp();
        if (IsSkipped())
            return;
        bus = std::make_unique<AccessBus>(display());
        if (!bus->reason().isEmpty())
            GTEST_SKIP() << bus->reason().toStdString();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus->session());
        startHost();
    }

    /// The window of that title, when it is there.
    [[nodiscard]] Accessible window(const QString &title) const
    {
        Accessible found;
        const auto isThere = [&] {
            for (const Accessible &one : bus->windows()) {
                if (one.name() == title && one.is(Accessible::State::Showing)) {
                    found = one;
                    return true;
                }
            }
            return false;
        };
        EXPECT_TRUE(comes(isThere)) << title.toStdString();
        return found;
    }
    /// Presses a button of the menu.
    [[nodiscard]] Accessible open(const QString &button, const QString &title) const
    {
        press(window(u"Strekkbok - Faktura"_s), button);
        return window(title);
    }
    /// Waits until the button can be pressed, and presses it.
    static void press(const Accessible &window, const QString &button)
    {
        const Accessible found = window.find(u"push button"_s, button);
        ASSERT_TRUE(found.exists()) << button.toStdString();
        EXPECT_TRUE(comes([&] { return found.is(Accessible::State::Enabled); }))
            << button.toStdString();
        found.press();
    }
    /// What can have the focus in a window and has no name.
    [[nodiscard]] static QStringList nameless(const Accessible &window)
    {
        QStringList found;
        for (const Accessible &one : window.all()) {
            if (one.is(Accessible::State::Focusable) && one.name().trimmed().isEmpty())
                found += window.name() + u": "_s + one.role();
        }
        return found;
    }

    std::unique_ptr<AccessBus> bus;
};

TEST_F(AccessBusTest, EachScreenIsAWindowInWhichEveryControlHasAName)
{
    EXPECT_EQ(window(u"Strekkbok - Faktura"_s).role(), u"frame"_s);
    EXPECT_EQ(nameless(window(u"Strekkbok - Faktura"_s)), QStringList());
    for (const auto &[button, title] :
         {std::pair(u"Produkt"_s, u"Produkt"_s), std::pair(u"Oversikt"_s, u"Oversikt"_s),
          std::pair(u"Innstillinger"_s, u"Innstillinger"_s), std::pair(u"Bokfør"_s, u"Bokfør"_s),
          std::pair(u"Ordre/Faktura"_s, u"Ordre og Faktura"_s)}) {
        const Accessible screen = open(button, title);
        EXPECT_EQ(screen.role(), u"frame"_s) << title.toStdString();
        EXPECT_GT(screen.all().size(), 5u) << title.toStdString();
        EXPECT_EQ(nameless(screen), QStringList());
    }
    const Accessible orders = window(u"Ordre og Faktura"_s);
    press(orders, u"Ny"_s);
    EXPECT_TRUE(comes(
        [&] { return orders.find(u"push button"_s, u"Lagre"_s).is(Accessible::State::Enabled); }));
    press(orders, u"Kunder"_s);
    const Accessible customers = window(u"Kundeliste"_s);
    EXPECT_EQ(customers.role(), u"dialog"_s);
    EXPECT_EQ(nameless(customers), QStringList());
}

TEST_F(AccessBusTest, ALockedFieldKeepsItsTextAndWhatIsStored)
{
    const QString stored = u"SELECT OrdreNr,OrdreStatus,KID,FakPoststed FROM Ordre"_s;
    const QByteArray before = answer(path(u"demo.db"_s), stored);
    const Accessible orders = open(u"Ordre/Faktura"_s, u"Ordre og Faktura"_s);
    press(orders, u"Endre"_s);
    const Accessible reference = orders.find(u"text"_s, u"Deres ref.:"_s);
    EXPECT_TRUE(comes([&] { return !reference.is(Accessible::State::ReadOnly); }));
    for (const QString &name : {u"Faktura nr.:"_s, u"Status:"_s, u"KID:"_s, u"Poststed"_s}) {
        const Accessible field = orders.find(u"text"_s, name);
        const QString text = field.text();
        EXPECT_NE(text, QString()) << name.toStdString();
        EXPECT_TRUE(field.is(Accessible::State::ReadOnly)) << name.toStdString();
        field.setText(u"77778888"_s);
        EXPECT_EQ(field.text(), text) << name.toStdString();
    }
    reference.setText(u"Berit Moe"_s);
    EXPECT_EQ(reference.text(), u"Berit Moe"_s) << "a field that is open takes it";
    press(orders, u"Lagre"_s);
    EXPECT_TRUE(comes([&] {
        return rows(u"SELECT OrdreNr FROM Ordre WHERE DeresRef='Berit Moe'"_s).size() == 1;
    }));
    EXPECT_EQ(answer(path(u"demo.db"_s), stored), before);
}

TEST_F(AccessBusTest, ANoteIsReadOut)
{
    const Accessible orders = open(u"Ordre/Faktura"_s, u"Ordre og Faktura"_s);
    press(orders, u"Endre"_s);
    press(orders, u"Lagre"_s);
    EXPECT_EQ(window(u"Lagre"_s).role(), u"alert message"_s);
    EXPECT_TRUE(comes([&] { return bus->told().contains(u"Posten er lagret."_s); }))
        << bus->told().join(u'\n').toStdString();
}

} // namespace
