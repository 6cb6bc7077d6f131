#include "output/printing/frmUtskriftTest.h"
#include "support/Caption.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

// --- As it opens

TEST_F(FrmUtskriftTest, TextsAndTips)
{
    aapneFor({.ordreNr = 1031});
    EXPECT_EQ(dialog()->objectName(), u"frmUtskrift"_s);
    EXPECT_EQ(dialog()->windowTitle(), u"Utskrift"_s);
    EXPECT_FALSE(dialog()->isModal());
    EXPECT_EQ(captionOf(*original()), u"Skriv orginal"_s);
    EXPECT_EQ(captionOf(*kopi()), u"Skriv kopi"_s);
    EXPECT_EQ(captionOf(*ehf()), u"EHF (xml) format"_s);
    EXPECT_EQ(ehf()->toolTip(), u"Utsktift til fil i EHF-format"_s);
    EXPECT_FALSE(ehf()->isChecked());
    EXPECT_EQ(captionOf(*i<QLabel>(u"lblFakNr"_s)), u"Faktura nr.: "_s);
    EXPECT_EQ(captionOf(*i<QLabel>(u"lblFakID"_s)), u"FakID:"_s);
    EXPECT_EQ(captionOf(*i<QPushButton>(u"OKButton"_s)), u"Skriv"_s);
    EXPECT_EQ(captionOf(*i<QPushButton>(u"CancelButton"_s)), u"Avbryt"_s);
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
    dialog()->settErKreditnota(false);
    EXPECT_EQ(overlevert().type, u"FakType=-1"_s);

    frmUtskrift::apne({true, u"1"_s, u"1"_s, true});
    felt(22)->setText(u"125,00"_s);
    EXPECT_EQ(overlevert().type, u"FakType=1"_s);

    frmUtskrift::apne({true, u"1"_s, u"1"_s, false});
    skjerm()->unload();
    EXPECT_EQ(overlevert().type, u"FakType=0"_s) << "no order screen, no credit note";
}

TEST_F(FrmUtskriftTest, ADialogLeftOpenKeepsItsOrderAndTakesTheScreensKind)
{
    leggOrdre({.ordreNr = 1, .sumBrutto = u"-125"_s});
    leggOrdre({.ordreNr = 2});
    aapne();
    klikk(u"cmdFirst"_s);
    const Overlevert sagt = overlevert();
    EXPECT_EQ(sagt.utvalg, u"{Ordre.KlientNr}= 5 and {Ordre.OrdreNr}=2"_s);
    EXPECT_EQ(sagt.type, u"FakType=-1"_s);
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
