#include "output/printing/frmUtskriftTest.h"

#include "presentation/screens/Skjerm.h"
#include "presentation/screens/frmInvisible.h"
#include "shell/component/Main.h"

#include <QDir>

using namespace Qt::StringLiterals;

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

TEST_F(FrmUtskriftTest, TheNextEhfFileIsOfferedWhereTheLastOneLies)
{
    Main();
    ASSERT_TRUE(QDir(folder()).mkdir(u"EHF"_s));
    int ordreNr = 1031;
    for (const QString &navn : {u"EHF/f.xml"_s, u"g.xml"_s}) {
        aapneFor({.ordreNr = ordreNr++});
        merk(ehf());
        skrivEhf(navn);
        EXPECT_EQ(HentMappe(u"EHF"_s), QFileInfo(fil(navn)).path());
        skjerm()->unload();
        runEvents();
    }
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
    dialog()->settErKreditnota(false);
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
    dialog()->settErKreditnota(true);
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

TEST_F(FrmUtskriftTest, TheComponentsEndWhileTheFileIsAskedForLeavesNoFile)
{
    aapneFor({});
    merk(ehf());
    onNextModal<QFileDialog>([this](QFileDialog &d) {
        Unload();
        svarMedFil(d, fil(u"f.xml"_s));
    });
    klikkI(u"OKButton"_s);
    EXPECT_FALSE(QFile::exists(fil(u"f.xml"_s)));
    EXPECT_EQ(lasteSkjermer(), QStringList());
}

TEST_F(FrmUtskriftTest, AFullDiskEndsTheCommandSilently)
{
    aapneFor({});
    merk(ehf());
    // The file takes what is written into its buffer, but not what comes to the disk.
    ASSERT_TRUE(QFile::link(u"/dev/full"_s, fil(u"full.xml"_s)));
    meldinger.svar = 6; // Ja
    const QStringList sql = endringer([this] { skrivEhf(u"full.xml"_s); });
    EXPECT_EQ(sql, QStringList());
    EXPECT_EQ(meldinger.ta().size(), 1) << "only the question of overwriting";
    EXPECT_NE(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1|Ordre"_s));
}

TEST_F(FrmUtskriftTest, AnOrderNumberOfLettersGivesNoDocument)
{
    aapneFor({});
    merk(ehf());
    skrivI(u"txtFakNr"_s, u"12a"_s);
    skrivEhf(u"f.xml"_s);
    EXPECT_EQ(innhold(u"f.xml"_s).count("\r\n"), 1);
    EXPECT_NE(dialog(), nullptr);
    EXPECT_EQ(statuser(), QStringList(u"5|1|Ordre"_s));
}

TEST_F(FrmUtskriftTest, AnOrderDeletedMeanwhileGivesNoDocument)
{
    aapneFor({.ordreNr = 7});
    merk(ehf());
    run(u"DELETE FROM OrdreLinjer"_s);
    run(u"DELETE FROM Ordre"_s);
    skrivEhf(u"f.xml"_s);
    EXPECT_EQ(innhold(u"f.xml"_s).count("\r\n"), 1);
    EXPECT_NE(dialog(), nullptr);
}
