#include "output/printing/Rapportsok.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

report::Document tomtDokument()
{
    report::Document document;
    document.paper = {210, 297};
    report::TextStyle stil;
    stil.font.setFamily(u"Liberation Sans"_s);
    stil.font.setPointSizeF(10);
    document.styles.push_back(stil);
    return document;
}

/// How often `sokt` is found in a report of that one text.
size_t antallTreff(const QString &tekst, const QString &sokt)
{
    report::Document document = tomtDokument();
    document.pages.resize(1);
    document.pages[0].texts.push_back({QPointF(20, 40), 50, 0, tekst});
    return finnTekst(document, sokt).size();
}

} // namespace

TEST(Rapportsok, AHitInTheMiddleOfATextIsMarkedThere)
{
    report::Document document = tomtDokument();
    document.pages.resize(2);
    document.pages[1].texts.push_back({QPointF(100, 60), 50, 0, u"abc ABC xabc"_s});
    document.pages[1].texts.push_back({QPointF(20, 60), 50, 0, u"abc"_s});
    document.pages[1].texts.push_back({QPointF(20, 40), 50, 0, u"ABCABC"_s});
    const std::vector<Treff> funnet = finnTekst(document, u"abc"_s);
    EXPECT_EQ(
        funnet,
        (std::vector<Treff>{
            {1, 2, 0, 3}, {1, 2, 3, 3}, {1, 1, 0, 3}, {1, 0, 0, 3}, {1, 0, 4, 3}, {1, 0, 9, 3}}));
    const QRectF forste = plassAv(document, funnet[2]);
    EXPECT_NEAR(forste.left(), 20, 0.01);
    EXPECT_LT(forste.top(), 60);
    EXPECT_GT(forste.bottom(), 60);
    EXPECT_GT(forste.width(), 4);
    const QRectF siste = plassAv(document, funnet[5]);
    EXPECT_NEAR(siste.width(), forste.width(), 0.1);
    EXPECT_GT(siste.left(), 113);
    EXPECT_TRUE(finnTekst(document, {}).empty());
}

TEST(Rapportsok, AnyBlankIsABlank)
{
    const QString belop = u"-1\u00a0234\u202f567,50"_s;
    EXPECT_EQ(antallTreff(belop, u"1 234 567"_s), 1U);
    EXPECT_EQ(antallTreff(belop, u"1\u00a0234"_s), 1U);
    EXPECT_EQ(antallTreff(u"1 234 og 1 234"_s, u"1\u00a0234"_s), 2U);
    EXPECT_EQ(antallTreff(belop, u"1234"_s), 0U);
}

TEST(Rapportsok, ASignIsJustASign)
{
    const QString tekst = u"100 % av alt' \\ [æ] 😀 ÆØÅ*"_s;
    for (const QString &tegn : {u"%"_s, u"'"_s, u"\\"_s, u"[æ]"_s, u"😀"_s, u"æøå*"_s})
        EXPECT_EQ(antallTreff(tekst, tegn), 1U) << tegn.toStdString();
    EXPECT_EQ(antallTreff(tekst, u"."_s), 0U);
    EXPECT_EQ(antallTreff(tekst, QString(40, u'W')), 0U);
    EXPECT_EQ(antallTreff(QString(), u"x"_s), 0U);
}
