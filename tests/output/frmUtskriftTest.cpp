#include "output/frmUtskrift.h"

#include "data/clsAdoUtils.h"
#include "output/UtskriftTest.h"
#include "platform/forms/Forms.h"
#include "presentation/frmInvisible.h"
#include "shell/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/SessionTap.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace {

/// The print dialog as the order screen opens it, driven by mouse and keyboard.
class FrmUtskriftTest : public UtskriftTest
{
protected:
    FrmUtskriftTest()
    {
        skrivere.standardnavn = u"Kontor"_s;
        // What an EHF document must have.
        run(u"UPDATE Klient SET Adr1='Postboks 1',Adr2='Havnegata 2' WHERE KlientNr=5"_s);
        run(u"UPDATE Produkt SET Enhet='stk' WHERE KlientNr=5"_s);
    }

    static frmUtskrift *dialog() { return SharedForm<frmUtskrift>::existing(); }
    template<class Control>
    static Control *i(const QString &name)
    {
        auto *found = dialog()->findChild<Control *>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return found;
    }
    static QRadioButton *original() { return i<QRadioButton>(u"optType_1"_s); }
    static QRadioButton *kopi() { return i<QRadioButton>(u"optType_0"_s); }
    static QCheckBox *ehf() { return i<QCheckBox>(u"chkEHF"_s); }
    static QString felttekst(const QString &name) { return i<QLineEdit>(name)->text(); }
    static void klikkI(const QString &name)
    {
        QTest::mouseClick(i<QWidget>(name), Qt::LeftButton);
        runEvents();
    }
    static void merk(QAbstractButton *valg)
    {
        QTest::mouseClick(valg, Qt::LeftButton, {}, QPoint(8, valg->height() / 2));
    }
    static void skrivI(const QString &name, const QString &text)
    {
        auto *felt = i<QLineEdit>(name);
        felt->setFocus();
        felt->selectAll();
        QTest::keyClicks(felt, text);
    }

    /// The order screen on the one order, and the dialog that its button opens.
    void aapneFor(const Ordrerad &rad)
    {
        leggOrdre(rad);
        aapne();
    }
    void aapne()
    {
        apne();
        klikk(u"btnPrint"_s);
        ASSERT_NE(dialog(), nullptr);
    }
    /// "Skriv", with an answer to the printer dialog.
    void skrivUt(int eksemplarer = 1, const QString &skriver = u"Kontor"_s)
    {
        onNextModal<QDialog>([=](QDialog &d) { svarMedSkriver(d, skriver, eksemplarer); });
        klikkI(u"OKButton"_s);
    }
    void avbrytSkriveren()
    {
        onNextModal<QDialog>([](QDialog &d) { QTest::keyClick(&d, Qt::Key_Escape); });
        klikkI(u"OKButton"_s);
    }
    void skrivEhf(const QString &navn)
    {
        onNextModal<QFileDialog>([=, this](QFileDialog &d) { svarMedFil(d, fil(navn)); });
        klikkI(u"OKButton"_s);
    }
    static void innstill(const QString &key, const QString &verdi)
    {
        gReg->SaveSetting(u"Regningsdel"_s, key, verdi);
    }
    QStringList statuser()
    {
        return rows(u"SELECT KlientNr,OrdreNr,OrdreStatus FROM Ordre ORDER BY ID"_s);
    }
    /// The statements that change data while `utfor` runs.
    QStringList endringer(const std::function<void()> &utfor)
    {
        SessionTap tap;
        ado::SessionPool::shared().clear();
        utfor();
        return tap.statements().filter(QRegularExpression(u"^(UPDATE|INSERT|DELETE)"_s));
    }
    /// What "Skriv" hands to the report control, which keeps it when the data cannot be read.
    struct Overlevert
    {
        QString rapport;
        QString utvalg;
        QString type;
        QString note;
    };
    Overlevert overlevert()
    {
        innstill(u"PrintVis"_s, u"1"_s);
        const QString forbindelse = gDB->ConnectionString();
        gDB->setConnectionString(u"dsn=/finnes/ikke.db"_s);
        klikkI(u"OKButton"_s);
        gDB->setConnectionString(forbindelse);
        EXPECT_TRUE(meldinger.ta().value(0).startsWith(u"CRP: "_s));
        const CrystalReport *k = kontroll();
        return {k->reportFileName().section(u'\\', -1), k->selectionFormula(), k->formula(0),
                k->formula(1)};
    }
};

} // namespace

// --- As it opens

TEST_F(FrmUtskriftTest, TextsAndTips)
{
    aapneFor({.ordreNr = 1031});
    EXPECT_EQ(dialog()->objectName(), u"frmUtskrift"_s);
    EXPECT_EQ(dialog()->windowTitle(), u"Utskrift"_s);
    EXPECT_FALSE(dialog()->isModal());
    EXPECT_EQ(original()->text(), u"Skriv orginal"_s);
    EXPECT_EQ(kopi()->text(), u"Skriv kopi"_s);
    EXPECT_EQ(ehf()->text(), u"EHF (xml) format"_s);
    EXPECT_EQ(ehf()->toolTip(), u"Utsktift til fil i EHF-format"_s);
    EXPECT_FALSE(ehf()->isChecked());
    EXPECT_EQ(i<QLabel>(u"lblFakNr"_s)->text(), u"Faktura nr.: "_s);
    EXPECT_EQ(i<QLabel>(u"lblFakID"_s)->text(), u"FakID:"_s);
    EXPECT_EQ(i<QPushButton>(u"OKButton"_s)->text(), u"Skriv"_s);
    EXPECT_EQ(i<QPushButton>(u"CancelButton"_s)->text(), u"Avbryt"_s);
}

TEST_F(FrmUtskriftTest, OriginalIsChosenByDesign)
{
    SharedForm<frmUtskrift>::get().show();
    EXPECT_TRUE(original()->isChecked());
    EXPECT_FALSE(kopi()->isChecked());
}

TEST_F(FrmUtskriftTest, AnOrderIsPrintedAsOriginal)
{
    aapneFor({.ordreNr = 1031});
    EXPECT_EQ(felttekst(u"txtFakNr"_s), u"1031"_s);
    EXPECT_EQ(felttekst(u"txtFakID"_s), u"1"_s);
    EXPECT_TRUE(original()->isChecked());
    EXPECT_TRUE(original()->isEnabled());
    EXPECT_FALSE(kopi()->isChecked());
    merk(kopi());
    EXPECT_TRUE(kopi()->isChecked());
    EXPECT_FALSE(original()->isChecked());
    merk(original());
    EXPECT_TRUE(original()->isChecked());
}

TEST_F(FrmUtskriftTest, WhatIsNoOrderAnyMoreIsPrintedAsCopy)
{
    aapneFor({.status = u"Bokført"_s});
    EXPECT_TRUE(kopi()->isChecked());
    EXPECT_FALSE(original()->isChecked());
    EXPECT_FALSE(original()->isEnabled());
    merk(original());
    EXPECT_TRUE(kopi()->isChecked());
}

TEST_F(FrmUtskriftTest, AForcedOriginalCanBeChosen)
{
    leggOrdre({.status = u"Fakturert"_s});
    apne();
    control(u"btnPrint"_s)->setFocus();
    tast(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_TRUE(original()->isChecked());
    EXPECT_TRUE(original()->isEnabled());
}

TEST_F(FrmUtskriftTest, OpeningItForAnotherOrderBeginsAnew)
{
    leggOrdre({.ordreNr = 1, .status = u"Betalt"_s});
    leggOrdre({.ordreNr = 2});
    apne();
    klikk(u"cmdFirst"_s);
    klikk(u"btnPrint"_s);
    EXPECT_FALSE(original()->isEnabled());
    merk(ehf());
    // Coming back to the order screen shows its last order.
    klikk(u"btnPrint"_s);
    EXPECT_EQ(felttekst(u"txtFakNr"_s), u"2"_s);
    EXPECT_TRUE(original()->isEnabled());
    EXPECT_TRUE(original()->isChecked());
    EXPECT_FALSE(ehf()->isChecked());
    EXPECT_EQ(lasteSkjermer().count(u"frmUtskrift"_s), 1);
}

TEST_F(FrmUtskriftTest, AvbrytAndEscapeClose)
{
    aapneFor({});
    klikkI(u"CancelButton"_s);
    EXPECT_EQ(dialog(), nullptr);
    klikk(u"btnPrint"_s);
    QTest::keyClick(dialog(), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1|Ordre"_s));
}

TEST_F(FrmUtskriftTest, TheSessionsEndCloses)
{
    aapneFor({});
    EXPECT_TRUE(dialog()->unload(UnloadMode::LoggingOff));
    EXPECT_EQ(dialog(), nullptr);
}

// --- On paper: what is handed over

TEST_F(FrmUtskriftTest, TheFormFollowsTheSetting)
{
    leggOrdre({});
    apne();
    const std::pair<QString, QString> forms[] = {
        {QString(), u"Fak-mgiro-ulogo.rpt"_s}, {u"0"_s, u"Fak-mgiro-ulogo.rpt"_s},
        {u"1"_s, u"Fak-mgiro-mlogo.rpt"_s},    {u"2"_s, u"Fak-ugiro-ulogo.rpt"_s},
        {u"3"_s, u"Fak-ugiro-mlogo.rpt"_s},    {u"4"_s, u"Fak-mgiro-ulogo.rpt"_s},
        {u"-1"_s, u"Fak-mgiro-ulogo.rpt"_s},   {u"1.5"_s, u"Fak-mgiro-ulogo.rpt"_s},
        {u"tull"_s, u"Fak-mgiro-ulogo.rpt"_s}, {u" 2 x"_s, u"Fak-ugiro-ulogo.rpt"_s}};
    for (const auto &[blankett, rapport] : forms) {
        innstill(u"Fakturablankett"_s, blankett);
        frmUtskrift::apne({false, u"1"_s, u"1"_s, true});
        // Read when the dialog is loaded, not when it prints.
        innstill(u"Fakturablankett"_s, u"3"_s);
        EXPECT_EQ(overlevert().rapport, rapport) << blankett.toStdString();
    }
}

TEST_F(FrmUtskriftTest, TheSelectionToTheLetter)
{
    aapneFor({.ordreNr = 1031});
    EXPECT_EQ(overlevert().utvalg, u"{Ordre.KlientNr}= 5 and {Ordre.OrdreNr}=1031"_s);
    frmUtskrift::apne({false, u"1"_s, u"1"_s, true});
    skrivI(u"txtFakNr"_s, u" 12 "_s);
    EXPECT_EQ(overlevert().utvalg, u"{Ordre.KlientNr}= 5 and {Ordre.OrdreNr}= 12 "_s);
}

TEST_F(FrmUtskriftTest, TheKindToTheLetter)
{
    const std::tuple<QString, bool, QString> kinds[] = {
        {u"125"_s, true, u"FakType=1"_s},    {u"125"_s, false, u"FakType=0"_s},
        {u"-125"_s, true, u"FakType=-1"_s},  {u"-125"_s, false, u"FakType=-2"_s},
        {u"-0.5"_s, true, u"FakType=1"_s},   {u"-0.5"_s, false, u"FakType=0"_s},
        {u"-1250"_s, true, u"FakType=-1"_s},
    };
    for (const auto &[sum, somOriginal, type] : kinds) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        aapneFor({.sumBrutto = sum});
        merk(somOriginal ? original() : kopi());
        EXPECT_EQ(overlevert().type, type) << sum.toStdString();
        skjerm()->unload();
        runEvents();
    }
}

TEST_F(FrmUtskriftTest, TheKindLooksAtTheOrderScreenAndNotAtTheFlag)
{
    aapneFor({.sumBrutto = u"-125"_s});
    dialog()->setErKreditnota(false);
    EXPECT_EQ(overlevert().type, u"FakType=-1"_s);

    frmUtskrift::apne({true, u"1"_s, u"1"_s, true});
    felt(22)->setText(u"125,00"_s);
    EXPECT_EQ(overlevert().type, u"FakType=1"_s);

    frmUtskrift::apne({true, u"1"_s, u"1"_s, false});
    skjerm()->unload();
    EXPECT_EQ(overlevert().type, u"FakType=0"_s) << "no order screen, no credit note";
}

TEST_F(FrmUtskriftTest, TheNoteToTheLetter)
{
    leggOrdre({});
    apne();
    const std::tuple<QString, QString, QString> notes[] = {
        {QString(), u"Takk"_s, QString()},
        {u"0"_s, u"Takk"_s, QString()},
        {u"1"_s, u"Takk for handelen"_s, u"Note='Takk for handelen'"_s},
        {u"1"_s, QString(), u"Note=''"_s},
        {u"1"_s, u" Ola's blå "_s, u"Note=' Ola's blå '"_s},
        {u"2"_s, u"Takk"_s, QString()},
        {u"1x"_s, u"Takk"_s, QString()},
    };
    for (const auto &[bruk, tekst, note] : notes) {
        innstill(u"BrukTekst1"_s, bruk);
        innstill(u"FakturaTekst1"_s, tekst);
        frmUtskrift::apne({false, u"1"_s, u"1"_s, true});
        EXPECT_EQ(overlevert().note, note) << bruk.toStdString() << ' ' << tekst.toStdString();
    }
}

// --- On paper: preview

TEST_F(FrmUtskriftTest, ThePreviewShowsTheInvoiceAndMakesItFakturert)
{
    innstill(u"PrintVis"_s, u"1"_s);
    innstill(u"BrukTekst1"_s, u"1"_s);
    innstill(u"FakturaTekst1"_s, u"Takk"_s);
    leggOrdre({.ordreNr = 1030, .kundeNavn = u"Annen AS"_s});
    aapneFor({.ordreNr = 1031});
    const QStringList sql = endringer([] { klikkI(u"OKButton"_s); });
    EXPECT_EQ(sql, QStringList(u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE OrdreNr=1031"_s));
    EXPECT_EQ(dialog(), nullptr);
    ASSERT_EQ(vinduer().size(), 1);
    EXPECT_EQ(tekster(vindu()),
              QStringList({u"Nr 1031 for Kunde AS"_s, u"Type 1"_s, u"Note Takk"_s, u"125,00"_s}));
    EXPECT_EQ(statuser(), QStringList({u"5|1030|Ordre"_s, u"5|1031|Fakturert"_s}));
    EXPECT_TRUE(QTest::qWaitForWindowActive(vindu())) << "in front of the order screen";
    EXPECT_EQ(vindu()->focusWidget(), sider(vindu()));
    EXPECT_TRUE(utskrifter().isEmpty());
}

TEST_F(FrmUtskriftTest, OnlyTheNumberOneMeansPreview)
{
    leggOrdre({});
    apne();
    for (const QString &verdi : {QString(), u"0"_s, u"2"_s, u"ja"_s, u"-1"_s}) {
        innstill(u"PrintVis"_s, verdi);
        klikk(u"btnPrint"_s);
        avbrytSkriveren();
        EXPECT_NE(dialog(), nullptr) << verdi.toStdString();
        EXPECT_TRUE(vinduer().isEmpty());
    }
    for (const QString &verdi : {u"1"_s, u" 1,5"_s, u"1.0"_s}) {
        innstill(u"PrintVis"_s, verdi);
        klikk(u"btnPrint"_s);
        klikkI(u"OKButton"_s);
        EXPECT_EQ(dialog(), nullptr) << verdi.toStdString();
    }
    EXPECT_EQ(vinduer().size(), 3);
}

TEST_F(FrmUtskriftTest, AReportThatFailsMakesItFakturertAllTheSame)
{
    aapneFor({.ordreNr = 7});
    innstill(u"PrintVis"_s, u"1"_s);
    innstill(u"BrukTekst1"_s, u"1"_s);
    innstill(u"FakturaTekst1"_s, u"O'Brien"_s);
    klikkI(u"OKButton"_s);
    EXPECT_TRUE(meldinger.ta().value(0).startsWith(u"CRP: 20515 "_s));
    EXPECT_EQ(statuser(), QStringList(u"5|7|Fakturert"_s));
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_TRUE(vinduer().isEmpty());
}

TEST_F(FrmUtskriftTest, AnEmptyReportIsToldAndTheDialogCloses)
{
    aapneFor({.ordreNr = 7});
    innstill(u"PrintVis"_s, u"1"_s);
    skrivI(u"txtFakNr"_s, u"99"_s);
    klikkI(u"OKButton"_s);
    EXPECT_EQ(meldinger.ta(), QStringList(u"Tomt datasett, ingen poster å vise."_s));
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|7|Ordre"_s));
}

TEST_F(FrmUtskriftTest, AStatusThatCannotBeStoredIsNotTold)
{
    aapneFor({});
    innstill(u"PrintVis"_s, u"1"_s);
    SessionTap tap;
    ado::SessionPool::shared().clear();
    tap.fail(u"execute"_s);
    klikkI(u"OKButton"_s);
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1|Ordre"_s));
    EXPECT_EQ(vinduer().size(), 1);
}

// --- On paper: the printer

TEST_F(FrmUtskriftTest, ThePrinterIsAskedForAndPrintsOnce)
{
    aapneFor({.ordreNr = 1031});
    QStringList sql;
    sql = endringer([this] { skrivUt(); });
    EXPECT_EQ(sql, QStringList(u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE OrdreNr=1031"_s));
    EXPECT_EQ(skrivere.brukt, QStringList(u"Kontor"_s));
    EXPECT_EQ(antallSider(utskrifter().value(0)), 1);
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_TRUE(vinduer().isEmpty());
    EXPECT_EQ(statuser(), QStringList(u"5|1031|Fakturert"_s));
}

TEST_F(FrmUtskriftTest, ThePropertiesOfThePrinterDialog)
{
    aapneFor({});
    int flags = 0;
    bool feilVedAvbryt = false;
    int foreslatt = 0;
    onNextModal<QDialog>([&](QDialog &d) {
        const auto *skjult = qobject_cast<frmInvisible *>(Forms::byName(u"frmInvisible"_s));
        flags = skjult->CommonDialog1.flags;
        feilVedAvbryt = skjult->CommonDialog1.cancelError;
        foreslatt = d.findChild<QSpinBox *>(u"spnEksemplarer"_s)->value();
        d.reject();
    });
    klikkI(u"OKButton"_s);
    EXPECT_EQ(flags, 1048588);
    EXPECT_TRUE(feilVedAvbryt);
    EXPECT_EQ(foreslatt, 1);
}

TEST_F(FrmUtskriftTest, CancelAtThePrinterLeavesAllAsItWas)
{
    aapneFor({});
    EXPECT_EQ(endringer([this] { avbrytSkriveren(); }), QStringList());
    EXPECT_NE(dialog(), nullptr);
    EXPECT_TRUE(dialog()->isVisible());
    EXPECT_TRUE(skrivere.brukt.isEmpty());
    // And the next time it goes through.
    skrivUt();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(utskrifter().size(), 1);
}

TEST_F(FrmUtskriftTest, ThreeCopiesAreThreeRuns)
{
    aapneFor({.ordreNr = 1031});
    SessionTap tap;
    ado::SessionPool::shared().clear();
    int lest = 0;
    tap.rewriteStatements([&](const QString &statement) {
        if (statement.startsWith(u"SELECT Ordre.OrdreNr, Ordre.KlientNr"_s))
            ++lest;
        return statement;
    });
    skrivUt(3, u"Kontor"_s);
    EXPECT_EQ(lest, 3);
    EXPECT_EQ(skrivere.brukt, QStringList({u"Kontor"_s, u"Kontor"_s, u"Kontor"_s}));
    ASSERT_EQ(utskrifter().size(), 3);
    for (const QByteArray &pdf : utskrifter())
        EXPECT_EQ(antallSider(pdf), 1);
    EXPECT_EQ(tap.statements().filter(u"UPDATE Ordre"_s).size(), 1);
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(FrmUtskriftTest, TheChosenPrinterHoldsForAllCopiesAndNoLonger)
{
    leggOrdre({.ordreNr = 1});
    aapne();
    skrivUt(2, u"Etikett"_s);
    SkrivRapport(u"Liste.rpt"_s, 1, {}, {}, {});
    EXPECT_EQ(skrivere.brukt, QStringList({u"Etikett"_s, u"Etikett"_s, u"Kontor"_s}));
    for (const QByteArray &pdf : utskrifter())
        EXPECT_EQ(papir(pdf), QSize(595, 842));
}

TEST_F(FrmUtskriftTest, SeveralCopiesToAPdfFileAskOnceAndLeaveOneFile)
{
    skrivere.standardnavn.clear();
    aapneFor({});
    int spurt = 0;
    onNextModal<QDialog>([&](QDialog &d) {
        onNextModal<QFileDialog>([&](QFileDialog &f) {
            ++spurt;
            svarMedFil(f, fil(u"faktura.pdf"_s));
        });
        svarMedSkriver(d, {}, 3);
    });
    klikkI(u"OKButton"_s);
    EXPECT_EQ(spurt, 1);
    EXPECT_EQ(antallSider(innhold(u"faktura.pdf"_s)), 1);
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1|Fakturert"_s));
}

TEST_F(FrmUtskriftTest, APrinterThatRefusesIsToldForEachCopyAndTheStatusIsSet)
{
    aapneFor({});
    skrivUt(2, u"Nekter"_s);
    const QStringList sagt = meldinger.ta();
    ASSERT_EQ(sagt.size(), 2);
    for (const QString &tekst : sagt)
        EXPECT_TRUE(tekst.startsWith(u"CRP: 20545 "_s)) << tekst.toStdString();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1|Fakturert"_s));
    EXPECT_TRUE(lasteSkjermer().contains(u"frmDummy"_s));
    EXPECT_TRUE(lasteSkjermer().contains(u"frmInvisible"_s));
}

TEST_F(FrmUtskriftTest, ThePrintedKindIsThatOfTheScreen)
{
    aapneFor({.sumBrutto = u"-125"_s});
    innstill(u"PrintVis"_s, u"1"_s);
    klikkI(u"OKButton"_s);
    EXPECT_EQ(tekster(vindu()).value(1), u"Type -1"_s);
    klikk(u"btnPrint"_s);
    klikkI(u"OKButton"_s);
    EXPECT_EQ(tekster(vindu()).value(1), u"Type -2"_s);
}

// --- The status

TEST_F(FrmUtskriftTest, APrintoutHitsTheNumberUnderEveryClient)
{
    leggOrdre({.ordreNr = 7});
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus) VALUES (6,7,'Betalt')"_s);
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus) VALUES (6,8,'Betalt')"_s);
    aapne();
    skrivUt();
    EXPECT_EQ(statuser(), QStringList({u"5|7|Fakturert"_s, u"6|7|Fakturert"_s, u"6|8|Betalt"_s}));
    EXPECT_EQ(antallSider(utskrifter().value(0)), 1) << "on paper it is the client's own";
}

TEST_F(FrmUtskriftTest, AnEhfFileGoesByTheID)
{
    leggOrdre({.ordreNr = 7});
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus) VALUES (6,7,'Betalt')"_s);
    aapne();
    merk(ehf());
    const QStringList sql = endringer([this] { skrivEhf(u"f.xml"_s); });
    EXPECT_EQ(sql, QStringList(u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE ID=1"_s));
    EXPECT_EQ(statuser(), QStringList({u"5|7|Fakturert"_s, u"6|7|Betalt"_s}));
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(FrmUtskriftTest, ACopyOfAnOldInvoiceMakesItFakturertAgain)
{
    for (const QString &status : {u"Bokført"_s, u"Betalt"_s, u"Fakturert"_s}) {
        for (const bool somEhf : {false, true}) {
            run(u"DELETE FROM OrdreLinjer"_s);
            run(u"DELETE FROM Ordre"_s);
            aapneFor({.status = status});
            if (somEhf) {
                merk(ehf());
                skrivEhf(u"kopi%1%2.xml"_s.arg(status).arg(somEhf));
            } else {
                skrivUt();
            }
            EXPECT_EQ(statuser(), QStringList(u"5|1|Fakturert"_s)) << status.toStdString();
            skjerm()->unload();
            runEvents();
        }
    }
}

// --- The EHF file

TEST_F(FrmUtskriftTest, WritesTheInvoiceAsEhf)
{
    aapneFor({.ordreNr = 1031});
    merk(ehf());
    skrivEhf(u"f.xml"_s);
    const QByteArray xml = innhold(u"f.xml"_s);
    EXPECT_TRUE(xml.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"));
    EXPECT_TRUE(xml.contains("EHF-faktura_sm&#x00E5;.xslt"));
    EXPECT_TRUE(xml.contains("<cbc:ID>1031</cbc:ID>"));
    EXPECT_TRUE(xml.contains("<cac:InvoiceLine>"));
    EXPECT_TRUE(xml.endsWith("</Invoice>\r\n"));
    EXPECT_EQ(xml.count("\r\n"), 4);
    EXPECT_TRUE(skrivere.brukt.isEmpty());
}

TEST_F(FrmUtskriftTest, TheFlagDecidesTheEhfDocument)
{
    aapneFor({.sumBrutto = u"-125"_s});
    merk(ehf());
    skrivEhf(u"k.xml"_s);
    EXPECT_TRUE(innhold(u"k.xml"_s).contains("EHF-kreditnota_sm&#x00E5;.xslt"));
    EXPECT_TRUE(innhold(u"k.xml"_s).endsWith("</CreditNote>\r\n"));
    // Not the screen, and not the option.
    klikk(u"btnPrint"_s);
    dialog()->setErKreditnota(false);
    merk(ehf());
    skrivEhf(u"f.xml"_s);
    EXPECT_TRUE(innhold(u"f.xml"_s).endsWith("</Invoice>\r\n"));
}

TEST_F(FrmUtskriftTest, ThePropertiesOfTheSaveDialog)
{
    aapneFor({.ordreNr = 1031});
    merk(ehf());
    skrivI(u"txtFakNr"_s, u"  12 34  "_s);
    const auto se = [&] {
        CommonDialog sett;
        onNextModal<QFileDialog>([&](QFileDialog &d) {
            sett = qobject_cast<frmInvisible *>(Forms::byName(u"frmInvisible"_s))->CommonDialog1;
            EXPECT_EQ(d.acceptMode(), QFileDialog::AcceptSave);
            d.reject();
        });
        klikkI(u"OKButton"_s);
        return sett;
    };
    const CommonDialog faktura = se();
    EXPECT_TRUE(faktura.cancelError);
    EXPECT_EQ(faktura.flags, 6);
    EXPECT_EQ(faktura.filter, u"EHF Format (*.xml)|*.xml|All Files (*.*)|*.*"_s);
    EXPECT_EQ(faktura.filterIndex, 1);
    EXPECT_EQ(faktura.defaultExt, u"xml"_s);
    EXPECT_EQ(faktura.fileName, u"Faktura-12 34.xml"_s);
    dialog()->setErKreditnota(true);
    EXPECT_EQ(se().fileName, u"Kreditnota-12 34.xml"_s);
    EXPECT_NE(dialog(), nullptr);
}

TEST_F(FrmUtskriftTest, CancelAtTheSaveDialogLeavesAllAsItWas)
{
    aapneFor({});
    merk(ehf());
    const QStringList sql = endringer([] {
        onNextModal<QFileDialog>([](QFileDialog &d) { d.reject(); });
        klikkI(u"OKButton"_s);
    });
    EXPECT_EQ(sql, QStringList());
    EXPECT_NE(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1|Ordre"_s));
}

TEST_F(FrmUtskriftTest, ASecondFileOfTheSameNameAsksForOverwriting)
{
    aapneFor({});
    merk(ehf());
    skrivEhf(u"f.xml"_s);
    klikk(u"btnPrint"_s);
    merk(ehf());
    meldinger.svar = 6; // Ja
    skrivEhf(u"f.xml"_s);
    EXPECT_EQ(meldinger.ta(), QStringList(u"f.xml finnes fra før.\nVil du erstatte den?"_s));
    EXPECT_EQ(innhold(u"f.xml"_s).count("</Invoice>"), 1) << "replaced, not appended to";
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(FrmUtskriftTest, AnErrorMidwayLeavesTheLinesWritten)
{
    aapneFor({.ordreNr = 1031});
    merk(ehf());
    skrivI(u"txtFakNr"_s, u"99"_s); // no such order, so no net sum to divide by
    const QStringList sql = endringer([this] { skrivEhf(u"f.xml"_s); });
    EXPECT_EQ(sql, QStringList());
    const QByteArray xml = innhold(u"f.xml"_s);
    EXPECT_TRUE(xml.endsWith("</cbc:ProfileID>\r\n")) << xml.toStdString();
    EXPECT_EQ(xml.count("\r\n"), 1);
    EXPECT_NE(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1031|Ordre"_s));
}

TEST_F(FrmUtskriftTest, AFileThatCannotBeOpenedEndsTheCommandSilently)
{
    aapneFor({});
    merk(ehf());
    onNextModal<QFileDialog>([this](QFileDialog &d) {
        svarMedFil(d, fil(u"ny.xml"_s));
        QDir().mkdir(fil(u"ny.xml"_s)); // in the file's place by now
    });
    klikkI(u"OKButton"_s);
    EXPECT_NE(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1|Ordre"_s));
}

TEST_F(FrmUtskriftTest, ThePrintSettingsHaveNoEffectOnTheEhfFile)
{
    innstill(u"PrintVis"_s, u"1"_s);
    innstill(u"BrukTekst1"_s, u"1"_s);
    innstill(u"FakturaTekst1"_s, u"O'Brien"_s);
    innstill(u"Fakturablankett"_s, u"3"_s);
    aapneFor({});
    merk(ehf());
    merk(kopi());
    skrivEhf(u"f.xml"_s);
    EXPECT_TRUE(innhold(u"f.xml"_s).endsWith("</Invoice>\r\n"));
    EXPECT_TRUE(vinduer().isEmpty());
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(FrmUtskriftTest, TheFormsMayGoWhileADialogIsUp)
{
    aapneFor({});
    merk(ehf());
    onNextModal<QFileDialog>([this](QFileDialog &d) {
        Forms::instance().logOff();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        svarMedFil(d, fil(u"f.xml"_s));
    });
    QTest::mouseClick(i<QWidget>(u"OKButton"_s), Qt::LeftButton);
    runEvents();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1|Fakturert"_s));
}
