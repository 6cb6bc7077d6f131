#include "platform/ado/SessionPool.h"
#include "reports/ListTest.h"
#include "reports/PageReader.h"
#include "support/SqliteSteps.h"

using namespace Qt::StringLiterals;

namespace {

/// What the journals show behind a posting run.
class JournalTest : public ListTest
{
protected:
    report::Document invoices() { return list(u"Fakturajournal.rpt"_s, kClient); }
    report::Document sales() { return list(u"Salgsjournal.rpt"_s, kClient); }

    /// A new invoice that is ready to be posted.
    int enterInvoice(const std::vector<Line> &lines, const QString &rounding = u"0"_s)
    {
        const int order = enterOrder(lines, rounding);
        change(order, u"OrdreStatus='Fakturert'"_s);
        return order;
    }
    QString sumOfLines(const QString &sum, int order, const QString &rate)
    {
        const QString id =
            rows(u"SELECT ID FROM Ordre WHERE KlientNr=1 AND OrdreNr=%1"_s.arg(order)).value(0);
        return amount(
            u"SELECT Sum(%1) FROM OrdreLinjer WHERE OrdreID=%2 AND MvaPst=%3"_s.arg(sum, id, rate));
    }
    /// The sum of a column of the lines of the last `vouchers` vouchers on an account.
    QString sumOfAccount(const QString &sum, int account, int vouchers)
    {
        const int first = rows(u"SELECT Max(ID) FROM Bilag"_s).value(0).toInt() - vouchers + 1;
        return amount(u"SELECT Sum(%1) FROM BilagLinjer WHERE BilagID>=%2 AND Konto=%3"_s.arg(sum)
                          .arg(first)
                          .arg(account));
    }

    static constexpr double kVoucherEdge = 21.5;
    static constexpr double kAmountEdge = 197;
    const QList<int> kRun{1044, 1047, 1048, 1049, 1050, 1051};
};

} // namespace

TEST_F(JournalTest, AnInvoiceIsALineForEachRate)
{
    post(kRun);
    const report::Document document = invoices();
    ASSERT_EQ(document.pages.size(), 1U);
    EXPECT_EQ(document.title, u"Fakturajournal"_s);
    const report::Page &page = document.pages[0];
    EXPECT_EQ(rowOf(page, u"Gråbein Bilfrakt AS"_s).value(0), u"Fakturajournal"_s);
    EXPECT_EQ(rowOf(page, u"Org.nr. 717 171 721"_s).value(0),
              u"Bilag 20–25, fakturadato 30.06.2014–01.09.2014"_s);
    const QStringList first = rowOf(page, u"1044"_s);
    EXPECT_EQ(first, (QStringList{u"20"_s, u"1044"_s, u"30.06.2014"_s, u"10.07.2014"_s,
                                  u"10017  Arendal Arrangement AS"_s, u"15 %"_s, u"1 920,00"_s,
                                  u"288,00"_s, u"9 600,00"_s}));
    EXPECT_EQ(rowOf(page, u"6 720,00"_s), (QStringList{u"10 %"_s, u"6 720,00"_s, u"672,00"_s}));
    EXPECT_EQ(rowOf(page, u"1047"_s).mid(5),
              (QStringList{u"25 %"_s, u"23 275,00"_s, u"5 818,75"_s, u"0,25"_s, u"29 094,00"_s}));
    EXPECT_EQ(rowOf(page, u"15 200,00"_s).value(0), u"0 %"_s);
    expectTidy(document);
}

TEST_F(JournalTest, TheInvoicesSumUpToTheWorkTable)
{
    post(kRun);
    const report::Page page = invoices().pages[0];
    const QString belop = amount(u"SELECT Sum(Belop) FROM tmpTbl"_s);
    const QStringList sums = rowOf(page, u"Sum 6 fakturaer"_s);
    EXPECT_EQ(sums.last(), belop);
    const QString orders = u" FROM OrdreLinjer INNER JOIN Ordre ON OrdreLinjer.OrdreID=Ordre.ID "
                           "WHERE OrdreNr IN (1044,1047,1048,1049,1050,1051)"_s;
    EXPECT_EQ(sums.value(1), amount(u"SELECT Sum(OrdreLinjer.SumNetto)"_s + orders));
    EXPECT_EQ(sums.value(2),
              amount(u"SELECT Sum(OrdreLinjer.SumBrutto-OrdreLinjer.SumNetto)"_s + orders));
    EXPECT_EQ(sums.size(), 5);
    for (const QLatin1StringView rate : {"10"_L1, "15"_L1, "25"_L1}) {
        const QString where = orders + u" AND MvaPst="_s + rate;
        const QString net = amount(u"SELECT Sum(OrdreLinjer.SumNetto)"_s + where);
        const QString gross = amount(u"SELECT Sum(OrdreLinjer.SumBrutto)"_s + where);
        const QStringList line = rowOf(page, gross);
        EXPECT_EQ(line.value(0), rate + u" %"_s);
        EXPECT_EQ(line.value(1), net);
        EXPECT_EQ(line.value(3), gross);
    }
    EXPECT_EQ(rowOf(page, u"Avgiftsfritt"_s),
              (QStringList{u"Avgiftsfritt"_s, u"15 200,00"_s, u"0,00"_s, u"15 200,00"_s}));
    // The amounts of the column are the sum below it.
    EXPECT_EQ(columnOf(page, kAmountEdge).size(), 8);
}

TEST_F(JournalTest, RoundingThatGrowsThroughTheRunIsShownAsPosted)
{
    const int first = enterInvoice({{u"T100"_s, u"Kjøring"_s, u"1"_s, u"100.32"_s}}, u"1"_s);
    const int second = enterInvoice({{u"T100"_s, u"Kjøring"_s, u"1"_s, u"100"_s}});
    post({first, second});
    const report::Page page = invoices().pages[0];
    EXPECT_EQ(rowOf(page, QString::number(first)).mid(5),
              (QStringList{u"25 %"_s, u"100,32"_s, u"25,08"_s, u"-0,40"_s, u"125,00"_s}));
    EXPECT_EQ(rowOf(page, QString::number(second)).mid(5),
              (QStringList{u"25 %"_s, u"100,00"_s, u"25,00"_s, u"-0,40"_s, u"124,60"_s}));
    EXPECT_EQ(rowOf(page, u"Sum 2 fakturaer"_s).mid(3), (QStringList{u"-0,80"_s, u"249,60"_s}));
}

TEST_F(JournalTest, RoundingThatHasGrownIsClearOfTheVat)
{
    const QList<int> orders{enterInvoice(hours(1)), enterInvoice(hours(2))};
    post(orders);
    run(u"UPDATE tmpTbl SET Belop=Belop-40000"_s);
    EXPECT_EQ(layoutFaults(invoices()), QStringList());
    EXPECT_EQ(rowOf(invoices().pages[0], u"Sum 2 fakturaer"_s).value(3), u"-80 000,00"_s);

    // What has no room beside the other sums stands below them.
    run(u"UPDATE tmpTbl SET Belop=Belop-20000"_s);
    EXPECT_EQ(layoutFaults(invoices()), QStringList());
    EXPECT_EQ(rowOf(invoices().pages[0], u"Sum 2 fakturaer"_s).size(), 4);
    EXPECT_TRUE(textsOf(invoices().pages[0]).contains(u"Sum avrunding  -120 000,00"_s));
}

TEST_F(JournalTest, ACreditNoteIsNamedAndNegative)
{
    post({1045});
    const report::Page page = invoices().pages[0];
    EXPECT_EQ(rowOf(page, u"1045"_s).last(), u"-7 380,00"_s);
    EXPECT_TRUE(textsOf(page).contains(u"Kreditnota"_s));
    EXPECT_TRUE(textsOf(page).contains(u"Sum 1 faktura"_s));
    EXPECT_TRUE(textsOf(page).contains(u"Bilag 20, fakturadato 15.07.2014"_s));
    EXPECT_EQ(rowOf(sales().pages[0], u"1045"_s).mid(4),
              (QStringList{u"2"_s, u"25 %"_s, u"-5 904,00"_s, u"-1 476,00"_s, u"-7 380,00"_s}));
}

TEST_F(JournalTest, AnInvoiceWithoutLinesIsALineToo)
{
    const int order = enterInvoice({});
    const int text = enterInvoice({{{}, u"Takk for oppdraget"_s, {}, {}}});
    post({order, text});
    const report::Page page = invoices().pages[0];
    EXPECT_EQ(rowOf(page, QString::number(order)).mid(5), QStringList{u"0,00"_s});
    EXPECT_EQ(rowOf(page, QString::number(text)).mid(5), QStringList{u"0,00"_s});
    EXPECT_EQ(rowOf(page, u"Sum 2 fakturaer"_s).mid(1),
              (QStringList{u"0,00"_s, u"0,00"_s, u"0,00"_s, u"0,00"_s}));
    EXPECT_FALSE(textsOf(page).contains(u"Mva-sats"_s));
    EXPECT_EQ(textsOf(sales().pages[0]).filter(u"Sum konto"_s), QStringList());
}

TEST_F(JournalTest, NoRunNoRows)
{
    EXPECT_EQ(raised([&] { invoices(); }), 20536); // there is no work table yet
    post({});
    EXPECT_EQ(raised([&] { invoices(); }), 20518);
    EXPECT_EQ(raised([&] { sales(); }), 20518);
}

TEST_F(JournalTest, OnlyTheLastRunAndOnlyTheClientCount)
{
    post({1044});
    post({1050});
    run(u"INSERT INTO tmpTbl (KlientNr,BilagNr,FakNr,KndNr,Type,FakDto,Forfall,Belop) VALUES "
        "(2,20,1044,10017,'Faktura',#06/30/2014#,#07/10/2014#,9600)"_s);
    EXPECT_EQ(columnOf(invoices().pages[0], kVoucherEdge), (QStringList{u"Bilag"_s, u"21"_s}));
    EXPECT_EQ(columnOf(sales().pages[0], kVoucherEdge), (QStringList{u"Bilag"_s, u"21"_s}));
}

TEST_F(JournalTest, SalesAreThoseOfTheLedgerByAccount)
{
    post(kRun);
    const report::Document document = sales();
    ASSERT_EQ(document.pages.size(), 1U);
    EXPECT_EQ(document.title, u"Salgsjournal"_s);
    const report::Page &page = document.pages[0];
    const QStringList texts = textsOf(page);
    EXPECT_TRUE(texts.contains(u"3000  Salgsinntekter avgiftspliktig"_s));
    EXPECT_TRUE(texts.contains(u"3100  Salgsinntekter avgiftsfrie"_s));
    EXPECT_TRUE(texts.contains(u"7395  Øreavrunding"_s));
    EXPECT_EQ(rowOf(page, u"29 093,75"_s),
              (QStringList{u"21"_s, u"1047"_s, u"30.07.2014"_s, u"Faktura Bjørkåsen Trelast AS"_s,
                           u"1"_s, u"25 %"_s, u"23 275,00"_s, u"5 818,75"_s, u"29 093,75"_s}));
    for (const int account : {3000, 3100, 7395})
        EXPECT_EQ(rowOf(page, u"Sum konto %1"_s.arg(account)).last(),
                  sumOfAccount(u"Kredit-Debet"_s, account, 6));
    EXPECT_EQ(rowOf(page, u"Sum i alt"_s).last(), amount(u"SELECT Sum(Belop) FROM tmpTbl"_s));
    expectTidy(document);
}

TEST_F(JournalTest, EveryAccountOfTheRunStandsWithDebitAndCredit)
{
    post(kRun);
    const report::Page page = sales().pages[0];
    const QList<std::pair<int, QString>> accounts{{1500, u"1500  Kundefordringer"_s},
                                                  {3000, u"3000  Salgsinntekter avgiftspliktig"_s},
                                                  {3100, u"3100  Salgsinntekter avgiftsfrie"_s},
                                                  {7395, u"7395  Øreavrunding"_s}};
    for (const auto &[number, name] : accounts) {
        QStringList line;
        for (const report::TextCommand &text : page.texts) {
            if (text.text() == name)
                line = lineAt(page, text.baseline.y()); // the last one is the one of the table
        }
        EXPECT_EQ(line, (QStringList{name, sumOfAccount(u"Debet"_s, number, 6),
                                     sumOfAccount(u"Kredit"_s, number, 6)}));
    }
    const QString total = amount(u"SELECT Sum(Belop) FROM tmpTbl"_s);
    EXPECT_EQ(rowOf(page, u"Sum bilag"_s), (QStringList{u"Sum bilag"_s, total, total}));
    EXPECT_EQ(textsOf(page).filter(u"balanse"_s), QStringList());
}

TEST_F(JournalTest, VatFollowsFromTheCode)
{
    const int order = enterInvoice({{u"A"_s, u"Full"_s, u"1"_s, u"33.33"_s, u"25"_s},
                                    {u"B"_s, u"Mat"_s, u"1"_s, u"33.33"_s, u"15"_s},
                                    {u"C"_s, u"Reise"_s, u"1"_s, u"33.33"_s, u"10"_s},
                                    {u"D"_s, u"Fritt"_s, u"1"_s, u"33.33"_s, u"0"_s}});
    post({order}, u"3000"_s);
    const report::Page page = sales().pages[0];
    const auto expectLine = [&](const QString &gross, const QStringList &end) {
        EXPECT_EQ(rowOf(page, gross).mid(4), end);
    };
    expectLine(u"41,66"_s, {u"1"_s, u"25 %"_s, u"33,33"_s, u"8,33"_s, u"41,66"_s});
    expectLine(u"38,33"_s, {u"5"_s, u"15 %"_s, u"33,33"_s, u"5,00"_s, u"38,33"_s});
    expectLine(u"36,66"_s, {u"3"_s, u"10 %"_s, u"33,33"_s, u"3,33"_s, u"36,66"_s});
    expectLine(u"33,33"_s, {u"0"_s, u"0 %"_s, u"33,33"_s, u"0,00"_s, u"33,33"_s});
}

TEST_F(JournalTest, ChosenAccountAndPermitAreShown)
{
    post({1050, 1051}, u"1900"_s, u"3405-01 ZZ 10010 Trekkvogn"_s);
    const report::Page page = sales().pages[0];
    EXPECT_EQ(rowOf(page, u"1050"_s).value(4), u"1900"_s); // the account's text is the permit's
    EXPECT_EQ(rowOf(page, u"Sum konto 1900"_s).last(), sumOfAccount(u"Kredit-Debet"_s, 1900, 2));
}

TEST_F(JournalTest, AVoucherOutOfBalanceIsTold)
{
    post({1045, 1047}); // a credit note, then an invoice with rounding
    const QStringList texts = textsOfList(u"Salgsjournal.rpt"_s, kClient);
    EXPECT_EQ(
        texts.filter(u"balanse"_s),
        (QStringList{u"Bilagene går ikke i balanse: 0,50 for mye i kredit"_s,
                     u"Bilag 21 (faktura 1047) går ikke i balanse: 0,50 for mye i kredit"_s}));
}

TEST_F(JournalTest, DifferencesThatCancelOutAreToldVoucherByVoucher)
{
    post({1044, 1047, 1048});
    const auto raise = [&](int voucher, const QString &amount) {
        run(u"UPDATE BilagLinjer SET Debet=Debet+(%1) WHERE Konto=1500 AND BilagID IN (%2)"_s.arg(
            amount, rows(u"SELECT ID FROM Bilag WHERE BilagNr=%1"_s.arg(voucher)).join(u',')));
    };
    raise(20, u"0.80"_s);
    raise(22, u"-0.80"_s);
    EXPECT_EQ(
        textsOfList(u"Salgsjournal.rpt"_s, kClient).filter(u"balanse"_s),
        (QStringList{u"Bilag 20 (faktura 1044) går ikke i balanse: 0,80 for mye i debet"_s,
                     u"Bilag 22 (faktura 1048) går ikke i balanse: 0,80 for mye i kredit"_s}));
}

TEST_F(JournalTest, OlderVouchersOfAnInvoiceAreTold)
{
    post({1044, 1047});
    const QStringList once = textsOfList(u"Salgsjournal.rpt"_s, kClient);
    EXPECT_EQ(once.filter(u"også bilag"_s), QStringList());
    for (int again = 0; again < 2; ++again) {
        change(1044, u"OrdreStatus='Fakturert'"_s);
        post({1044});
    }
    const report::Page page = sales().pages[0];
    EXPECT_EQ(textsOf(page).filter(u"også bilag"_s),
              (QStringList{u"Faktura 1044 (bilag 23) har også bilag 20"_s,
                           u"Faktura 1044 (bilag 23) har også bilag 22"_s}));
    // Each line counts once all the same.
    EXPECT_EQ(rowOf(page, u"Sum bilag"_s),
              (QStringList{u"Sum bilag"_s, u"9 600,00"_s, u"9 600,00"_s}));
    EXPECT_TRUE(
        textsOf(page).contains(u"Bokført i kjøringen: 1 faktura, 1 med bilag i regnskapet"_s));
}

TEST_F(JournalTest, AnInvoiceWhoseVoucherWasRefusedIsTold)
{
    change(1044, u"KundeNavn='D''Arc Transport'"_s);
    post({1044, 1050});
    const report::Page page = sales().pages[0];
    EXPECT_EQ(rowOf(page, u"1044"_s),
              (QStringList{u"1044"_s, u"30.06.2014"_s, u"Fakturabeløp 9 600,00"_s}));
    EXPECT_TRUE(textsOf(page).contains(u"Uten bilag i regnskapet"_s));
    // The next voucher got the same number, and its lines are there once.
    EXPECT_EQ(columnOf(page, kVoucherEdge), (QStringList{u"Bilag"_s, u"20"_s}));
    EXPECT_EQ(rowOf(page, u"Sum i alt"_s).last(), u"16 212,50"_s);
    EXPECT_TRUE(
        textsOf(page).contains(u"Bokført i kjøringen: 2 fakturaer, 1 med bilag i regnskapet"_s));
    EXPECT_EQ(rowOf(invoices().pages[0], u"Sum 2 fakturaer"_s).last(), u"25 812,50"_s);
}

TEST_F(JournalTest, ARunWithoutVouchersHasNoSales)
{
    change(1044, u"KundeNavn='D''Arc Transport'"_s);
    post({1044});
    const report::Page page = sales().pages[0];
    EXPECT_EQ(rowOf(page, u"Sum i alt"_s),
              (QStringList{u"Sum i alt"_s, u"0,00"_s, u"0,00"_s, u"0,00"_s}));
    EXPECT_FALSE(textsOf(page).contains(u"Debet"_s));
    EXPECT_FALSE(textsOf(page).contains(u"Mva-sats"_s));
}

TEST_F(JournalTest, OtherVouchersOfTheYearCostNothing)
{
    post(kRun);
    const SqliteSteps steps(SQLITE_STMTSTATUS_VM_STEP);
    const auto cost = [this] {
        ado::SessionPool::shared().clear(); // only what is opened from now on is counted
        SqliteSteps::taken();
        sales();
        return SqliteSteps::taken();
    };
    const int before = cost();
    constexpr int kVouchers = 200;
    for (int nr = 1; nr <= kVouchers; ++nr) {
        run(u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato,BilagType,AntPost,Aar) VALUES "
            u"(1,%1,#09/01/2014#,'Kasse',1,2014)"_s.arg(1000 + nr));
    }
    EXPECT_LT(cost(), before + kVouchers);
}

TEST_F(JournalTest, ManyPagesKeepAnInvoiceTogether)
{
    QList<int> orders;
    for (int i = 0; i < 70; ++i)
        orders += enterInvoice({{u"A"_s, u"Full"_s, u"1"_s, u"1000"_s, u"25"_s},
                                {u"B"_s, u"Mat"_s, u"1"_s, u"1000"_s, u"15"_s},
                                {u"C"_s, u"Reise"_s, u"1"_s, u"1000"_s, u"10"_s}});
    post(orders);
    const report::Document document = invoices();
    ASSERT_EQ(document.pages.size(), 4U);
    int shown = 0;
    for (size_t i = 0; i < document.pages.size(); ++i) {
        const report::Page &page = document.pages[i];
        const qsizetype vouchers = columnOf(page, kVoucherEdge).size() - 1;
        EXPECT_EQ(textsOf(page).count(u"1 000,00"_s), 3 * vouchers) << i;
        EXPECT_TRUE(textsOf(page).contains(u"Side %1 av 4"_s.arg(i + 1)));
        EXPECT_TRUE(textsOf(page).contains(u"Forfall"_s));
        shown += int(vouchers);
    }
    expectTidy(document);
    EXPECT_EQ(shown, 70);
    EXPECT_EQ(rowOf(document.pages.back(), u"Sum 70 fakturaer"_s).last(),
              amount(u"SELECT Sum(Belop) FROM tmpTbl"_s));

    const report::Document journal = sales();
    ASSERT_GT(journal.pages.size(), 3U);
    EXPECT_TRUE(
        textsOf(journal.pages[1]).contains(u"3000  Salgsinntekter avgiftspliktig (forts.)"_s));
    for (const QString &rate : {u"10"_s, u"15"_s, u"25"_s})
        EXPECT_EQ(textsOfList(u"Salgsjournal.rpt"_s, kClient).count(u"Sum %1 % mva"_s.arg(rate)),
                  1);
    expectTidy(journal);
}

TEST_F(JournalTest, LargeAmountsAndLongNamesHaveTheirRoom)
{
    const int order = enterInvoice({{u"A"_s, u"Full"_s, u"1"_s, u"9876543.21"_s, u"25"_s}});
    change(order, u"KundeNr=123456,KundeNavn='Øvre Telemark Anlegg og Maskinforretning'"_s);
    post({order});
    expectTidy(invoices());
    expectTidy(sales());
    EXPECT_TRUE(textsOf(invoices().pages[0]).contains(u"12 345 679,01"_s));
}
