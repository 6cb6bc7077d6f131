#include "reports/ListTest.h"
#include "reports/PageReader.h"

using namespace Qt::StringLiterals;

namespace {

class OrdreoversiktTest : public ListTest
{
protected:
    report::Document overview(const QString &selection)
    {
        return list(u"Ordreoversikt.rpt"_s, selection);
    }
    /// The numbers of the orders on the list, in its order.
    QStringList ordersOf(const QString &selection)
    {
        QStringList numbers;
        for (const report::Page &page : overview(selection).pages)
            numbers += columnOf(page, kNumberEdge).mid(1); // behind the heading
        return numbers;
    }
    QStringList ordersWhere(const QString &condition)
    {
        return rows(u"SELECT OrdreNr FROM Ordre WHERE "_s + condition +
                    u" ORDER BY OrdreStatus,OrdreNr"_s);
    }

    static constexpr double kNumberEdge = 28;
    static constexpr double kAmountEdge = 197;
    const QString kYear = kClient + u" and {Ordre.OrdreDato} in Date( 2014, 1, 1) to "
                                    "Date( 2014, 12, 31)"_s;
};

} // namespace

TEST_F(OrdreoversiktTest, ShowsWhoseListItIsAndOfWhichDays)
{
    const report::Document document = overview(kYear);
    ASSERT_EQ(document.pages.size(), 1U);
    EXPECT_EQ(document.title, u"Ordreoversikt"_s);
    EXPECT_EQ(document.fileName, QString()) << "a file is named after the title";
    EXPECT_EQ(document.author, u"Gråbein Bilfrakt AS"_s);
    const report::Page &page = document.pages[0];
    EXPECT_EQ(rowOf(page, u"Gråbein Bilfrakt AS"_s),
              (QStringList{u"Ordreoversikt"_s, u"Gråbein Bilfrakt AS"_s}));
    EXPECT_EQ(rowOf(page, u"Org.nr. 717 171 721"_s),
              (QStringList{u"Ordredato 06.01.2014–18.11.2014"_s, u"Org.nr. 717 171 721"_s}));
    EXPECT_EQ(rowOf(page, u"Ordredato"_s),
              (QStringList{u"Ordre"_s, u"Ordredato"_s, u"Fakt.dato"_s, u"Forfall"_s, u"Kunde"_s,
                           u"Netto"_s, u"Mva"_s, u"Avrund."_s, u"Beløp"_s}));
    EXPECT_EQ(rowOf(page, u"Side 1 av 1"_s),
              (QStringList{u"Utskrevet 01.09.2014 kl. 12:00"_s, u"Side 1 av 1"_s}));
}

TEST_F(OrdreoversiktTest, AnOrderIsOneLine)
{
    const report::Page page = overview(kYear).pages[0];
    EXPECT_EQ(rowOf(page, u"1025"_s),
              (QStringList{u"1025"_s, u"06.01.2014"_s, u"14.01.2014"_s, u"28.01.2014"_s,
                           u"10001  Bjørkåsen Trelast AS"_s, u"11 645,00"_s, u"2 911,25"_s,
                           u"-0,25"_s, u"14 556,00"_s}));
    EXPECT_EQ(rowOf(page, u"1034"_s), (QStringList{u"1034"_s, u"30.03.2014"_s, u"01.04.2014"_s,
                                                   u"15.04.2014"_s, u"10011  Bodø Båtutstyr AS"_s,
                                                   u"-2 080,00"_s, u"-312,00"_s, u"-2 392,00"_s}));
}

TEST_F(OrdreoversiktTest, TheSumsAreThoseOfTheDatabase)
{
    const report::Page page = overview(kYear).pages[0];
    const auto expectSums = [&](const QString &line, const QString &where) {
        QStringList expected{line};
        for (const QLatin1StringView column :
             {"SumNetto"_L1, "MvaKr"_L1, "Avrunding"_L1, "SumBrutto"_L1})
            expected += amount(
                u"SELECT Sum(%1) FROM Ordre WHERE Year(OrdreDato)=2014%2"_s.arg(column, where));
        EXPECT_EQ(rowOf(page, line), expected);
    };
    expectSums(u"Sum Betalt, 8 ordre"_s, u" AND OrdreStatus='Betalt'"_s);
    expectSums(u"Sum Bokført, 11 ordre"_s, u" AND OrdreStatus='Bokført'"_s);
    expectSums(u"Sum Fakturert, 9 ordre"_s, u" AND OrdreStatus='Fakturert'"_s);
    expectSums(u"Sum Ordre, 8 ordre"_s, u" AND OrdreStatus='Ordre'"_s);
    expectSums(u"Sum i alt, 36 ordre"_s, {});
}

TEST_F(OrdreoversiktTest, TheRoundingIsWhatMakesTheColumnsAddUp)
{
    run(u"UPDATE Ordre SET SumNetto=100.5,MvaKr=25.13,Avrunding=0.38,SumBrutto=126 WHERE "
        "OrdreNr=1025"_s);
    const QStringList row = rowOf(overview(kYear).pages[0], u"1025"_s);
    EXPECT_EQ(row.sliced(5), (QStringList{u"100,50"_s, u"25,13"_s, u"0,37"_s, u"126,00"_s}));
}

TEST_F(OrdreoversiktTest, TheRoundingOfManyOrdersIsClearOfTheVat)
{
    run(u"UPDATE Ordre SET SumBrutto=SumBrutto-2500 WHERE Year(OrdreDato)=2014"_s);
    EXPECT_EQ(layoutFaults(overview(kYear)), QStringList());
}

TEST_F(OrdreoversiktTest, HoldsWhatTheCallerSelects)
{
    const QString year = u"KlientNr=1 AND Year(OrdreDato)=2014"_s;
    EXPECT_EQ(ordersOf(kYear), ordersWhere(year));
    EXPECT_EQ(ordersOf(kYear + u" and {Ordre.KundeNr}=10022"_s),
              ordersWhere(year + u" AND KundeNr=10022"_s));
    EXPECT_EQ(ordersOf(kYear + u" and {Ordre.OrdreStatus}='Bokført'"_s),
              ordersWhere(year + u" AND OrdreStatus='Bokført'"_s));
    EXPECT_EQ(ordersOf(kYear + u" and {Ordre.KundeNr}=10022 and {Ordre.OrdreStatus}='Fakturert'"_s),
              (QStringList{u"1045"_s, u"1046"_s}));
    EXPECT_EQ(ordersOf(kClient + u" and {Ordre.OrdreDato} in Date( 2013, 12, 6) to "
                                 "Date( 2014, 1, 6)"_s),
              (QStringList{u"1025"_s, u"1023"_s, u"1024"_s}));
    run(u"UPDATE Ordre SET KundeNr=123 WHERE OrdreNr=1060"_s);
    EXPECT_EQ(ordersOf(kYear + u" and {Ordre.KundeNr}=00123"_s), QStringList{u"1060"_s});
    EXPECT_EQ(raised([&] { overview(kYear + u" and {Ordre.KundeNr}=99999"_s); }), 20518);
}

TEST_F(OrdreoversiktTest, OneStatusIsSummedOnce)
{
    const QStringList texts =
        textsOfList(u"Ordreoversikt.rpt"_s, kYear + u" and {Ordre.OrdreStatus}='Ordre'"_s);
    EXPECT_EQ(texts.filter(u"Sum "_s), QStringList{u"Sum Ordre, 8 ordre"_s});
}

TEST_F(OrdreoversiktTest, OneDayIsNoPeriod)
{
    const QStringList texts = textsOfList(
        u"Ordreoversikt.rpt"_s,
        kClient + u" and {Ordre.OrdreDato} in Date( 2014, 1, 6) to Date( 2014, 1, 6)"_s);
    EXPECT_TRUE(texts.contains(u"Ordredato 06.01.2014"_s));
}

TEST_F(OrdreoversiktTest, ManyPagesGoOnUnderTheSameHeads)
{
    for (int number = 6001; number <= 6200; ++number)
        run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,KundeNr,KundeNavn,OrdreDato,SumNetto,"
            "MvaKr,SumBrutto,Avrunding) VALUES (1,%1,'Bokført',10001,'Bjørkåsen Trelast AS',"
            "#06/01/2014#,0.10,0.03,0.13,0)"_s.arg(number));
    const report::Document document = overview(kYear);
    ASSERT_EQ(document.pages.size(), 5U);
    int orders = 0;
    for (size_t i = 0; i < document.pages.size(); ++i) {
        const report::Page &page = document.pages[i];
        const QStringList texts = textsOf(page);
        EXPECT_TRUE(texts.contains(u"Fakt.dato"_s));
        EXPECT_TRUE(texts.contains(u"Side %1 av 5"_s.arg(i + 1)));
        EXPECT_EQ(texts.contains(u"Bokført (forts.)"_s), i > 0) << i;
        EXPECT_GT(lastLineOf(page).size(), 1) << i; // no head of a status
        orders += int(columnOf(page, kNumberEdge).size()) - 1;
    }
    expectTidy(document);
    EXPECT_EQ(orders, 236);
    EXPECT_EQ(rowOf(document.pages.back(), u"Sum i alt, 236 ordre"_s).last(),
              amount(u"SELECT Sum(SumBrutto) FROM Ordre WHERE Year(OrdreDato)=2014"_s));
}

TEST_F(OrdreoversiktTest, LongNamesTakeASecondLineAndLargeAmountsTheirRoom)
{
    run(u"UPDATE Ordre SET KundeNr=123456,KundeNavn='Øvre Telemark Anlegg og Maskinforretning',"
        "SumNetto=-9876543.21,MvaKr=-2469135.80,SumBrutto=-12345679.00,Avrunding=0.01 WHERE "
        "OrdreNr=1025"_s);
    const report::Document document = overview(kYear);
    const report::Page &page = document.pages[0];
    EXPECT_EQ(textOn(page, u"123456  Øvre Telemark Anlegg og"_s).baseline.x(),
              textOn(page, u"Maskinforretning"_s).baseline.x());
    EXPECT_GT(textOn(page, u"1026"_s).baseline.y(),
              textOn(page, u"Maskinforretning"_s).baseline.y() + 2);
    EXPECT_TRUE(columnOf(page, kAmountEdge).contains(u"-12 345 679,00"_s));
    expectTidy(document);
}

TEST_F(OrdreoversiktTest, LargeSumsAreClearOfEachOther)
{
    run(u"UPDATE Ordre SET SumNetto=98765432.10,MvaKr=24691358.02,SumBrutto=123456790.12 WHERE "
        "OrdreNr IN (1025,1053)"_s);
    const report::Page page = overview(kYear).pages.back();
    constexpr double kGap = 1; // mm
    const QString year = u" FROM Ordre WHERE Year(OrdreDato)=2014"_s;
    const report::TextCommand net = textOn(page, amount(u"SELECT Sum(SumNetto)"_s + year));
    const report::TextCommand vat = textOn(page, amount(u"SELECT Sum(MvaKr)"_s + year));
    EXPECT_GT(vat.baseline.x(), net.baseline.x() + net.width() + kGap);
}

TEST_F(OrdreoversiktTest, WhatIsMissingStaysEmpty)
{
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreDato) VALUES (1,7000,#02/03/2014#)"_s);
    const report::Document document =
        overview(kClient + u" and {Ordre.OrdreDato} in Date( 2014, 2, 3) to Date( 2014, 2, 3)"_s);
    ASSERT_EQ(document.pages.size(), 1U);
    EXPECT_EQ(rowOf(document.pages[0], u"7000"_s), (QStringList{u"7000"_s, u"03.02.2014"_s}));
}

TEST_F(OrdreoversiktTest, AmountsStandUnderEachOther)
{
    const report::Page page = overview(kYear).pages[0];
    QStringList expected{u"Beløp"_s};
    for (const QString &status : {u"Betalt"_s, u"Bokført"_s, u"Fakturert"_s, u"Ordre"_s}) {
        for (const QString &row : rows(u"SELECT ID FROM Ordre WHERE Year(OrdreDato)=2014 AND "
                                       "OrdreStatus='%1' ORDER BY OrdreNr"_s.arg(status)))
            expected += amount(u"SELECT SumBrutto FROM Ordre WHERE ID="_s + row);
        expected += amount(u"SELECT Sum(SumBrutto) FROM Ordre WHERE Year(OrdreDato)=2014 AND "
                           "OrdreStatus='%1'"_s.arg(status));
    }
    expected += amount(u"SELECT Sum(SumBrutto) FROM Ordre WHERE Year(OrdreDato)=2014"_s);
    EXPECT_EQ(columnOf(page, kAmountEdge), expected);
}
