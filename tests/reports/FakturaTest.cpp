#include "reports/InvoiceTest.h"
#include "reports/PageReader.h"

#include "platform/report/Report.h"

using namespace Qt::StringLiterals;

namespace {

class FakturaTest : public InvoiceTest
{
protected:
    /// The only page of an order of that one line.
    report::Page pageOf(const Line &line)
    {
        const report::Document document = print(enterOrder({line}));
        EXPECT_EQ(document.pages.size(), 1u);
        return document.pages.front();
    }
    report::Page onlyPage(int order, int fakType = faktype::kFaktura, const QString &note = {})
    {
        const report::Document document = print(order, fakType, note);
        EXPECT_EQ(document.pages.size(), 1u);
        return document.pages.front();
    }
    static const Line kHour;
};

const FakturaTest::Line FakturaTest::kHour{u"T100"_s, u"Kjøring"_s, u"2.5"_s, u"1150"_s};

} // namespace

TEST_F(FakturaTest, NamesSellerBuyerAndTheDocument)
{
    const int order = enterOrder({kHour});
    const report::Page page = onlyPage(order);
    const QStringList texts = textsOf(page);
    EXPECT_TRUE(texts.contains(u"FAKTURA"_s));
    EXPECT_FALSE(texts.contains(u"KOPI"_s));
    EXPECT_TRUE(
        texts.contains(u"Gråbein Bilfrakt AS, Postboks 41, Terminalvegen 7, 2815 Gjøvik"_s));
    EXPECT_TRUE(texts.contains(u"Telefon 61 00 00 41   Org.nr. NO 717 171 721 MVA   "
                               "Foretaksregisteret   Konto 9999.12.34566"_s));
    EXPECT_TRUE(texts.contains(u"Side 1 av 1"_s));
    EXPECT_EQ(factOn(page, u"Fakturanr."_s), QString::number(order));
    EXPECT_EQ(factOn(page, u"Fakturadato"_s), u"09.03.2014"_s);
    EXPECT_EQ(factOn(page, u"Forfallsdato"_s), u"23.03.2014"_s);
    EXPECT_EQ(factOn(page, u"Betalingsvilkår"_s), u"Netto 14 dager"_s);
    EXPECT_EQ(factOn(page, u"Til konto"_s), u"9999.12.34566"_s);
    EXPECT_EQ(factOn(page, u"KID"_s), u"0100010050019"_s);
    EXPECT_EQ(factOn(page, u"Kundenr."_s), u"10001"_s);
    EXPECT_EQ(factOn(page, u"Deres ref."_s), u"Prosjekt 414"_s);
    EXPECT_EQ(factOn(page, u"Vår ref."_s), u"Åse Fjellstad"_s);
    EXPECT_EQ(factOn(page, u"Leveringsdato"_s), u"07.03.2014"_s);
    EXPECT_EQ(factOn(page, u"Leveringssted"_s), u"Byggeplass Øvre Ål, Tomt 4, 3570 Ål"_s);
}

TEST_F(FakturaTest, TheBuyerStandsInTheEnvelopesWindow)
{
    const report::Page page = pageOf(kHour);
    double before = 46; // mm
    for (const QString &line :
         {u"Bjørkåsen Trelast AS"_s, u"Postboks 12"_s, u"Sagvegen 4"_s, u"2406 Elverum"_s}) {
        const report::TextCommand text = textOn(page, line);
        EXPECT_DOUBLE_EQ(text.baseline.x(), 20);
        EXPECT_GT(text.baseline.y(), before);
        before = text.baseline.y();
    }
    EXPECT_LT(before, 66);
}

TEST_F(FakturaTest, ALineHasNumberTextQuantityUnitPriceRateAndAmount)
{
    EXPECT_EQ(rowOf(pageOf(kHour), u"Kjøring"_s),
              (QStringList{u"T100"_s, u"Kjøring"_s, u"2,5"_s, u"time"_s, u"1 150,00"_s, u"25 %"_s,
                           u"2 875,00"_s}));
}

TEST_F(FakturaTest, AWideUnitIsWholeAndClearOfAPriceOfMillions)
{
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (1,'B','Kjøring Ål')"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (1,'W','WWWWWWWWWW')"_s);
    for (const QString &product : {u"B"_s, u"W"_s}) {
        const report::Document document = print(
            u"Fak-ugiro-ulogo.rpt"_s, enterOrder({{product, u"Leie"_s, u"1"_s, u"9876543.21"_s}}));
        EXPECT_EQ(layoutFaults(document), QStringList());
        EXPECT_EQ(textsOf(document.pages[0]).filter(u"…"_s), QStringList());
    }
}

TEST_F(FakturaTest, ALineOfTextHasNoNumbers)
{
    const QString text = u"Gjelder byggeplass Øvre Ål, etter avtale med Bjørg"_s;
    const report::Page page = onlyPage(enterOrder({kHour, {{}, text, {}, {}, {}}}));
    EXPECT_EQ(rowOf(page, text), QStringList{text});
    EXPECT_FALSE(textsOf(page).contains(u"Avgiftsfritt"_s));
}

TEST_F(FakturaTest, AProductNumberOfSeveralProductsIsOneLine)
{
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (1,'T100','dag')"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (1,'T100','uke')"_s);
    run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (2,'T100','år')"_s);
    const report::Page page = pageOf(kHour);
    EXPECT_EQ(textsOf(page).count(u"Kjøring"_s), 1);
    EXPECT_TRUE(textsOf(page).contains(u"time"_s));
}

TEST_F(FakturaTest, AnotherClientsOrderOfTheSameNumberIsNotPrinted)
{
    const int order = enterOrder({kHour});
    run(u"INSERT INTO Klient (KlientNr,Navn) VALUES (2,'Annen AS')"_s);
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,KundeNavn) VALUES (2,%1,'Annen')"_s.arg(order));
    run(u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNavn) VALUES (%1,10,'Annet')"_s.arg(
        rows(u"SELECT Max(ID) AS ID FROM Ordre"_s).value(0)));
    EXPECT_FALSE(textsOf(onlyPage(order)).contains(u"Annet"_s));
}

TEST_F(FakturaTest, ApostrophesAreTextLikeAnyOther)
{
    const int order = enterOrder({{u"T100"_s, u"Kjøring av 'Bjørn' & <Co>"_s, u"1"_s, u"100"_s}});
    change(order, u"KundeNavn='Per''s Grus',DeresRef='O''Brien'"_s);
    const report::Page page = onlyPage(order, faktype::kFaktura, u"Takk for ''handelen''!"_s);
    const QStringList texts = textsOf(page);
    EXPECT_TRUE(texts.contains(u"Per's Grus"_s));
    EXPECT_EQ(factOn(page, u"Deres ref."_s), u"O'Brien"_s);
    EXPECT_TRUE(texts.contains(u"Kjøring av 'Bjørn' & <Co>"_s));
    EXPECT_TRUE(texts.contains(u"Takk for 'handelen'!"_s));
}

TEST_F(FakturaTest, MissingFactsLeaveNoLabels)
{
    const int order = enterOrder({kHour});
    change(order, u"KundeNavn=Null,FakAdresse1=Null,FakAdresse2=Null,FakPostNr=Null,"
                  "FakPoststed=Null,LevAdresse1=Null,LevAdresse2=Null,LevPostNr=Null,"
                  "LevPoststed=Null,EgenRef=Null,DeresRef='  ',KID='',KundeNr=Null,BetBet=Null,"
                  "FakDato=Null,ForfallDato=Null,LevDato=Null,Avrunding=Null"_s);
    run(u"UPDATE Klient SET Adr1=Null,Adr2=Null,PostNr=Null,TlfArbeid=Null,OrganisasjonsNr=Null,"
        u"Giro1=Null WHERE KlientNr=1"_s);
    const report::Page page = onlyPage(order);
    const QStringList texts = textsOf(page);
    for (const QString &label :
         {u"Fakturadato"_s, u"Forfallsdato"_s, u"Betalingsvilkår"_s, u"KID"_s, u"Kundenr."_s,
          u"Deres ref."_s, u"Vår ref."_s, u"Leveringsdato"_s, u"Leveringssted"_s})
        EXPECT_FALSE(texts.contains(label)) << label.toStdString();
    EXPECT_EQ(texts.count(u"Til konto"_s), 1); // on the slip
    EXPECT_EQ(factOn(page, u"Fakturanr."_s), QString::number(order));
    EXPECT_TRUE(texts.contains(u"Foretaksregisteret"_s));
    EXPECT_TRUE(texts.contains(u"3 593,75"_s));
}

TEST_F(FakturaTest, WithoutAPlaceOfDeliveryItIsTheBuyers)
{
    const int order = enterOrder({kHour});
    for (const QString &blank : {u"Null"_s, u"''"_s, u"'  '"_s}) {
        change(order, u"LevAdresse1=%1,LevAdresse2=%1,LevPostNr=%1,LevPoststed=%1"_s.arg(blank));
        EXPECT_EQ(factOn(onlyPage(order), u"Leveringssted"_s),
                  u"Postboks 12, Sagvegen 4, 2406 Elverum"_s);
    }
    change(order, u"LevPoststed='Ål'"_s);
    EXPECT_EQ(factOn(onlyPage(order), u"Leveringssted"_s), u"Ål"_s);
}

TEST_F(FakturaTest, AFactThatIsMissingMovesTheOthersUp)
{
    const int order = enterOrder({kHour});
    const double before = textOn(onlyPage(order), u"Vår ref."_s).baseline.y();
    change(order, u"DeresRef=Null"_s);
    const report::Page page = onlyPage(order);
    EXPECT_LT(textOn(page, u"Vår ref."_s).baseline.y(), before - 3);
    EXPECT_EQ(factOn(page, u"Vår ref."_s), u"Åse Fjellstad"_s);
}

TEST_F(FakturaTest, LongNamesAreWhole)
{
    const int order = enterOrder(
        {{u"SPESIALTRANSPORT-001"_s, u"Semitrailer med kjøleaggregat og løftelem, innenla"_s,
          u"12345.5"_s, u"98765.43"_s}});
    change(order, u"KundeNavn='Nordre Østerdalen og Sør-Trøndelag Skog',"
                  "LevAdresse1='Øvre Gudbrandsdalsvegen 1234, oppgang B1',"
                  "LevAdresse2='Postboks 12345 Fylkesmannens kontorbygg',"
                  "KID='1234567890123456789012345',KundeOrgNr='911 222 333'"_s);
    const report::Page page = onlyPage(order);
    const QStringList texts = textsOf(page);
    EXPECT_TRUE(texts.contains(u"Nordre Østerdalen og Sør-Trøndelag Skog"_s));
    EXPECT_EQ(factOn(page, u"KID"_s), u"1234567890123456789012345"_s);
    EXPECT_EQ(factOn(page, u"Deres org.nr."_s), u"911 222 333"_s);
    EXPECT_TRUE(texts.contains(u"Semitrailer med kjøleaggregat og løftelem,"_s));
    EXPECT_TRUE(texts.contains(u"innenla"_s));
    EXPECT_TRUE(texts.contains(u"1 219 308 616,07"_s));
    EXPECT_TRUE(texts.join(u' ').contains(
        u"Øvre Gudbrandsdalsvegen 1234, oppgang B1, Postboks 12345 Fylkesmannens kontorbygg, 3570 "
        "Ål"_s));
    EXPECT_TRUE(texts.filter(u"…"_s).isEmpty()) << texts.filter(u"…"_s).join(u'|').toStdString();
    for (const report::TextCommand &text : page.texts)
        EXPECT_LE(text.baseline.x() + text.width(), 200) << text.text().toStdString();
}

TEST_F(FakturaTest, TheSellerAtTheFootIsWholeHoweverLong)
{
    const int order = enterOrder({kHour});
    for (const QString &name : {QString(40, u'W'), u"Nordre Østerdalen og Sør-Trøndelag Skog"_s}) {
        run(u"UPDATE Klient SET Navn='%1',Adr1='%1',Adr2='%1',TlfArbeid='12345678901234567890' "
            "WHERE KlientNr=1"_s.arg(name));
        for (const QString &form : {u"Fak-mgiro-ulogo.rpt"_s, u"Fak-ugiro-ulogo.rpt"_s}) {
            const report::Document document = print(form, order);
            const report::Page &page = document.pages.back();
            const double bottom = textsOf(page).contains(u"GIRO"_s) ? 297 - 122.6 : 297 - 4;
            const double top = textOn(page, u"Side 1 av 1"_s).baseline.y() - 0.1;
            QString foot;
            for (const report::TextCommand &text : page.texts) {
                if (text.baseline.x() == 20 && text.baseline.y() > top &&
                    text.baseline.y() < bottom)
                    foot += text.text() + u' ';
            }
            EXPECT_EQ(foot.count(name), 3) << foot.toStdString();
            EXPECT_TRUE(foot.contains(u"2815 Gjøvik"_s));
            EXPECT_TRUE(foot.contains(u"Konto 9999.12.34566"_s)) << foot.toStdString();
        }
    }
}

TEST_F(FakturaTest, WideLettersWrapInTheEnvelopesWindow)
{
    const QString name(40, u'W');
    const auto buyer = [&](const QString &others) {
        const int order = enterOrder({kHour});
        change(order, u"KundeNavn='%1'"_s.arg(name) + others);
        const report::Page page = onlyPage(order);
        const double delivery = textOn(page, u"Leveringsdato"_s).baseline.y();
        QStringList lines;
        for (const report::TextCommand &text : page.texts) {
            if (text.baseline.x() != 20 || text.baseline.y() < 46 ||
                text.baseline.y() > delivery - 0.1)
                continue;
            lines += text.text();
            EXPECT_LE(text.baseline.x() + text.width(), 110) << text.text().toStdString();
        }
        return std::pair(lines, delivery);
    };
    const auto [lines, delivery] = buyer({});
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0] + lines[1], name);
    EXPECT_EQ(lines.mid(2), QStringList({u"Postboks 12"_s, u"Sagvegen 4"_s, u"2406 Elverum"_s}));
    EXPECT_NEAR(delivery, 73, 0.5) << "at its place";

    const auto [widest, pushed] =
        buyer(u",FakAdresse1='%1',FakAdresse2='%1',FakPoststed='%1'"_s.arg(name));
    EXPECT_EQ(widest.join(QString()).count(u'W'), 160);
    EXPECT_TRUE(widest.join(QString()).contains(u"2406"_s));
    EXPECT_GT(pushed, delivery);
}

TEST_F(FakturaTest, OnlyACompanyNamesItsRegister)
{
    const int order = enterOrder({kHour});
    const auto namesRegister = [&](const QString &name) {
        run(u"UPDATE Klient SET Navn='%1' WHERE KlientNr=1"_s.arg(name));
        return !textsOf(onlyPage(order)).filter(u"Foretaksregisteret"_s).isEmpty();
    };
    for (const char *name :
         {"Gråbein Bilfrakt AS", "Fjord ASA", "Wolf Logistik NUF", "AS Frakt", "Gråbein as "})
        EXPECT_TRUE(namesRegister(QString::fromUtf8(name))) << name;
    for (const char *name : {"Atlas", "Kåre Øverby Transport", "Assens Bil", "Grusgass", ""})
        EXPECT_FALSE(namesRegister(QString::fromUtf8(name))) << name;
}

TEST_F(FakturaTest, TheSellersNumbersAreReadInTheirUsualForms)
{
    const int order = enterOrder({kHour});
    const auto foot = [&](const QString &orgNumber, const QString &account) {
        run(u"UPDATE Klient SET Navn='G',TlfArbeid=Null,OrganisasjonsNr='%1',Giro1='%2' WHERE "
            u"KlientNr=1"_s.arg(orgNumber, account));
        return textsOf(onlyPage(order)).filter(u"Org.nr."_s).value(0);
    };
    const QString usual = u"Org.nr. NO 717 171 721 MVA   Konto 9999.12.34566"_s;
    EXPECT_EQ(foot(u"717171721"_s, u"99991234566"_s), usual);
    EXPECT_EQ(foot(u"NO 717 171 721 MVA"_s, u"9999.12.34566"_s), usual);
    EXPECT_EQ(foot(u"717.171.721"_s, u"9999 12 34566"_s), usual);
    EXPECT_EQ(foot(u"717171721"_s, u"12345"_s), u"Org.nr. NO 717 171 721 MVA   Konto 12345"_s);
}

TEST_F(FakturaTest, ASellerOutsideTheVatRegisterSaysSoInTheForm)
{
    const int order = enterOrder({kHour});
    const report::Document document =
        report::makeReport({QStringLiteral(REPORT_FOLDER "/Fak-ugiro-ulogo.rpt"),
                            connectionString(),
                            u"{Ordre.KlientNr}= 1 and {Ordre.OrdreNr}=%1"_s.arg(order),
                            {u"MvaRegistrert=False"_s}});
    EXPECT_TRUE(textsOf(document.pages.front())
                    .contains(u"Telefon 61 00 00 41   Org.nr. NO 717 171 721   "
                              "Foretaksregisteret   Konto 9999.12.34566"_s));
}

TEST_F(FakturaTest, TheNoteStandsBelowTheLines)
{
    const QString sentence = u"Takk for oppdraget! "_s;
    const int order = enterOrder({kHour});
    const report::Page page = onlyPage(order, faktype::kFaktura, sentence.repeated(12));
    QStringList noteLines = textsOf(page).filter(u"Takk"_s);
    ASSERT_EQ(noteLines.size(), 2);
    EXPECT_EQ(noteLines.join(u' '), sentence.repeated(12).trimmed());
    const double first = textOn(page, noteLines[0]).baseline.y();
    EXPECT_GT(first, textOn(page, u"Kjøring"_s).baseline.y());
    EXPECT_LT(textOn(page, noteLines[1]).baseline.y(),
              textOn(page, u"Sum uten merverdiavgift"_s).baseline.y());
    // Without a note the sums stand higher.
    EXPECT_LT(textOn(onlyPage(order), u"Sum uten merverdiavgift"_s).baseline.y(), first + 6);
}

TEST_F(FakturaTest, InterestIsToldOnce)
{
    const QString law =
        u"Ved betaling etter forfall beregnes forsinkelsesrente etter forsinkelsesrenteloven."_s;
    const int order = enterOrder({kHour});
    EXPECT_TRUE(textsOf(onlyPage(order)).contains(law));
    EXPECT_TRUE(textsOf(onlyPage(order, faktype::kFaktura, u"God jul!"_s)).contains(law));
    EXPECT_FALSE(
        textsOf(onlyPage(order, faktype::kFaktura, u"Etter forfall beregnes maksimal Rente."_s))
            .contains(law));
}
