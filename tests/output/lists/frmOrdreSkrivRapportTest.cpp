#include "output/lists/OversiktTest.h"
#include "output/printing/Forhandsvisning.h"
#include "platform/forms/DTPicker.h"

#include <QComboBox>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

/// The dialog with the build's own report files, up to what the preview shows. Order numbers begin
/// at 70001, so that they are found among the texts of a page.
class FrmOrdreSkrivRapportTest : public OversiktTest, public ScreenHands<frmOrdreSkriv>
{
protected:
    using ScreenHands::control;
    void TearDown() override
    {
        closePreviews();
        OversiktTest::TearDown();
    }

    static QList<Forhandsvisning *> previews()
    {
        QList<Forhandsvisning *> found;
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (auto *preview = qobject_cast<Forhandsvisning *>(window))
                found += preview;
        }
        return found;
    }
    static void closePreviews()
    {
        for (Forhandsvisning *preview : previews())
            preview->close();
        runEvents();
    }
    /// Presses "Skriv"; the orders in the preview that comes up, by their numbers.
    static QStringList shownOrders()
    {
        press(u"OKButton"_s);
        QStringList orders;
        for (const Forhandsvisning *preview : previews()) {
            for (const report::Page &page : preview->dokument()->pages) {
                for (const report::TextCommand &command : page.texts) {
                    if (command.text().startsWith(u"7000"))
                        orders += command.text();
                }
            }
        }
        closePreviews();
        orders.sort();
        return orders;
    }
    static void typeCustomer(const QString &text)
    {
        control<QComboBox>(u"cmbKunde"_s).setEditText(text);
    }
};

} // namespace

TEST_F(FrmOrdreSkrivRapportTest, AListWithoutRowsIsToldAndTheDialogStays)
{
    legg({.nr = 70001, .status = u"'Betalt'"_s, .klient = 6});
    open();
    for (const QString &type : {u"optType_0"_s, u"optType_1"_s}) {
        press(type);
        EXPECT_EQ(shownOrders(), QStringList());
        EXPECT_EQ(meldinger.ta(), QStringList(u"Tomt datasett, ingen poster å vise."_s));
        EXPECT_EQ(meldinger.ikoner.last(), int(QMessageBox::Information));
        EXPECT_TRUE(liste()->isVisible());
    }
}

TEST_F(FrmOrdreSkrivRapportTest, TheOrdersOfBothDatesAndWhatLiesBetween)
{
    legg({.nr = 70001, .fakDato = u"#12/31/2013#"_s});
    legg({.nr = 70002, .fakDato = u"#01/01/2014#"_s});
    legg({.nr = 70003, .fakDato = u"#02/10/2014#"_s, .status = u"'Betalt'"_s});
    legg({.nr = 70004, .fakDato = u"#03/09/2014#"_s});
    legg({.nr = 70005, .fakDato = u"#03/10/2014#"_s});
    legg({.nr = 70006, .fakDato = u"#02/10/2014#"_s, .klient = 6});
    open();
    EXPECT_EQ(shownOrders(), QStringList({u"70002"_s, u"70003"_s, u"70004"_s}));
    control<QComboBox>(u"cmbStatus"_s).setCurrentText(u"Betalt"_s);
    EXPECT_EQ(shownOrders(), QStringList(u"70003"_s));
}

TEST_F(FrmOrdreSkrivRapportTest, TheOrdersOfOneCustomer)
{
    legg({.nr = 70001, .kundeNr = u"123"_s});
    legg({.nr = 70002, .kundeNr = u"124"_s});
    open();
    for (const QString &typed : {u"00123 Ås Pukk AS"_s, u"00123"_s, u"123"_s}) {
        typeCustomer(typed);
        EXPECT_EQ(shownOrders(), QStringList(u"70001"_s)) << typed.toStdString();
    }
}

TEST_F(FrmOrdreSkrivRapportTest, ACustomerOfSixDigitsShowsTheWrongOne)
{
    legg({.nr = 70001, .kundeNr = u"123456"_s, .navn = u"'Berit'"_s});
    legg({.nr = 70002, .kundeNr = u"12345"_s});
    open();
    typeCustomer(u"123456 Berit"_s);
    EXPECT_EQ(shownOrders(), QStringList(u"70002"_s));
}

TEST_F(FrmOrdreSkrivRapportTest, NamesThatAreNoCustomerNumberAreTold)
{
    legg({.nr = 70001});
    open();
    typeCustomer(u"Berit"_s);
    EXPECT_EQ(shownOrders(), QStringList());
    const QStringList told = meldinger.ta();
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].startsWith(u"CRP: ")) << told[0].toStdString();
    EXPECT_TRUE(liste()->isVisible());
}

TEST_F(FrmOrdreSkrivRapportTest, RemindsOfWhatIsOverdueAndNeitherOrderedOnlyNorPaid)
{
    const QString yesterday = u"#03/08/2014#"_s;
    legg({.nr = 70001, .forfall = yesterday, .status = u"'Fakturert'"_s});
    legg({.nr = 70002, .forfall = yesterday, .status = u"'Bokført'"_s});
    legg({.nr = 70003, .forfall = yesterday, .status = u"'Ordre'"_s});
    legg({.nr = 70004, .forfall = yesterday, .status = u"'Betalt'"_s});
    legg({.nr = 70005, .forfall = u"#03/09/2014#"_s, .status = u"'Fakturert'"_s});
    legg({.nr = 70006, .forfall = yesterday, .status = u"'Fakturert'"_s, .klient = 6});
    legg({.nr = 70007,
          .kundeNr = u"20002"_s,
          .forfall = u"#05/01/2012#"_s,
          .status = u"'Fakturert'"_s});
    open();
    press(u"optType_1"_s);
    EXPECT_EQ(shownOrders(), QStringList({u"70001"_s, u"70002"_s, u"70007"_s}))
        << "due today is not overdue yet";
    typeCustomer(u"20002"_s);
    EXPECT_EQ(shownOrders(), QStringList(u"70007"_s));
}

TEST_F(FrmOrdreSkrivRapportTest, EachRunOpensAPreviewOfItsOwn)
{
    legg({.nr = 70001});
    open();
    press(u"OKButton"_s);
    press(u"OKButton"_s);
    EXPECT_EQ(previews().size(), 2);
    EXPECT_TRUE(liste()->isVisible());
}
