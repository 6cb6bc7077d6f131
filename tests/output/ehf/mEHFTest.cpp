#include "output/ehf/mEHF.h"

#include "data/clsAdoUtils.h"
#include "output/ehf/EhfTest.h"
#include "state/SharedState.h"
#include "support/SessionTap.h"

using namespace Qt::StringLiterals;

namespace {

/// The pieces one by one: which statements they run and what the single cases give.
class MEhfTest : public EhfTest
{
protected:
    /// An order of one line of product `product`, named 1.
    void enterOneLine(const QString &product = u"'S1'"_s, const QString &position = u"10"_s)
    {
        enterOrder(1, u"1000"_s, u"250"_s, u"1250"_s,
                   {{position, product, u"'Pall'"_s, u"1"_s, u"1000"_s, u"25"_s, u"1000"_s}});
    }
    void setUnit(const QString &literal)
    {
        run(u"UPDATE Produkt SET Enhet="_s + literal + u" WHERE KlientNr=5"_s);
    }

    /// What stands between `before` and `after` at their first place in `text`.
    static QString between(const QString &text, const QString &before, const QString &after)
    {
        const qsizetype from = text.indexOf(before);
        if (from < 0)
            return u"(mangler)"_s;
        const qsizetype start = from + before.size();
        return text.sliced(start, text.indexOf(after, start) - start);
    }
};

TEST_F(MEhfTest, TheStatementsAreThoseOfTheFormat)
{
    enterOneLine();
    SessionTap tap;
    (void)EhfDokument(0, u"1"_s);
    (void)EhfLinjer(0, u"1"_s);
    EXPECT_EQ(
        tap.statements(),
        QStringList(
            {u"SELECT K.Navn,K.Adr1,K.Adr2,K.PostNr,P.PostSted,K.OrganisasjonsNr,K.Giro1 FROM "
             u"Klient K LEFT JOIN Poststed P ON K.PostNr=P.PostNr WHERE K.KlientNr= 5"_s,
             u"SELECT OrdreNr,EgenRef,DeresRef,KundeNr,KundeNavn,FakAdresse1,FakAdresse2,FakPostNr,"
             u"FakPoststed,BetBet,KID,LevAdresse1,LevAdresse2,LevPostNr,LevPoststed,FakDato,"
             u"ForfallDato,LevDato,SumNetto,MvaKr,SumBrutto FROM Ordre WHERE KlientNr= 5 AND "
             u"OrdreNr=1"_s,
             u"SELECT L.PosNr,L.ProduktNr,L.ProduktNavn,L.Antall,L.Pris,P.Enhet,L.RabattPst,"
             u"L.RabattKr,L.MvaPst,L.SumNetto,L.SumBrutto FROM (Ordre O INNER JOIN OrdreLinjer L "
             u"ON O.ID=L.OrdreID) LEFT JOIN Produkt P ON L.ProduktNr=P.ProduktNr WHERE "
             u"O.KlientNr= 5 AND P.KlientNr= 5 AND O.OrdreNr=1"_s}));
}

TEST_F(MEhfTest, TheHeadNeedsNoDatabase)
{
    gDB->setConnectionString(QString());
    const QString head = EhfHode(0, u"min.xslt"_s);
    EXPECT_TRUE(head.startsWith(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<?xml-stylesheet "
                                u"type='text/xsl' href='min.xslt'?>\n<!-- "));
    EXPECT_TRUE(head.endsWith(u":bii05:ver1.0</cbc:ProfileID>"));
    EXPECT_EQ(EhfSlutt(0), u"</Invoice>"_s);
    EXPECT_EQ(EhfSlutt(1), u"</CreditNote>"_s);
}

TEST_F(MEhfTest, ANumberWithBlanksIsWrittenAsTheCallerGaveIt)
{
    enterOneLine();
    const QString text = EhfDokument(0, u" 1 "_s);
    EXPECT_TRUE(text.startsWith(u"<cbc:ID> 1 </cbc:ID>\n"));
    EXPECT_EQ(between(text, u"<cac:OrderReference>\n"_s, u"\n</cac"_s), u"<cbc:ID>1</cbc:ID>"_s);
}

TEST_F(MEhfTest, ANumberThatBringsAStatementOfItsOwnRunsNothing)
{
    enterOneLine();
    for (const QString &number : {u"1;DROP TABLE OrdreLinjer"_s, u"1';--"_s, u"(1"_s, QString()}) {
        EXPECT_EQ(raised([&] { (void)EhfDokument(0, number); }), errors::kObjectNotSet)
            << number.toStdString();
        EXPECT_EQ(EhfLinjer(0, number), QString()) << number.toStdString();
    }
    EXPECT_NE(EhfLinjer(0, u"1"_s), QString());
}

TEST_F(MEhfTest, ANegativeCustomerNumberHasTheMinusInTheBlanksPlace)
{
    enterOneLine();
    change(1, u"KundeNr=-7"_s);
    EXPECT_EQ(between(EhfDokument(0, u"1"_s), u"<cac:PartyIdentification>\n"_s, u"\n</cac"_s),
              u"<cbc:ID>-7</cbc:ID>"_s);
}

TEST_F(MEhfTest, TheOrganisationNumberIsNineDigitsWhereItIsANumber)
{
    enterOneLine();
    const std::initializer_list<std::pair<QString, QString>> numbers{
        {u"NO 912345678"_s, u"912345678"_s},
        {u"123"_s, u"000000123"_s},
        {u"12345"_s, u"000012345"_s},
        {u"NO912345678MVA"_s, u"345678MVA"_s},
        {QString(), u"000000000"_s},
        {u"ukjent"_s, u"ukjent"_s},
        // Nine characters are taken before the blanks between them fall out.
        {u"NO 912 345 678"_s, u"002345678"_s}};
    for (const auto &[stored, written] : numbers) {
        run(u"UPDATE Klient SET OrganisasjonsNr='"_s + stored + u"' WHERE KlientNr=5"_s);
        const QString invoice = EhfDokument(0, u"1"_s);
        EXPECT_EQ(between(invoice, u"<cbc:CompanyID>NO"_s, u"MVA</cbc:CompanyID>\n<cac"_s),
                  written);
        EXPECT_EQ(between(invoice, u"<cac:PartyLegalEntity>\n<cbc:CompanyID>"_s, u"</cbc"_s),
                  written);
        EXPECT_EQ(EhfDokument(1, u"1"_s).count(u"<cbc:CompanyID>"_s + written + u"</cbc"_s), 2);
    }
}

TEST_F(MEhfTest, TextsGoInAsStored)
{
    enterOneLine();
    const QString stored = u" \t<\"A\" & B>\r\n "_s;
    run(u"UPDATE Klient SET Navn='"_s + stored + u"', Giro1='"_s + stored + u'\'');
    change(1, u"EgenRef='"_s + stored + u"', KundeNavn='"_s + stored + u"', LevAdresse1='"_s +
                  stored + u'\'');
    const QString text = EhfDokument(0, u"1"_s);
    EXPECT_EQ(text.count(u"<cbc:Name>"_s + stored + u"</cbc:Name>\n"_s), 2);
    EXPECT_TRUE(text.contains(u"<cbc:ID schemeID=\"BBAN\">"_s + stored + u"</cbc:ID>\n"_s));
    EXPECT_TRUE(text.contains(u"<cac:Contact>\n<cbc:ID>"_s + stored + u"</cbc:ID>\n"_s));
    EXPECT_TRUE(text.contains(u"<cbc:Postbox>"_s + stored + u"</cbc:Postbox>\n"_s));
}

TEST_F(MEhfTest, OnlyBlanksAreCutFromALinesTexts)
{
    enterOneLine();
    run(u"UPDATE Produkt SET ProduktNr='\tS1\u00a0' WHERE ProduktNr='S1'"_s);
    run(u"UPDATE OrdreLinjer SET ProduktNr='\tS1\u00a0', ProduktNavn='  \tTo  ord\u00a0 '"_s);
    const QString text = EhfLinjer(0, u"1"_s);
    EXPECT_EQ(between(text, u"<cbc:Name>"_s, u"</cbc"_s), u"\tTo  ord\u00a0"_s);
    EXPECT_EQ(between(text, u"<cac:SellersItemIdentification>\n<cbc:ID>"_s, u"</cbc"_s),
              u"\tS1\u00a0"_s);
}

TEST_F(MEhfTest, PiecesTakeTextsOfAnyLength)
{
    const QString name = QString(5000, u'x') + u".xslt"_s;
    EXPECT_EQ(EhfHode(0, name), EhfHode(0, u"kort.xslt"_s).replace(u"kort.xslt"_s, name));

    enterOneLine();
    const QString number = QString(9000, u' ') + u'1';
    EXPECT_EQ(EhfDokument(0, number),
              u"<cbc:ID>"_s + number + EhfDokument(0, u"1"_s).sliced(u"<cbc:ID>1"_s.size()));
}

TEST_F(MEhfTest, MissingClientValuesAreWrittenEmpty)
{
    enterOneLine();
    run(u"UPDATE Klient SET Giro1='', Adr1='' WHERE KlientNr=5"_s);
    const QString text = EhfDokument(0, u"1"_s);
    EXPECT_TRUE(text.contains(u"<cbc:ID schemeID=\"BBAN\"></cbc:ID>\n"));
    EXPECT_TRUE(text.contains(u"<cbc:Postbox></cbc:Postbox>\n"));
}

TEST_F(MEhfTest, WithoutAClientRowTheDocumentIsWrittenWithEmptyValues)
{
    enterOneLine();
    run(u"DELETE FROM Klient"_s);
    const QString text = EhfDokument(0, u"1"_s);
    EXPECT_TRUE(text.contains(u"<cbc:Name></cbc:Name>\n"));
    EXPECT_TRUE(text.contains(u"<cbc:CompanyID>NOMVA</cbc:CompanyID>\n"));
    EXPECT_TRUE(text.endsWith(u"</cac:LegalMonetaryTotal>"));
}

TEST_F(MEhfTest, EveryClientColumnIsReadStrictly)
{
    enterOneLine();
    for (const QString &column :
         {u"Navn"_s, u"Adr1"_s, u"Adr2"_s, u"OrganisasjonsNr"_s, u"Giro1"_s, u"PostNr"_s}) {
        const QString old = rows(u"SELECT "_s + column + u" FROM Klient"_s).join(u',');
        run(u"UPDATE Klient SET "_s + column + u"=Null"_s);
        for (const int kreditnota : {0, 1})
            EXPECT_EQ(raised([&] { (void)EhfDokument(kreditnota, u"1"_s); }),
                      errors::kInvalidUseOfNull)
                << column.toStdString();
        run(u"UPDATE Klient SET "_s + column + u"='"_s + old + u'\'');
    }
    EXPECT_NE(EhfDokument(0, u"1"_s), QString());
    // A postal code without a place counts as a Null too.
    run(u"DELETE FROM Poststed"_s);
    EXPECT_EQ(raised([] { (void)EhfDokument(0, u"1"_s); }), errors::kInvalidUseOfNull);
}

TEST_F(MEhfTest, EveryOrderColumnButKidIsReadStrictly)
{
    for (const QString &column :
         {u"EgenRef"_s, u"DeresRef"_s, u"KundeNr"_s, u"KundeNavn"_s, u"FakAdresse1"_s,
          u"FakAdresse2"_s, u"FakPostNr"_s, u"FakPoststed"_s, u"BetBet"_s, u"LevAdresse1"_s,
          u"LevAdresse2"_s, u"LevPostNr"_s, u"LevPoststed"_s, u"FakDato"_s, u"ForfallDato"_s,
          u"LevDato"_s, u"SumNetto"_s, u"MvaKr"_s, u"SumBrutto"_s}) {
        run(u"DELETE FROM OrdreLinjer"_s);
        run(u"DELETE FROM Ordre"_s);
        enterOneLine();
        change(1, column + u"=Null"_s);
        for (const int kreditnota : {0, 1})
            EXPECT_EQ(raised([&] { (void)EhfDokument(kreditnota, u"1"_s); }),
                      errors::kInvalidUseOfNull)
                << column.toStdString();
    }
    run(u"DELETE FROM OrdreLinjer"_s);
    run(u"DELETE FROM Ordre"_s);
    enterOneLine();
    change(1, u"KID=Null"_s);
    EXPECT_TRUE(EhfDokument(0, u"1"_s).contains(u"<cbc:PaymentID></cbc:PaymentID>"));
}

TEST_F(MEhfTest, EveryLineColumnIsReadStrictly)
{
    enterOneLine();
    // Without its product number a line has no product and is left out; the rest ends the piece.
    for (const QString &column :
         {u"PosNr"_s, u"ProduktNavn"_s, u"Antall"_s, u"Pris"_s, u"RabattPst"_s, u"RabattKr"_s,
          u"MvaPst"_s, u"SumNetto"_s, u"SumBrutto"_s}) {
        run(u"UPDATE OrdreLinjer SET PosNr=10,ProduktNavn='a',Antall=1,Pris=1,RabattPst=0,"
            u"RabattKr=0,MvaPst=25,SumNetto=1,SumBrutto=1"_s);
        EXPECT_NE(EhfLinjer(0, u"1"_s), QString());
        run(u"UPDATE OrdreLinjer SET "_s + column + u"=Null"_s);
        EXPECT_EQ(raised([] { (void)EhfLinjer(0, u"1"_s); }), errors::kInvalidUseOfNull)
            << column.toStdString();
    }
}

TEST_F(MEhfTest, AUnitThatIsNullEndsTheLines)
{
    enterOneLine(u"'N1'"_s);
    EXPECT_EQ(raised([] { (void)EhfLinjer(0, u"1"_s); }), errors::kInvalidUseOfNull);
}

TEST_F(MEhfTest, TheUnitDecidesTheAttribute)
{
    enterOneLine();
    const std::initializer_list<std::pair<QString, QString>> units{
        {u"time"_s, u" unitCode=\"HUR\""_s},
        {u"timer"_s, u" unitCode=\"HUR\""_s},
        {u"t"_s, u" unitCode=\"HUR\""_s},
        {u"T"_s, u" unitCode=\"HUR\""_s},
        {u"tonn"_s, u" unitCode=\"HUR\""_s},
        {u"Stk"_s, u" unitCode=\"NAR\""_s},
        {u"PCS"_s, u" unitCode=\"NAR\""_s},
        {QString(), u" unitCode=\"NAR\""_s},
        {u"stk."_s, QString()},
        {u"kg"_s, QString()},
        {u"m"_s, QString()},
        {u" t"_s, QString()}};
    for (const auto &[unit, attribute] : units) {
        setUnit(u'\'' + unit + u'\'');
        EXPECT_EQ(between(EhfLinjer(0, u"1"_s), u"<cbc:InvoicedQuantity"_s, u">"_s), attribute)
            << unit.toStdString();
        EXPECT_EQ(between(EhfLinjer(1, u"1"_s), u"<cbc:CreditedQuantity"_s, u">"_s), attribute)
            << unit.toStdString();
    }
}

TEST_F(MEhfTest, TheLineNumberIsTheWholeTenOfThePosition)
{
    enterOneLine();
    const std::initializer_list<std::pair<QString, QString>> positions{
        {u"30"_s, u"3"_s}, {u"39"_s, u"3"_s}, {u"5"_s, u"0"_s}, {u"-25"_s, u"2"_s}};
    for (const auto &[position, number] : positions) {
        run(u"UPDATE OrdreLinjer SET PosNr="_s + position);
        EXPECT_EQ(between(EhfLinjer(0, u"1"_s), u"<cbc:ID>"_s, u"</cbc:ID>"_s), number);
    }
}

TEST_F(MEhfTest, TheQuantityIsAPlainNumberOfSevenDigits)
{
    enterOneLine();
    const std::initializer_list<std::pair<QString, QString>> quantities{
        {u"2"_s, u"2"_s},   {u"2.5"_s, u"2.5"_s},    {u"0.5"_s, u".5"_s},
        {u"-1"_s, u"-1"_s}, {u"-0.25"_s, u"-.25"_s}, {u"123456789"_s, u"1.234568E+08"_s},
        {u"0"_s, u"0"_s}};
    for (const auto &[stored, written] : quantities) {
        run(u"UPDATE OrdreLinjer SET Antall="_s + stored);
        EXPECT_EQ(between(EhfLinjer(0, u"1"_s), u"unitCode=\"NAR\">"_s, u"</cbc"_s), written);
    }
}

TEST_F(MEhfTest, TheLinesVatIsWorkedOutFromItsNet)
{
    enterOneLine();
    run(u"UPDATE OrdreLinjer SET SumNetto=-99.99, MvaPst=15, SumBrutto=12345"_s);
    EXPECT_EQ(between(EhfLinjer(0, u"1"_s), u"<cbc:TaxAmount currencyID=\"NOK\">"_s, u"</cbc"_s),
              u"15.00"_s);
    run(u"UPDATE OrdreLinjer SET SumNetto=100, MvaPst=0"_s);
    const QString text = EhfLinjer(0, u"1"_s);
    EXPECT_EQ(between(text, u"<cbc:TaxAmount currencyID=\"NOK\">"_s, u"</cbc"_s), u"0.00"_s);
    EXPECT_EQ(between(text, u"<cac:ClassifiedTaxCategory>\n"_s, u"\n<cac"_s),
              u"<cbc:ID>Z</cbc:ID>\n<cbc:Percent>0.0</cbc:Percent>"_s);
}

TEST_F(MEhfTest, ThePercentageIsWorkedBackFromTheSums)
{
    enterOneLine();
    const std::initializer_list<std::pair<QString, QString>> sums{
        {u"MvaKr=250, SumNetto=1000"_s, u"25.00"_s},
        {u"MvaKr=0, SumNetto=1000"_s, u"0.00"_s},
        {u"MvaKr=1, SumNetto=3"_s, u"33.33"_s},
        {u"MvaKr=-2, SumNetto=3"_s, u"66.67"_s},
        {u"MvaKr=0, SumNetto=-5"_s, u"0.00"_s},
        // 33.33496 becomes 33.3350 as money before it is shown.
        {u"MvaKr=33334.96, SumNetto=100000"_s, u"33.34"_s}};
    for (const auto &[assignments, percent] : sums) {
        change(1, assignments);
        EXPECT_EQ(between(EhfDokument(0, u"1"_s), u"<cbc:Percent>"_s, u"</cbc"_s), percent)
            << assignments.toStdString();
    }
}

TEST_F(MEhfTest, AVatTotalTooBigForThePercentageRaisesOverflow)
{
    enterOneLine();
    change(1, u"MvaKr=900000000000000"_s);
    EXPECT_EQ(raised([] { (void)EhfDokument(0, u"1"_s); }), errors::kOverflow);
}

TEST_F(MEhfTest, AFailedReadEndsTheDocumentAndGivesNoLines)
{
    enterOneLine();
    run(u"DROP TABLE Poststed"_s);
    EXPECT_EQ(raised([] { (void)EhfDokument(0, u"1"_s); }), errors::kObjectNotSet);
    gDB->setConnectionString(QString());
    EXPECT_EQ(EhfLinjer(0, u"1"_s), QString());
}

TEST_F(MEhfTest, TheActiveClientsOrderIsTheOneWritten)
{
    enterOneLine();
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,KundeNavn) VALUES (6,1,'Feil')"_s);
    EXPECT_TRUE(EhfDokument(0, u"1"_s).contains(u"Ærlig Øl & Ås AS"));
    gKlient = 6;
    EXPECT_EQ(EhfLinjer(0, u"1"_s), QString());
}

} // namespace
