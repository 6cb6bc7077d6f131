#include "reports/PaperInvoice.h"
#include "reports/PaperList.h"
#include "support/ModuleTest.h"

using namespace Qt::StringLiterals;

// The readers of pages see what is wrong: on pages that are made for it.

namespace {

class PageReaderTest : public testing::Test
{
protected:
    PageReaderTest()
    {
        m_document.paper = QSizeF(210, 297);
        report::TextStyle style;
        style.font = QFont(u"Liberation Sans"_s);
        style.font.setPointSizeF(9);
        m_document.styles = {style};
        m_document.pages.resize(1);
    }

    void addText(const QString &text, double x, double y, double width = 20)
    {
        page().texts.push_back({QPointF(x, y), width, 0, text});
    }
    report::Page &page() { return m_document.pages.front(); }
    QStringList faults() { return PageReader(m_document, 0).faults(); }
    qsizetype faultCount() { return faults().size(); }

    report::Document m_document;
};

/// An invoice of two pages that adds up.
PaperInvoice soundInvoice()
{
    PaperInvoice invoice;
    PaperInvoice::Page page;
    page.title = u"FAKTURA"_s;
    page.number = u"1001"_s;
    page.date = u"09.03.2014"_s;
    page.pageOf = u"Side 1 av 2"_s;
    page.names = u"Kjøring"_s;
    page.lines = {{10, 10050, 25, 10050}};
    page.carriedOut = 10050;
    invoice.pages = {page, page};
    invoice.pages[1].pageOf = u"Side 2 av 2"_s;
    invoice.pages[1].carriedIn = 10050;
    invoice.pages[1].carriedOut.reset();
    invoice.pages[1].hasSums = true;
    invoice.rates = {{25, 20100, 5025}};
    invoice.net = 20100;
    invoice.vat = 5025;
    invoice.rounding = -25;
    invoice.total = 25100;
    return invoice;
}

} // namespace

TEST_F(PageReaderTest, FindsTextsByTheirLabels)
{
    addText(u"Dato"_s, 20, 50, 10);
    addText(u"09.03.2014"_s, 40, 50);
    addText(u"Beløp"_s, 100, 60, 10);
    addText(u"1\u00a0234,50"_s, 95, 66, 15);
    addText(u"Navn"_s, 50, 60, 10);
    addText(u"Åse"_s, 50, 66, 8);
    addText(u"Øst"_s, 50, 80, 8);
    const PageReader reader(m_document, 0);
    ASSERT_TRUE(reader.find(u"Dato"_s));
    EXPECT_EQ(reader.beside(*reader.find(u"Dato"_s)), u"09.03.2014"_s);
    EXPECT_EQ(reader.find(u"Datoen"_s), nullptr);
    EXPECT_EQ(reader.findStart(u"09."_s), reader.find(u"09.03.2014"_s));
    ASSERT_EQ(reader.rightColumn(*reader.find(u"Beløp"_s), 100).size(), 1u);
    EXPECT_EQ(oreOf(reader.rightColumn(*reader.find(u"Beløp"_s), 100).front().text), 123450);
    EXPECT_EQ(reader.leftColumn(*reader.find(u"Navn"_s), 70).size(), 1u);
    EXPECT_EQ(reader.leftColumn(*reader.find(u"Navn"_s), 90).size(), 2u);
    EXPECT_EQ(reader.row(66).front().text, u"Åse"_s);
}

TEST_F(PageReaderTest, SeesTextsOnOrAgainstEachOther)
{
    addText(u"Tekst"_s, 20, 50);
    addText(u"Lenger ned"_s, 20, 54);
    addText(u"Ved siden av"_s, 40.5, 50);
    EXPECT_EQ(faults(), QStringList());
    addText(u"Inntil"_s, 60.6, 50);
    EXPECT_EQ(faultCount(), 1);
    addText(u"Oppå"_s, 25, 52, 10);
    EXPECT_EQ(faultCount(), 3) << "the one above it and the one below it";
}

TEST_F(PageReaderTest, SeesWhatLeavesItsFrameOrIsStruckThrough)
{
    page().boxes.push_back({QRectF(19, 45, 30, 10)});
    addText(u"Inne"_s, 20, 50);
    addText(u"Ute"_s, 70, 50);
    EXPECT_EQ(faults(), QStringList());
    addText(u"Ut av den"_s, 41, 50);
    EXPECT_EQ(faultCount(), 1);
    page().lines.push_back({QLineF(70, 49, 90, 49), 0.2});
    EXPECT_EQ(faultCount(), 2);
    page().texts.clear();
    addText(u"Under streken"_s, 70, 53);
    EXPECT_EQ(faults(), QStringList());
}

TEST_F(PageReaderTest, SeesFramesThatHaveNothingButCorners)
{
    const auto addCorner = [&](double x, double y, double wayX, double wayY) {
        page().lines.push_back({QLineF(x, y, x + wayX, y), 0.25});
        page().lines.push_back({QLineF(x, y, x, y + wayY), 0.25});
    };
    addCorner(20, 40, 2, 2);
    addCorner(60, 40, -2, 2);
    addCorner(20, 60, 2, -2);
    addCorner(60, 60, -2, -2);
    addText(u"Inne"_s, 30, 50);
    EXPECT_EQ(faults(), QStringList());
    addText(u"Ut av den"_s, 51, 50);
    EXPECT_EQ(faultCount(), 1);
}

TEST_F(PageReaderTest, SeesWhatNoPrinterPrints)
{
    addText(u"Tekst"_s, 4.1, 50);
    EXPECT_EQ(faults(), QStringList());
    addText(u"Tekst"_s, 3.9, 60);
    addText(u"Tekst"_s, 186.1, 70);
    addText(u"Tekst"_s, 20, 5);
    addText(u"Tekst"_s, 20, 293.1);
    addText(u"gjerne"_s, 60, 292.5);
    EXPECT_EQ(faultCount(), 5) << "the last one for its letters below the line";
}

TEST(PaperInvoiceTest, ASoundOneHasNoFault)
{
    EXPECT_EQ(faultsOf(soundInvoice()), QStringList());
}

TEST(PaperInvoiceTest, WhateverIsWrongIsSeen)
{
    using Change = void (*)(PaperInvoice &);
    const std::vector<Change> changes{
        [](PaperInvoice &invoice) { invoice.pages[0].pageOf = u"Side 1 av 3"_s; },
        [](PaperInvoice &invoice) { invoice.pages[1].number.clear(); },
        [](PaperInvoice &invoice) { invoice.pages[1].date = u"10.03.2014"_s; },
        [](PaperInvoice &invoice) { invoice.pages[1].title = u"KREDITNOTA"_s; },
        [](PaperInvoice &invoice) { invoice.pages[0].carriedOut = 10049; },
        [](PaperInvoice &invoice) { invoice.pages[0].carriedOut.reset(); },
        [](PaperInvoice &invoice) { invoice.pages[1].carriedIn = 10051; },
        [](PaperInvoice &invoice) { invoice.pages[1].carriedOut = 20100; },
        [](PaperInvoice &invoice) { invoice.pages[0].lines[0].amount = 10051; },
        [](PaperInvoice &invoice) { invoice.pages[1].names.clear(); },
        [](PaperInvoice &invoice) { invoice.pages[1].hasSums = false; },
        [](PaperInvoice &invoice) { invoice.pages[0].hasSums = true; },
        [](PaperInvoice &invoice) { invoice.rates.clear(); },
        [](PaperInvoice &invoice) { invoice.rates[0] = {24, 20100, 5025}; },
        [](PaperInvoice &invoice) { invoice.net = 20101; },
        [](PaperInvoice &invoice) { invoice.vat = 5026; },
        [](PaperInvoice &invoice) { invoice.rounding.reset(); },
        [](PaperInvoice &invoice) { invoice.total.reset(); },
        [](PaperInvoice &invoice) { invoice.unread = QStringList{u"«x» is no amount"_s}; },
    };
    for (size_t i = 0; i < changes.size(); ++i) {
        PaperInvoice invoice = soundInvoice();
        changes[i](invoice);
        EXPECT_FALSE(faultsOf(invoice).isEmpty()) << "change " << i;
    }
}

TEST(PaperInvoiceTest, TheSlipMayHaveAPageOfItsOwn)
{
    PaperInvoice invoice = soundInvoice();
    PaperInvoice::Page slip = invoice.pages[1];
    slip.pageOf = u"Side 3 av 3"_s;
    slip.hasSums = false;
    slip.names.clear();
    slip.lines.clear();
    slip.carriedIn.reset();
    invoice.pages.push_back(slip);
    invoice.pages[0].pageOf = u"Side 1 av 3"_s;
    invoice.pages[1].pageOf = u"Side 2 av 3"_s;
    EXPECT_EQ(faultsOf(invoice), QStringList());
    invoice.pages[2].names = u"Kjøring"_s;
    EXPECT_EQ(faultsOf(invoice).size(), 1);
}

TEST_F(PageReaderTest, AListThatIsWrongIsSeen)
{
    m_document.pages.resize(2);
    const auto addRow = [&](size_t number, double y, const QStringList &texts) {
        const QList<double> edges{30, 70, 100, 130}; // right ones
        for (qsizetype i = 0; i < texts.size(); ++i) {
            if (!texts[i].isEmpty())
                m_document.pages[number].texts.push_back(
                    {QPointF(edges[i] - 8, y), 8, 0, texts[i]});
        }
    };
    const auto addOther = [&](size_t number, double y, const QString &text) {
        m_document.pages[number].texts.push_back({QPointF(13, y), 60, 0, text});
    };
    for (const size_t number : {size_t(0), size_t(1)}) {
        addRow(number, 30, {u"Ordre"_s, u"Netto"_s, u"Mva"_s, u"Beløp"_s});
        addOther(number, 280, u"Utskrevet 09.03.2014"_s);
        addOther(number, 285, u"Side %1 av 2"_s.arg(number + 1));
    }
    addOther(0, 40, u"Betalt"_s);
    addRow(0, 45, {u"1"_s, u"100,00"_s, u"25,00"_s, u"125,00"_s});
    addOther(1, 40, u"Betalt (forts.)"_s);
    addRow(1, 45, {u"2"_s, u"10,00"_s, u"2,00"_s, u"12,00"_s});
    addOther(1, 50, u"Sum Betalt, 2 ordre"_s);
    addRow(1, 50, {{}, u"110,00"_s, u"27,00"_s, u"137,00"_s});
    const report::Document sound = m_document;
    const auto faultsOfList = [&] { return PaperList(m_document, u"Ordre"_s).faults(); };
    EXPECT_EQ(faultsOfList(), QStringList());
    EXPECT_EQ(PaperList(m_document, u"Ordre"_s).column(u"Ordre"_s), (QStringList{u"1"_s, u"2"_s}));

    addOther(0, 270, u"Betalt (forts.)"_s);
    EXPECT_EQ(faultsOfList().size(), 1) << "a head alone";
    m_document = sound;
    addOther(0, 35, u"Sum Betalt, 2 ordre"_s);
    EXPECT_EQ(faultsOfList().size(), 1) << "a sum without a row";
    m_document = sound;
    std::erase_if(m_document.pages[1].texts, [](const report::TextCommand &text) {
        return text.text().endsWith(u"(forts.)"_s);
    });
    EXPECT_EQ(faultsOfList().size(), 1) << "a head that is not repeated";
    m_document = sound;
    addRow(1, 46, {{}, {}, u"1,00"_s, {}});
    EXPECT_EQ(faultsOfList().size(), 2) << "VAT of no amount, and a sum without it";
    m_document = sound;
    m_document.pages[1].texts.erase(m_document.pages[1].texts.begin());
    EXPECT_FALSE(faultsOfList().isEmpty()) << "no headings";
}
