#include "output/printing/frmUtskriftTest.h"

#include "presentation/screens/frmInvisible.h"
#include "shell/component/Main.h"

#include <QMessageBox>
#include <QSpinBox>

using namespace Qt::StringLiterals;

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

TEST_F(FrmUtskriftTest, AnOrderDeletedMeanwhileIsAnEmptyReport)
{
    aapneFor({.ordreNr = 7});
    innstill(u"PrintVis"_s, u"1"_s);
    run(u"DELETE FROM OrdreLinjer"_s);
    run(u"DELETE FROM Ordre"_s);
    klikkI(u"OKButton"_s);
    EXPECT_EQ(meldinger.ta(), QStringList(u"Tomt datasett, ingen poster å vise."_s));
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(FrmUtskriftTest, AnOrderNumberOfLettersIsToldAndChangesNothing)
{
    aapneFor({.ordreNr = 7});
    innstill(u"PrintVis"_s, u"1"_s);
    skrivI(u"txtFakNr"_s, u"7a"_s);
    klikkI(u"OKButton"_s);
    const QStringList sagt = meldinger.ta();
    ASSERT_EQ(sagt.size(), 1);
    EXPECT_TRUE(sagt[0].startsWith(u"CRP: 20515 "_s)) << sagt[0].toStdString();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|7|Ordre"_s));
}

TEST_F(FrmUtskriftTest, ANoteOfSeveralLinesWithQuotationMarksIsShownAsItStands)
{
    innstill(u"PrintVis"_s, u"1"_s);
    innstill(u"BrukTekst1"_s, u"1"_s);
    innstill(u"FakturaTekst1"_s, u"Takk!\r\nSi \"{hei}\" & <ha det>"_s);
    aapneFor({.ordreNr = 7});
    klikkI(u"OKButton"_s);
    EXPECT_EQ(meldinger.ta(), QStringList());
    ASSERT_EQ(vinduer().size(), 1);
    EXPECT_EQ(tekster(vindu()).mid(2, 2),
              QStringList({u"Note Takk!"_s, u"Si \"{hei}\" & <ha det>"_s}));
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

TEST_F(FrmUtskriftTest, APdfFileIsCalledLikeAnEhfFile)
{
    skrivere.standardnavn.clear();
    for (const auto &[erKreditnota, navn] :
         {std::pair(false, u"Faktura-1062.pdf"_s), std::pair(true, u"Kreditnota-1062.pdf"_s)}) {
        QString foreslatt;
        frmUtskrift::apne({erKreditnota, u"1"_s, u"1062"_s, true});
        onNextModal<QDialog>([&](QDialog &d) {
            onNextModal<QFileDialog>([&](QFileDialog &f) {
                foreslatt = f.findChild<QLineEdit *>(u"fileNameEdit"_s)->text();
                f.reject();
            });
            svarMedSkriver(d, {});
            d.reject();
        });
        klikkI(u"OKButton"_s);
        EXPECT_EQ(foreslatt, navn);
    }
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

TEST_F(FrmUtskriftTest, TheComponentsEndWhileThePrinterIsChosenIsTheEndOfThePrintout)
{
    aapneFor({});
    onNextModal<QDialog>([](QDialog &d) {
        Unload();
        svarMedSkriver(d, u"Kontor"_s, 2);
    });
    klikkI(u"OKButton"_s);
    EXPECT_EQ(meldinger.ta(), QStringList());
    EXPECT_EQ(lasteSkjermer(), QStringList());
    EXPECT_EQ(skrivere.brukt, QStringList());
}

TEST_F(FrmUtskriftTest, TheComponentsEndUnderAMessageIsTheEndOfTheCopies)
{
    aapneFor({});
    onNextModal<QDialog>([](QDialog &d) {
        svarMedSkriver(d, u"Nekter"_s, 3);
        onNextModal<QMessageBox>([](QMessageBox &) { Unload(); });
    });
    klikkI(u"OKButton"_s);
    EXPECT_EQ(meldinger.ta().size(), 1);
    EXPECT_EQ(lasteSkjermer(), QStringList());
    EXPECT_EQ(skrivere.brukt, QStringList(u"Nekter"_s));
}

TEST_F(FrmUtskriftTest, AReportThatIsCancelledLeavesAllAsItWas)
{
    aapneFor({.ordreNr = 1031});
    const LangsomTid tid;
    int notater = 0;
    const auto avbryt = [&] {
        onNextModal<QProgressDialog>([&](QProgressDialog &notat) {
            ++notater;
            notat.cancel();
        });
    };
    onNextModal<QDialog>([&](QDialog &d) {
        svarMedSkriver(d, u"Kontor"_s, 3);
        avbryt();
    });
    klikkI(u"OKButton"_s);
    innstill(u"PrintVis"_s, u"1"_s);
    avbryt();
    klikkI(u"OKButton"_s);

    EXPECT_EQ(notater, 2) << "the other copies are not begun";
    EXPECT_EQ(skrivere.brukt, QStringList());
    EXPECT_TRUE(vinduer().isEmpty());
    EXPECT_EQ(meldinger.ta(), QStringList());
    ASSERT_NE(dialog(), nullptr);
    EXPECT_TRUE(dialog()->isVisible());
    EXPECT_EQ(statuser(), QStringList(u"5|1031|Ordre"_s));
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
