#include "output/ehf3/Ehf3Test.h"

#include "data/clsAdoUtils.h"
#include "runtime/MachineLocale.h"
#include "state/SharedState.h"
#include "support/SessionTap.h"

using namespace Qt::StringLiterals;

namespace {

/// Whole documents, byte for byte, and what the single cases give.
class Ehf3DokumentTest : public Ehf3Test
{
protected:
    /// Lines of all rates and kinds, rounded to whole kroner.
    void enterInvoice()
    {
        enterOrder(
            2001, u"3167"_s,
            {{u"'T1'"_s, u"' Kjøring, Åsnes \"tur/retur\" '"_s, u"2"_s, u"650"_s, u"25"_s,
              u"1300"_s},
             // Two decimals were typed, one is stored.
             {u"'T1'"_s, u"'Venting'"_s, u"1.3"_s, u"400"_s, u"25"_s, u"500"_s},
             {u"'S1'"_s, u"'Lunsj til mannskapet som var med hele veien'"_s, u"0.5"_s, u"99.90"_s,
              u"15"_s, u"49.95"_s},
             {u"'N1'"_s, u"'Persontransport'"_s, u"1"_s, u"33.33"_s, u"10"_s, u"33.33"_s},
             {u"''"_s, u"'Fri tekst, 100 % & <uten> beløp'"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s},
             {u"'X1'"_s, u"'En vare som er borte'"_s, u"1"_s, u"9"_s, u"25"_s, u"9"_s},
             {u"'K1'"_s, u"'Frakt til utlandet'"_s, u"1250"_s, u"0.80"_s, u"0"_s, u"1000"_s},
             {u"'S1'"_s, u"'Avslag'"_s, u"-1"_s, u"100"_s, u"25"_s, u"-100"_s},
             {u"'S1'"_s, u"'Avslag på prisen'"_s, u"2"_s, u"-25.50"_s, u"25"_s, u"-51"_s}});
    }
};

TEST_F(Ehf3DokumentTest, Invoice)
{
    enterInvoice();
    EXPECT_EQ(document(2001), golden("faktura.xml"));
}

TEST_F(Ehf3DokumentTest, TheMachinesDecimalMarkDoesNotReachTheDocument)
{
    enterInvoice();
    const QByteArray norwegian = document(2001);
    const ScopedLocale pointMachine(MachineLocale::fromName(u"en_US.UTF-8"_s));
    EXPECT_EQ(document(2001), norwegian);
}

TEST_F(Ehf3DokumentTest, CreditNote)
{
    enterOrder(2002, u"-1975"_s,
               {{u"'T1'"_s, u"'Kjøring'"_s, u"-2"_s, u"650"_s, u"25"_s, u"-1300"_s},
                {u"'K1'"_s, u"'Grus'"_s, u"-1.5"_s, u"300"_s, u"0"_s, u"-450"_s},
                {u"'S1'"_s, u"'Gebyr'"_s, u"1"_s, u"80"_s, u"25"_s, u"80"_s}});
    EXPECT_EQ(document(2002), golden("kreditnota.xml"));
}

TEST_F(Ehf3DokumentTest, WithoutVatAndWithAsLittleAsCanBe)
{
    run(u"UPDATE Klient SET Navn='Åse Transport',Adr1='',Adr2=Null,TlfArbeid=Null"_s);
    run(u"DELETE FROM Poststed"_s);
    enterOrder(2003, u"1000"_s, {{u"''"_s, u"'Grus'"_s, u"10"_s, u"100"_s, u"0"_s, u"1000"_s}});
    change(2003, u"EgenRef=Null,DeresRef=' ',KID='',BetBet=Null,FakAdresse1='',LevAdresse1='',"
                 u"LevAdresse2=Null,LevPostNr=' ',LevPoststed=''"_s);
    EXPECT_EQ(document(2003), golden("uten-mva.xml"));
}

TEST_F(Ehf3DokumentTest, OddTexts)
{
    enterOrder(
        2004, u"125"_s,
        {{u"'<&>'"_s, u"'«Pall» × ½ € ]]> &amp; <b>'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
    change(2004, u"KundeNavn='yz{|}~ \u0085 \u2028 \ufffd 😀',EgenRef='\u0001\tA\u000b\nB\u001f ',"
                 u"DeresRef='ÆØÅ \"Ωλ\" \ufffe\uffff',FakAdresse1='Linje 1\r\nLinje 2',"
                 u"FakAdresse2=' \u0007 '"_s);
    EXPECT_EQ(document(2004), golden("tekster.xml"));
}

TEST_F(Ehf3DokumentTest, AnOrderWithoutTheirReferenceRefersToItsOwnNumber)
{
    enterOrder(1, u"125"_s, {{u"'S1'"_s, u"'Pall'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
    EXPECT_EQ(value(1, "cbc:BuyerReference"), u"Innkjøp"_s);
    EXPECT_EQ(value(1, "cac:OrderReference"), u"(mangler)"_s);
    change(1, u"DeresRef=''"_s);
    EXPECT_EQ(value(1, "cbc:BuyerReference"), u"(mangler)"_s);
    EXPECT_EQ(value(1, "cac:OrderReference").simplified(), u"<cbc:ID>1</cbc:ID>"_s);
}

TEST_F(Ehf3DokumentTest, TheRegisterOfCompaniesIsNamedForThoseThatStandThere)
{
    enterOrder(1, u"125"_s, {{u"'S1'"_s, u"'Pall'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
    const std::initializer_list<std::pair<QString, bool>> names{
        {u"Fjell AS"_s, true},    {u"Fjell ASA"_s, true},  {u"Fjell Ltd NUF "_s, true},
        {u"AS Fjell"_s, true},    {u"Fjellas"_s, false},   {u"Fjell BAS"_s, false},
        {u"Kåre Fjell"_s, false}, {u"ASA Fjell"_s, false}, {u"Fjell as"_s, true},
        {u"Fjell Nuf"_s, true},   {u"as Fjell"_s, true}};
    for (const auto &[name, stands] : names) {
        run(u"UPDATE Klient SET Navn='%1' WHERE KlientNr=5"_s.arg(name));
        EXPECT_EQ(document(1).contains("Foretaksregisteret"), stands) << name.toStdString();
        EXPECT_EQ(document(1).contains("TAX"), stands) << name.toStdString();
    }
}

TEST_F(Ehf3DokumentTest, ALongTextIsADescriptionAndItsBeginningAName)
{
    enterOrder(1, u"125"_s, {{u"'S1'"_s, u"'x'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
    const auto item = [&](const QString &text) {
        run(u"UPDATE OrdreLinjer SET ProduktNavn='%1'"_s.arg(text));
        return value(1, "cac:Item").section(u"<cac:"_s, 0, 0).simplified();
    };
    const QString forty(40, u'x');
    EXPECT_EQ(item(forty), u"<cbc:Name>%1</cbc:Name>"_s.arg(forty));
    EXPECT_EQ(item(forty + u'y'),
              u"<cbc:Description>%1y</cbc:Description> <cbc:Name>%1</cbc:Name>"_s.arg(forty));
    const QString words = u"Flytting av anleggsmaskin fra Gjøvik til Tynset"_s;
    EXPECT_EQ(item(words),
              u"<cbc:Description>%1</cbc:Description> "
              u"<cbc:Name>Flytting av anleggsmaskin fra Gjøvik til</cbc:Name>"_s.arg(words));
    // A pair of surrogates is not torn apart.
    const QString pair = QString(39, u'x') + u"😀"_s;
    EXPECT_EQ(item(pair), u"<cbc:Description>%1</cbc:Description> <cbc:Name>%2</cbc:Name>"_s.arg(
                              pair, QString(39, u'x')));
}

TEST_F(Ehf3DokumentTest, ALineWithoutATextIsCalledByItsProduct)
{
    enterOrder(1, u"125"_s, {{u"'S1'"_s, u"' '"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
    EXPECT_TRUE(document(1).contains("<cbc:Name>S1</cbc:Name>"));
}

TEST_F(Ehf3DokumentTest, AQuantityOfTwoDecimalsIsTheOneThatTheLineWasComputedWith)
{
    const auto quantity = [&](const QString &stored, const QString &price, const QString &net) {
        run(u"UPDATE OrdreLinjer SET Antall=%1,Pris=%2,SumNetto=%3"_s.arg(stored, price, net));
        change(1, u"SumBrutto=%1*1.25"_s.arg(net));
        return value(1, "cbc:InvoicedQuantity");
    };
    enterOrder(1, u"1"_s, {{u"'S1'"_s, u"'Pall'"_s, u"1"_s, u"1"_s, u"25"_s, u"1"_s}});
    EXPECT_EQ(quantity(u"1.3"_s, u"1000"_s, u"1250"_s), u"1.25"_s);
    EXPECT_EQ(quantity(u"1.2"_s, u"1000"_s, u"1240"_s), u"1.24"_s);
    EXPECT_EQ(quantity(u"0.1"_s, u"1000"_s, u"50"_s), u"0.05"_s);
    EXPECT_EQ(quantity(u"2"_s, u"1000"_s, u"2000"_s), u"2"_s);
    // 827.30 by 0.48 is 1723.54, which would have been stored as 1723.5.
    EXPECT_EQ(quantity(u"1723.6"_s, u"0.48"_s, u"827.30"_s), u"1723.55"_s);
    // 36.92 by 0.41 is 90.05, which would have been stored as 90.1.
    EXPECT_EQ(quantity(u"90"_s, u"0.41"_s, u"36.92"_s), u"90.04"_s);
    EXPECT_EQ(quantity(u"-90"_s, u"-0.41"_s, u"36.92"_s), u"90.04"_s);
}

TEST_F(Ehf3DokumentTest, LinesStandInTheOrderOfTheScreenAndAreNumberedAnew)
{
    enterOrder(1, u"375"_s,
               {{u"'S1'"_s, u"'A'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s},
                {u"'S1'"_s, u"'B'"_s, u"1"_s, u"200"_s, u"25"_s, u"200"_s}});
    run(u"UPDATE OrdreLinjer SET PosNr=5 WHERE ProduktNavn='B'"_s);
    const QByteArray bytes = document(1);
    EXPECT_LT(bytes.indexOf("<cbc:Name>B<"), bytes.indexOf("<cbc:Name>A<"));
    EXPECT_LT(bytes.indexOf("<cac:InvoiceLine>\n    <cbc:ID>1<"),
              bytes.indexOf("<cac:InvoiceLine>\n    <cbc:ID>2<"));
}

TEST_F(Ehf3DokumentTest, TheActiveClientDoesNotMatter)
{
    enterOrder(1, u"125"_s, {{u"'S1'"_s, u"'Pall'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
    const QByteArray bytes = document(1);
    gKlient = 6;
    EXPECT_EQ(document(1), bytes);
    EXPECT_EQ(gKlient, 6);
}

TEST_F(Ehf3DokumentTest, ManyOrdersReadABlockAtATimeAreTheSameAsOneByOne)
{
    constexpr int kLast = 2147483647;
    const QList<int> numbers{1, 2, 3, 5, 6, 9, 10, kLast - 1, kLast};
    for (const int number : numbers) {
        enterOrder(number, u"%1*1.25"_s.arg(100 * (number % 7 + 1)),
                   {{u"'S1'"_s, u"'Pall'"_s, u"%1"_s.arg(number % 7 + 1), u"100"_s, u"25"_s,
                     u"%1"_s.arg(100 * (number % 7 + 1))},
                    {u"''"_s, u"'Ordre %1'"_s.arg(number), u"0"_s, u"0"_s, u"0"_s, u"0"_s}});
    }
    change(5, u"LevDato=Null"_s);
    SessionTap tap;
    Ehf3Skriver many(5, 3);
    for (const int number : numbers) {
        const Ehf3 inBlock = many.lag(number);
        const Ehf3 alone = Ehf3Skriver(5).lag(number);
        EXPECT_EQ(inBlock.dokument, alone.dokument) << number;
        EXPECT_EQ(inBlock.mangler, alone.mangler) << number;
    }
    EXPECT_EQ(many.lag(4).mangler, u"Ordre 4 finnes ikke for klient 5"_s);
    // The client once, and orders and lines of the blocks from 1, 5, 9, the last but one, and 4.
    EXPECT_EQ(tap.statements().size() - 3 * numbers.size(), 1 + 2 * 5);
}

} // namespace
