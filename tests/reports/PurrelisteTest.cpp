#include "reports/ListTest.h"

using namespace Qt::StringLiterals;

namespace {

class PurrelisteTest : public ListTest
{
protected:
    report::Document reminders(const QString &more = {})
    {
        return list(u"Purreliste.rpt"_s, kOverdue + more);
    }
    /// An unpaid invoice of so many kroner that fell due so many days ago.
    void addInvoice(int number, int days, int kroner, int customer = 500)
    {
        run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,KundeNr,KundeNavn,FakDato,"
            "ForfallDato,SumBrutto) VALUES (1,%1,'Fakturert',%2,'Åsen Grus',%3,%3,%4)"_s.arg(number)
                .arg(customer)
                .arg(QDate(2014, 9, 1).addDays(-days).toString(u"'#'MM'/'dd'/'yyyy'#'"))
                .arg(kroner));
    }

    static constexpr double kNumberEdge = 28;
    static constexpr double kDaysEdge = 85;
    const QString kOverdue = kClient +
                             u" and {Ordre.OrdreStatus}<>'Ordre' and {Ordre.OrdreStatus}<>'Betalt'"
                             " and {Ordre.ForfallDato}<Date( 2014, 9, 1)"_s;
    const QString kWhere = u" FROM Ordre WHERE KlientNr=1 AND OrdreStatus<>'Ordre' AND "
                           "OrdreStatus<>'Betalt' AND ForfallDato<#09/01/2014#"_s;
};

} // namespace

TEST_F(PurrelisteTest, ShowsWhoOwesWhatAndForHowLong)
{
    const report::Document document = reminders();
    ASSERT_EQ(document.pages.size(), 1U);
    EXPECT_EQ(document.title, u"Purreliste"_s);
    const report::Page &page = document.pages[0];
    const QStringList texts = textsOf(page);
    EXPECT_TRUE(texts.contains(u"Ikke betalt per 01.09.2014, forfall 11.11.2013–23.08.2014"_s));
    EXPECT_EQ(rowOf(page, u"10007  Kirkenes Maskin AS"_s),
              (QStringList{u"10007  Kirkenes Maskin AS"_s,
                           u"Postboks 7, Haganesvegen 2, 9900 Kirkenes"_s}));
    EXPECT_EQ(rowOf(page, u"1022"_s),
              (QStringList{u"1022"_s, u"24.11.2013"_s, u"24.12.2013"_s, u"251"_s, u"Kjøreleder"_s,
                           u"0100070010226"_s, u"Bokført"_s, u"16 501,25"_s}));
    EXPECT_EQ(rowOf(page, u"1023"_s).value(3), u"234"_s);
    EXPECT_EQ(rowOf(page, u"1034"_s).last(), u"-2 392,00"_s);
    EXPECT_EQ(rows(u"SELECT OrdreNr"_s + kWhere + u" ORDER BY KundeNr,ForfallDato,OrdreNr"_s),
              columnOf(page, kNumberEdge).mid(1));
    expectTidy(document);
}

TEST_F(PurrelisteTest, TheSumsAreThoseOfTheDatabase)
{
    const report::Document document = reminders();
    const report::Page &page = document.pages[0];
    QStringList expected;
    for (const QString &row : rows(u"SELECT KundeNr,COUNT (*) AS Antall"_s + kWhere +
                                   u" GROUP BY KundeNr HAVING COUNT (*)>1 ORDER BY KundeNr"_s))
        expected += u"Sum forfalt, %1 fakturaer"_s.arg(row.section(u'|', 1)) + u' ' +
                    amount(u"SELECT Sum(SumBrutto)"_s + kWhere + u" AND KundeNr="_s +
                           row.section(u'|', 0, 0));
    EXPECT_EQ(expected.size(), 5);
    QStringList shown;
    for (const report::TextCommand &text : page.texts) {
        if (text.text().startsWith(u"Sum forfalt, "_s))
            shown += text.text() + u' ' + lineAt(page, text.baseline.y()).last();
    }
    EXPECT_EQ(shown, expected);
    EXPECT_EQ(rowOf(page, u"Sum forfalt i alt, 20 fakturaer"_s).last(),
              amount(u"SELECT Sum(SumBrutto)"_s + kWhere));
}

TEST_F(PurrelisteTest, AmountsStandByAge)
{
    const QList<int> days{1, 30, 31, 60, 61, 90, 91, 400};
    for (qsizetype i = 0; i < days.size(); ++i)
        addInvoice(7000 + int(i), days[i], 1 << i);
    const report::Document document = reminders(u" AND {Ordre.KundeNr}=00500"_s);
    const report::Page &page = document.pages[0];
    EXPECT_EQ(columnOf(page, kDaysEdge).mid(1), (QStringList{u"400"_s, u"91"_s, u"90"_s, u"61"_s,
                                                             u"60"_s, u"31"_s, u"30"_s, u"1"_s}));
    EXPECT_EQ(rowOf(page, u"Til 30"_s),
              (QStringList{u"Dager forfalt"_s, u"Til 30"_s, u"31–60"_s, u"61–90"_s, u"Over 90"_s}));
    EXPECT_EQ(lastLineOf(page),
              (QStringList{u"Beløp"_s, u"3,00"_s, u"12,00"_s, u"48,00"_s, u"192,00"_s}));
}

TEST_F(PurrelisteTest, OneInvoiceNeedsNoSumOfItsOwn)
{
    addInvoice(7000, 1, -250);
    const QStringList texts =
        textsOfList(u"Purreliste.rpt"_s, kOverdue + u" AND {Ordre.KundeNr}=500"_s);
    EXPECT_EQ(texts.filter(u"Sum "_s), QStringList{u"Sum forfalt i alt, 1 faktura"_s});
    EXPECT_EQ(texts.count(u"-250,00"_s), 3); // the invoice, the sum, and its age
}

TEST_F(PurrelisteTest, WhatIsDueTodayOrPaidIsNotOnIt)
{
    addInvoice(7000, 0, 100);
    addInvoice(7001, 5, 100);
    run(u"UPDATE Ordre SET OrdreStatus='Betalt' WHERE OrdreNr=7001"_s);
    EXPECT_EQ(raised([&] { reminders(u" AND {Ordre.KundeNr}=500"_s); }), 20518);
}

TEST_F(PurrelisteTest, ACustomerIsNotPartedUnlessItsInvoicesFillAPage)
{
    int number = 7000;
    for (int customer = 600; customer < 640; ++customer) {
        for (int i = 0; i < 4; ++i)
            addInvoice(++number, 10 + i, 100, customer);
    }
    for (int i = 0; i < 60; ++i)
        addInvoice(++number, 10, 100, 650);
    const report::Document document = reminders(u" and {Ordre.KundeNr}<1000"_s);
    ASSERT_EQ(document.pages.size(), 7U);
    int invoices = 0;
    for (size_t i = 0; i < document.pages.size(); ++i) {
        const report::Page &page = document.pages[i];
        const qsizetype shown = columnOf(page, kNumberEdge).size() - 1;
        EXPECT_TRUE(i >= 5 || shown % 4 == 0) << i;
        EXPECT_EQ(textsOf(page).contains(u"650  Åsen Grus (forts.)"_s), i == 6) << i;
        EXPECT_TRUE(textsOf(page).contains(u"Dager forfalt"_s));
        EXPECT_TRUE(textsOf(page).contains(u"Side %1 av 7"_s.arg(i + 1)));
        EXPECT_EQ(lastLineOf(page).filter(u"Åsen Grus"_s), QStringList()) << i;
        invoices += int(shown);
    }
    expectTidy(document);
    EXPECT_EQ(invoices, 220);
}

TEST_F(PurrelisteTest, WhatIsMissingStaysEmpty)
{
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,ForfallDato) VALUES (1,7000,'Bokført',"
        "#08/31/2014#)"_s);
    const report::Document document = reminders();
    const report::Page &page = document.pages[0];
    EXPECT_EQ(rowOf(page, u"7000"_s),
              (QStringList{u"7000"_s, u"31.08.2014"_s, u"1"_s, u"Bokført"_s}));
}

TEST_F(PurrelisteTest, NothingThatTellsTheInvoiceIsCut)
{
    addInvoice(7000, 10, 12345678);
    run(u"UPDATE Ordre SET KundeNr=1234567,KundeNavn='WESTERLÆN MASKINFORRETNING OG TRANSPORT '"
        ",FakAdresse1='Postboks 1234 Gamle Hovedvegen Industri',"
        "FakAdresse2='Bygning 12 Øvre Terminalvegen',FakPostNr='3570',FakPoststed='Ål i Hallingdal'"
        ",DeresRef='WWWWWWWWWW WWWWWWWWW',KID='1234567890123456789012345' WHERE OrdreNr=7000"_s);
    const report::Document document = reminders(u" AND {Ordre.KundeNr}=1234567"_s);
    const report::Page &page = document.pages[0];
    EXPECT_TRUE(textsOf(page).contains(u"1234567890123456789012345"_s));
    EXPECT_EQ(textsOf(page).filter(u"…"_s), QStringList());
    expectTidy(document);
}

TEST_F(PurrelisteTest, LongTextsKeepToTheirPlace)
{
    addInvoice(7000, 10, 12345678);
    run(u"UPDATE Ordre SET KundeNavn='Øvre Telemark Anlegg og Maskinforretning',"
        "FakAdresse1='Postboks 1234 Gamle Hovedvegen Industriområde',"
        "FakAdresse2='Bygning 12 Øvre Terminalvegen',FakPostNr='3570',FakPoststed='Ål i "
        "Hallingdal',"
        "DeresRef='Wilhelmine Hammersmo',KID='1234567890123456789012345' WHERE OrdreNr=7000"_s);
    const report::Document document = reminders(u" AND {Ordre.KundeNr}=500"_s);
    const report::Page &page = document.pages[0];
    EXPECT_TRUE(textsOf(page).contains(u"500  Øvre Telemark Anlegg og Maskinforretning"_s));
    expectTidy(document);
}
