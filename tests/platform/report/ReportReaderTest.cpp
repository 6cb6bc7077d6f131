#include "platform/report/ReportReader.h"

#include "platform/report/ReportError.h"

#include <gtest/gtest.h>

#include <map>

namespace report::test {

using namespace Qt::StringLiterals;

namespace {

const QByteArray kQuery = "<query>SELECT A.B, A.C FROM A</query>\n";

class ReportReaderTest : public testing::Test
{
protected:
    ReportFile read(const QByteArray &bytes)
    {
        return readReport(bytes, u"/rpt/Fak.rpt"_s, [this](const QString &name) {
            const auto found = m_parts.find(name);
            if (found == m_parts.end())
                raise(errors::kReportFile, u"Filen %1 finnes ikke."_s.arg(name));
            return found->second;
        });
    }

    /// What is wrong with a report of these elements, the first one on line 3.
    std::string fault(const QByteArray &elements, int number = errors::kReportFile)
    {
        return faultOf("<report version=\"1\">\n" + kQuery + elements + "\n</report>", number);
    }

    std::string faultOf(const QByteArray &bytes, int number = errors::kReportFile)
    {
        try {
            static_cast<void>(read(bytes));
        } catch (const RunTimeError &error) {
            EXPECT_EQ(error.number(), number);
            return error.description().toStdString();
        }
        return "none";
    }

    std::map<QString, QByteArray> m_parts;
};

} // namespace

TEST_F(ReportReaderTest, ReadsAWholeReport)
{
    const ReportFile file = read(R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- en rapport -->
<report version="1" title="Liste æøå">
  <page width="297" height="210" left="20" top="11" right="12" bottom="13"/>
  <style name="a" size="8.5"/>
  <style name="b" base="a" font="Liberation Mono" bold="yes" italic="yes" underline="yes"
         color="#ff8000"/>
  <query>SELECT A.B, A.C FROM A</query>
  <formula name="FakType">1</formula>
  <pageHeader height="20" on="notFirst"/>
  <pageFooter height="20" on="last"/>
  <reportHeader height="3"/>
  <group name="G" on="{A.B}" keepTogether="yes" repeatHeader="yes" newPage="yes">
    <header height="4"/><footer height="5" each="{A.C}"/>
    <carryHeader height="6"/><carryFooter height="7"/>
  </group>
  <detail height="5.5" visible="{A.B}=1">
    <text x="1" y="2" width="3" height="4" style="b" align="right" valign="bottom" wrap="yes"> hei </text>
    <text x="1" y="2" width="3" height="4" value="{A.B} &amp; 'x'" format="0.00" grow="yes"/>
    <line x="1" y="2" x2="5" line="0.5" color="#010203" dashed="yes" stretch="yes"/>
    <box x="1" y="2" width="3" height="4" line="0.3" fill="#f9f993" radius="1"/>
    <picture x="1" y="2" width="3" height="4" file="logo.png" align="center" valign="middle"/>
  </detail>
  <reportFooter height="8"/>
</report>)");
    EXPECT_EQ(file.title, u"Liste æøå"_s);
    EXPECT_EQ(file.paper, QSizeF(297, 210));
    EXPECT_EQ(file.margins, QMarginsF(20, 11, 12, 13));
    ASSERT_EQ(file.styles.size(), 2u);
    EXPECT_EQ(file.styles[0].font.pointSizeF(), 8.5);
    EXPECT_EQ(file.styles[1].font.pointSizeF(), 8.5);
    EXPECT_EQ(file.styles[1].font.family(), u"Liberation Mono"_s);
    EXPECT_TRUE(file.styles[1].font.bold());
    EXPECT_EQ(file.styles[1].color, 0xffff8000);
    EXPECT_EQ(file.pageHeaders.front().pages, Pages::NotFirst);
    EXPECT_EQ(file.pageFooters.front().pages, Pages::Last);
    ASSERT_EQ(file.groups.size(), 1u);
    EXPECT_TRUE(file.groups[0].keepTogether && file.groups[0].repeatHeader &&
                file.groups[0].newPage);
    EXPECT_EQ(file.groups[0].headers.front().height, 4);
    EXPECT_TRUE(bool(file.groups[0].footers.front().each));
    EXPECT_EQ(file.groups[0].carryHeaders.front().height, 6);
    EXPECT_EQ(file.groups[0].carryFooters.front().height, 7);
    const std::vector<Item> &items = file.details.front().items;
    ASSERT_EQ(items.size(), 5u);
    EXPECT_EQ(items[0].text, u"hei"_s);
    EXPECT_EQ(items[0].rect, QRectF(1, 2, 3, 4));
    EXPECT_EQ(items[0].alignment, Qt::AlignRight | Qt::AlignBottom);
    EXPECT_EQ(items[0].style, 1);
    EXPECT_TRUE(items[0].wrap && !items[0].grow);
    EXPECT_TRUE(items[1].wrap && items[1].grow && items[1].value);
    EXPECT_EQ(items[1].format, u"0.00"_s);
    EXPECT_EQ(items[2].rect, QRectF(1, 2, 4, 0));
    EXPECT_TRUE(items[2].dashed && items[2].stretch);
    EXPECT_EQ(items[2].color, 0xff010203);
    EXPECT_EQ(items[3].fill, 0xfff9f993);
    EXPECT_EQ(items[4].file, u"logo.png"_s);
}

TEST_F(ReportReaderTest, HasDefaults)
{
    const ReportFile file = read("<report version=\"1\">" + kQuery + "</report>");
    EXPECT_EQ(file.paper, QSizeF(210, 297));
    EXPECT_EQ(file.margins, QMarginsF(15, 15, 15, 15));
    ASSERT_EQ(file.styles.size(), 1u);
    EXPECT_EQ(file.styles[0].font.family(), u"Liberation Sans"_s);
    EXPECT_EQ(file.styles[0].font.pointSizeF(), 9);
}

TEST_F(ReportReaderTest, MarginsLeaveRoomOnThePaper)
{
    const QByteArray page = "<page width=\"%1\" height=\"%2\"/>";
    const auto sized = [&](const char *width, const char *height) {
        return fault(QByteArray(page).replace("%1", width).replace("%2", height));
    };
    EXPECT_EQ(sized("30.5", "30.5"), "none");
    EXPECT_NE(sized("30", "297").find("margene er større enn papiret"), std::string::npos);
    EXPECT_NE(sized("210", "30").find("margene er større enn papiret"), std::string::npos);
}

TEST_F(ReportReaderTest, FaultsNameFileLineAndColumn)
{
    EXPECT_EQ(fault("<detail height=\"5\">\n  <tekst/></detail>"),
              "Fak.rpt, linje 4, kolonne 3: <tekst> hører ikke hjemme i <detail>");
    EXPECT_EQ(fault("  <detail/>"), "Fak.rpt, linje 3, kolonne 3: <detail> mangler «height»");
    EXPECT_EQ(fault("<detail height=\"5\"\n  hoyde=\"6\"/>"),
              "Fak.rpt, linje 3, kolonne 1: <detail> har ikke noe «hoyde»");
    EXPECT_EQ(fault("<style name=\"a\" farge=\"#000000\"/>"),
              "Fak.rpt, linje 3, kolonne 1: <style> har ikke noe «farge»");
    EXPECT_EQ(fault("<!-- æ --><page width=\"A4\"/>"),
              "Fak.rpt, linje 3, kolonne 11: <page> har ikke noen gyldig verdi for «width»");
    EXPECT_EQ(fault("\n<detail height=\"5\"></detal>").substr(0, 16), "Fak.rpt, linje 4");
    EXPECT_EQ(fault("<detail height=\"5\">løs tekst</detail>"),
              "Fak.rpt, linje 3, kolonne 20: tekst hører ikke hjemme her");
    EXPECT_EQ(fault("<query>SELECT B FROM A</query>"),
              "Fak.rpt, linje 3, kolonne 1: rapporten har to spørringer");
    EXPECT_EQ(
        faultOf("<report version=\"1\">\n  <query>SELECT A.* FROM A</query>\n</report>"),
        "Fak.rpt, linje 2, kolonne 3: spørringen: En kolonne i spørringen har ikke noe navn.");
}

TEST_F(ReportReaderTest, AFaultInAFormulaNamesItsPlaceAndItself)
{
    EXPECT_EQ(fault("<detail height=\"5\" visible=\"1 +\"/>", errors::kFormula),
              "Fak.rpt, linje 3, kolonne 1: visible: Feil i formel ved tegn 4: uttrykket slutter "
              "for tidlig");
    EXPECT_EQ(fault("<formula name=\"F\">'x</formula>", errors::kFormula),
              "Fak.rpt, linje 3, kolonne 1: @F: Feil i formel ved tegn 1: her står «'», som ikke "
              "er begynnelsen på noe helt");
}

TEST_F(ReportReaderTest, RefusesWhatIsNotAReport)
{
    EXPECT_EQ(faultOf("").substr(0, 25), "Fak.rpt, linje 1, kolonne");
    EXPECT_EQ(faultOf("\xff\xfe<"), "Fak.rpt, linje 1, kolonne 1: filen er ikke skrevet i UTF-8");
    EXPECT_EQ(faultOf("<rapport/>"),
              "Fak.rpt, linje 1, kolonne 1: filen begynner ikke med <report>");
    EXPECT_EQ(faultOf("<report version=\"2\">" + kQuery + "</report>"),
              "Fak.rpt, linje 1, kolonne 1: filen er ikke av versjon 1");
    EXPECT_EQ(faultOf("<report version=\"1\"/>"),
              "Fak.rpt, linje 1, kolonne 1: <report> mangler <query>");
    EXPECT_NE(faultOf("<report version=\"1\">" + kQuery + "</report><x/>"), "none");
    EXPECT_NE(faultOf("<report version=\"1\">" + kQuery), "none");
    EXPECT_EQ(faultOf("<report version=\"1\">\n <report>\n"),
              "Fak.rpt, linje 2, kolonne 2: <report> hører ikke hjemme i <report>");
    EXPECT_EQ(faultOf("<!DOCTYPE report [<!ENTITY e \"x\">]><report version=\"1\"/>"),
              "Fak.rpt, linje 1, kolonne 1: en dokumenttype hører ikke hjemme her");
}

TEST_F(ReportReaderTest, RefusesWrongValues)
{
    for (const char *element :
         {"<page width=\"-1\"/>",
          "<page width=\"nan\"/>",
          "<page width=\"99999\"/>",
          "<page left=\"100\" right=\"110\"/>",
          "<style name=\"a\" size=\"0\"/>",
          "<style name=\"a\" bold=\"ja\"/>",
          "<style name=\"a\" color=\"red\"/>",
          "<style name=\"a\" color=\"#+12345\"/>",
          "<style name=\"a\" base=\"b\"/>",
          "<style name=\"a\"/><style name=\"a\"/>",
          "<style/>",
          "<formula name=\"F\">1</formula><formula name=\"f\">2</formula>",
          "<group name=\"G\"/>",
          "<group on=\"{B}\"/>",
          "<group name=\"G\" on=\"{B}\"/><group name=\"g\" on=\"{B}\"/>",
          "<pageHeader height=\"5\" on=\"last\"/>",
          "<pageFooter height=\"5\" on=\"sist\"/>",
          "<pageFooter height=\"5\" each=\"{B}\"/>",
          "<detail height=\"5\" on=\"last\"/>",
          "<detail height=\"5\"><text x=\"1\" y=\"1\" width=\"5\"/></detail>",
          "<detail height=\"5\"><text x=\"1\" y=\"1\" width=\"5\" height=\"5\" "
          "value=\"1\">to</text></detail>",
          "<detail height=\"5\"><text x=\"1\" y=\"1\" width=\"5\" height=\"5\" "
          "style=\"ukjent\"/></detail>",
          "<detail height=\"5\"><text x=\"1\" y=\"1\" width=\"5\" height=\"5\" "
          "align=\"midt\"/></detail>",
          "<detail height=\"5\"><picture x=\"1\" y=\"1\" width=\"5\" height=\"5\"/></detail>",
          "<detail height=\"5\"><picture x=\"1\" y=\"1\" width=\"5\" height=\"5\" "
          "file=\"../x.png\"/></detail>",
          "<detail height=\"5\"><line x=\"1\" y=\"1\"><x/></line></detail>",
          "<pageFooter height=\"5\"><text x=\"1\" y=\"1\" width=\"5\" height=\"5\" "
          "grow=\"yes\"/></pageFooter>"}) {
        EXPECT_NE(fault(element), "none") << element;
    }
}

TEST_F(ReportReaderTest, TakesInPartsWhereElementsStand)
{
    m_parts[u"stiler.part"_s] = "<part version=\"1\"><style name=\"a\"/><style name=\"b\"/></part>";
    m_parts[u"hode.part"_s] = "<part version=\"1\"><include file=\"tekst.part\"/></part>";
    m_parts[u"tekst.part"_s] = "<part version=\"1\"><text x=\"1\" y=\"1\" width=\"9\" height=\"5\" "
                               "style=\"b\">felles</text></part>";
    const ReportFile file =
        read("<report version=\"1\">" + kQuery +
             "<include file=\"stiler.part\"/><detail height=\"5\"><include file=\"hode.part\"/>"
             "</detail></report>");
    EXPECT_EQ(file.styles.size(), 2u);
    ASSERT_EQ(file.details.front().items.size(), 1u);
    EXPECT_EQ(file.details.front().items.front().text, u"felles"_s);
    EXPECT_EQ(file.details.front().items.front().style, 1);
}

TEST_F(ReportReaderTest, PartsThatMultiplyAreRefused)
{
    for (int i = 1; i < 7; ++i) {
        const QByteArray next = "<include file=\"d" + QByteArray::number(i + 1) + ".part\"/>";
        m_parts[u"d%1.part"_s.arg(i)] = "<part version=\"1\">" + next.repeated(20) + "</part>";
    }
    m_parts[u"d7.part"_s] = "<part version=\"1\"/>";
    EXPECT_EQ(fault("<include file=\"d1.part\"/>").substr(0, 7), "d6.part");
    EXPECT_NE(fault("<include file=\"d1.part\"/>").find("for mange filer"), std::string::npos);
}

TEST_F(ReportReaderTest, TooManyFormulasAreRefused)
{
    QByteArray formulas;
    for (int i = 0; i <= 1000; ++i)
        formulas += "<formula name=\"F" + QByteArray::number(i) + "\">1</formula>";
    EXPECT_NE(fault(formulas).find("rapporten har for mange formler"), std::string::npos);
}

TEST_F(ReportReaderTest, FaultsInPartsNameThePart)
{
    m_parts[u"feil.part"_s] = "<part version=\"1\">\n <tull/></part>";
    m_parts[u"annet.part"_s] = "<report version=\"1\"/>";
    m_parts[u"ring.part"_s] = "<part version=\"1\"><include file=\"ring.part\"/></part>";
    EXPECT_EQ(fault("<include file=\"feil.part\"/>"),
              "feil.part, linje 2, kolonne 2: <tull> hører ikke hjemme i <part>");
    EXPECT_EQ(fault("<include file=\"annet.part\"/>"),
              "annet.part, linje 1, kolonne 1: filen begynner ikke med <part>");
    EXPECT_EQ(fault("<include file=\"ring.part\"/>"),
              "ring.part, linje 1, kolonne 19: for mange filer tar inn hverandre");
    EXPECT_EQ(fault("<include file=\"borte.part\"/>"),
              "Fak.rpt, linje 3, kolonne 1: Filen borte.part finnes ikke.");
    EXPECT_EQ(fault("<include file=\"../x.part\"/>"),
              "Fak.rpt, linje 3, kolonne 1: en fil tas inn med sitt navn alene");
}

} // namespace report::test
