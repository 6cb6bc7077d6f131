#include "reports/InvoiceTest.h"

using namespace Qt::StringLiterals;

namespace {

class FakturaSiderTest : public InvoiceTest
{
protected:
    static QStringList lineTexts(const report::Page &page)
    {
        return textsOf(page).filter(u"Kjøring uke"_s);
    }
    static constexpr double kSlipTop = 297 - 122.6; // mm from the paper's upper edge
};

} // namespace

TEST_F(FakturaSiderTest, OneLineIsOnePage)
{
    const report::Document document = print(enterOrder(hours(1)));
    EXPECT_EQ(document.title, u"Faktura"_s);
    EXPECT_EQ(document.paper, QSizeF(210, 297));
    ASSERT_EQ(document.pages.size(), 1u);
}

TEST_F(FakturaSiderTest, AFileIsNamedAfterKindAndNumber)
{
    const int order = enterOrder(hours(1));
    for (const auto &[type, kind] : {std::pair(faktype::kFaktura, u"Faktura"_s),
                                     {faktype::kFakturakopi, u"Faktura"_s},
                                     {faktype::kKreditnota, u"Kreditnota"_s},
                                     {faktype::kKreditnotakopi, u"Kreditnota"_s}})
        EXPECT_EQ(print(order, type).fileName, u"%1-%2"_s.arg(kind).arg(order));
}

TEST_F(FakturaSiderTest, FortyLinesAreCarriedOver)
{
    const int order = enterOrder(hours(40));
    const report::Document document = print(order);
    ASSERT_EQ(document.pages.size(), 2u);
    const report::Page &first = document.pages[0];
    const report::Page &second = document.pages[1];
    const auto onFirst = lineTexts(first).size();
    EXPECT_GT(onFirst, 30);
    EXPECT_EQ(lineTexts(first) + lineTexts(second), [] {
        QStringList all;
        for (int i = 1; i <= 40; ++i)
            all += u"Kjøring uke %1"_s.arg(i);
        return all;
    }());

    const QString carried = factOn(first, u"Overføres til neste side"_s);
    const auto sum = onFirst * (onFirst + 1) / 2 * 1150;
    EXPECT_EQ(QString(carried).remove(u' '), QString::number(sum) + u",00"_s);
    EXPECT_EQ(factOn(second, u"Overført fra forrige side"_s), carried);
    EXPECT_LT(textOn(second, u"Overført fra forrige side"_s).baseline.y(),
              textOn(second, u"Kjøring uke 40"_s).baseline.y());
    EXPECT_FALSE(textsOf(second).contains(u"Overføres til neste side"_s));

    // The second page says what it belongs to and has the columns' headings again.
    EXPECT_EQ(rowOf(second, u"FAKTURA %1"_s.arg(order)),
              (QStringList{u"Gråbein Bilfrakt AS"_s, u"FAKTURA %1"_s.arg(order)}));
    for (const QString &text : {u"Varenr."_s, u"Beløp"_s})
        EXPECT_EQ(textOn(second, text).baseline.x(), textOn(first, text).baseline.x());
    EXPECT_TRUE(textsOf(first).contains(u"Side 1 av 2"_s));
    EXPECT_TRUE(textsOf(second).contains(u"Side 2 av 2"_s));

    // Sums and slip are on the last page alone.
    for (const QString &text : {u"Å betale NOK"_s, u"GIRO"_s, u"H"_s}) {
        EXPECT_FALSE(textsOf(first).contains(text));
        EXPECT_TRUE(textsOf(second).contains(text));
    }
}

TEST_F(FakturaSiderTest, NothingReachesTheSlipOrTheFoot)
{
    for (int lines = 5; lines <= 16; ++lines) {
        for (const report::Page &page : print(enterOrder(hours(lines))).pages) {
            const double foot =
                textOn(page, u"Gråbein Bilfrakt AS, Postboks 41, Terminalvegen 7, 2815 Gjøvik"_s)
                    .baseline.y();
            for (const QString &text : textsOf(page).filter(u"Kjøring"_s) +
                                           textsOf(page).filter(u"NOK"_s) +
                                           textsOf(page).filter(u"Ved betaling"_s))
                EXPECT_LT(textOn(page, text).baseline.y(), foot - 2);
            if (textsOf(page).contains(u"GIRO"_s)) {
                EXPECT_LT(foot, kSlipTop);
            }
        }
    }
}

TEST_F(FakturaSiderTest, APageThatIsExactlyFullIsOnePage)
{
    constexpr int kFull = 12; // lines above the slip, with one rate and no note
    EXPECT_EQ(print(enterOrder(hours(kFull))).pages.size(), 1u);
    const report::Document more = print(enterOrder(hours(kFull + 1)));
    ASSERT_EQ(more.pages.size(), 2u);
    // The sums never stand without a line.
    EXPECT_EQ(lineTexts(more.pages[1]), QStringList{u"Kjøring uke %1"_s.arg(kFull + 1)});
    EXPECT_EQ(lineTexts(more.pages[0]).size(), kFull);
}

TEST_F(FakturaSiderTest, ManyPagesAreCountedThrough)
{
    const report::Document document = print(u"Fak-ugiro-ulogo.rpt"_s, enterOrder(hours(150)));
    ASSERT_EQ(document.pages.size(), 4u);
    for (int page = 1; page <= 4; ++page)
        EXPECT_TRUE(textsOf(document.pages[static_cast<size_t>(page - 1)])
                        .contains(u"Side %1 av 4"_s.arg(page)));
    for (size_t page = 0; page < 3; ++page)
        EXPECT_EQ(factOn(document.pages[page], u"Overføres til neste side"_s),
                  factOn(document.pages[page + 1], u"Overført fra forrige side"_s));
}

TEST_F(FakturaSiderTest, TextLinesAndLongNamesGrow)
{
    std::vector<Line> lines = hours(2);
    lines[0].name = u"Semitrailer WWWWWWWWWWWWWW WWWWWWWWWWWWWW WWWWWWWW"_s;
    const report::Document document = print(enterOrder(lines));
    const report::Page &page = document.pages.front();
    const double first = textOn(page, u"Semitrailer WWWWWWWWWWWWWW"_s).baseline.y();
    const double second = textOn(page, u"WWWWWWWWWWWWWW WWWWWWWW"_s).baseline.y();
    const double next = textOn(page, u"Kjøring uke 2"_s).baseline.y();
    EXPECT_LT(first, second);
    EXPECT_LT(second, next - 3);
}
