#include "reports/InvoiceTest.h"
#include "reports/PageReader.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double kTolerance = 0.6; // mm, that of the measured form
constexpr double kPitch = 2.54;    // of the machine-read line

class GiroTest : public InvoiceTest
{
protected:
    GiroTest() : m_order(enterOrder(hours(1))) {}

    report::Page slip(int fakType = faktype::kFaktura)
    {
        return print(m_order, fakType).pages.back();
    }
    /// The texts of the machine-read line, from left to right.
    static std::vector<report::TextCommand> codeLine(const report::Document &document)
    {
        std::vector<report::TextCommand> found;
        for (const report::TextCommand &text : document.pages.back().texts) {
            if (document.styles[static_cast<size_t>(text.style())].name == u"ocr"_s)
                found.push_back(text);
        }
        return found;
    }
    QStringList codeTexts()
    {
        QStringList texts;
        for (const report::TextCommand &text : codeLine(print(m_order)))
            texts += text.text();
        return texts;
    }
    /// Makes the order's sum another one.
    void setSum(const QString &sum) { change(m_order, u"SumBrutto="_s + sum); }

    const int m_order;
};

} // namespace

TEST_F(GiroTest, LabelsAndValuesStandAtTheirPlaces)
{
    struct Place
    {
        QString text;
        double x;      // left edge, mm
        double height; // of the base line above the paper's lower edge, mm
    };
    const std::vector<Place> places{
        {u"Kvittering"_s, 14.6, 117.5},
        {u"Innbetalt til konto"_s, 14.4, 112.3},
        {u"Beløp"_s, 81.7, 112},
        {u"Betalerens kontonummer"_s, 128.6, 112},
        {u"Betalingsinformasjon"_s, 14.5, 97},
        {u"GIRO"_s, 110.9, 94.7},
        {u"Underskrift ved girering"_s, 112.7, 88.4},
        {u"Betalt av"_s, 14.5, 65.8},
        {u"Betalt til"_s, 113.5, 65.6},
        {u"Belast"_s, 31, 38.3},
        {u"Kundeidentifikasjon (KID)"_s, 9.5, 29.1},
        {u"Kroner"_s, 80.5, 29.1},
        {u"Øre"_s, 105.7, 29.1},
    };
    const report::Page page = slip();
    for (const Place &place : places) {
        SCOPED_TRACE(place.text.toStdString());
        // "Beløp" heads the lines' amounts, too; the slip's texts are below.
        report::TextCommand found{{}, 0, 0, {}};
        for (const report::TextCommand &text : page.texts) {
            if (text.text() == place.text && text.baseline.y() > 297 - 122.6) {
                found = text;
                break;
            }
        }
        EXPECT_NEAR(found.baseline.x(), place.x, kTolerance);
        EXPECT_NEAR(297 - found.baseline.y(), place.height, kTolerance);
    }
}

TEST_F(GiroTest, NoLabelReachesIntoAField)
{
    EXPECT_EQ(layoutFaults(print(m_order)), QStringList());
}

TEST_F(GiroTest, TellsWhoPaysWhomWhatAndWhen)
{
    const report::Page page = slip();
    const auto below = [&](const QString &label) {
        const report::TextCommand head = textOn(page, label);
        QStringList texts;
        for (const report::TextCommand &text : page.texts) {
            const QPointF at = text.baseline - head.baseline;
            if (at.y() > 1 && at.y() < 24 && at.x() > -4 && at.x() < 30)
                texts += QString(text.text()).replace(u'\u00a0', u' ');
        }
        return texts;
    };
    EXPECT_EQ(below(u"Betalt av"_s), (QStringList{u"Bjørkåsen Trelast AS"_s, u"Postboks 12"_s,
                                                  u"Sagvegen 4"_s, u"2406 Elverum"_s}));
    EXPECT_EQ(below(u"Betalt til"_s), (QStringList{u"Gråbein Bilfrakt AS"_s, u"Postboks 41"_s,
                                                   u"Terminalvegen 7"_s, u"2815 Gjøvik"_s}));
    EXPECT_EQ(
        below(u"Betalingsinformasjon"_s).first(3),
        (QStringList{u"Fakturanr.  5001"_s, u"Kundenr.  10001"_s, u"Fakturadato  09.03.2014"_s}));
    EXPECT_EQ(below(u"Innbetalt til konto"_s).value(0), u"9999.12.34566"_s);
    int dueDates = 0;
    for (const report::TextCommand &text : page.texts) {
        if (text.text() != u"23.03.2014"_s || text.baseline.y() < 297 - 122.6)
            continue;
        ++dueDates;
        EXPECT_NEAR(text.baseline.x(), 169, kTolerance);
        EXPECT_NEAR(297 - text.baseline.y(), 95, kTolerance);
    }
    EXPECT_EQ(dueDates, 1);
}

TEST_F(GiroTest, FieldsAndBandsStandAtTheirPlaces)
{
    struct Field
    {
        double x0, x1, y0, y1; // mm from the paper's lower left corner
    };
    const std::vector<Field> fields{
        {0, 210, 101.6, 122.4},     {78.9, 115.9, 103.4, 111.9}, {125.8, 166.7, 103.4, 111.9},
        {169, 199.7, 103.2, 111.8}, {0, 210, 33.6, 41.9},        {42, 47.2, 34.5, 41.1},
        {101.8, 107, 34.5, 41.1},   {191.9, 197.1, 34.5, 41},    {0, 210, 14.4, 16.3}};
    const report::Page page = slip();
    for (const Field &field : fields) {
        int found = 0;
        for (const report::BoxCommand &box : page.boxes) {
            if (std::abs(box.rect.left() - field.x0) < 0.2 &&
                std::abs(box.rect.right() - field.x1) < 0.2 &&
                std::abs(297 - box.rect.bottom() - field.y0) < 0.25 &&
                std::abs(297 - box.rect.top() - field.y1) < 0.25)
                ++found;
        }
        EXPECT_EQ(found, 1) << field.x0 << " " << field.y0;
    }
    // Nothing is printed around the machine-read line.
    for (const report::BoxCommand &box : page.boxes)
        EXPECT_FALSE(297 - box.rect.bottom() < 33 && 297 - box.rect.top() > 17);
}

TEST_F(GiroTest, TheMachineReadLineIsSetInCells)
{
    const report::Document document = print(m_order);
    const std::vector<report::TextCommand> line = codeLine(document);
    ASSERT_EQ(line.size(), 8u);
    const double starts[] = {2.1, 0, 0, 107, 113.5, 118.58, 123.66, 131.4};
    for (size_t i = 0; i < line.size(); ++i) {
        SCOPED_TRACE(line[i].text().toStdString());
        EXPECT_NEAR(297 - line[i].baseline.y(), 21.17, 0.05);
        EXPECT_NEAR(line[i].width(), kPitch * static_cast<double>(line[i].text().size()), 0.02);
        if (starts[i] > 0) {
            EXPECT_NEAR(line[i].baseline.x(), starts[i], 0.01);
        }
    }
    EXPECT_NEAR(line[1].baseline.x() + line[1].width(), 75.1, 0.01);
    EXPECT_NEAR(line[2].baseline.x() + line[2].width(), 107 - 2 * kPitch, 0.01);
    EXPECT_EQ(document.styles[static_cast<size_t>(line[0].style())].font.family(), u"OCR B"_s);
}

TEST_F(GiroTest, TheMachineReadLineHoldsKidAmountCheckDigitAndAccount)
{
    EXPECT_EQ(codeTexts(), (QStringList{u"H"_s, u"0100010050019"_s, u"1437"_s, u"50"_s, u"<"_s,
                                        u"8"_s, u">"_s, u"9999 12 34566"_s}));
}

TEST_F(GiroTest, TheAmountsCheckDigit)
{
    // Digit sums by weights 2, 1, 2 … from the right; a sum of whole tens gives 0.
    const auto amount = [&](const QString &sum) {
        setSum(sum);
        return codeTexts().mid(2, 4).join(u' ');
    };
    EXPECT_EQ(amount(u"12.34"_s), u"12 34 < 4"_s);
    EXPECT_EQ(amount(u"0.05"_s), u"0 05 < 9"_s);
    EXPECT_EQ(amount(u"0.91"_s), u"0 91 < 9"_s);
    EXPECT_EQ(amount(u"0.59"_s), u"0 59 < 6"_s);
    EXPECT_EQ(amount(u"0.18"_s), u"0 18 < 2"_s);
    EXPECT_EQ(amount(u"0.19"_s), u"0 19 < 0"_s);
    EXPECT_EQ(amount(u"9999999.99"_s), u"9999999 99 < 9"_s);
}

// The places are those of the measured form: fields that end or begin at a fixed edge, and a cell
// of a tenth of an inch for each character.
TEST_F(GiroTest, EveryCharacterOfTheMachineReadLineHasItsPlace)
{
    enum Edge { kBegins, kEnds };
    struct Place
    {
        QString text;
        Edge edge;
        double x; // mm from the paper's left edge
    };
    const auto expectLine = [&](const std::vector<Place> &places) {
        const std::vector<report::TextCommand> line = codeLine(print(m_order));
        ASSERT_EQ(line.size(), places.size());
        for (size_t i = 0; i < line.size(); ++i) {
            const report::TextCommand &text = line[i];
            SCOPED_TRACE(text.text().toStdString());
            EXPECT_EQ(text.text(), places[i].text);
            EXPECT_NEAR(text.width(), kPitch * double(text.text().size()), 0.02);
            EXPECT_NEAR(text.baseline.x() + (places[i].edge == kEnds ? text.width() : 0),
                        places[i].x, 0.02);
            EXPECT_NEAR(297 - text.baseline.y(), 21.17, 0.05);
        }
    };
    const auto checkDigit = [](const QString &digits) {
        int sum = 0;
        for (qsizetype i = 0; i < digits.size(); ++i) {
            const int product = digits[digits.size() - 1 - i].digitValue() * (i % 2 == 0 ? 2 : 1);
            sum += product / 10 + product % 10;
        }
        return QString::number((10 - sum % 10) % 10);
    };

    const QString digits = u"1234567890123456789012345"_s;
    const QStringList accounts{u"99991234566"_s, u"9999.12.34566"_s, u"9999 12 34566"_s};
    qint64 ore = 1;
    for (qsizetype length = 2; length <= digits.size(); ++length) {
        const QString kid = digits.left(length);
        const QString kroner = QString::number(ore / 100);
        const QString rest = QString::number(ore % 100).rightJustified(2, u'0');
        SCOPED_TRACE((kid + u' ' + kroner + u'.' + rest).toStdString());
        change(m_order, u"KID='%1',SumBrutto=%2.%3"_s.arg(kid, kroner, rest));
        run(u"UPDATE Klient SET Giro1='%1' WHERE KlientNr=1"_s.arg(
            accounts[length % accounts.size()]));
        expectLine({{u"H"_s, kBegins, 2.1},
                    {kid, kEnds, 75.1},
                    {kroner, kEnds, 101.92},
                    {rest, kBegins, 107},
                    {u"<"_s, kBegins, 113.5},
                    {checkDigit(kroner + rest), kBegins, 118.58},
                    {u">"_s, kBegins, 123.66},
                    {u"9999 12 34566"_s, kBegins, 131.4}});
        ore = (ore * 19 + 7 * length) % 999'999'999 + 1;
    }
}

TEST_F(GiroTest, WhatHasNoRoomOrIsNotPaidIsLeftToThePayer)
{
    const QStringList without{u"H"_s, u"0100010050019"_s, u"9999 12 34566"_s};
    setSum(u"10000000"_s);
    EXPECT_EQ(codeTexts(), without);
    setSum(u"-100"_s);
    EXPECT_EQ(codeTexts(), without);
}

TEST_F(GiroTest, AnAccountThatNoMachineReadsIsLeftOutOfTheLine)
{
    run(u"UPDATE Klient SET Giro1='NO93 8601 1117 947' WHERE KlientNr=1"_s);
    EXPECT_EQ(codeTexts().last(), u">"_s);
    const report::Page page = slip();
    EXPECT_EQ(factOn(page, u"Til konto"_s), u"NO93 8601 1117 947"_s);
    EXPECT_TRUE(textsOf(page).contains(u"NO93 8601 1117 947"_s));
}

TEST_F(GiroTest, LongNamesAreWholeOnTheSlip)
{
    change(m_order, u"KundeNavn='SØRLANDETS TRANSPORT OG MASKINUTLEIE AS'"_s);
    run(u"UPDATE Klient SET Navn='ØVRE TELEMARK MASKINFORRETNING-TRANSPORT' WHERE KlientNr=1"_s);
    const report::Page page = slip();
    const double place = textOn(page, u"Betalt av"_s).baseline.y();
    QString texts;
    for (const report::TextCommand &text : page.texts) {
        if (text.baseline.y() > place + 1 && text.baseline.y() < place + 24) {
            texts += text.text() + u' ';
            EXPECT_LT(text.baseline.x() + text.width(), text.baseline.x() < 100 ? 98 : 196.9);
        }
    }
    EXPECT_FALSE(texts.contains(u'…')) << texts.toStdString();
    EXPECT_TRUE(texts.contains(u"SØRLANDETS TRANSPORT OG MASKINUTLEIE AS"_s));
    EXPECT_TRUE(texts.contains(u"2406 Elverum"_s));
    EXPECT_TRUE(texts.contains(u"2815 Gjøvik"_s));
}

TEST_F(GiroTest, KidsOfAllKinds)
{
    const auto kid = [&](const QString &value) {
        change(m_order, u"KID="_s + value);
        const std::vector<report::TextCommand> line = codeLine(print(m_order));
        EXPECT_GT(line[1].baseline.x(), 11.3);
        return line[1].text();
    };
    EXPECT_EQ(kid(u"'1234567890123456789012345'"_s), u"1234567890123456789012345"_s);
    EXPECT_EQ(kid(u"'1000005-'"_s), u"1000005-"_s);
    EXPECT_EQ(kid(u"' 12344 '"_s), u"12344"_s);
    EXPECT_EQ(kid(u"Null"_s), u"1437"_s); // the line goes on with the amount
    EXPECT_EQ(kid(u"''"_s), u"1437"_s);
}

TEST_F(GiroTest, ACopyIsPaidLikeTheOriginal)
{
    EXPECT_EQ(textsOf(slip(faktype::kFakturakopi)).count(u"GIRO"_s), 1);
}

TEST_F(GiroTest, OnlyTheFormsWithSlipHaveOne)
{
    for (const QString &form : {u"Fak-ugiro-ulogo.rpt"_s, u"Fak-ugiro-mlogo.rpt"_s}) {
        const report::Page page = print(form, m_order).pages.back();
        EXPECT_FALSE(textsOf(page).contains(u"Kvittering"_s));
        EXPECT_GT(textOn(page, u"Side 1 av 1"_s).baseline.y(), 280);
    }
    EXPECT_TRUE(
        textsOf(print(u"Fak-mgiro-mlogo.rpt"_s, m_order).pages.back()).contains(u"Kvittering"_s));
}
