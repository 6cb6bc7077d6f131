#include "order/OrdreFelter.h"
#include "order/OrdreLinjer.h"
#include "output/printing/RapportUtgang.h"
#include "output/printing/UtskriftTest.h"
#include "output/printing/frmUtskrift.h"
#include "platform/forms/Forms.h"
#include "platform/grid/fpSpread.h"
#include "presentation/options/frmOptions.h"
#include "presentation/screens/frmInvisible.h"
#include "support/SettingsFolder.h"
#include "support/Variable.h"

#include <QPainter>

using namespace Qt::StringLiterals;
namespace hode = ordrefelt;

namespace {

const QRectF kLogoplass(20, 9, 63, 20); // mm, on the forms with logo

/// What is chosen on the options screen, as the order screen, the print dialog and the build's own
/// report files take it.
class InnstillingerIBruk : public UtskriftTest
{
protected:
    InnstillingerIBruk() { skrivere.standardnavn = u"Kontor"_s; }
    // --- The options screen

    using Valg = ScreenHands<frmOptions>;
    static void apneValg(int fane = 1)
    {
        Valg::open();
        Valg::screen()->activateWindow();
        Valg::clickTab(fane);
    }
    static void skrivValg(const QString &name, const QString &text)
    {
        hands::typeOver(Valg::control(name), text);
    }
    /// Chooses on one page and stores with "OK".
    static void velg(int fane, const QStringList &names)
    {
        apneValg(fane);
        for (const QString &name : names)
            Valg::press(name);
        Valg::press(u"cmdOK"_s);
    }
    /// Puts the picture in as the logo, by the file dialog, and stores it.
    void settInnLogo(const QImage &picture, const char *format)
    {
        const QString path = fil(u"logo.bilde"_s);
        EXPECT_TRUE(picture.save(path, format));
        apneValg(2);
        Valg::press(u"optLogo_3"_s);
        onNextModal<QFileDialog>([&](QFileDialog &dialog) {
            auto *name = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
            name->setText(path);
            QTest::keyClick(name, Qt::Key_Return);
        });
        Valg::press(u"cmdLogoInn"_s);
        Valg::press(u"cmdOK"_s);
    }

    // --- The order screen

    /// The order screen in front, with what the menu's other screens have stored meanwhile.
    void ordreForan()
    {
        apne();
        skjerm()->activateWindow();
        roFokus();
    }
    static QString kid()
    {
        gaTil(hode::kKundeNr);
        tast(Qt::Key_Tab);
        return tekst(hode::kKID);
    }
    static QString avrundet()
    {
        auto *grid = control<fpSpread>(u"vaSpread1"_s);
        grid->setFocus();
        runEvents();
        grid->setCurrent(linjekolonne::kAntall, 1);
        grid->setAction(fpSpread::ActiveCellAction);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        runEvents();
        return tekst(hode::kSumBrutto).trimmed() + u'|' + tekst(hode::kAvrunding);
    }

    // --- The print dialog

    static void trykkSkriv()
    {
        auto *dialog = SharedForm<frmUtskrift>::existing();
        ASSERT_NE(dialog, nullptr);
        QTest::mouseClick(dialog->findChild<QAbstractButton *>(u"OKButton"_s), Qt::LeftButton);
        runEvents();
    }
    /// The invoice of the order screen's order, in the preview.
    const report::Document &forhandsvis()
    {
        RapportUtgang::felles().lukkAlle();
        ordreForan();
        klikk(u"btnPrint"_s);
        trykkSkriv();
        if (!vindu())
            qFatal("no preview");
        return dokument(vindu());
    }
    bool harGiro() const { return tekster(vindu()).contains(u"H"_s); }

private:
    QTemporaryDir m_temporary;
    const Variable m_tmpdir{"TMPDIR", m_temporary.path()};
};

TEST_F(InnstillingerIBruk, TheKidOfTheOrderScreen)
{
    leggOrdre({.ordreNr = 1234});
    ordreForan();
    EXPECT_EQ(kid(), u"0000018"_s) << "the stored one stays while KID is off";

    velg(1, {u"Check1"_s});
    ordreForan();
    EXPECT_EQ(kid(), u"0012344"_s);

    apneValg();
    skrivValg(u"Text3"_s, u"8"_s);
    Valg::press(u"cmdOK"_s);
    ordreForan();
    EXPECT_EQ(kid(), u"000012344"_s);

    // Five digits for the customer, as this screen offers, and eight as stored.
    velg(1, {u"optKID_1"_s});
    ordreForan();
    EXPECT_EQ(kid(), u"100010000123410"_s); // the digits' sum is 20

    velg(1, {u"optKID_0"_s, u"optMOD_1"_s});
    ordreForan();
    EXPECT_EQ(kid(), u"000012343"_s); // 4*2 + 3*3 + 2*4 + 1*5 = 30, and 11 - 30 % 11 = 3

    velg(1, {u"Check1"_s});
    skjerm()->unload();
    runEvents();
    ordreForan();
    EXPECT_EQ(kid(), u"0000018"_s);
}

TEST_F(InnstillingerIBruk, TheRoundingOfTheOrderScreen)
{
    leggLinje(leggOrdre({.medLinje = false}), 10, u"P1"_s, u"1"_s, u"100.60"_s); // 125,75
    ordreForan();
    EXPECT_EQ(avrundet(), u"125,75|0,00"_s);
    velg(3, {u"optAvrunding_1"_s});
    ordreForan();
    EXPECT_EQ(avrundet(), u"126,00|0,25"_s);
    velg(3, {u"optAvrunding_2"_s});
    ordreForan();
    EXPECT_EQ(avrundet(), u"125,00|-0,75"_s);
    velg(3, {u"optAvrunding_0"_s});
    ordreForan();
    EXPECT_EQ(avrundet(), u"125,75|0,00"_s);
}

TEST_F(InnstillingerIBruk, TheFirstOrderTakesTheFirstNumber)
{
    apneValg(3);
    skrivValg(u"txtFirstFak"_s, u"4711"_s);
    Valg::press(u"cmdOK"_s);
    ordreForan();
    klikk(u"btnNew"_s);
    skriv(hode::kKundeNr, u"10001"_s);
    skriv(hode::kKundeNavn, u"Ny Kunde AS"_s);
    skriv(hode::kFakPostNr, u"7010"_s);
    auto *grid = control<fpSpread>(u"vaSpread1"_s);
    grid->setFocus();
    runEvents();
    grid->setCurrent(linjekolonne::kProduktNr, 1);
    grid->setAction(fpSpread::ActiveCellAction);
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_Tab, Qt::Key_2, Qt::Key_Tab}) {
        QTest::keyClick(QApplication::focusWidget(), key);
        runEvents();
    }
    klikk(u"btnSave"_s);
    EXPECT_EQ(rows(u"SELECT KlientNr,OrdreNr FROM Ordre"_s), QStringList{u"5|4711"_s});

    // With an order the number is shown and stands fast.
    apneValg(3);
    EXPECT_EQ(Valg::control<QLineEdit>(u"txtFirstFak"_s).text(), u"4711"_s);
    EXPECT_FALSE(Valg::control(u"txtFirstFak"_s).isEnabled());
    Valg::press(u"cmdOK"_s);
    EXPECT_EQ(rows(u"SELECT FirstFakNr FROM Klient WHERE KlientNr=5"_s), QStringList{u"4711"_s});
}

TEST_F(InnstillingerIBruk, TheFormThatIsPrinted)
{
    leggOrdre({.ordreNr = 1031});
    velg(3, {u"chkPrintVis"_s});
    for (const int blankett : {3, 0, 1, 2}) {
        velg(2, {u"optLogo_%1"_s.arg(blankett)});
        const report::Document &faktura = forhandsvis();
        EXPECT_EQ(harGiro(), blankett < 2) << blankett;
        // Each save has stored the blank logo.
        EXPECT_EQ(faktura.pages.at(0).pictures.size(), blankett % 2) << blankett;
    }
}

TEST_F(InnstillingerIBruk, ThePreviewOrThePrinter)
{
    leggOrdre({.ordreNr = 1031});
    velg(3, {u"chkPrintVis"_s});
    forhandsvis();
    EXPECT_EQ(vinduer().size(), 1);
    EXPECT_TRUE(utskrifter().isEmpty());
    RapportUtgang::felles().lukkAlle();

    velg(3, {u"chkPrintVis"_s});
    ordreForan();
    klikk(u"btnPrint"_s);
    onNextModal<QDialog>([](QDialog &dialog) { svarMedSkriver(dialog, u"Kontor"_s); });
    trykkSkriv();
    EXPECT_EQ(utskrifter().size(), 1);
}

TEST_F(InnstillingerIBruk, TheLogoStandsUndistortedInItsPlaceOnTheForm)
{
    leggOrdre({.ordreNr = 1031});
    velg(3, {u"chkPrintVis"_s});
    for (const QSize size : {QSize(237, 76), QSize(948, 304), QSize(900, 100), QSize(60, 200)}) {
        QImage merke(size, QImage::Format_RGB32);
        merke.fill(Qt::darkGreen);
        QPainter(&merke).fillRect(0, 0, size.width() / 2, size.height(), Qt::darkRed);
        settInnLogo(merke, "PNG");
        const report::Document &faktura = forhandsvis();
        ASSERT_EQ(faktura.pages.at(0).pictures.size(), 1u);
        const report::PictureCommand &bilde = faktura.pages[0].pictures[0];
        EXPECT_TRUE(kLogoplass.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(bilde.rect));
        EXPECT_TRUE(std::abs(bilde.rect.width() - kLogoplass.width()) < 1e-6 ||
                    std::abs(bilde.rect.height() - kLogoplass.height()) < 1e-6);
        EXPECT_NEAR(bilde.rect.width() / bilde.rect.height(), double(size.width()) / size.height(),
                    1e-3);
        const QImage trykt = faktura.pictures.at(size_t(bilde.picture));
        EXPECT_EQ(trykt.size(), size);
        EXPECT_EQ(trykt.pixelColor(2, size.height() / 2), QColor(Qt::darkRed));
        EXPECT_EQ(trykt.pixelColor(size.width() - 3, size.height() / 2), QColor(Qt::darkGreen));
    }
}

TEST_F(InnstillingerIBruk, ARemovedLogoLeavesItsPlaceWhite)
{
    leggOrdre({.ordreNr = 1031});
    velg(3, {u"chkPrintVis"_s});
    QImage merke(237, 76, QImage::Format_RGB32);
    merke.fill(Qt::darkGreen);
    settInnLogo(merke, "BMP");
    velg(2, {u"cmdLogoSlett"_s});
    const report::Document &faktura = forhandsvis();
    ASSERT_EQ(faktura.pages.at(0).pictures.size(), 1u);
    const QImage trykt = faktura.pictures.at(size_t(faktura.pages[0].pictures[0].picture));
    EXPECT_EQ(trykt.size(), QSize(237, 76));
    EXPECT_EQ(trykt.pixelColor(100, 40), QColor(Qt::white));
}

TEST_F(InnstillingerIBruk, TheTextsOfTheScreenAreNotPrinted)
{
    leggOrdre({.ordreNr = 1031});
    apneValg(3);
    Valg::press(u"chkTxt1"_s);
    auto &text = Valg::control(u"txtFaktekst1"_s);
    text.setFocus();
    QTest::keyClick(&text, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&text, u"Ikke paa papiret"_s);
    Valg::press(u"chkPrintVis"_s);
    Valg::press(u"cmdOK"_s);
    EXPECT_EQ(rows(u"SELECT FakTekstBruk,FakTekst1 FROM Klient WHERE KlientNr=5"_s),
              QStringList{u"1|Ikke paa papiret"_s});
    forhandsvis();
    EXPECT_EQ(tekster(vindu()).filter(u"Ikke paa papiret"_s), QStringList());
}

} // namespace
