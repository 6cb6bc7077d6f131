#include "reports/InvoiceTest.h"

using namespace Qt::StringLiterals;

namespace {

class FakturaSumTest : public InvoiceTest
{
protected:
    /// The table of VAT rates, a row as "label|basis|VAT".
    static QStringList rates(const report::Page &page)
    {
        QStringList table;
        for (const report::TextCommand &text : page.texts) {
            if (text.baseline.x() != 21 || text.baseline.y() < heading(page))
                continue;
            if (text.text().endsWith(u" %"_s) || text.text() == u"Avgiftsfritt"_s)
                table += rowAt(page, text.baseline.y()).first(3).join(u'|');
        }
        return table;
    }
    static double heading(const report::Page &page)
    {
        return textOn(page, u"Mva-sats"_s).baseline.y();
    }
    /// As an amount in øre.
    static qint64 ore(QString amount) { return amount.remove(u' ').remove(u',').toLongLong(); }
    report::Page lastPage(int order, int fakType = faktype::kFaktura)
    {
        return print(order, fakType).pages.back();
    }
    static Line line(const char *quantity, const char *price, const char *rate)
    {
        return {u"X"_s, u"Vare"_s, QString::fromLatin1(quantity), QString::fromLatin1(price),
                QString::fromLatin1(rate)};
    }
};

} // namespace

TEST_F(FakturaSumTest, OneRate)
{
    const report::Page page = lastPage(enterOrder(hours(3)));
    EXPECT_EQ(rates(page), QStringList{u"25 %|6 900,00|1 725,00"_s});
    EXPECT_EQ(factOn(page, u"Sum uten merverdiavgift"_s), u"6 900,00"_s);
    EXPECT_EQ(factOn(page, u"Å betale NOK"_s), u"8 625,00"_s);
    EXPECT_FALSE(textsOf(page).contains(u"Øreavrunding"_s));
}

TEST_F(FakturaSumTest, FourRatesAreShownApartAndExemptSalesByName)
{
    const report::Page page =
        lastPage(enterOrder({line("1", "1000", "25"), line("2", "200.50", "15"),
                             line("1", "500", "10"), line("1", "4000", "0")}));
    EXPECT_EQ(rates(page), (QStringList{u"Avgiftsfritt|4 000,00|0,00"_s, u"10 %|500,00|50,00"_s,
                                        u"15 %|401,00|60,15"_s, u"25 %|1 000,00|250,00"_s}));
    EXPECT_EQ(factOn(page, u"Sum uten merverdiavgift"_s), u"5 901,00"_s);
    EXPECT_TRUE(textsOf(page).contains(u"360,15"_s));
    EXPECT_EQ(factOn(page, u"Å betale NOK"_s), u"6 261,15"_s);
}

TEST_F(FakturaSumTest, RoundingHasItsSign)
{
    const auto rounded = [&](const char *price, const QString &setting) {
        const report::Page page = lastPage(enterOrder({line("1", price, "0")}, setting));
        return factOn(page, u"Øreavrunding"_s) + u" -> "_s + factOn(page, u"Å betale NOK"_s);
    };
    EXPECT_EQ(rounded("102.60", u"1"_s), u"0,40 -> 103,00"_s);
    EXPECT_EQ(rounded("100.50", u"1"_s), u"-0,50 -> 100,00"_s);
    EXPECT_EQ(rounded("111.99", u"2"_s), u"-0,99 -> 111,00"_s);
}

// Two lines of 50.25 at 25 %: the VAT is 25.125 and the rounding 0.375, each saved as half an øre
// more.
TEST_F(FakturaSumTest, TheRoundingIsWhatMakesTheSavedSumsAddUp)
{
    const int order = enterOrder({line("1", "50.25", "25"), line("1", "50.25", "25")}, u"1"_s);
    EXPECT_EQ(
        rows(u"SELECT SumNetto,MvaKr,Avrunding,SumBrutto FROM Ordre WHERE OrdreNr=%1"_s.arg(order)),
        QStringList{u"100,5|25,13|0,38|126"_s});
    const report::Page page = lastPage(order);
    EXPECT_EQ(factOn(page, u"Øreavrunding"_s), u"0,37"_s);
    EXPECT_EQ(factOn(page, u"Å betale NOK"_s), u"126,00"_s);
}

TEST_F(FakturaSumTest, SumsSavedWithoutRoundingAddUpToo)
{
    const int order = enterOrder({line("0.5", "0.03", "25"), line("0.5", "0.03", "25")});
    change(order, u"SumNetto=0.03,MvaKr=0.01,SumBrutto=0.05,Avrunding=0"_s);
    EXPECT_EQ(factOn(lastPage(order), u"Øreavrunding"_s), u"0,01"_s);
}

TEST_F(FakturaSumTest, TheRoundingStandsBelowTheVatWhateverTheRates)
{
    const QStringList invoices{QString(),           u"0"_s,
                               u"25 25"_s,          u"0 25"_s,
                               u"25 15 25 15 15"_s, u"11.11 11.11 25 11.11 11.11"_s,
                               u"10 0 15 25 10 0"_s};
    for (const QString &invoice : invoices) {
        std::vector<Line> lines{{{}, u"Tekst"_s, u"0"_s, u"0"_s, u"0"_s}};
        for (const QString &rate : invoice.split(u' ', Qt::SkipEmptyParts))
            lines.push_back({u"X"_s, u"Vare"_s, u"1"_s, u"100.30"_s, rate});
        const int order = enterOrder(lines);
        change(order, u"Avrunding=-0.3,SumBrutto=SumBrutto-0.3"_s);
        const report::Page page = lastPage(order);
        EXPECT_EQ(textsOf(page).count(u"Øreavrunding"_s), 1) << invoice.toStdString();
        EXPECT_EQ(factOn(page, u"Øreavrunding"_s), u"-0,30"_s);
        const double sum = textOn(page, u"Sum uten merverdiavgift"_s).baseline.y();
        const double rounding = textOn(page, u"Øreavrunding"_s).baseline.y();
        EXPECT_NEAR(rounding - sum, 4 + 4.2, 0.3) << invoice.toStdString();
        EXPECT_LT(rounding, textOn(page, u"Å betale NOK"_s).baseline.y());
    }
}

TEST_F(FakturaSumTest, TheRatesAddUpToTheSavedSumsToTheOre)
{
    // Lines of half an øre, which the order's sums keep and the lines round away.
    const int order = enterOrder({line("2.5", "10.25", "25"), line("2.5", "10.25", "25"),
                                  line("0.5", "33.35", "15"), line("0.5", "33.35", "15"),
                                  line("0.5", "0.05", "10")});
    EXPECT_EQ(rows(u"SELECT SumNetto,MvaKr FROM Ordre WHERE OrdreNr=%1"_s.arg(order)),
              QStringList{u"84,63|17,82"_s});
    EXPECT_EQ(rates(lastPage(order)),
              (QStringList{u"10 %|0,03|0,00"_s, u"15 %|33,35|5,01"_s, u"25 %|51,25|12,81"_s}));
}

TEST_F(FakturaSumTest, ARateOfWholeLinesIsTheirSumWhateverTheOthersAreRoundedBy)
{
    EXPECT_EQ(rates(lastPage(enterOrder({line("412.5", "22.13", "0"), line("3.5", "1390.55", "15"),
                                         line("1", "1150", "25"), line("5", "1150", "25")}))),
              (QStringList{u"Avgiftsfritt|9 128,63|0,00"_s, u"15 %|4 866,92|730,04"_s,
                           u"25 %|6 900,00|1 725,00"_s}));
}

// A quantity of two decimals is saved with one, so that quantity times price is not the line.
TEST_F(FakturaSumTest, ALineThatIsNotItsProductCountsAsItIsShown)
{
    const int order = enterOrder({line("1.3", "100", "25")});
    run(u"UPDATE OrdreLinjer SET SumNetto=125,SumBrutto=156.25 WHERE OrdreID IN (%1)"_s.arg(
        rows(u"SELECT ID FROM Ordre WHERE OrdreNr=%1"_s.arg(order)).join(u',')));
    change(order, u"SumNetto=125,MvaKr=31.25,SumBrutto=156.25"_s);
    EXPECT_EQ(rates(lastPage(order)), QStringList{u"25 %|125,00|31,25"_s});
}

TEST_F(FakturaSumTest, EveryOrderOfTheDemoCompanyIsPrintedAsItIsSaved)
{
    const QStringList orders = rows(
        u"SELECT OrdreNr,SumNetto,MvaKr,SumBrutto FROM Ordre WHERE KlientNr=1 ORDER BY OrdreNr"_s);
    ASSERT_GT(orders.size(), 50);
    for (const QString &row : orders) {
        SCOPED_TRACE(row.toStdString());
        const QStringList saved = row.split(u'|');
        const bool credit = saved[3].startsWith(u'-');
        const report::Page page =
            lastPage(saved[0].toInt(), credit ? faktype::kKreditnota : faktype::kFaktura);
        const QStringList texts = textsOf(page);
        const auto amount = [](const QString &text) {
            return qRound64(QString(text).replace(u',', u'.').toDouble() * 100);
        };
        EXPECT_EQ(ore(factOn(page, u"Sum uten merverdiavgift"_s)), amount(saved[1]));
        EXPECT_EQ(ore(factOn(page, credit ? u"Kreditert NOK"_s : u"Å betale NOK"_s)),
                  amount(saved[3]));
        qint64 net = 0;
        qint64 vat = 0;
        for (const QString &rate : rates(page)) {
            net += ore(rate.split(u'|')[1]);
            vat += ore(rate.split(u'|')[2]);
        }
        EXPECT_EQ(net, amount(saved[1]));
        EXPECT_EQ(vat, amount(saved[2]));
    }
}

TEST_F(FakturaSumTest, SumsThatDoNotBelongToTheLinesAreNotMadeToFit)
{
    const int order = enterOrder({line("1", "1000", "25"), line("1", "100", "15")});
    change(order, u"SumNetto=2000,MvaKr=500,SumBrutto=2500"_s);
    const report::Page page = lastPage(order);
    EXPECT_EQ(rates(page), (QStringList{u"15 %|100,00|15,00"_s, u"25 %|1 000,00|250,00"_s}));
    EXPECT_EQ(factOn(page, u"Sum uten merverdiavgift"_s), u"2 000,00"_s);
    EXPECT_EQ(factOn(page, u"Å betale NOK"_s), u"2 500,00"_s);
}

TEST_F(FakturaSumTest, AnOrderOfNothingButTextShowsItsSums)
{
    const int order = enterOrder({{{}, u"Bare tekst"_s, {}, {}, {}}});
    change(order, u"SumNetto=100,MvaKr=25,SumBrutto=125"_s);
    const report::Page page = lastPage(order);
    EXPECT_FALSE(textsOf(page).contains(u"Mva-sats"_s));
    EXPECT_EQ(textsOf(page).filter(u"%"_s) + textsOf(page).filter(u"Avgiftsfritt"_s),
              QStringList());
    EXPECT_EQ(rowOf(page, u"25,00"_s), (QStringList{u"Merverdiavgift"_s, u"25,00"_s}));
}

TEST_F(FakturaSumTest, ACreditNoteHasTheSavedSignsAndAsksForNothing)
{
    std::vector<Line> lines = hours(2);
    for (Line &each : lines)
        each.quantity.prepend(u'-');
    const int order = enterOrder(lines);
    for (const int fakType : {faktype::kKreditnota, faktype::kKreditnotakopi}) {
        const report::Document document = print(order, fakType);
        ASSERT_EQ(document.pages.size(), 1u);
        const report::Page &page = document.pages.front();
        const QStringList texts = textsOf(page);
        EXPECT_TRUE(texts.contains(u"KREDITNOTA"_s));
        EXPECT_FALSE(texts.contains(u"FAKTURA"_s));
        EXPECT_EQ(texts.contains(u"KOPI"_s), fakType == faktype::kKreditnotakopi);
        EXPECT_EQ(factOn(page, u"Kreditnotanr."_s), QString::number(order));
        EXPECT_EQ(factOn(page, u"Dato"_s), u"09.03.2014"_s);
        EXPECT_EQ(factOn(page, u"Sum uten merverdiavgift"_s), u"-3 450,00"_s);
        EXPECT_EQ(rates(page), QStringList{u"25 %|-3 450,00|-862,50"_s});
        EXPECT_EQ(factOn(page, u"Kreditert NOK"_s), u"-4 312,50"_s);
        for (const QString &label : {u"Forfallsdato"_s, u"Betalingsvilkår"_s, u"Til konto"_s,
                                     u"KID"_s, u"Kvittering"_s, u"GIRO"_s, u"H"_s})
            EXPECT_FALSE(texts.contains(label)) << label.toStdString();
        EXPECT_TRUE(texts.filter(u"rente"_s).isEmpty());
        // The foot stands at the foot of the paper, where no slip is below it.
        EXPECT_GT(textOn(page, u"Side 1 av 1"_s).baseline.y(), 280);
    }
}

TEST_F(FakturaSumTest, ACopySaysSo)
{
    const int order = enterOrder(hours(60));
    const report::Document document = print(order, faktype::kFakturakopi);
    ASSERT_EQ(document.pages.size(), 2u);
    for (const report::Page &page : document.pages)
        EXPECT_TRUE(textsOf(page).contains(u"KOPI"_s));
    EXPECT_TRUE(textsOf(document.pages[0]).contains(u"FAKTURA"_s));
    EXPECT_TRUE(textsOf(document.pages[1]).contains(u"FAKTURA %1"_s.arg(order)));
    for (const report::Page &page : print(order).pages)
        EXPECT_FALSE(textsOf(page).contains(u"KOPI"_s));
}
