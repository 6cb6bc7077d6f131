#include "platform/report/Support.h"
#include "platform/report/TextSetter.h"

namespace report::test {

namespace {

constexpr double kMm = 1e-6;

class LayoutTest : public ReportTest
{
protected:
    /// A text of that style-less font's height, one line high.
    static QByteArray text(const QByteArray &value, const QByteArray &attributes = {})
    {
        return "<text x=\"0\" y=\"0\" width=\"190\" height=\"5\" value=\"" + value + "\" " +
               attributes + "/>";
    }
    static QByteArray band(const QByteArray &name, double height, const QByteArray &value,
                           const QByteArray &attributes = {})
    {
        return "<" + name + " height=\"" + QByteArray::number(height) + "\" " + attributes + ">" +
               text(value) + "</" + name + ">";
    }
    /// From the paper's upper edge to the top of the band in which `text` stands.
    static double topOf(const Page &page, const QString &content)
    {
        return textOn(page, content).baseline.y() - kAscent;
    }
    static QStringList linesFrom(int first, int last)
    {
        QStringList lines;
        for (int line = first; line <= last; ++line)
            lines += u"Vare %1"_s.arg(line);
        return lines;
    }

    static const double kAscent;
};

const double LayoutTest::kAscent = 9 * 0.905273 * 25.4 / 72; // Liberation Sans, 9 points

} // namespace

TEST_F(LayoutTest, PlacesARowsTextsByTheMillimetre)
{
    addOrder(1001, 1);
    const Document document = made(lineReport(R"xml(
<detail height="5">
  <text x="0" y="0" width="50" height="5" value="{OrdreLinjer.ProduktNavn}"/>
  <text x="100" y="1" width="30" height="5" align="right" value="{LinjeBrutto}"/>
  <text x="50" y="0" width="50" height="5" align="center">midt</text>
</detail>)xml"));
    EXPECT_EQ(document.title, u"Linjer"_s);
    EXPECT_EQ(document.paper, QSizeF(210, 297));
    ASSERT_EQ(document.pages.size(), 1u);
    const Page &page = document.pages.front();
    EXPECT_EQ(textsOf(page), (QStringList{u"Vare 1"_s, u"125,00"_s, u"midt"_s}));
    const TextCommand name = textOn(page, u"Vare 1"_s);
    const TextCommand sum = textOn(page, u"125,00"_s);
    const TextCommand middle = textOn(page, u"midt"_s);
    EXPECT_NEAR(name.baseline.x(), 10, kMm);
    EXPECT_NEAR(sum.baseline.x() + sum.width(), 10 + 130, kMm);
    EXPECT_NEAR(middle.baseline.x() + middle.width() / 2, 10 + 75, kMm);
    EXPECT_NEAR(sum.baseline.y() - name.baseline.y(), 1, kMm);
    EXPECT_NEAR(name.baseline.y(), 10 + kAscent, 0.01);
}

TEST_F(LayoutTest, FillsPagesToTheMillimetre)
{
    addOrder(1001, 60);
    // 277 mm of body less 20 and 7 are 50 rows of 5 mm.
    const Document document =
        made(lineReport(band("pageHeader", 20,
                             "'side ' &amp; PageNumber &amp; ' av ' &amp; "
                             "TotalPages") +
                        band("detail", 5, "{OrdreLinjer.ProduktNavn}") +
                        band("pageFooter", 7, "'til ' &amp; {OrdreLinjer.PosNr}")));
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[0]),
              linesFrom(1, 50) + QStringList({u"til 500"_s, u"side 1 av 2"_s}));
    EXPECT_EQ(textsOf(document.pages[1]),
              linesFrom(51, 60) + QStringList({u"til 600"_s, u"side 2 av 2"_s}));
    EXPECT_NEAR(topOf(document.pages[0], u"side 1 av 2"_s), 10, 0.01);
    EXPECT_NEAR(topOf(document.pages[0], u"Vare 1"_s), 30, 0.01);
    EXPECT_NEAR(topOf(document.pages[0], u"Vare 50"_s), 30 + 49 * 5, 0.01);
    EXPECT_NEAR(topOf(document.pages[0], u"til 500"_s), 297 - 10 - 7, 0.01);
    EXPECT_NEAR(topOf(document.pages[1], u"Vare 51"_s), 30, 0.01);
}

TEST_F(LayoutTest, ALongReportTakesNoMoreMemoryThanItsTextsNeed)
{
    addOrder(1001, 60);
    const Document document = made(lineReport(band("detail", 5, "{OrdreLinjer.ProduktNavn}") +
                                              band("detail", 1, "'igjen'") +
                                              band("pageFooter", 7, "TotalPages &amp; ' sider'")));
    ASSERT_GT(document.pages.size(), 1u);
    const TextCommand again = textOn(document.pages[0], u"igjen"_s);
    for (const Page &page : document.pages) {
        EXPECT_EQ(page.texts.capacity(), page.texts.size());
        for (const TextCommand &text : page.texts)
            EXPECT_EQ(text.set == again.set, text.text() == u"igjen"_s)
                << "shared where it is said";
    }
}

TEST_F(LayoutTest, ReportAndPageBandsStandInTheirOrder)
{
    addOrder(1001, 2);
    const Document document = made(lineReport(
        band("reportHeader", 10, "'tittel'") + band("pageHeader", 10, "'hode'") +
        band("pageHeader", 10, "'første'", "on=\"first\"") +
        band("pageHeader", 10, "'senere'", "on=\"notFirst\"") +
        band("detail", 5, "{OrdreLinjer.ProduktNavn}") + band("reportFooter", 10, "'slutt'")));
    ASSERT_EQ(document.pages.size(), 1u);
    EXPECT_EQ(textsOf(document.pages[0]), (QStringList{u"tittel"_s, u"hode"_s, u"første"_s,
                                                       u"Vare 1"_s, u"Vare 2"_s, u"slutt"_s}));
}

TEST_F(LayoutTest, ABandThatIsNotShownTakesNoRoom)
{
    addOrder(1001, 3);
    const Document document = made(lineReport(
        band("detail", 5, "'skjult'", "visible=\"{OrdreLinjer.PosNr}&lt;20\"") +
        band("detail", 5, "{OrdreLinjer.ProduktNavn}", "visible=\"{OrdreLinjer.PosNr}&gt;=20\"")));
    const Page &page = document.pages.front();
    EXPECT_EQ(textsOf(page), (QStringList{u"skjult"_s, u"Vare 2"_s, u"Vare 3"_s}));
    EXPECT_NEAR(topOf(page, u"Vare 3"_s), 20, 0.01);
}

TEST_F(LayoutTest, TheLastFooterHasItsPlaceAndItsRoom)
{
    const QByteArray bands = band("detail", 5, "{OrdreLinjer.ProduktNavn}") +
                             band("pageFooter", 100, "'giro'", "on=\"last\"") +
                             band("pageFooter", 7, "'forts.'", "on=\"notLast\"") +
                             band("reportFooter", 20, "'sum'");
    // 277 - 100 - 20 mm take 31 rows.
    addOrder(1001, 31);
    Document document = made(lineReport(bands), u"{Ordre.OrdreNr}=1001"_s);
    ASSERT_EQ(document.pages.size(), 1u);
    EXPECT_NEAR(topOf(document.pages[0], u"giro"_s), 297 - 10 - 100, 0.01);

    // One row more: it takes the sum along to the next page.
    addOrder(1002, 32);
    document = made(lineReport(bands), u"{Ordre.OrdreNr}=1002"_s);
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[0]), linesFrom(1, 31) + QStringList{u"forts."_s});
    EXPECT_EQ(textsOf(document.pages[1]), (QStringList{u"Vare 32"_s, u"sum"_s, u"giro"_s}));
    EXPECT_NEAR(topOf(document.pages[1], u"giro"_s), 297 - 10 - 100, 0.01);
}

TEST_F(LayoutTest, CarriesSumsOver)
{
    addOrder(1001, 60);
    const Document document =
        made(lineReport("<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\" repeatHeader=\"yes\">" +
                        band("header", 10, "'kolonner'") +
                        band("carryFooter", 7, "'Overføres ' &amp; RunningSum({LinjeBrutto})") +
                        band("carryHeader", 6, "'Overført ' &amp; RunningSum({LinjeBrutto})") +
                        band("footer", 10, "'Sum ' &amp; Sum({LinjeBrutto})") + "</group>" +
                        band("detail", 5, "{OrdreLinjer.ProduktNavn}")));
    // 277 mm less 10 and 7 are 52 rows of 5 mm.
    ASSERT_EQ(document.pages.size(), 2u);
    const QString carried = u"6\u00a0500,00"_s;
    EXPECT_EQ(textsOf(document.pages[0]), QStringList{u"kolonner"_s} + linesFrom(1, 52) +
                                              QStringList{u"Overføres "_s + carried});
    EXPECT_EQ(textsOf(document.pages[1]), QStringList({u"kolonner"_s, u"Overført "_s + carried}) +
                                              linesFrom(53, 60) +
                                              QStringList{u"Sum 7\u00a0500,00"_s});
    EXPECT_NEAR(topOf(document.pages[0], u"Overføres "_s + carried), 287 - 7, 0.01);
    EXPECT_NEAR(topOf(document.pages[1], u"Overført "_s + carried), 20, 0.01);
    EXPECT_NEAR(topOf(document.pages[1], u"Vare 53"_s), 26, 0.01);
}

TEST_F(LayoutTest, NestedGroupsOpenAndClose)
{
    addOrder(1001, 2);
    addOrder(1002, 1);
    const Document document = made(lineReport(
        "<group name=\"Kunde\" on=\"{Ordre.KundeNavn}\">" + band("header", 5, "'K'") +
        band("footer", 5, "'k ' &amp; Sum({LinjeBrutto})") + "</group>" +
        "<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\">" + band("header", 5, "'O'") +
        band("footer", 5, "'o ' &amp; Sum({LinjeBrutto})") + "</group>" +
        band("detail", 5, "{OrdreLinjer.ProduktNavn}") +
        band("reportFooter", 5, "'alt ' &amp; Sum({LinjeBrutto}) &amp; ' av ' &amp; Count()")));
    EXPECT_EQ(textsOf(document.pages.front()),
              (QStringList{u"K"_s, u"O"_s, u"Vare 1"_s, u"Vare 2"_s, u"o 250,00"_s, u"O"_s,
                           u"Vare 1"_s, u"o 125,00"_s, u"k 375,00"_s, u"alt 375,00 av 3"_s}));
}

TEST_F(LayoutTest, AGroupBeginsOnANewPage)
{
    addOrder(1001, 1);
    addOrder(1002, 1);
    const Document document =
        made(lineReport("<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\" newPage=\"yes\">" +
                        band("header", 5, "{Ordre.OrdreNr}") + "</group>" +
                        band("detail", 5, "{OrdreLinjer.ProduktNavn}")));
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[0]), (QStringList{u"1001"_s, u"Vare 1"_s}));
    EXPECT_EQ(textsOf(document.pages[1]), (QStringList{u"1002"_s, u"Vare 1"_s}));
}

TEST_F(LayoutTest, AHeaderIsNotLeftAlone)
{
    addOrder(1001, 53);
    addOrder(1002, 1);
    // 53 rows and a header leave 7 mm: room for the header, but not for its first row.
    const Document document =
        made(lineReport("<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\">" +
                        band("header", 5, "'ordre ' &amp; {Ordre.OrdreNr}") + "</group>" +
                        band("detail", 5, "{OrdreLinjer.ProduktNavn}")));
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[1]), (QStringList{u"ordre 1002"_s, u"Vare 1"_s}));
}

TEST_F(LayoutTest, AFooterThatTheCallerTurnsOffTakesNoRoom)
{
    addOrder(1001, 54);
    const QByteArray report =
        lineReport("<formula name=\"Slipp\">True</formula>"
                   "<formula name=\"Vises\">{@Slipp} and 1 &lt; 2</formula>" +
                   band("detail", 5, "{OrdreLinjer.ProduktNavn}") +
                   band("pageFooter", 100, "'slipp'", "on=\"last\" visible=\"{@Vises}\"") +
                   band("pageFooter", 5, "'fot'"));
    EXPECT_EQ(made(report).pages.size(), 2u);
    const Document without = made(report, {}, {u"Slipp=False"_s});
    ASSERT_EQ(without.pages.size(), 1u);
    EXPECT_EQ(without.pages[0].texts.size(), 55u);
    EXPECT_EQ(without.pages[0].texts.back().text(), u"fot"_s);
    EXPECT_NEAR(topOf(without.pages[0], u"fot"_s), 282, 0.01);
}

TEST_F(LayoutTest, AFooterThatNoRowTurnsOnTakesNoRoom)
{
    addOrder(1001, 54);
    const auto pagesWith = [&](const QByteArray &condition) {
        return made(lineReport(band("detail", 5, "{OrdreLinjer.ProduktNavn}") +
                               band("pageFooter", 100, "'slipp'",
                                    "visible=\"" + condition + " &gt; 1000\"")))
            .pages.size();
    };
    EXPECT_EQ(pagesWith("Max({OrdreLinjer.PosNr}, 'report')"), 1u);
    EXPECT_EQ(pagesWith("RunningCount({OrdreLinjer.PosNr}, 'report')"), 2u);
}

TEST_F(LayoutTest, AFooterThatAPageTurnsOffKeepsItsRoom)
{
    addOrder(1001, 60);
    for (const QByteArray onLastPage :
         {"PageNumber=2", "{OrdreLinjer.PosNr}=600", "RunningCount()=60"}) {
        const Document document =
            made(lineReport(band("detail", 5, "{OrdreLinjer.ProduktNavn}") +
                            band("pageFooter", 27, "'slipp'", "visible=\"" + onLastPage + "\"")));
        ASSERT_EQ(document.pages.size(), 2u);
        EXPECT_EQ(textsOf(document.pages[0]), linesFrom(1, 50)) << onLastPage.data();
        EXPECT_EQ(textsOf(document.pages[1]), linesFrom(51, 60) + QStringList{u"slipp"_s})
            << onLastPage.data();
    }
}

TEST_F(LayoutTest, AGroupIsKeptTogether)
{
    addOrder(1001, 40);
    addOrder(1002, 15);
    const auto report = [&](const QByteArray &keep) {
        return lineReport("<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\" keepTogether=\"" + keep +
                          "\">" + band("header", 5, "'ordre ' &amp; {Ordre.OrdreNr}") + "</group>" +
                          band("detail", 5, "{OrdreLinjer.ProduktNavn}"));
    };
    EXPECT_EQ(made(report("no")).pages[1].texts.size(), 2u);
    const Document document = made(report("yes"));
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(document.pages[0].texts.size(), 41u);
    EXPECT_EQ(document.pages[1].texts.front().text(), u"ordre 1002"_s);
}

TEST_F(LayoutTest, AKeptGroupLeavesRoomForTheLastFooterAtTheEndAlone)
{
    addOrder(1001, 20);
    addOrder(1002, 16);
    const QByteArray report =
        lineReport("<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\" keepTogether=\"yes\"/>" +
                   band("detail", 5, "{OrdreLinjer.ProduktNavn}") +
                   band("pageFooter", 100, "'giro'", "on=\"last\""));
    // 36 rows of 5 mm are more than the 177 mm above the last footer.
    Document document = made(report);
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[0]), linesFrom(1, 20));

    // With a third order they end before the last page.
    addOrder(1003, 1);
    document = made(report);
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[0]), linesFrom(1, 20) + linesFrom(1, 16));
}

TEST_F(LayoutTest, AGroupThatFitsBelowNoReportHeaderIsKeptTogether)
{
    addOrder(1001, 1);
    addOrder(1002, 53);
    const Document document = made(lineReport(
        "<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\" keepTogether=\"yes\"/>" +
        band("reportHeader", 20, "'tittel'") + band("detail", 5, "{OrdreLinjer.ProduktNavn}")));
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[0]), (QStringList{u"tittel"_s, u"Vare 1"_s}));
    EXPECT_EQ(textsOf(document.pages[1]), linesFrom(1, 53));
}

TEST_F(LayoutTest, AGroupLongerThanAPageIsParted)
{
    addOrder(1001, 60);
    const Document document = made(lineReport(
        "<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\" keepTogether=\"yes\"/>" +
        band("reportHeader", 20, "'tittel'") + band("detail", 5, "{OrdreLinjer.ProduktNavn}")));
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[0]).mid(0, 2), (QStringList{u"tittel"_s, u"Vare 1"_s}));
}

TEST_F(LayoutTest, AGroupJustTooHighForAPageIsNotMoved)
{
    addOrder(1001, 2);
    addOrder(1002, 53);
    // 277 mm less 10 have room for 53 rows of 5 mm, but not for a header above them.
    const Document document =
        made(lineReport(band("pageHeader", 10, "'hode'") +
                        "<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\" keepTogether=\"yes\">" +
                        band("header", 5, "{Ordre.OrdreNr}") + "</group>" +
                        band("detail", 5, "{OrdreLinjer.ProduktNavn}")));
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[0]),
              QStringList({u"hode"_s, u"1001"_s, u"Vare 1"_s, u"Vare 2"_s, u"1002"_s}) +
                  linesFrom(1, 49));
    EXPECT_EQ(textsOf(document.pages[1]), QStringList{u"hode"_s} + linesFrom(50, 53));
}

TEST_F(LayoutTest, BandsOfARowThatIsTooHighKeepTheRoomOfTheFooters)
{
    addOrder(1001, 1);
    // Of 277 mm the last footer takes 100, the other one 7, and what is carried over 20.
    const Document document = made(lineReport(
        "<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\">" + band("header", 10, "'hode'") +
        band("footer", 100, "'sum'") + band("carryFooter", 20, "'overføres'") + "</group>" +
        band("detail", 200, "'første'") + band("detail", 41, "'andre'") +
        band("reportFooter", 80, "'slutt'") + band("pageFooter", 100, "'giro'", "on=\"last\"") +
        band("pageFooter", 7, "'forts.'", "on=\"notLast\"")));
    // 10 + 200 + 41 are one more than 250, and 41 + 100 + 80 more than 177.
    ASSERT_EQ(document.pages.size(), 3u);
    EXPECT_EQ(textsOf(document.pages[0]),
              (QStringList{u"hode"_s, u"første"_s, u"overføres"_s, u"forts."_s}));
    EXPECT_EQ(textsOf(document.pages[1]), (QStringList{u"andre"_s, u"sum"_s, u"forts."_s}));
    EXPECT_EQ(textsOf(document.pages[2]), (QStringList{u"slutt"_s, u"giro"_s}));
    EXPECT_NEAR(topOf(document.pages[0], u"overføres"_s), 287 - 7 - 20, 0.01);
}

TEST_F(LayoutTest, BandsOfARowThatIsTooHighFillThePageToTheMillimetre)
{
    addOrder(1001, 1);
    // 3 * 56.4 and 107.8 are 277, and so are 100, 170 and 7.
    const Document document = made(lineReport(
        band("detail", 56.4, "'en'") + band("detail", 56.4, "'to'") +
        band("detail", 56.4, "'tre'") + band("detail", 100, "'fire'") +
        band("reportFooter", 170, "'slutt'") + band("pageFooter", 7, "'side'", "on=\"last\"") +
        band("pageFooter", 107.8, "'forts.'", "on=\"notLast\"")));
    ASSERT_EQ(document.pages.size(), 2u);
    EXPECT_EQ(textsOf(document.pages[0]), (QStringList{u"en"_s, u"to"_s, u"tre"_s, u"forts."_s}));
    EXPECT_EQ(textsOf(document.pages[1]), (QStringList{u"fire"_s, u"slutt"_s, u"side"_s}));
}

TEST_F(LayoutTest, ABandTooHighBelowARepeatedHeaderTakesNoFurtherPage)
{
    addOrder(1001, 3);
    const Document document = made(lineReport(
        "<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\" repeatHeader=\"yes\">" +
        band("header", 10, "'hode'") + "</group>" +
        band("detail", 270, "{OrdreLinjer.ProduktNavn}", "visible=\"{OrdreLinjer.PosNr}&lt;30\"") +
        band("detail", 5, "{OrdreLinjer.ProduktNavn}", "visible=\"{OrdreLinjer.PosNr}=30\"")));
    ASSERT_EQ(document.pages.size(), 4u);
    EXPECT_EQ(textsOf(document.pages[0]), QStringList{u"hode"_s});
    for (int page = 1; page <= 3; ++page)
        EXPECT_EQ(textsOf(document.pages[size_t(page)]),
                  (QStringList{u"hode"_s, u"Vare %1"_s.arg(page)}));
}

TEST_F(LayoutTest, ABandHigherThanThePageDoesNotStopTheReport)
{
    addOrder(1001, 3);
    const Document document = made(lineReport(band("detail", 400, "{OrdreLinjer.ProduktNavn}") +
                                              band("reportFooter", 10, "'slutt'")));
    ASSERT_EQ(document.pages.size(), 4u);
    EXPECT_EQ(textsOf(document.pages[2]), QStringList{u"Vare 3"_s});
    EXPECT_EQ(textsOf(document.pages[3]), QStringList{u"slutt"_s});
}

TEST_F(LayoutTest, TextGrowsItsBandAndPushesWhatIsBelow)
{
    addOrder(1001, 2);
    run({u"UPDATE OrdreLinjer SET ProduktNavn='en to tre fire fem seks' WHERE PosNr=10"_s});
    const Document document = made(lineReport(R"xml(
<detail height="10">
  <text x="0" y="0" width="16" height="4" value="{OrdreLinjer.ProduktNavn}" grow="yes"/>
  <text x="0" y="5" width="50" height="5" value="'under ' &amp; {OrdreLinjer.PosNr}"/>
  <text x="60" y="0" width="50" height="5" value="'ved siden ' &amp; {OrdreLinjer.PosNr}"/>
  <line x="0" y="9" x2="100"/>
  <line x="120" y="0" y2="10" stretch="yes"/>
  <box x="130" y="0" width="10" height="10" line="0.2" stretch="yes"/>
</detail>)xml"));
    const Page &page = document.pages.front();
    const QStringList texts = textsOf(page);
    EXPECT_EQ(texts.mid(0, 3), (QStringList{u"en to tre"_s, u"fire fem"_s, u"seks"_s}));
    const double lineHeight =
        textOn(page, u"seks"_s).baseline.y() - textOn(page, u"fire fem"_s).baseline.y();
    EXPECT_NEAR(lineHeight, 9 * 1.149 * 25.4 / 72, 0.01);
    const double growth = 3 * lineHeight - 4;
    EXPECT_NEAR(topOf(page, u"under 10"_s), 15 + growth, 0.01);
    EXPECT_NEAR(topOf(page, u"ved siden 10"_s), 10, 0.01);
    EXPECT_NEAR(topOf(page, u"ved siden 20"_s), 20 + growth, 0.01);
    EXPECT_NEAR(topOf(page, u"under 20"_s), 25 + growth, 0.01);
    EXPECT_NEAR(page.lines[0].line.y1(), 19 + growth, 0.01);
    EXPECT_NEAR(page.lines[1].line.y2(), 20 + growth, 0.01);
    EXPECT_NEAR(page.boxes[0].rect.bottom(), 20 + growth, 0.01);
    EXPECT_NEAR(page.lines[2].line.y1(), 29 + growth, 0.01);
}

TEST_F(LayoutTest, TextIsCutAndNumbersAreNot)
{
    addOrder(1001, 1);
    run({u"UPDATE OrdreLinjer SET ProduktNavn='En ganske lang varetekst', SumBrutto=123456789"_s});
    const Document document = made(lineReport(R"xml(
<detail height="20">
  <text x="0" y="0" width="20" height="5" value="{OrdreLinjer.ProduktNavn}"/>
  <text x="50" y="0" width="5" height="5" align="right" value="{LinjeBrutto}"/>
  <text x="100" y="0" width="16" height="8" wrap="yes" value="{OrdreLinjer.ProduktNavn}"/>
  <text x="150" y="0" width="20" height="5" wrap="yes">Fylkesmannsfullmektigen</text>
</detail>)xml"));
    const Page &page = document.pages.front();
    EXPECT_EQ(page.texts[0].text(), u"En ganske l…"_s);
    EXPECT_LE(page.texts[0].width(), 20 + kMm);
    EXPECT_EQ(page.texts[1].text(), u"123\u00a0456\u00a0789,00"_s);
    EXPECT_NEAR(page.texts[1].baseline.x() + page.texts[1].width(), 10 + 55, kMm);
    EXPECT_EQ(page.texts[2].text(), u"En ganske"_s);
    EXPECT_TRUE(page.texts[3].text().startsWith(u"lang"_s));
    EXPECT_TRUE(page.texts[3].text().endsWith(u"…"_s));
    EXPECT_TRUE(page.texts[4].text().startsWith(u"Fylkesm"_s) &&
                page.texts[4].text().endsWith(u"…"_s));
    for (size_t i = 2; i < page.texts.size(); ++i)
        EXPECT_LE(page.texts[i].width(), 20 + kMm);
}

TEST_F(LayoutTest, AlignsDownTheBox)
{
    addOrder(1001, 1);
    const Document document = made(lineReport(R"xml(
<detail height="20">
  <text x="0" y="0" width="20" height="20">topp</text>
  <text x="0" y="0" width="20" height="20" valign="middle">midt</text>
  <text x="0" y="0" width="20" height="20" valign="bottom">bunn</text>
  <text x="50" y="0" width="50" height="20" value="Lines('en','to')" valign="bottom"/>
</detail>)xml"));
    const Page &page = document.pages.front();
    const double lineHeight = 9 * 1.149 * 25.4 / 72;
    EXPECT_NEAR(topOf(page, u"topp"_s), 10, 0.01);
    EXPECT_NEAR(topOf(page, u"midt"_s), 10 + (20 - lineHeight) / 2, 0.01);
    EXPECT_NEAR(topOf(page, u"bunn"_s), 30 - lineHeight, 0.01);
    EXPECT_NEAR(topOf(page, u"en"_s), 30 - 2 * lineHeight, 0.02);
    EXPECT_NEAR(topOf(page, u"to"_s), 30 - lineHeight, 0.01);
}

TEST_F(LayoutTest, ItemsAreShownByCondition)
{
    addOrder(1001, 2);
    const Document document = made(lineReport(R"xml(
<detail height="5">
  <text x="0" y="0" width="20" height="5" visible="{OrdreLinjer.PosNr}=20">bare to</text>
  <box x="0" y="0" width="190" height="5" fill="#eeeeee" visible="RecordNumber mod 2 = 0"/>
</detail>)xml"));
    const Page &page = document.pages.front();
    EXPECT_EQ(textsOf(page), QStringList{u"bare to"_s});
    ASSERT_EQ(page.boxes.size(), 1u);
    EXPECT_EQ(page.boxes[0].rect, QRectF(10, 15, 190, 5));
    EXPECT_EQ(page.boxes[0].fill, 0xffeeeeee);
}

TEST_F(LayoutTest, FiftyPagesAndAThousandRowsKeepTheirOrder)
{
    addOrder(1001, 2600);
    const Document document = made(lineReport(band("detail", 5, "{OrdreLinjer.ProduktNavn}") +
                                              band("pageFooter", 5, "'side ' &amp; PageNumber")));
    ASSERT_EQ(document.pages.size(), 49u);
    int next = 1;
    for (const Page &page : document.pages) {
        const QStringList texts = textsOf(page);
        for (const QString &text : texts.first(texts.size() - 1))
            EXPECT_EQ(text, u"Vare %1"_s.arg(next++));
    }
    EXPECT_EQ(next, 2601);
}

TEST(TextSetter, BreaksALongTextWithoutMeasuringItOverAndOver)
{
    TextStyle style;
    style.font = QFont(u"Liberation Sans"_s, 9);
    const TextSetter setter({style});
    const QString word(600'000, u'm'); // no blank to break at
    const QStringList lines = setter.wrapped(0, word, 100);
    EXPECT_EQ(lines.join(QString()), word);
    ASSERT_GT(lines.size(), 10'000);
    EXPECT_LE(setter.width(0, lines.first()), 100);
    EXPECT_GT(setter.width(0, lines.first() + u'm'), 100);
    EXPECT_EQ(lines.first(), lines.at(lines.size() - 2));
    EXPECT_EQ(setter.shortened(0, word, 100), lines.first().chopped(1) + u'…');
}

} // namespace report::test
