#include "output/ehf3/XmlTekst.h"

#include "support/ModuleTest.h"

using namespace Qt::StringLiterals;

namespace {

using ehf3::lovligTekst;
using ehf3::XmlTekst;

TEST(Ehf3LovligTekst, LeavesOutWhatXmlCannotHold)
{
    QString all;
    for (int code = 0; code <= 0xffff; ++code)
        all += QChar(static_cast<char16_t>(code));
    const QString lawful = lovligTekst(all);
    // Halves in a row of their own make no pair but the one where the two kinds meet.
    EXPECT_EQ(lawful.size(), 3 + (0xd800 - 0x20) + 2 + (0xfffe - 0xe000));
    EXPECT_TRUE(lawful.startsWith(u"\t\n\r !"_s));
    EXPECT_EQ(lovligTekst(u"a\u0000b\u001fc\u007f\u0085"_s), u"abc\u007f\u0085"_s);
    EXPECT_EQ(lovligTekst(QString(QChar(0xd83d)) + u'x'), u"x"_s);
    EXPECT_EQ(lovligTekst(u"x"_s + QChar(0xd83d)), u"x"_s);
    EXPECT_EQ(lovligTekst(QString(QChar(0xde00)) + QChar(0xd83d)), QString());
    EXPECT_EQ(lovligTekst(u"😀"_s), u"😀"_s);
}

TEST(Ehf3XmlTekst, EscapesAnyText)
{
    XmlTekst ut("r");
    ut.element(1, "a", u"<&>\"'\r\n\t]]> &amp; Ærlig € 😀");
    EXPECT_EQ(std::move(ut).ferdig(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>\n  "
              "<a>&lt;&amp;&gt;&quot;'&#13;\n\t]]&gt; &amp;amp; Ærlig € 😀</a>\n</r>\n");
}

TEST(Ehf3XmlTekst, NothingIsEmpty)
{
    XmlTekst ut("r x=\"1\"");
    ut.gruppe(1, "tom");
    ut.gruppe(2, "tommere");
    ut.element(3, "tomt", u"");
    ut.gruppe(1, "g");
    ut.element(2, "tomt", {});
    ut.gruppe(2, "h");
    ut.element(3, "e", u"1", {"y", "2"});
    ut.element(1, "f", u"2");
    EXPECT_EQ(std::move(ut).ferdig(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                      "<r x=\"1\">\n"
                                      "  <g>\n"
                                      "    <h>\n"
                                      "      <e y=\"2\">1</e>\n"
                                      "    </h>\n"
                                      "  </g>\n"
                                      "  <f>2</f>\n"
                                      "</r>\n");
}

} // namespace
